#include "parser_test.h"

namespace {

// Runs in the test's folder; each file's section tells where it stands.
class Search : public ParserTest {
protected:
    void SetUp() override {
        ParserTest::SetUp();
        std::filesystem::current_path(Path(""));
    }
};

TEST_F(Search, TakesTheNameAsItStandsFirst) {
    Write("x.ini", "[HERE]");
    Write("one/x.ini", "[ONE]");
    RSAddSearchDir(Path("one"));
    EXPECT_EQ(DumpFile("x.ini"), "1 [HERE]\n");
}

TEST_F(Search, GoesThroughTheDirectoriesInOrder) {
    Write("one/x.ini", "[ONE]");
    Write("two/x.ini", "[TWO]");
    Write("two/y.ini", "[TWO]");
    RSAddSearchDir("one");
    RSAddSearchDir(Path("two") + "/");
    EXPECT_EQ(DumpFile("x.ini"), "1 [ONE]\n");
    EXPECT_EQ(DumpFile("y.ini"), "1 [TWO]\n");
    EXPECT_EQ(DumpFile("z.ini"), "refused");
    RSClearSearchDirs();
    EXPECT_EQ(DumpFile("x.ini"), "refused");
    RSAddSearchDir("two");
    EXPECT_EQ(DumpFile("x.ini"), "1 [TWO]\n");
}

TEST_F(Search, LooksForANameWithFoldersInEachDirectory) {
    Write("one/sub/x.ini", "[ONE]");
    RSAddSearchDir("one");
    EXPECT_EQ(DumpFile("sub/x.ini"), "1 [ONE]\n");
    EXPECT_EQ(DumpFile("./sub/../sub/x.ini"), "1 [ONE]\n");
}

TEST_F(Search, StopsAtAnythingOfThatName) {
    std::filesystem::create_directories("x.ini");
    std::filesystem::create_symlink("nowhere", "y.ini");
    Write("one/x.ini", "[ONE]");
    Write("one/y.ini", "[ONE]");
    RSAddSearchDir("one");
    EXPECT_EQ(DumpFile("x.ini"), "refused");
    EXPECT_EQ(DumpFile("y.ini"), "refused");
}

TEST_F(Search, StopsAtAFileThatIsBeingEnumerated) {
    const OpenedFile outer(Write("x.ini", "[HERE]"));
    outer.Section(0);
    Write("one/x.ini", "[ONE]");
    RSAddSearchDir("one");
    EXPECT_EQ(DumpFile("x.ini"), "refused");
}

TEST_F(Search, LeavesAnAbsoluteNameAlone) {
    Write("one/tmp-x.ini", "[ONE]");
    RSAddSearchDir("one");
    EXPECT_EQ(DumpFile("/tmp-x.ini"), "refused");
    EXPECT_EQ(DumpFile(Path("one/tmp-x.ini")), "1 [ONE]\n");
}

TEST_F(Search, TakesABackslashAsItStandsFirst) {
    Write("sub\\x.ini", "[BACKSLASH]");
    Write("sub/x.ini", "[SLASH]");
    EXPECT_EQ(DumpFile("sub\\x.ini"), "1 [BACKSLASH]\n");
}

TEST_F(Search, LooksForTheBackslashEverywhereBeforeTheSlash) {
    Write("sub/x.ini", "[SLASH]");
    Write("one/sub\\x.ini", "[ONE]");
    RSAddSearchDir("one");
    EXPECT_EQ(DumpFile("sub\\x.ini"), "1 [ONE]\n");
}

TEST_F(Search, TakesEachBackslashAsASlashInTheSameOrder) {
    Write("one/a/b/x.ini", "[ONE]");
    Write("two/a/b/x.ini", "[TWO]");
    RSAddSearchDir("one");
    RSAddSearchDir("two");
    EXPECT_EQ(DumpFile("a\\b\\x.ini"), "1 [ONE]\n");
    EXPECT_EQ(DumpFile("a\\b/x.ini"), "1 [ONE]\n");
    EXPECT_EQ(DumpFile(".\\one\\..\\two\\a\\b\\x.ini"), "1 [TWO]\n");
}

TEST_F(Search, TakesBackslashesOfAnAbsoluteNameAsSlashes) {
    std::string path = Write("one/x.ini", "[ONE]");
    for (char& c : path) {
        if (c == '/') c = '\\';
    }
    EXPECT_EQ(DumpFile(path), "1 [ONE]\n");
}

TEST_F(Search, TakesTheEmptyDirectoryAsTheWorkingDirectory) {
    RSAddSearchDir("");
    Write("tmp-y.ini", "[HERE]");
    EXPECT_EQ(DumpFile("tmp-y.ini"), "1 [HERE]\n");
    EXPECT_EQ(DumpFile("tmp-z.ini"), "refused");
}

TEST_F(Search, FindsNothingForNoNameOrANulInIt) {
    Write("x.ini", "[HERE]");
    RSAddSearchDir(Path(""));
    EXPECT_EQ(DumpFile(""), "refused");
    EXPECT_EQ(DumpFile(std::string("x.ini\0", 6)), "refused");
    EXPECT_EQ(DumpFile(std::string("x.ini\0.bak", 10)), "refused");
}

TEST_F(Search, FindsNothingBelowAFileOrForAnEndlessName) {
    Write("x.ini", "[HERE]");
    EXPECT_EQ(DumpFile("x.ini/y.ini"), "refused");
    EXPECT_EQ(DumpFile("x.ini/"), "refused");
    EXPECT_EQ(DumpFile(std::string(100000, 'x')), "refused");
}

}  // namespace
