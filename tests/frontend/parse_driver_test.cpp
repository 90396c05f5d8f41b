#include "frontend/driver_messages.h"
#include "frontend/parse.h"
#include "model/section.h"
#include "model/section_text.h"
#include "support/process_test.h"

namespace zek::test {

using ParseDriver = ProcessTest;

TEST_F(ParseDriver, LeavesTheModelAsItIsForAFileWithoutSections) {
    Source("[TABLE]\n");
    EXPECT_EQ(DriverMessages(), "Parse::No more sections(total = 1).\n");
    Source("; nothing but a comment\n", "empty.zek");
    EXPECT_EQ(DriverMessages(), "Parse::No more sections(total = 0).\n");
    EXPECT_EQ(CGSTABLE::m_sHeader.size(), 1U);
    EXPECT_EQ(CZEKSection::m_svpHSection.size(), 1U);
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, std::vector<std::string>({"main.zek"}));
}

TEST_F(ParseDriver, MakesSectionsAndEntriesInTheOrderAndOnTheLinesOfTheFile) {
    Source("[TABLE]\nNAME=one\n7=1\n\n[GROUP]\n\nNAME=two\n[TABLE]\n");
    EXPECT_EQ(DriverMessages(), "Parse::No more sections(total = 3).\n");
    ASSERT_EQ(CGSTABLE::m_sHeader.size(), 2U);
    const CZEKSection& table = *CGSTABLE::m_sHeader[0];
    EXPECT_EQ(table.m_dwLine, 1U);
    EXPECT_EQ(EntriesOf(table), "STRING 10020015 1 NAME 2 [one]\nSTRING 10028002 1\nSTRING 10020012 10 7 3 [1]\n");
    EXPECT_EQ(CGSGROUP::m_sHeader.at(0)->m_dwLine, 5U);
    EXPECT_EQ(CGSGROUP::m_sHeader.at(0)->m_vpEntry[1]->m_dwLine, 7U);
    EXPECT_EQ(CGSTABLE::m_sHeader[1]->m_dwLine, 8U);
}

TEST_F(ParseDriver, TakesTextsOfAnyLengthWhole) {
    for (const std::size_t size : {1U, 100U, 126U, 127U, 128U, 129U, 5000U}) {
        SCOPED_TRACE(size);
        const std::string key(size, 'K');
        const std::string value(size, 'v');
        Source("[PROPERTY]\n" + key + "=" + value + "\n" + key + "=\nK=" + value + "\n[" + key + "]\n");
        EXPECT_EQ(DriverMessages(),
                  "Create section(2, " + key + ") object failed.\nParse::No more sections(total = 2).\n");
        EXPECT_EQ(EntriesOf(*CGSPROPERTY::m_sHeader.back()), "STRING 10020017 10 " + key + " 2 [" + value +
                                                                 "]\nSTRING 10020017 10 " + key +
                                                                 " 3\nSTRING 10020017 10 K 4 [" + value + "]\n");
    }
}

TEST_F(ParseDriver, PassesOverASectionOfUnknownKeyword) {
    Source("[FOO]\nNAME=1\nOTHER=2\n[GROUP]\n[group]\n[GROUP\n[GROUP]\n");
    EXPECT_EQ(DriverMessages(),
              "Create section(1, FOO) object failed.\n"
              "Create section(3, group) object failed.\n"
              "Create section(4, [GROUP) object failed.\n"
              "Parse::No more sections(total = 5).\n");
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 2U);
}

TEST_F(ParseDriver, PassesOverItemsBeforeTheFirstSection) {
    Source("A=1\nB=2\n[GROUP]\n");
    EXPECT_EQ(DriverMessages(), "Create section(1, ) object failed.\nParse::No more sections(total = 2).\n");
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 1U);
}

TEST_F(ParseDriver, ReportsAnItemThatItsSectionRefusesAndGoesOn) {
    Source("[TABLE]\n[GROUP]\nFOO=1\nNAME=g\n[QUORZEK]\nVERSION=1\nP_A\nP_B=100% %s\n");
    EXPECT_EQ(DriverMessages(),
              "Add Item(NO. = 1) of section(GROUP) failed.\n"
              "Warning[main.zek:3]: [GROUP]:FOO, This ENTRY is ignored because of invalid entry name.\n"
              "Add Item(NO. = 2) of section(QUORZEK) failed.\n"
              "Warning[main.zek:7]: [QUORZEK]:P_A, This ENTRY is ignored because of invalid entry name.\n"
              "Add Item(NO. = 3) of section(QUORZEK) failed.\n"
              "Warning[main.zek:8]: [QUORZEK]:P_B, This ENTRY is ignored because of invalid entry name.\n"
              "Parse::No more sections(total = 3).\n");
    EXPECT_EQ(EntriesOf(*CGSGROUP::m_sHeader.at(0)),
              "STRING 10020014 1\nSTRING 10020015 1 NAME 4 [g]\nSTRING 10028007 1\n"
              "VALUE 10080002 6\nVALUE 10080003 6\nVALUE 10080004 6\nVALUE 10080005 6\n");
}

TEST_F(ParseDriver, NamesTheFileWithoutItsDirectory) {
    std::filesystem::create_directory("sub");
    Write("sub/main.zek", "[GROUP]\nFOO=1\n");
    ASSERT_EQ(g_Parse.Start("sub\\main.zek"), 1U);
    g_Parse.Parse();
    EXPECT_EQ(Errors(),
              "Add Item(NO. = 1) of section(GROUP) failed.\n"
              "Warning[main.zek:2]: [GROUP]:FOO, This ENTRY is ignored because of invalid entry name.\n");
}

TEST_F(ParseDriver, IsWithoutAFileOnceItHasReadOne) {
    Source("[GROUP]\n");
    DriverMessages();
    g_Parse.Parse();
    EXPECT_EQ(DriverMessages(), "Parse::No more sections(total = 0).\n");
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 1U);
}

TEST_F(ParseDriver, KeepsItsFileWhenTheModelIsDestroyed) {
    Source("[GROUP]\n");
    Write("next.zek", "[TABLE]\n");
    ASSERT_EQ(g_Parse.Start("next.zek"), 1U);
    g_Parse.End();
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 0U);
    g_Parse.Parse();
    EXPECT_EQ(CGSTABLE::m_sHeader.size(), 1U);
}

TEST_F(ParseDriver, ServesASecondObjectBesideTheFirst) {
    Write("main.zek", "[GROUP]\n");
    Write("other.zek", "[TABLE]\n");
    ASSERT_EQ(g_Parse.Start("main.zek"), 1U);
    {
        CZEKParse other;
        ASSERT_EQ(other.Start("other.zek"), 1U);
        other.Parse();
    }
    g_Parse.Parse();
    ASSERT_EQ(CZEKSection::m_svpHSection.size(), 2U);
    EXPECT_EQ(CZEKSection::m_svpHSection[0], &CGSTABLE::m_sHeader);
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 1U);
}

}  // namespace zek::test
