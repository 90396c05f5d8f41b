#include "compile/tables.h"

#include <unistd.h>

#include "compile/compile.h"
#include "model/type_ids.h"
#include "support/process_test.h"
#include "support/resources.h"

namespace zek::test {

using Insertion = ProcessTest;
using ReverseLookUp = ProcessTest;
using Identifier = ProcessTest;

namespace {

using OwnNames = std::map<std::string, unsigned>;
using OwnNumbers = std::map<unsigned, unsigned>;

/// Both overloads number alike; `late` sorts behind `early`.
template <class Key>
void ExpectNumbering(const Key& late, const Key& early, const Key& unnumbered) {
    std::map<Key, unsigned> table;
    unsigned counter = 0x2a000010;
    EXPECT_EQ(InsertTbl(table, counter, late, 3), 0x2a000010U);
    EXPECT_EQ(InsertTbl(table, counter, early, 3), 0x2a000013U);
    EXPECT_EQ(InsertTbl(table, counter, late, 3), 0x2a000010U) << "a numbered key keeps its identifier";
    EXPECT_EQ(counter, 0x2a000016U);
    table[unnumbered] = 0;
    EXPECT_EQ(InsertTbl(table, counter, unnumbered, 1), 0x2a000016U) << "a key with 0 is numbered now";
    EXPECT_EQ(counter, 0x2a000017U);
    const std::map<Key, unsigned> expected = {{late, 0x2a000010}, {early, 0x2a000013}, {unnumbered, 0x2a000016}};
    EXPECT_EQ(table, expected);
}

std::string NameIn(OwnNames& table, unsigned id) {
    const char* name = GetTblData(table, id);
    return name ? name : "(null)";
}

struct NamedClass {
    unsigned classWord;
    OwnNames& table;
    unsigned& counter;
};

std::vector<NamedClass> NamedClasses() {
    return {{0x03000000, g_tblProperty, g_idxProperty}, {0x04000000, g_tblGlobal, g_idxGlobal},
            {0x05000000, g_tblValue, g_idxValue},       {0x06000000, g_tblRepeater, g_idxRepeater},
            {0x12000000, g_tblString, g_idxString},     {0x18000000, g_tblGroup, g_idxGroup},
            {0x1a000000, g_tblAction, g_idxAction},     {0x1c000000, g_tblTableName, g_idxTableName}};
}

/// So many that the table is not walked.
void InsertMany(OwnNames& table, unsigned& counter) {
    for (int i = 0; i < 100; ++i) InsertTbl(table, counter, "name " + std::to_string(i), 1);
}

void InsertMany(OwnNumbers& table, unsigned& counter) {
    for (unsigned i = 0; i < 100; ++i) InsertTbl(table, counter, i, 1);
}

/// Looks up each identifier of a table and a few beyond, and expects what a walk of the map finds.
void ExpectAllAsInTheMaps() {
    for (const NamedClass& row : NamedClasses()) {
        for (unsigned id = row.classWord; id < row.counter + 5; ++id) {
            SCOPED_TRACE(id);
            const tagGCVALUE value = GetTblData(id);
            EXPECT_STREQ(value.dwKind == 2 ? value.pszName : nullptr, GetTblData(row.table, id));
        }
    }
    for (unsigned id = 0x11000000; id < g_idxDword + 5; ++id) {
        SCOPED_TRACE(id);
        const tagGCVALUE value = GetTblData(id);
        EXPECT_EQ(value.dwKind == 1 ? value.qwNumber : 0xFFFFFFFF, GetTblData(g_tblDword, id));
    }
}

void ExpectNothing(unsigned id) {
    SCOPED_TRACE(id);
    const tagGCVALUE value = GetTblData(id);
    EXPECT_EQ(value.dwKind, 0U);
    EXPECT_EQ(value.dwID, id);
    EXPECT_EQ(value.qwNumber, 0U);
}

void ExpectNumber(unsigned id, unsigned number) {
    SCOPED_TRACE(id);
    const tagGCVALUE value = GetTblData(id);
    EXPECT_EQ(value.dwKind, 1U);
    EXPECT_EQ(value.dwID, id);
    EXPECT_EQ(value.qwNumber, number);
}

}  // namespace

TEST_F(Insertion, NumbersNamesInTheOrderOfTheirFirstInsertion) { ExpectNumbering<std::string>("b", "a", ""); }

TEST_F(Insertion, NumbersNumbersInTheOrderOfTheirFirstInsertion) { ExpectNumbering<unsigned>(0xFFFFFFFF, 0, 7); }

TEST_F(Insertion, TablesAndCountersBeginEmptyAtTheirClassWord) {
    for (const NamedClass& row : NamedClasses()) {
        EXPECT_EQ(row.counter, row.classWord);
        EXPECT_TRUE(row.table.empty());
    }
    EXPECT_EQ(g_idxDword, 0x11000000U);
    EXPECT_TRUE(g_tblDword.empty());
    EXPECT_TRUE(g_tblTableData.empty());
}

TEST_F(ReverseLookUp, InAHostsOwnMapFindsTheFirstKeyInKeyOrder) {
    OwnNames names = {{"a", 9}, {"b", 5}, {"c", 5}, {"unnumbered", 0}};
    EXPECT_EQ(NameIn(names, 5), "b");
    EXPECT_EQ(NameIn(names, 9), "a");
    EXPECT_EQ(NameIn(names, 0), "unnumbered");
    EXPECT_EQ(NameIn(names, 6), "(null)");
    names["B"] = 5;
    EXPECT_EQ(NameIn(names, 5), "B");
    EXPECT_EQ(GetTblData(names, 5), names.find("B")->first.c_str()) << "the text is the table's own";

    OwnNumbers numbers = {{40, 9}, {7, 5}, {8, 5}, {0xFFFFFFFF, 1}};
    EXPECT_EQ(GetTblData(numbers, 5), 7U);
    EXPECT_EQ(GetTblData(numbers, 9), 40U);
    EXPECT_EQ(GetTblData(numbers, 1), 0xFFFFFFFFU);
    EXPECT_EQ(GetTblData(numbers, 6), 0xFFFFFFFFU);
}

TEST_F(ReverseLookUp, FindsWhatWasInsertedAfterAnEarlierLookUp) {
    EXPECT_EQ(NameIn(g_tblString, 0x12000000), "(null)");
    InsertTbl(g_tblString, g_idxString, "late", 1);
    EXPECT_EQ(NameIn(g_tblString, 0x12000000), "late");
    g_tblString["none"];
    EXPECT_EQ(NameIn(g_tblString, 0), "none");
    InsertTbl(g_tblString, g_idxString, "none", 1);
    EXPECT_EQ(NameIn(g_tblString, 0x12000001), "none") << "numbered without a change of the map's size";
    EXPECT_EQ(NameIn(g_tblString, 0), "(null)");
}

TEST_F(ReverseLookUp, FindsWhatAHostPutsIntoOrTakesOutOfTheMapItself) {
    InsertTbl(g_tblGlobal, g_idxGlobal, "b", 1);
    EXPECT_EQ(NameIn(g_tblGlobal, 0x04000000), "b");
    g_tblGlobal["far"] = 0x04000100;
    g_tblGlobal["foreign"] = 7;
    g_tblGlobal["a"] = 0x04000000;
    EXPECT_EQ(NameIn(g_tblGlobal, 0x04000100), "far") << "beyond the counter";
    EXPECT_EQ(NameIn(g_tblGlobal, 7), "foreign") << "of no class of ours";
    EXPECT_EQ(NameIn(g_tblGlobal, 0x04000000), "a") << "the first of two in key order";
    g_tblGlobal.erase("a");
    g_tblGlobal.erase("b");
    EXPECT_EQ(NameIn(g_tblGlobal, 0x04000000), "(null)") << "a hole";

    g_tblDword[12] = 0x11000005;
    EXPECT_EQ(GetTblData(g_tblDword, 0x11000005), 12U);
    EXPECT_EQ(GetTblData(g_tblDword, 0x11000004), 0xFFFFFFFFU);
}

TEST_F(ReverseLookUp, FindsWhatAStepLeavesBetweenItsHoles) {
    InsertTbl(g_tblAction, g_idxAction, "first", 2);
    InsertTbl(g_tblAction, g_idxAction, "second", 2);
    EXPECT_EQ(NameIn(g_tblAction, 0x1a000001), "(null)");
    EXPECT_EQ(NameIn(g_tblAction, 0x1a000002), "second");
    EXPECT_EQ(NameIn(g_tblAction, 0x1a000003), "(null)");
}

TEST_F(Identifier, OfANameClassStandsForTheNameOfItsTable) {
    for (const NamedClass& row : NamedClasses()) {
        SCOPED_TRACE(row.classWord);
        ExpectNothing(row.classWord);
        const std::string name = "name of " + std::to_string(row.classWord);
        InsertTbl(row.table, row.counter, "before", 1);
        InsertTbl(row.table, row.counter, name, 1);
        const tagGCVALUE value = GetTblData(row.classWord + 1);
        EXPECT_EQ(value.dwKind, 2U);
        EXPECT_EQ(value.dwID, row.classWord + 1);
        ASSERT_NE(value.pszName, nullptr);
        EXPECT_EQ(value.pszName, name);
        ExpectNothing(row.classWord + 2);
    }
}

TEST_F(Identifier, OfALargeTableFollowsWhatTheTableBecomes) {
    for (int i = 0; i < 1000; ++i) InsertTbl(g_tblString, g_idxString, "name " + std::to_string(i), 1);
    EXPECT_STREQ(GetTblData(0x12000000 + 999).pszName, "name 999");
    EXPECT_EQ(GetTblData(0x12000000 + 1000).dwKind, 0U);
    InsertTbl(g_tblString, g_idxString, "late", 1);
    EXPECT_STREQ(GetTblData(0x12000000 + 1000).pszName, "late");
    g_tblString["unnumbered"];
    EXPECT_EQ(GetTblData(0x12000000 + 1001).dwKind, 0U);
    InsertTbl(g_tblString, g_idxString, "unnumbered", 1);
    EXPECT_STREQ(GetTblData(0x12000000 + 1001).pszName, "unnumbered") << "numbered without a change of the size";
    g_tblString["far"] = 0x12FFFFFF;
    EXPECT_STREQ(GetTblData(0x12FFFFFF).pszName, "far") << "behind a gap";
    g_tblString["a"] = 0x12000005;
    EXPECT_STREQ(GetTblData(0x12000005).pszName, "a") << "the first of two in key order";
    g_tblString.erase("name 7");
    EXPECT_EQ(GetTblData(0x12000007).dwKind, 0U) << "a hole";
}

TEST_F(Identifier, OfALargeTableGivesTextsThatOutliveTheKeysAndTheNextNumbering) {
    for (int i = 0; i < 1000; ++i) InsertTbl(g_tblString, g_idxString, "name " + std::to_string(i), 1);
    const char* kept = GetTblData(0x12000000 + 7).pszName;
    g_tblString["far"] = 0x12FFFFFF;
    const char* stray = GetTblData(0x12FFFFFF).pszName;
    EXPECT_EQ(GetTblData(0x12000000 + 7).pszName, kept) << "read anew, the text stays where it is";
    g_tblString.erase("name 7");
    g_tblString["another"] = 0x12000007;
    EXPECT_STREQ(GetTblData(0x12000000 + 7).pszName, "name 7") << "the size is the same";
    InsertTbl(g_tblString, g_idxString, "one more", 1);
    EXPECT_STREQ(GetTblData(0x12000000 + 7).pszName, "another");
    EXPECT_EQ(GetTblData(0x12FFFFFF).pszName, stray);
    EXPECT_STREQ(kept, "name 7");
}

TEST_F(Identifier, OfALargeTableFollowsWhatIsInsertedOneByOne) {
    std::vector<NamedClass> classes = NamedClasses();
    for (const NamedClass& row : classes) InsertMany(row.table, row.counter);
    InsertMany(g_tblDword, g_idxDword);
    ExpectAllAsInTheMaps();
    const tagGCVALUE kept = GetTblData(0x12000007);
    for (unsigned i = 0; i < 20; ++i) {
        SCOPED_TRACE(i);
        for (const NamedClass& row : classes) InsertTbl(row.table, row.counter, "later " + std::to_string(i), 1);
        InsertTbl(g_tblDword, g_idxDword, i == 10 ? 0xFFFFFFFF : 5000 - i, 1);
        EXPECT_EQ(GetTblData(0x12000007).pszName, kept.pszName) << "the text stays where it is";
        ExpectAllAsInTheMaps();
    }
}

TEST_F(Identifier, OfALargeTableFollowsWhatIsInsertedWithAGapOrTwice) {
    InsertMany(g_tblValue, g_idxValue);
    InsertMany(g_tblDword, g_idxDword);
    ExpectAllAsInTheMaps();
    const auto insert = [](const char* name, unsigned number, unsigned step) {
        SCOPED_TRACE(name);
        InsertTbl(g_tblValue, g_idxValue, name, step);
        InsertTbl(g_tblDword, g_idxDword, number, step);
        ExpectAllAsInTheMaps();
    };
    insert("m", 9001, 0);
    insert("a, which comes before it", 8001, 0);
    insert("z, which comes behind it", 9002, 3);
    insert("behind a gap", 9003, 1);
    insert("behind it", 9004, 1);
    g_tblValue["unnumbered"];
    g_tblDword[9005];
    ExpectAllAsInTheMaps();
    insert("next", 9006, 1);
    insert("unnumbered", 9005, 1);
    InsertTbl(g_tblValue, g_idxValue, std::string("with\0NUL", 8), 1);
    EXPECT_STREQ(GetTblData(g_idxValue - 1).pszName, "with");
    EXPECT_STREQ(GetTblData(g_idxValue - 1).pszName, "with");
}

TEST_F(Identifier, OfALargeTableFollowsAHostOnceAKeyIsInserted) {
    InsertMany(g_tblString, g_idxString);
    InsertMany(g_tblDword, g_idxDword);
    ExpectAllAsInTheMaps();
    // One for another, so that the sizes stay.
    g_tblString.erase("name 7");
    g_tblString["another"] = 0x12000007;
    g_tblString.erase("name 8");
    g_tblString["elsewhere"] = 0x12000900;
    g_tblDword.erase(9);
    g_tblDword[9009] = 0x11000009;
    InsertTbl(g_tblString, g_idxString, "one more", 1);
    InsertTbl(g_tblDword, g_idxDword, 7777, 1);
    EXPECT_STREQ(GetTblData(0x12000900).pszName, "elsewhere");
    EXPECT_EQ(GetTblData(0x11000009).qwNumber, 9009U);
    ExpectAllAsInTheMaps();
}

TEST_F(Identifier, OfALargeTableFollowsAHostThatGivesItTwiceOnceAKeyIsInserted) {
    InsertMany(g_tblString, g_idxString);
    InsertMany(g_tblDword, g_idxDword);
    ExpectAllAsInTheMaps();
    g_tblString.erase("name 99");
    g_tblString["a, which comes before it"] = 0x12000005;
    g_tblDword.erase(99);
    g_tblDword[4] = 0x11000005;
    InsertTbl(g_tblString, g_idxString, "one more", 1);
    InsertTbl(g_tblDword, g_idxDword, 7777, 1);
    EXPECT_STREQ(GetTblData(0x12000005).pszName, "a, which comes before it");
    EXPECT_EQ(GetTblData(0x11000005).qwNumber, 4U);
    ExpectAllAsInTheMaps();
}

TEST_F(Identifier, OfALargeTableFollowsALookUpThatAddsAKeyBesideAHost) {
    struct Change {
        const char* erased;
        unsigned id;
        bool isErasedFirst;
    };
    InsertMany(g_tblProperty, g_idxProperty);
    for (const Change& row : {Change{"name 5", 0x03000005, true}, Change{"name 6", 0x03000006, false}}) {
        SCOPED_TRACE(row.erased);
        EXPECT_STREQ(GetTblData(row.id).pszName, row.erased);
        if (row.isErasedFirst) g_tblProperty.erase(row.erased);
        EXPECT_EQ(GetEntryName(kPrefixP, "P_new beside " + std::string(row.erased)), 0U);
        if (!row.isErasedFirst) g_tblProperty.erase(row.erased);
        EXPECT_EQ(g_tblProperty.size(), 100U) << "the size is the same";
        ExpectNothing(row.id);
        ExpectAllAsInTheMaps();
    }
}

TEST_F(Identifier, IsLookedUpInNoTimeWhileManyAreInserted) {
    constexpr unsigned kKeys = 50'000;
    InChild([] {
        // Reading a table for every key that is inserted would take minutes.
        alarm(20);
        for (unsigned i = 0; i < kKeys; ++i) {
            InsertTbl(g_tblString, g_idxString, std::to_string(i), 1);
            InsertTbl(g_tblDword, g_idxDword, i, 1);
            ASSERT_EQ(GetTblData(0x12000000 + i / 2).pszName, std::to_string(i / 2));
            ASSERT_EQ(GetTblData(0x11000000 + i / 2).qwNumber, i / 2);
        }
    });
}

TEST_F(Identifier, OfATableThatAHostEmptiesAndFillsAgainTakesNoMoreMemory) {
    constexpr unsigned kKeys = 2000;
    std::size_t heap = 0;
    for (unsigned round = 0; round < 60; ++round) {
        g_tblString.clear();
        g_idxString = 0x12000000;
        const std::string name = "a name of round " + std::to_string(round) + ", number ";
        for (unsigned i = 0; i < kKeys; ++i) InsertTbl(g_tblString, g_idxString, name + std::to_string(i), 1);
        ASSERT_EQ(GetTblData(0x12000007).pszName, name + "7");
        ASSERT_EQ(GetTblData(0x12000000 + kKeys - 1).pszName, name + std::to_string(kKeys - 1));
        if (round == 9) heap = HeapInUse();
    }
    // Copies of all those names would take 3 million bytes more.
    EXPECT_LE(HeapInUse(), heap + 500'000);
}

TEST_F(Identifier, OfASmallTableFollowsEveryChangeOfAHost) {
    g_tblString["abc"] = 0x12000000;
    EXPECT_STREQ(GetTblData(0x12000000).pszName, "abc");
    g_tblString["abc"] = 0x12000007;
    EXPECT_EQ(GetTblData(0x12000000).dwKind, 0U);
    EXPECT_STREQ(GetTblData(0x12000007).pszName, "abc");
    g_tblString.clear();
    g_tblString["def"] = 0x12000007;
    EXPECT_STREQ(GetTblData(0x12000007).pszName, "def");
}

TEST_F(Identifier, OfTheNumberClassStandsForANumberThatIsNotAllOnes) {
    InsertTbl(g_tblDword, g_idxDword, 0, 1);
    InsertTbl(g_tblDword, g_idxDword, 0xFFFFFFFE, 1);
    InsertTbl(g_tblDword, g_idxDword, 0xFFFFFFFF, 1);
    ExpectNumber(0x11000000, 0);
    ExpectNumber(0x11000001, 0xFFFFFFFE);
    ExpectNothing(0x11000002);
    ExpectNothing(0x11000003);
}

TEST_F(Identifier, OfAnArgumentAValueTypeOrAnOperatorIsANumberByItself) {
    ExpectNumber(0x1d000000, 0);
    ExpectNumber(0x1dffffff, 0xffffff);
    ExpectNumber(0x1e000068, 104);
    ExpectNumber(0x1f000005, 5);
}

TEST_F(Identifier, OfAnyOtherClassStandsForNothing) {
    g_tblTableData.resize(256);
    g_tblProperty["unnumbered"];
    g_tblProperty["foreign"] = 0x07000000;
    for (unsigned id : {0U, 1U, 0x01000004U, 0x02000015U, 0x07000000U, 0x10000000U, 0x13000000U, 0x19000000U,
                        0x1b000000U, 0x20000000U, 0x83000000U, 0xFFFFFFFFU}) {
        ExpectNothing(id);
    }
}

}  // namespace zek::test
