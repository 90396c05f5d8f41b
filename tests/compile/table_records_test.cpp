#include <algorithm>

#include "compile/image_bytes.h"

namespace zek::test {

using TableRecord = ProcessTest;

namespace {

template <class Key>
std::string Written(std::map<Key, unsigned> table, unsigned counter) {
    std::ofstream out("record", std::ios::binary);
    WriteTbl(out, table, counter);
    out.close();
    std::ifstream in("record", std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// A file of these bytes, open at its start.
class Stream : public std::ifstream {
public:
    explicit Stream(std::string_view bytes) {
        std::ofstream("stream", std::ios::binary) << bytes;
        open("stream", std::ios::binary);
    }
};

/// Reads a record, tag first. Gives the stream's position behind it, or -1 when the read failed.
long TakeRecord(std::string_view bytes) {
    Stream in(bytes);
    ReadTbl(in);
    return in ? static_cast<long>(in.tellg()) : -1;
}

std::string Hex(std::string_view digits) { return Dump(FromHex(digits)); }

}  // namespace

TEST_F(TableRecord, HoldsNamesInTheOrderOfTheirIdentifiers) {
    EXPECT_EQ(Dump(Written<std::string>({{"a", 0x03000001}, {"", 0x03000002}, {"bc", 0x03000000}}, 0x03000003)),
              Hex("00 00 00 03  06 00 00 00  62 63 00  61 00  00"));
}

TEST_F(TableRecord, HoldsNumbersInTheOrderOfTheirIdentifiers) {
    EXPECT_EQ(Dump(Written<unsigned>({{1, 0x11000001}, {0x12345678, 0x11000000}}, 0x11000002)),
              Hex("00 00 00 11  08 00 00 00  78 56 34 12  01 00 00 00"));
}

TEST_F(TableRecord, OfACounterAtItsClassWordIsTheTagAndALengthOfZero) {
    EXPECT_EQ(Dump(Written<std::string>({}, 0x1a000000)), Hex("00 00 00 1a  00 00 00 00"));
    EXPECT_EQ(Dump(Written<unsigned>({}, 0x11000000)), Hex("00 00 00 11  00 00 00 00"));
    EXPECT_EQ(Dump(Written<std::string>({{"unnumbered", 0}}, 0x1a000000)), Hex("00 00 00 1a  00 00 00 00"));
}

TEST_F(TableRecord, FillsTheHolesOfASteppedTableWithoutCountingThem) {
    EXPECT_EQ(Dump(Written<std::string>({{"a", 0x06000000}, {"b", 0x06000002}}, 0x06000004)),
              Hex("00 00 00 06  04 00 00 00  61 00  00  62 00  00"));
    EXPECT_EQ(Dump(Written<unsigned>({{5, 0x11000000}, {6, 0x11000002}}, 0x11000003)),
              Hex("00 00 00 11  08 00 00 00  05 00 00 00  ff ff ff ff  06 00 00 00"));
}

TEST_F(TableRecord, CountsUnnumberedNamesInItsLengthWithoutHoldingThem) {
    EXPECT_EQ(Dump(Written<std::string>({{"a", 0x04000000}, {"lost", 0}}, 0x04000001)),
              Hex("00 00 00 04  07 00 00 00  61 00"));
}

TEST_F(TableRecord, TagIsTheClassOfTheCounterWhateverTheTableIs) {
    EXPECT_EQ(Dump(Written<std::string>({{"a", 0x2b000000}}, 0x2b000001)), Hex("00 00 00 2b  02 00 00 00  61 00"));
}

TEST_F(TableRecord, IsReadIntoTheTableThatItsTagNames) {
    const struct {
        unsigned tag;
        std::map<std::string, unsigned>& table;
        unsigned& counter;
    } rows[] = {{0x03000000, g_tblProperty, g_idxProperty}, {0x04000000, g_tblGlobal, g_idxGlobal},
                {0x05000000, g_tblValue, g_idxValue},       {0x06000000, g_tblRepeater, g_idxRepeater},
                {0x12000000, g_tblString, g_idxString},     {0x18000000, g_tblGroup, g_idxGroup},
                {0x1a000000, g_tblAction, g_idxAction},     {0x1c000000, g_tblTableName, g_idxTableName}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.tag);
        row.table["before"] = row.tag;
        row.counter = row.tag + 77;
        EXPECT_EQ(TakeRecord(Record(row.tag, Names({"z", "", "a"})) + "what follows"), 13);
        const std::map<std::string, unsigned> expected = {{"z", row.tag}, {"", row.tag + 1}, {"a", row.tag + 2}};
        EXPECT_EQ(row.table, expected);
        EXPECT_EQ(row.counter, row.tag + 3);
    }
    g_tblDword[99] = 0x11000000;
    g_idxDword = 0x11000055;
    EXPECT_EQ(TakeRecord(Record(0x11000000, Joined({3, 0}))), 16);
    EXPECT_EQ(g_tblDword, (std::map<unsigned, unsigned>{{3, 0x11000000}, {0, 0x11000001}}));
    EXPECT_EQ(g_idxDword, 0x11000002U);
    g_tblTableData.assign(1000, 1);
    EXPECT_EQ(TakeRecord(Record(0x1b000000, "odd")), 11);
    EXPECT_EQ(g_tblTableData, (std::vector<unsigned char>{'o', 'd', 'd'}));
}

TEST_F(TableRecord, OfTheSameSizeIsSeenByTheNextLookUp) {
    // So many keys that a look-up keeps an index.
    constexpr unsigned kCount = 100;
    std::vector<std::string> names;
    std::vector<unsigned> numbers;
    for (unsigned i = 0; i < kCount; ++i) {
        names.push_back(std::to_string(i));
        numbers.push_back(i);
    }
    for (unsigned turn = 0; turn < 3; ++turn) {
        TakeRecord(Record(0x12000000, Names(names)));
        for (unsigned i = 0; i < kCount; ++i) EXPECT_STREQ(GetTblData(0x12000000 + i).pszName, names[i].c_str());
        std::rotate(names.begin(), names.begin() + 1, names.end());
    }
    for (unsigned turn = 0; turn < 3; ++turn) {
        TakeRecord(Record(0x11000000, Joined(numbers)));
        for (unsigned i = 0; i < kCount; ++i) EXPECT_EQ(GetTblData(0x11000000 + i).qwNumber, numbers[i]);
        std::rotate(numbers.begin(), numbers.begin() + 1, numbers.end());
    }
}

TEST_F(TableRecord, OfLengthZeroEmptiesItsTable) {
    g_tblRepeater["before"] = 0x06000000;
    g_idxRepeater = 0x06000001;
    EXPECT_EQ(TakeRecord(Record(0x06000000, "")), 8);
    EXPECT_TRUE(g_tblRepeater.empty());
    EXPECT_EQ(g_idxRepeater, 0x06000000U);
    g_tblTableData.assign(256, 1);
    EXPECT_EQ(TakeRecord(Record(0x1b000000, "")), 8);
    EXPECT_TRUE(g_tblTableData.empty());
}

TEST_F(TableRecord, BehindAnUnknownTagIsNotRead) {
    for (const unsigned tag : {0U, 0x02000000U, 0x03000001U, 0x1d000000U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(tag);
        EXPECT_EQ(TakeRecord(Record(tag, "abc")), 4);
    }
    EXPECT_TRUE(g_tblProperty.empty());
}

TEST_F(TableRecord, RepeatedKeysKeepTheirFirstIdentifierAndStillAdvanceTheCounter) {
    TakeRecord(Record(0x11000000, Joined({7, 8, 7, 9})));
    EXPECT_EQ(g_tblDword, (std::map<unsigned, unsigned>{{7, 0x11000000}, {8, 0x11000001}, {9, 0x11000003}}));
    EXPECT_EQ(g_idxDword, 0x11000004U);
    TakeRecord(Record(0x12000000, Names({"a", "a", "b"})));
    EXPECT_EQ(g_tblString, (std::map<std::string, unsigned>{{"a", 0x12000000}, {"b", 0x12000002}}));
    EXPECT_EQ(g_idxString, 0x12000003U);
}

TEST_F(TableRecord, OddBytesOfANumberTableAreIgnored) {
    EXPECT_EQ(TakeRecord(Record(0x11000000, Joined({7}) + "xyz")), 15);
    EXPECT_EQ(g_tblDword, (std::map<unsigned, unsigned>{{7, 0x11000000}}));
    EXPECT_EQ(g_idxDword, 0x11000001U);
}

TEST_F(TableRecord, LastNameWithoutItsNulEndsWithTheBody) {
    EXPECT_EQ(TakeRecord(Record(0x12000000, Names({"a"}) + "bc") + "de"), 12);
    EXPECT_EQ(g_tblString, (std::map<std::string, unsigned>{{"a", 0x12000000}, {"bc", 0x12000001}}));
    EXPECT_EQ(g_idxString, 0x12000002U);
}

TEST_F(TableRecord, SurplusLengthTakesTheZerosBehindItAsEmptyNames) {
    EXPECT_EQ(TakeRecord(Joined({0x12000000, 5}) + Names({"a"}) + std::string(8, '\0')), 13);
    EXPECT_EQ(g_tblString, (std::map<std::string, unsigned>{{"a", 0x12000000}, {"", 0x12000001}}));
    EXPECT_EQ(g_idxString, 0x12000004U);
}

TEST_F(TableRecord, BodyNumbersFromTheGivenCounterInTheGivenStep) {
    std::map<std::string, unsigned> names = {{"before", 1}};
    unsigned counter = 0x70000005;
    Stream nameBody(Word(4) + Names({"a", "b"}));
    ReadTbl(nameBody, names, counter, 3);
    EXPECT_EQ(names, (std::map<std::string, unsigned>{{"a", 0x70000005}, {"b", 0x70000008}}));
    EXPECT_EQ(counter, 0x7000000bU);

    std::map<unsigned, unsigned> numbers = {{1, 1}};
    Stream numberBody(Word(8) + Joined({20, 10}));
    ReadTbl(numberBody, numbers, counter, 2);
    EXPECT_EQ(numbers, (std::map<unsigned, unsigned>{{20, 0x7000000b}, {10, 0x7000000d}}));
    EXPECT_EQ(counter, 0x7000000fU);
}

TEST_F(TableRecord, CutNameTableGivesTheNamesThatAreThere) {
    EXPECT_EQ(TakeRecord(Joined({0x12000000, 0xFFFFFFFF}) + Names({"a"}) + "b"), 11);
    EXPECT_EQ(g_tblString, (std::map<std::string, unsigned>{{"a", 0x12000000}, {"b", 0x12000001}}));
}

TEST_F(TableRecord, CutElsewhereFailsTheStream) {
    g_tblDword[1] = 0x11000000;
    EXPECT_EQ(TakeRecord(Joined({0x11000000, 8}) + "1234567"), -1);
    EXPECT_TRUE(g_tblDword.empty());
    g_tblTableData.assign(256, 1);
    EXPECT_EQ(TakeRecord(Joined({0x1b000000, 0xFFFFFFFF}) + "1234567"), -1);
    EXPECT_EQ(g_tblTableData.size(), 256U) << "table data is replaced whole or not at all";
    EXPECT_EQ(TakeRecord(Word(0x12000000) + "123"), -1);
    EXPECT_EQ(TakeRecord("123"), -1);
    EXPECT_EQ(TakeRecord(""), -1);
    std::map<std::string, unsigned> names = {{"before", 1}};
    unsigned counter = 5;
    Stream body("12");
    ReadTbl(body, names, counter, 1);
    EXPECT_FALSE(body);
    EXPECT_TRUE(names.empty());
    EXPECT_EQ(counter, 5U);
}

}  // namespace zek::test
