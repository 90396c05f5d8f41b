// Many keys of a table at once, from an image or from a model, against a map that takes them one by one.
#include "compile/image_file.h"

#include <span>
#include <utility>

#include "compile/enter_keys.h"
#include "compile/image_bytes.h"
#include "model/section.h"
#include "yardstick/random.h"

namespace zek::test {

using ManyKeys = ProcessTest;

namespace {

/// Short of letters, so that many are equal, begin alike or go on where others end; `letters` may hold a NUL.
std::string RandomName(Random& random, const std::string& letters) {
    std::string name(random.Chance(50) ? random.Below(4) * 8 : 0, letters[0]);
    for (std::size_t size = name.size() + random.Below(20); name.size() < size;) {
        name += random.Chance(70) ? letters[0] : letters[random.Below(letters.size())];
    }
    return name;
}

Texts RandomNames(std::size_t count, const std::string& letters) {
    Random random(count);
    Texts names(count);
    for (std::string& name : names) name = RandomName(random, letters);
    return names;
}

/// The table of keys that are numbered as they come; `repeated` when one that is there advances the counter too.
template <class Key>
std::map<Key, unsigned> Numbered(const std::vector<Key>& keys, unsigned counter, bool repeated) {
    std::map<Key, unsigned> table;
    for (const Key& key : keys) {
        if (table.try_emplace(key, counter).second || repeated) ++counter;
    }
    return table;
}

/// Enters the keys, more than are sorted in the cache, and expects what a map takes one by one: the first of equal
/// ones.
template <class View, class Key>
void ExpectEntered(const std::vector<Key>& keys) {
    std::vector<KeyedIdentifier<View>> rows;
    std::map<Key, unsigned> expected = {{keys[0], 99}};
    std::map<Key, unsigned> table = expected;
    for (const Key& key : keys) {
        const auto id = static_cast<unsigned>(rows.size());
        rows.push_back({key, id});
        expected.try_emplace(key, id);
    }
    EnterKeys(table, std::span(std::as_const(rows)));
    EXPECT_TRUE(table == expected);
}

}  // namespace

TEST_F(ManyKeys, AreEnteredAsIfOneByOne) {
    constexpr std::size_t kCount = 40'000;
    for (const char* letters : {"ab\x01\xFF", "01"}) ExpectEntered<std::string_view>(RandomNames(kCount, letters));
    Random random(2);
    for (const unsigned range : {1U, 50'000U, 0xFFFFFFFFU}) {
        std::vector<unsigned> numbers(kCount);
        for (unsigned& number : numbers) number = random.Below(range);
        ExpectEntered<unsigned>(numbers);
    }
}

TEST_F(ManyKeys, OfANameTableAreReadAsIfOneByOne) {
    for (const std::size_t count : {2U, 16U, 17U, 100U, 5000U}) {
        SCOPED_TRACE(count);
        const Texts names = RandomNames(count, "ab\x01\xFF");
        Write("keys.meta", Image({}, {Record(0x12000000, Names(names))}));
        ASSERT_EQ(ReadMeta("keys.meta", nullptr), 1U);
        EXPECT_TRUE(g_tblString == Numbered(names, 0x12000000, true));
        EXPECT_EQ(g_idxString, 0x12000000 + count);
    }
}

TEST_F(ManyKeys, OfANumberTableAreReadAsIfOneByOne) {
    Random random(1);
    WordList numbers(600'000);
    for (unsigned& number : numbers) number = random.Below(400'000) * 10'007;
    Write("keys.meta", Image({}, {Record(0x11000000, Joined(numbers))}));
    ASSERT_EQ(ReadMeta("keys.meta", nullptr), 1U);
    EXPECT_TRUE(g_tblDword == Numbered(numbers, 0x11000000, true));
    EXPECT_EQ(g_idxDword, 0x11000000 + 600'000U);
}

TEST_F(ManyKeys, OfAModelAreNumberedAsIfOneByOne) {
    const Texts texts = RandomNames(3000, std::string("ab\0\xFF", 4));
    std::string source = "[QUORZEK]\n";
    for (std::size_t i = 0; i < texts.size(); ++i) source += "VERSION=1\n";
    // Repeating a key is an error, but its entries stay.
    EXPECT_EQ(Check(source), 0U);
    const auto& entries = CGSQUORZEK::m_sHeader.at(0)->m_vpEntry;
    ASSERT_EQ(entries.size(), texts.size());
    // Only a damaged debug image brings NULs into a text.
    for (std::size_t i = 0; i < texts.size(); ++i) {
        *static_cast<std::string*>(entries[i]->m_ZekEntryData.GetData()) = texts[i];
    }
    g_tblString = {{texts[7], 0x12000000}, {texts[9] + "b", 0x12000001}};
    g_idxString = 0x12000002;
    ASSERT_EQ(gccOutput("keys.meta"), 1U);
    Texts expected = {texts[7], texts[9] + "b"};
    expected.insert(expected.end(), texts.begin(), texts.end());
    EXPECT_TRUE(g_tblString == Numbered(expected, 0x12000000, false));
}

}  // namespace zek::test
