#include <string>
#include <vector>

#include "support/process_test.h"

namespace zek::test {

using ValueFields = ProcessTest;
using ValueByField = ProcessTest;

namespace {

/// An entry of a name class whose words stand for their own positions; for values and globals word 0 is the type.
tagGCENTRY EntryOf(unsigned nameClass, unsigned type, unsigned words) {
    tagGCENTRY entry;
    entry.dwName = nameClass + 5;
    for (unsigned i = 0; i < words; ++i) entry.vdwValues.push_back(0x1d000000 + i);
    if (nameClass != 0x06000000 && words > 0) entry.vdwValues[0] = 0x1e000000 + type;
    return entry;
}

/// Every field code that selects a word of `entry`, with the word's position: "20000=1 ...". The others must fail with
/// code 3 and an empty result.
std::string FieldsOf(tagGCENTRY entry) {
    std::string text;
    char part[32];
    for (unsigned base = 0; base <= 0x1f0000; base += 0x10000) {
        for (unsigned k = 0; k < 10; ++k) {
            if (base + k == 0x10000 && entry.dwName >> 24 != 6) continue;
            gcSetLastError(77);
            const tagGCVALUE value = gcGetValueByID(&entry, base + k);
            if (gcGetLastError() == 3 && value.dwKind == 0 && value.dwID == 0xFFFFFFFF && value.qwNumber == 0) continue;
            EXPECT_EQ(gcGetLastError(), 0U);
            EXPECT_EQ(value.dwKind, 1U);
            // The type word is told from the others by its class.
            const bool isType = value.dwID >> 24 == 0x1e;
            const unsigned position = isType ? 0 : static_cast<unsigned>(value.qwNumber);
            EXPECT_EQ(value.dwID, entry.vdwValues[position]);
            std::snprintf(part, sizeof part, "%s%x=%u", text.empty() ? "" : " ", base + k, position);
            text += part;
        }
    }
    return text;
}

struct FieldRow {
    std::vector<unsigned> types;
    unsigned words;
    const char* fields;
};

const FieldRow kFields[] = {
    {{1}, 2, "20000=1"},
    {{2}, 4, "30000=1 40000=1 40001=2 40002=3"},
    {{2}, 6, "30000=1 40000=1 40001=2 40002=3 50000=3 50001=4 50002=5"},
    {{3}, 2, "60000=1 70000=1"},
    {{3}, 3, "60000=1 70000=1 70001=2"},
    {{3}, 4, "60000=1 70000=1 70001=2 70002=3"},
    {{3}, 5, "60000=1 70000=1 70001=2 70002=3 70003=4"},
    {{3}, 6, "60000=1 70000=1 70001=2 70002=3 70003=4 70004=5"},
    {{3}, 7, "60000=1 70000=1 70001=2 70002=3 70003=4 70004=5 70005=6"},
    {{4, 8, 12}, 5, "80000=1 90000=2 a0000=3 b0000=4"},
    {{4, 8, 12}, 6, "80000=1 90000=2 a0000=3 b0000=4"},
    {{4, 8, 12}, 7, "80000=1 90000=2 a0000=3 b0000=4"},
    {{5, 9, 11}, 6, "80000=1 90000=2 a0000=3 b0000=4 c0000=4 c0001=5"},
    {{5, 9, 11}, 7, "80000=1 90000=2 a0000=3 b0000=4 c0000=4 c0001=5 c0002=6"},
    {{6}, 3, "d0000=1 e0000=2 f0000=2"},
    {{6}, 4, "d0000=1 e0000=2 f0000=2 f0001=3"},
    {{6}, 5, "d0000=1 e0000=2 f0000=2 f0001=3 f0002=4"},
    {{6}, 6, "d0000=1 e0000=2 f0000=2 f0001=3 f0002=4 f0003=5"},
    {{6}, 7, "d0000=1 e0000=2 f0000=2 f0001=3 f0002=4 f0003=5 f0004=6"},
    {{7}, 1, "100000=0"},
    {{7}, 2, "100000=0 100001=1"},
    {{7}, 3, "100000=0 100001=1 100002=2"},
    {{7}, 4, "100000=0 100001=1 100002=2 100003=3"},
    {{7}, 5, "100000=0 100001=1 100002=2 100003=3 100004=4"},
    {{10}, 3, "120000=1 130000=2"},
    {{101}, 2, "140000=1"},
    {{102}, 3, "150000=1 170000=2 180000=2"},
    {{102}, 4, "150000=1 170000=2 180000=2 180001=3"},
    {{102}, 5, "150000=1 170000=2 180000=2 180001=3 180002=4"},
    {{102}, 6, "150000=1 170000=2 180000=2 180001=3 180002=4 180003=5"},
    {{102}, 7, "150000=1 170000=2 180000=2 180001=3 180002=4 180003=5 180004=6"},
    {{103}, 2, "190000=1"},
    {{104}, 2, "1a0000=1"},
};

/// The fields of a type with that many words; none for what has no row.
std::string ExpectedFields(unsigned type, unsigned words) {
    for (const FieldRow& row : kFields) {
        for (const unsigned own : row.types) {
            if (own == type && row.words == words) return row.fields;
        }
    }
    return "";
}

struct Answered {
    unsigned code;
    unsigned kind;
    unsigned id;
    bool operator==(const Answered&) const = default;
};

void PrintTo(const Answered& answered, std::ostream* out) {
    *out << "code " << answered.code << ", kind " << answered.kind << ", identifier " << std::hex << answered.id;
}

/// What a field gives. The words that resolve here are immediates, each the number in its low 24 bits.
Answered Ask(unsigned name, const std::vector<unsigned>& words, unsigned field) {
    tagGCENTRY entry{name, words};
    gcSetLastError(77);
    const tagGCVALUE value = gcGetValueByID(&entry, field);
    EXPECT_EQ(value.qwNumber, value.dwKind == 0 ? 0U : value.dwID & 0xFFFFFF);
    return {gcGetLastError(), value.dwKind, value.dwID};
}

constexpr unsigned kNobody = 0xFFFFFFFF;

}  // namespace

TEST_F(ValueFields, OfValuesAndGlobalsAreThoseOfTheTypeAndTheNumberOfWords) {
    std::vector<unsigned> types = {0xFFFFFF};
    for (unsigned type = 0; type <= 110; ++type) types.push_back(type);
    for (const unsigned type : types) {
        for (unsigned words = 1; words <= 7; ++words) {
            SCOPED_TRACE(std::to_string(type) + " with " + std::to_string(words) + " words");
            EXPECT_EQ(FieldsOf(EntryOf(0x05000000, type, words)), ExpectedFields(type, words));
            EXPECT_EQ(FieldsOf(EntryOf(0x04000000, type, words)), ExpectedFields(type, words));
        }
    }
}

TEST_F(ValueFields, OfRepeaterItemsAreTheNumberTheActionAndTheList) {
    EXPECT_EQ(FieldsOf(EntryOf(0x06000000, 0, 0)), "");
    EXPECT_EQ(FieldsOf(EntryOf(0x06000000, 0, 1)), "");
    EXPECT_EQ(FieldsOf(EntryOf(0x06000000, 0, 2)), "160000=0 170000=1 180000=1");
    EXPECT_EQ(FieldsOf(EntryOf(0x06000000, 0, 3)), "160000=0 170000=1 180000=1 180001=2");
    EXPECT_EQ(FieldsOf(EntryOf(0x06000000, 0, 5)), "160000=0 170000=1 180000=1 180001=2 180002=3 180003=4");
}

TEST_F(ValueFields, OfAListReachItsLastItemHoweverLongItIs) {
    for (const unsigned words : {3000U, 70000U}) {
        tagGCENTRY entry = EntryOf(0x05000000, 3, words);
        EXPECT_EQ(gcGetValueByID(&entry, 0x70000 + words - 2).qwNumber, words - 1);
        EXPECT_EQ(gcGetLastError(), 0U);
        gcGetValueByID(&entry, 0x70000 + words - 1);
        EXPECT_EQ(gcGetLastError(), 3U);
    }
    tagGCENTRY entry = EntryOf(0x06000000, 0, 70000);
    EXPECT_EQ(gcGetValueByID(&entry, 0x180000 + 69998).qwNumber, 69999U);
    gcGetValueByID(&entry, 0xFFFFFFFF);
    EXPECT_EQ(gcGetLastError(), 3U);
}

TEST_F(ValueByField, OfEveryValueGivesItsType) {
    for (const unsigned type : {0U, 1U, 2U, 7U, 50U, 104U, 0xFFFFFFU}) {
        SCOPED_TRACE(type);
        for (const unsigned name : {0x05000001U, 0x04000000U}) {
            EXPECT_EQ(Ask(name, {0x1e000000 + type}, 0x10000), (Answered{0, 1, 0x1e000000 + type}));
        }
    }
    EXPECT_EQ(Ask(0x06000000, {0x1e000001, 0x1e000001}, 0x10000), (Answered{3, 0, kNobody}))
        << "a repeater item has none";
}

TEST_F(ValueByField, OfANullEntryFails) {
    gcSetLastError(77);
    const tagGCVALUE value = gcGetValueByID(nullptr, 0x10000);
    EXPECT_EQ(gcGetLastError(), 2U);
    EXPECT_EQ(value.dwKind, 0U);
    EXPECT_EQ(value.dwID, kNobody);
    EXPECT_EQ(value.qwNumber, 0U);
}

TEST_F(ValueByField, OfAnEntryOfAnotherClassFails) {
    for (const unsigned name : {0U, 0x01000001U, 0x02000015U, 0x03000000U, 0x07000000U, 0x11000000U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(Ask(name, {0x1e000001, 0x1d000001}, 0x20000), (Answered{11, 0, kNobody}));
        EXPECT_EQ(Ask(name, {}, 0x20000), (Answered{11, 0, kNobody}));
    }
}

TEST_F(ValueByField, WithoutWordsFails) {
    EXPECT_EQ(Ask(0x05000000, {}, 0x10000), (Answered{3, 0, kNobody}));
    EXPECT_EQ(Ask(0x04000000, {}, 0x20000), (Answered{3, 0, kNobody}));
    EXPECT_EQ(Ask(0x06000000, {}, 0x160000), (Answered{3, 0, kNobody}));
}

TEST_F(ValueByField, WithATypeWordThatIsNoNumberFails) {
    for (const unsigned word : {0U, 0x11000000U, 0x12000000U, 0x05000000U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(word);
        EXPECT_EQ(Ask(0x05000000, {word, 0x1d000001}, 0x10000), (Answered{10, 0, kNobody}));
        EXPECT_EQ(Ask(0x05000000, {word, 0x1d000001}, 0x20000), (Answered{10, 0, kNobody}));
    }
}

TEST_F(ValueByField, TakesAnyNumberForTheType) {
    EXPECT_EQ(Ask(0x05000000, {0x1f000001, 0x1d000007}, 0x20000), (Answered{0, 1, 0x1d000007}));
}

TEST_F(ValueByField, OfAnUnresolvedWordFails) {
    EXPECT_EQ(Ask(0x05000000, {0x1e000001, 0xFFFFFFFF}, 0x20000), (Answered{3, 0, kNobody}));
    EXPECT_EQ(Ask(0x06000000, {0xFFFFFFFF, 0x1d000001}, 0x160000), (Answered{3, 0, kNobody}));
}

TEST_F(ValueByField, OfAWordThatResolvesToNothingGivesTheWord) {
    for (const unsigned word : {0U, 0x04000000U, 0x11000000U, 0x1b000000U, 0xFFFFFFFEU}) {
        SCOPED_TRACE(word);
        EXPECT_EQ(Ask(0x05000000, {0x1e000001, word}, 0x20000), (Answered{10, 0, word}));
        EXPECT_EQ(Ask(0x06000000, {word, word}, 0x170000), (Answered{10, 0, word}));
    }
}

}  // namespace zek::test
