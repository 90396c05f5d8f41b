#include "parser_test.h"

namespace {

class Enumeration : public ParserTest {};

TEST_F(Enumeration, RefusesTheFileItself) {
    const std::string path = Write("a.ini", "[A]\n");
    OpenedFile outer(path);
    RSParse(outer.Get());
    EXPECT_NE(outer.Section(0), nullptr);
    EXPECT_EQ(DumpFile(path), "refused");
    outer.Close();
    EXPECT_EQ(DumpFile(path), "1 [A]\n");
}

TEST_F(Enumeration, RefusesTheSameFileByAnyOtherPath) {
    const std::string path = Write("a.ini", "[A]\n");
    std::filesystem::create_symlink(path, Path("symlink.ini"));
    std::filesystem::create_hard_link(path, Path("hardlink.ini"));
    const OpenedFile outer(path);
    outer.Section(0);
    EXPECT_EQ(DumpFile(Path("symlink.ini")), "refused");
    EXPECT_EQ(DumpFile(Path("hardlink.ini")), "refused");
    EXPECT_EQ(DumpFile(Path("./a.ini")), "refused");
}

TEST_F(Enumeration, AllowsAnotherFileOfTheSameText) {
    const OpenedFile outer(Write("a.ini", "[A]\n"));
    outer.Section(0);
    EXPECT_EQ(DumpFile(Write("b.ini", "[A]\n")), "1 [A]\n");
}

TEST_F(Enumeration, AllowsAnotherFileThatHasTakenItsPlace) {
    const std::string path = Write("a.ini", "[A]\n");
    const OpenedFile outer(path);
    outer.Section(0);
    std::filesystem::rename(path, Path("moved.ini"));
    EXPECT_EQ(DumpFile(Write("a.ini", "[B]\n")), "1 [B]\n");
    EXPECT_EQ(DumpFile(Path("moved.ini")), "refused");
}

TEST_F(Enumeration, RefusesAFileFurtherUpTheChain) {
    const std::string path = Write("a.ini", "[A]\n");
    const OpenedFile outer(path);
    outer.Section(0);
    const OpenedFile inner(Write("b.ini", "[B]\n"));
    inner.Section(0);
    EXPECT_EQ(DumpFile(path), "refused");
}

TEST_F(Enumeration, BeginsWithTheFirstSectionAskedForEvenBeforeParsing) {
    const std::string path = Write("a.ini", "");
    const OpenedFile first(path);
    EXPECT_EQ(DumpFile(path), "");
    RSParse(first.Get());
    RSFindSEction(first.Get(), "A");
    EXPECT_EQ(DumpFile(path), "");
    EXPECT_EQ(first.Section(7), nullptr);
    EXPECT_EQ(DumpFile(path), "refused");

    const std::string other = Write("b.ini", "");
    const OpenedFile unparsed(other);
    EXPECT_EQ(unparsed.Section(0), nullptr);
    EXPECT_EQ(DumpFile(other), "refused");
}

TEST_F(Enumeration, GoesOnPastTheLastSectionUntilTheFileIsClosed) {
    const std::string path = Write("a.ini", "[A]\n");
    OpenedFile file(path);
    RSParse(file.Get());
    EXPECT_EQ(Dump(file.Get()), "1 [A]\n");
    EXPECT_EQ(DumpFile(path), "refused");
    file.Close();
    EXPECT_EQ(DumpFile(path), "1 [A]\n");
}

TEST_F(Enumeration, DoesNotCountAFileOpenedAndDropped) {
    const std::string path = Write("a.ini", "[A]\n");
    const OpenedFile dropped(path);
    RSParse(dropped.Get());
    EXPECT_EQ(DumpFile(path), "1 [A]\n");
}

TEST_F(Enumeration, LastsUntilEveryHandleOfTheFileIsClosed) {
    const std::string path = Write("a.ini", "[A]\n");
    OpenedFile first(path);
    OpenedFile second(path);
    first.Section(0);
    second.Section(0);
    first.Close();
    EXPECT_EQ(DumpFile(path), "refused");
    second.Close();
    EXPECT_EQ(DumpFile(path), "1 [A]\n");
}

TEST_F(Enumeration, LetsAFileBeIncludedAgainAndAgain) {
    const OpenedFile outer(Write("a.ini", "[A]\n"));
    outer.Section(0);
    const std::string path = Write("b.ini", "[B]\n");
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(DumpFile(path), "1 [B]\n");
}

TEST_F(Enumeration, StopsAtTheTwoHundredFiftySeventhFile) {
    std::vector<OpenedFile> chain;
    for (int i = 0; i < 256; ++i) {
        SCOPED_TRACE(i);
        chain.emplace_back(Write("chain" + std::to_string(i), "[A]\n"));
        ASSERT_TRUE(chain.back());
        chain.back().Section(0);
    }
    const std::string path = Write("last", "[A]\n");
    EXPECT_EQ(DumpFile(path), "refused");
    chain[100].Close();
    EXPECT_EQ(DumpFile(path), "1 [A]\n");
    EXPECT_EQ(DumpFile(path), "1 [A]\n");
}

TEST_F(Enumeration, IsWhatTheLimitCountsNotTheOpening) {
    std::vector<OpenedFile> opened;
    const std::string path = Write("a.ini", "[A]\n");
    for (int i = 0; i < 300; ++i) {
        opened.emplace_back(path);
        ASSERT_TRUE(opened.back());
    }
    EXPECT_EQ(DumpFile(path), "1 [A]\n");
}

TEST_F(Enumeration, ReadsWhatTheFileHeldWhenItWasOpened) {
    const std::string path = Write("a.ini", "[A]\n");
    const OpenedFile file(path);
    std::filesystem::remove(path);
    ASSERT_EQ(RSParse(file.Get()), 1u);
    EXPECT_EQ(Dump(file.Get()), "1 [A]\n");
}

}  // namespace
