#include "compile/image_bytes.h"
#include "compile/init_tables.h"
#include "model/section.h"

namespace zek::test {

namespace {

struct Row {
    std::string key;
    std::string value;
};

struct SetBytes {
    unsigned first;
    unsigned last;
    unsigned char value;
};

struct RowCase {
    const char* name;
    std::vector<Row> rows;
    std::vector<SetBytes> expected;
};

/// A section whose texts are stored without the checks, which would refuse some of the rows.
void AddTable(const std::vector<Row>& items) {
    CZEKSection* table = CZEKSection::Create("main.zek", "TABLE", 1);
    for (const Row& item : items) table->SetEntry("main.zek", item.key, item.value, 2);
    for (CZEKEntry* entry : table->m_vpEntry) {
        if (entry->m_vstrSubStr.empty()) continue;
        *static_cast<std::string*>(entry->m_ZekEntryData.GetData()) = entry->m_vstrSubStr[0];
    }
}

std::string Blocks() { return Dump({reinterpret_cast<const char*>(g_tblTableData.data()), g_tblTableData.size()}); }

}  // namespace

class TableRows : public ProcessTest, public testing::WithParamInterface<RowCase> {};

TEST_P(TableRows, SetTheirBytesInTheBlock) {
    // All bytes are 1 beforehand, so that a byte set to 0 shows too.
    AddTable({{"NAME", "First"}, {"0.255", "1"}});
    std::vector<Row> items = {{"NAME", "Second"}};
    items.insert(items.end(), GetParam().rows.begin(), GetParam().rows.end());
    AddTable(items);
    InitTableDataD();
    std::string expected(512, '\1');
    for (const SetBytes& set : GetParam().expected) {
        std::fill(expected.begin() + 256 + set.first, expected.begin() + 257 + set.last, static_cast<char>(set.value));
    }
    EXPECT_EQ(Blocks(), Dump(expected));
}

INSTANTIATE_TEST_SUITE_P(
    Row, TableRows,
    testing::Values(
        RowCase{"Number", {{"7", "9"}}, {{7, 7, 9}}}, RowCase{"Range", {{"16.31", "7"}}, {{16, 31, 7}}},
        RowCase{"Hexadecimal", {{"0x10.0x1f", "0x22"}}, {{16, 31, 0x22}}},
        RowCase{"WholeBlock", {{"0.255", "0"}}, {{0, 255, 0}}}, RowCase{"LastByte", {{"255", "5"}}, {{255, 255, 5}}},
        RowCase{"OneNumberRange", {{"4.4", "5"}}, {{4, 4, 5}}}, RowCase{"Falling", {{"40.20", "7"}}, {}},
        RowCase{"AboveTheBlock", {{"256", "7"}, {"300.400", "7"}}, {}},
        RowCase{"EndingAboveTheBlock", {{"250.300", "7"}}, {{250, 255, 7}}},
        RowCase{"EndingFarAboveTheBlock", {{"254.4294967295", "7"}}, {{254, 255, 7}}},
        RowCase{"KeyThatDoesNotConvert", {{"x", "7"}}, {{0, 0, 7}}},
        RowCase{"LowEndThatDoesNotConvert", {{"x.3", "7"}}, {{0, 3, 7}}},
        RowCase{"NoLowEnd", {{".3", "7"}}, {{0, 3, 7}}}, RowCase{"NoHighEnd", {{"3.", "7"}}, {}},
        RowCase{"NoEnds", {{".", "7"}}, {{0, 0, 7}}}, RowCase{"SplitAtTheFirstDot", {{"1.2.9", "7"}}, {{1, 2, 7}}},
        RowCase{"LowEightBitsOfTheValue", {{"3", "0x1fe"}, {"4", "-1"}}, {{3, 3, 0xfe}, {4, 4, 0xff}}},
        RowCase{"ValueThatDoesNotConvert", {{"3", "x"}}, {{3, 3, 0}}}, RowCase{"NoValue", {{"3", ""}}, {{3, 3, 0}}},
        RowCase{"LaterRowWins", {{"0.9", "2"}, {"5", "3"}, {"5.6", "4"}}, {{0, 9, 2}, {5, 6, 4}}}),
    RowName());

using TableBlocks = ProcessTest;

TEST_F(TableBlocks, InheritWhatTheTablesBeforeThemSet) {
    AddTable({{"NAME", "First"}, {"0", "1"}, {"1", "1"}});
    AddTable({{"NAME", "Second"}, {"1", "2"}});
    AddTable({{"NAME", "Third"}});
    InitTableDataD();
    std::string expected(768, '\0');
    for (std::size_t block : {0, 256, 512}) expected[block] = '\1';
    expected[1] = '\1';
    expected[257] = expected[513] = '\2';
    EXPECT_EQ(Blocks(), Dump(expected));
}

TEST_F(TableBlocks, OfATableWithoutANameAreLeftOutRowsIncluded) {
    AddTable({{"0", "1"}});
    AddTable({{"NAME", "Only"}, {"1", "2"}});
    InitTableDataD();
    std::string expected(256, '\0');
    expected[1] = '\2';
    EXPECT_EQ(Blocks(), Dump(expected));
    EXPECT_EQ(g_tblTableName, (std::map<std::string, unsigned>{{"Only", 0x1c000000}}));
}

TEST_F(TableBlocks, LeaveOutARowWithoutData) {
    AddTable({{"NAME", "First"}, {"0.2", "1"}});
    AddTable({{"NAME", "Second"}, {"0", "2"}, {"1", "2"}, {"2", "2"}});
    // A debug image can bring such a row.
    CZEKEntry* row = CGSTABLE::m_sHeader.at(1)->m_vpEntry.at(3);
    ASSERT_EQ(row->m_strName, "1");
    row->m_ZekEntryData.SetBuffer(ToVector(Word(0)));
    InitTableDataD();
    ASSERT_EQ(g_tblTableData.size(), 512U);
    EXPECT_EQ(g_tblTableData[256], 2);
    EXPECT_EQ(g_tblTableData[257], 1);
    EXPECT_EQ(g_tblTableData[258], 2);
}

TEST_F(TableBlocks, AreMadeAnewEveryTime) {
    AddTable({{"NAME", "T"}, {"0", "1"}});
    InitTableDataD();
    InitTableDataD();
    EXPECT_EQ(g_tblTableData.size(), 256U);
    EXPECT_EQ(g_idxTableName, 0x1c000001U);
    CZEKSection::Destory();
    InitTableDataD();
    EXPECT_TRUE(g_tblTableData.empty());
}

TEST_F(TableBlocks, OfTablesWithOneNameAreAppendedOnceEach) {
    AddTable({{"NAME", "T"}, {"0", "1"}});
    AddTable({{"NAME", "T"}, {"0", "2"}});
    InitTableDataD();
    EXPECT_EQ(g_tblTableData.size(), 512U);
    EXPECT_EQ(g_tblTableData[256], 2);
    EXPECT_EQ(g_idxTableName, 0x1c000001U);
}

}  // namespace zek::test
