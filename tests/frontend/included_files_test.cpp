#include "frontend/driver_messages.h"
#include "model/section.h"
#include "support/process_test.h"

namespace zek::test {

namespace {

/// The NAMEs of all tables, in the order in which they were read.
std::string TableNames() {
    std::string names;
    for (const CZEKSection* table : CGSTABLE::m_sHeader) names += table->m_vpEntry[0]->m_vstrSubStr.at(0) + ' ';
    return names;
}

std::string Table(const std::string& name) { return "[TABLE]\nNAME=" + name + '\n'; }
std::string Including(const std::string& file) { return "[INCLUDE]\nFILE=" + file + '\n'; }
std::string NotLoaded(const std::string& where, const std::string& file) {
    return "Warning[" + where + "], [INCLUDE]:FILE FILE " + file + " cannot be loaded.\n";
}

}  // namespace

using IncludedFile = ProcessTest;

TEST_F(IncludedFile, IsReadWhereItIsNamedHoweverDeep) {
    Write("a.zek", Table("a1") + Including("b.zek") + Table("a2"));
    Write("b.zek", Table("b1"));
    Write("c.zek", Table("c1") + "[GROUP]\nFOO=1\n");
    Source(Table("m1") + Including("a.zek") + "FILE=c.zek\n" + Table("m2"));
    EXPECT_EQ(DriverMessages(),
              "Parse::No more sections(total = 1).\n"
              "Parse::No more sections(total = 3).\n"
              "Add Item(NO. = 1) of section(GROUP) failed.\n"
              "Warning[c.zek:4]: [GROUP]:FOO, This ENTRY is ignored because of invalid entry name.\n"
              "Parse::No more sections(total = 2).\n"
              "Parse::No more sections(total = 3).\n");
    EXPECT_EQ(TableNames(), "m1 a1 b1 a2 c1 m2 ");
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, std::vector<std::string>({"main.zek", "a.zek", "b.zek", "c.zek"}));
    EXPECT_EQ(CGSTABLE::m_sHeader.at(3)->GetFile(0), "a.zek") << "the including file goes on as itself";
}

TEST_F(IncludedFile, ThatIsMissingIsReportedInTheFileThatNamesIt) {
    Write("a.zek", "\n" + Including("none.zek") + Table("a1"));
    Source(Including("a.zek") + Table("m1"));
    EXPECT_EQ(Errors(), NotLoaded("a.zek:3", "none.zek"));
    EXPECT_EQ(TableNames(), "a1 m1 ");
}

TEST_F(IncludedFile, ThatIsTheFileItselfIsRefused) {
    Source(Including("main.zek") + Table("m1"));
    EXPECT_EQ(DriverMessages(), NotLoaded("main.zek:2", "main.zek") + "Parse::No more sections(total = 2).\n");
    EXPECT_EQ(TableNames(), "m1 ");
}

TEST_F(IncludedFile, ThatLeadsBackToAFileBeingReadIsRefused) {
    Write("a.zek", Including("b.zek") + Table("a1"));
    Write("b.zek", Including("./main.zek") + "FILE=a.zek\n" + Table("b1"));
    Source(Including("a.zek") + "FILE=b.zek\n" + Table("m1"));
    // The second time b.zek is read, a.zek is no longer being read; it then includes b.zek, which is.
    EXPECT_EQ(Errors(), NotLoaded("b.zek:2", "./main.zek") + NotLoaded("b.zek:3", "a.zek") +
                            NotLoaded("b.zek:2", "./main.zek") + NotLoaded("a.zek:2", "b.zek"));
    EXPECT_EQ(TableNames(), "b1 a1 a1 b1 m1 ");
}

TEST_F(IncludedFile, IsRefusedWhere256FilesAreBeingRead) {
    const auto name = [](int i) { return "f" + std::to_string(i) + ".zek"; };
    for (int i = 0; i < 257; ++i) Write(name(i), Including(name(i + 1)) + Table(std::to_string(i)));
    ASSERT_EQ(gccCompStart("f0.zek"), 1U);
    gccParse();
    EXPECT_EQ(Errors(), NotLoaded("f255.zek:2", "f256.zek"));
    ASSERT_EQ(CGSTABLE::m_sHeader.size(), 256U);
    EXPECT_EQ(CGSTABLE::m_sHeader.front()->GetFile(0), "f255.zek");
    EXPECT_EQ(CGSTABLE::m_sHeader.back()->GetFile(0), "f0.zek");
}

}  // namespace zek::test
