#include "model/entry.h"

#include <typeinfo>

#include "model/section.h"
#include "support/process_test.h"

namespace zek::test {

namespace {

using Pieces = std::vector<std::string>;

/// What a value is cut into.
Pieces PiecesOf(const std::string& value) {
    CGESTRING entry(0x10020013, tagNOTATION{2});
    entry.Init("main.zek", "KEY", value, 1);
    return entry.m_vstrSubStr;
}

template <class Kind>
void ExpectMade(unsigned type, bool data) {
    SCOPED_TRACE(type);
    Kind entry(type, static_cast<tagNOTATION>(46));
    EXPECT_EQ(entry.m_dwType, type);
    EXPECT_EQ(entry.m_eNotation, 46U);
    EXPECT_EQ(entry.m_dwLine, 0U);
    EXPECT_EQ(entry.m_strName, "");
    EXPECT_EQ(entry.m_dwFile, 0U);
    EXPECT_EQ(entry.m_ZekEntryData.GetType(), 0U);
    EXPECT_EQ(entry.m_ZekEntryData.GetData(), nullptr);
    EXPECT_EQ(entry.m_vstrSubStr, Pieces());

    CZEKObj other;
    other.SetFile("first.zek");
    entry.Init("dir\\main.zek", "Key x", "a,b", 17);
    EXPECT_EQ(entry.m_dwType, type);
    EXPECT_EQ(entry.m_eNotation, 46U);
    EXPECT_EQ(entry.m_dwLine, 17U);
    EXPECT_EQ(entry.m_strName, "Key x");
    EXPECT_EQ(entry.m_dwFile, 1U);
    EXPECT_EQ(entry.GetFile(0), "main.zek");
    EXPECT_EQ(entry.m_ZekEntryData.GetType(), type);
    EXPECT_EQ(entry.m_ZekEntryData.GetData() != nullptr, data);
    EXPECT_EQ(entry.m_vstrSubStr, Pieces({"a", "b"}));
}

}  // namespace

using Entry = ProcessTest;

TEST_F(Entry, IsEmptyUntilAnItemIsStored) {
    ExpectMade<CGEDWORD>(0x10010001, true);
    ExpectMade<CGESTRING>(0x10020018, true);
    ExpectMade<CGESTRINGLIST>(0x10048001, true);
    ExpectMade<CGEVALUE>(0x10080007, true);
    ExpectMade<CGEREPEATER>(0x10100001, true);
    EXPECT_EQ(Messages(), "");
}

TEST_F(Entry, KeepsItsPiecesWhereItIsFilledAgain) {
    CGESTRING entry(0x10020013, tagNOTATION{2});
    const auto fill = [&entry](const std::string& key, const std::string& value) {
        entry.m_ZekEntryData.Destory();
        entry.Init("main.zek", key, value, 1);
    };
    fill("A", "a,b");
    fill("B", "c");
    EXPECT_EQ(entry.m_vstrSubStr, Pieces({"a", "b", "c"}));
    fill("C", "");
    EXPECT_EQ(entry.m_vstrSubStr, Pieces({"a", "b", "c"}));
    EXPECT_EQ(entry.m_strName, "C");
}

TEST_F(Entry, OfAnUnknownClassIsKeptWithoutData) {
    ExpectMade<CGESTRING>(0x10200001, false);
    EXPECT_EQ(Messages(), "CZEKEntry, m_ZekEntryData.Create(270532609) failed.\n");
}

TEST_F(Entry, ReportsItsClassThoughItsValueIsEmpty) {
    CGEDWORD entry(0x80000000, tagNOTATION{});
    entry.Init("main.zek", "A", "", 1);
    EXPECT_EQ(Messages(), "CZEKEntry, m_ZekEntryData.Create(2147483648) failed.\n");
    EXPECT_EQ(entry.m_strName, "A");
    EXPECT_EQ(entry.m_vstrSubStr, Pieces());
}

TEST_F(Entry, OfTheBaseClassPassesTheSecondCheck) {
    CGSDEFINE section;
    CGEDWORD entry(0x10010001, tagNOTATION{});
    EXPECT_EQ(entry.IsValidEx(&section, 0), 1U);
    EXPECT_EQ(entry.IsValidEx(nullptr, 255), 1U);
    CGSDEFINE::m_sHeader.clear();
}

TEST_F(Entry, CutsItsValueAtCommasOutsideQuotes) {
    struct Row {
        const char* value;
        Pieces pieces;
    };
    const Row rows[] = {
        {"", {}},
        {"a", {"a"}},
        {" a ", {" a "}},
        {"a,b,c", {"a", "b", "c"}},
        {"a, b", {"a", " b"}},
        {"a,,b", {"a", "", "b"}},
        {"a,", {"a", ""}},
        {",a", {"", "a"}},
        {",", {"", ""}},
        {R"("x,y",z)", {"x,y", "z"}},
        {R"("x,y)", {"x,y"}},
        {R"(abc"cd",e)", {"cd", "e"}},
        {R"("x"lost,e)", {"x", "e"}},
        {R"("x"lost)", {"x"}},
        {R"("x"",y",z)", {"x", ",z"}},
        {R"("")", {""}},
        {R"("","")", {"", ""}},
        {R"(")", {""}},
        {R"("",)", {"", ""}},
        {R"(a,"b)", {"a", "b"}},
        {R"(a,b"c,d"e,f)", {"a", "c,d", "f"}},
        {R"("a","b,c","d")", {"a", "b,c", "d"}},
        {R"(a\,b)", {"a\\", "b"}},
        {"'a,b'", {"'a", "b'"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(PiecesOf(row.value), row.pieces);
    }
}

}  // namespace zek::test
