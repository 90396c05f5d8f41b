// Where decompiled sources are put.
#include "zek/compiled_sources.h"

namespace zek::test {

namespace {

class ZekDecompileFolder : public CompiledSources {};

TEST_F(ZekDecompileFolder, WritesNothingOutsideOfItsFolder) {
    std::filesystem::create_directories("source/boards");
    Write("source/common.zek", "[DEFINE]\nA = 1\n");
    const std::string absolute = std::filesystem::absolute("source/words.zek");
    Write("source/words.zek", "[DEFINE]\nB = 2\n");
    Write("source/boards/a.zek",
          "[INCLUDE]\nFILE = ../common.zek\n[INCLUDE]\nFILE = " + absolute + "\n[PROPERTY]\na = b\n");
    ASSERT_TRUE(Compile("source/boards", std::filesystem::absolute("source/boards/a.zek"), "first"));
    std::filesystem::rename("source", "gone");
    std::filesystem::create_directory("deep");
    const std::string main = Decompiled("first.zkd", "deep/made");
    EXPECT_EQ(main, "a.zek");
    EXPECT_EQ(Names("deep"), Strings{"made"});
    EXPECT_EQ(Names(), (Strings{"deep", "first.zkd", "first.zki", "gone"}));
    EXPECT_EQ(Read("deep/made/common.zek"), "[DEFINE]\nA = \"1\"\n");
    EXPECT_EQ(Read("deep/made/a.zek"), "[INCLUDE]\nFILE = \"common.zek\"\n[INCLUDE]\nFILE = \"" + absolute.substr(1) +
                                           "\"\n[PROPERTY]\na = \"b\"\n");
    ASSERT_TRUE(Compile("deep/made", main, "again"));
    EXPECT_EQ(WithoutTime(Read("again.zki")), WithoutTime(Read("first.zki")));
}

TEST_F(ZekDecompileFolder, FollowsNoLinkInItsFolder) {
    std::filesystem::create_directories("source/sub");
    Write("source/a.zek", "[INCLUDE]\nFILE = sub/b.zek\n");
    Write("source/sub/b.zek", "[PROPERTY]\na = b\n");
    ASSERT_TRUE(Compile("source", "a.zek", "a"));
    std::filesystem::create_directories("made");
    std::filesystem::create_directories("elsewhere");
    std::filesystem::create_directory_symlink("../elsewhere", "made/sub");
    const Result result = Zek({"decompile", "a.zkd", "-o", "made"});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, "zek: made/sub is a symbolic link, which is not followed\n");
    EXPECT_EQ(Names("elsewhere"), Strings{});
    EXPECT_EQ(Names("made"), Strings{"sub"});
}

TEST_F(ZekDecompileFolder, LeavesNothingThatItCannotTell) {
    std::filesystem::create_directories("source");
    Write("source/a.zek", "[PROPERTY]\na = b\n");
    ASSERT_TRUE(Compile("source", "a.zek", "a"));
    EXPECT_EQ(Zek({"decompile", "a.zkd", "-o", "made"}, {.out = "/dev/full"}).code, 2);
    EXPECT_FALSE(std::filesystem::exists("made"));
}

TEST_F(ZekDecompileFolder, PutsWhatLeadsOutAndInAgainWhereItLeads) {
    std::filesystem::create_directories("source/s/t");
    Write("source/a.zek", "[INCLUDE]\nFILE = s/../s/r.zek\nFILE = s/t/../../o.zek\n");
    Write("source/s/r.zek", "[PROPERTY]\na = b\n");
    Write("source/o.zek", "[PROPERTY]\nc = d\n");
    ASSERT_TRUE(Compile("source", "a.zek", "a"));
    EXPECT_EQ(Decompiled("a.zkd", "made"), "a.zek");
    EXPECT_EQ(Names("made"), (Strings{"a.zek", "o.zek", "s"}));
    EXPECT_EQ(Names("made/s"), Strings{"r.zek"});
    EXPECT_EQ(Read("made/a.zek"), "[INCLUDE]\nFILE = \"s/r.zek\"\nFILE = \"o.zek\"\n");
}

TEST_F(ZekDecompileFolder, TellsWhyAFolderTakesNoFolder) {
    std::filesystem::create_directories("source/sub");
    Write("source/a.zek", "[INCLUDE]\nFILE = sub/b.zek\n");
    Write("source/sub/b.zek", "[PROPERTY]\na = b\n");
    ASSERT_TRUE(Compile("source", "a.zek", "a"));
    std::filesystem::create_directory("made");
    ASSERT_EQ(Zek({"decompile", "a.zkd", "-o", "made"}).code, 0);
    std::filesystem::remove_all("made/sub");
    std::filesystem::permissions("made", std::filesystem::perms(0555));
    const Result result = Zek({"decompile", "a.zkd", "-o", "made"}, {.permissionsHold = true});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, "zek: cannot make the folder made/sub: Permission denied\n");
    EXPECT_EQ(Names("made"), Strings{"a.zek"});
}

TEST_F(ZekDecompileFolder, ReplacesNoFile) {
    Write("a.zek", "[PROPERTY]\na = b\n");
    ASSERT_TRUE(Compile(".", "a.zek", "a"));
    const Result result = Zek({"decompile", "a.zkd", "-o", "."});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "zek: cannot write ./a.zek: File exists\n");
    EXPECT_EQ(Read("a.zek"), "[PROPERTY]\na = b\n");
    // But for one that is the same.
    EXPECT_EQ(Zek({"decompile", "a.zkd", "-o", "made"}).code, 0);
    EXPECT_EQ(Zek({"decompile", "a.zkd", "-o", "made"}).code, 0);
}

}  // namespace

}  // namespace zek::test
