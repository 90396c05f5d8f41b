// The table of keys, against a tree that keeps the first value of each key.
#include "model/key_table.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "yardstick/random.h"

namespace zek::test {

namespace {

/// Adds every key with its position as value, each known key a second time, and expects what a tree gives.
template <class Key, class Texts>
void ExpectFirsts(KeyTable<Key, std::size_t>& table, const Texts& keys, const Texts& absent) {
    std::map<Key, std::size_t> plain;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::size_t expected = plain.try_emplace(keys[i], i).first->second;
        ASSERT_EQ(table.Add(keys[i], i), expected) << keys[i];
    }
    for (const auto& [key, value] : plain) {
        const std::size_t* found = table.Find(key);
        ASSERT_NE(found, nullptr) << key;
        ASSERT_EQ(*found, value) << key;
    }
    for (const auto& key : absent) ASSERT_EQ(table.Find(key), nullptr) << key;
}

std::vector<std::string> Names(std::size_t count, const std::string& prefix, Random& random) {
    std::vector<std::string> names = {""};
    while (names.size() < count) names.push_back(prefix + std::to_string(random.Below(count)));
    return names;
}

}  // namespace

TEST(KeyTable, KeepsTheFirstValueOfAName) {
    Random random(1);
    KeyTable<std::string_view, std::size_t> table;
    for (std::size_t count : {1, 2, 3, 4, 5, 100, 3, 5000}) {
        for (bool roomMade : {true, false}) {
            SCOPED_TRACE(std::to_string(count) + (roomMade ? " with" : " without") + " room made");
            table.Restart(roomMade ? count : 0);
            const auto names = Names(count, "A_LONG_NAME_WHOSE_LAST_CHARACTERS_DIFFER_", random);
            ExpectFirsts(table, names, {"A_LONG_NAME_WHOSE_LAST_CHARACTERS_DIFFER_", "A", "#"});
        }
    }
}

TEST(KeyTable, KeepsTheFirstValueOfANumber) {
    Random random(2);
    for (unsigned stride : {1U, 2U, 7U, 8U, 256U, 4096U, 1U << 16, 1U << 20, 0xFFFFFFFFU}) {
        SCOPED_TRACE(stride);
        std::vector<unsigned> numbers;
        for (unsigned i = 0; i < 4000; ++i) numbers.push_back((i % 10 == 0 ? random.Below(4000) : i) * stride);
        KeyTable<unsigned, std::size_t> table;
        table.Reserve(random.Below(8000));
        ExpectFirsts(table, numbers, {0x80000001, 0x7FFFFFFE});
    }
}

TEST(KeyTable, GoesThroughItsKeysInTheOrderInWhichTheyWereAdded) {
    KeyTable<std::string_view, unsigned> table;
    for (unsigned round = 0; round < 2; ++round) {
        table.Restart(0);
        EXPECT_EQ(table.begin(), table.end());
        std::vector<std::pair<std::string, unsigned>> added;
        // Texts of every length, now and then one that is longer than all before it together.
        for (unsigned i = 0; i < 3000; ++i) {
            const std::size_t length = i % 500 == 499 ? std::size_t{1} << (i / 250 + 8) : i % 40;
            added.emplace_back(std::to_string(i) + std::string(length, 'x'), i);
            table.Add(added.back().first, i);
            table.Add(added[i / 2].first, i);
        }
        std::vector<std::pair<std::string, unsigned>> found;
        for (const auto& [key, value] : table) found.emplace_back(key, value);
        EXPECT_EQ(found, added);
    }
}

TEST(KeyTable, LetsItsValuesBeChanged) {
    KeyTable<unsigned, std::size_t> table;
    EXPECT_EQ(table.Find(5), nullptr) << "in an empty table";
    table.Add(5, 7) = 3;
    EXPECT_EQ(table.Add(5, 9), 3U);
    table.Restart(0);
    EXPECT_EQ(table.Find(5), nullptr);
    EXPECT_EQ(table.Add(5, 9), 9U);
}

}  // namespace zek::test
