#include <chrono>

#include "zek/command.h"

namespace zek::test {

namespace {

class ZekNew : public ZekTest {};

TEST_F(ZekNew, BoardCompilesWithoutAWord) {
    std::filesystem::create_directory("empty");
    for (const std::string folder : {"board", "empty", "board/inner/"}) {
        const Result result = Zek({"new", folder});
        EXPECT_EQ(result.code, 0);
        const std::string source = folder + (folder.ends_with('/') ? "" : "/") + "board.zek";
        EXPECT_EQ(result.out, source + '\n');
        EXPECT_EQ(result.err, "");
        const Result checked = Zek({"check", source});
        EXPECT_EQ(checked.code, 0);
        EXPECT_EQ(checked.err, "");
        const Result compiled = Zek({"compile", source, "-o", "image", "-g", "debug"});
        EXPECT_EQ(compiled.code, 0);
        EXPECT_EQ(compiled.err, "");
        EXPECT_EQ(Zek({"tree", "image"}).out,
                  "GROUP \"Board\"\n"
                  "  SENSOR \"Inlet Temp\" ID=1 TYPE=1 THRESHOLD_FH=50 THRESHOLD_WH=40\n"
                  "  SENSOR \"Outlet Temp\" ID=2 TYPE=1 THRESHOLD_FH=70 THRESHOLD_WH=60\n"
                  "TAVRGROUP \"Temperatures\" ID=1\n"
                  "  SENSOR \"Inlet Temp\" ID=1\n"
                  "  SENSOR \"Outlet Temp\" ID=2\n");
    }
    EXPECT_EQ(Names("empty"), (Strings{"Makefile", "board.zek", "sensors.zek"}));
}

TEST_F(ZekNew, MakefileCompilesItAgainWhenAnIncludedFileChanges) {
    ASSERT_EQ(Zek({"new", "board"}).code, 0);
    const std::string make = "PATH=$(dirname " ZEK_PROGRAM "):$PATH make -s -C board";
    const Result built = Program({"sh", "-c", make + " && " + make + " -q"}).Finish();
    EXPECT_EQ(built.code, 0) << built.err;
    EXPECT_EQ(Zek({"verify", "--pair", "board/board.zki", "board/board.zkd"}).code, 0);
    std::filesystem::last_write_time("board/sensors.zek",
                                     std::filesystem::last_write_time("board/board.zki") + std::chrono::hours(1));
    EXPECT_EQ(Program({"sh", "-c", make + " -q"}).Finish().code, 1);
    ASSERT_EQ(Program({"sh", "-c", make + " && rm board/board.zkd && " + make}).Finish().code, 0);
    EXPECT_TRUE(std::filesystem::exists("board/board.zkd"));
}

TEST_F(ZekNew, LeavesNoFolderThatItCannotFill) {
    std::filesystem::create_directory("empty");
    for (const std::string folder : {"board", "empty"}) {
        const Result result = Zek({"new", folder}, Fault("write"));
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "zek: cannot write " + folder + "/board.zek: No space left on device\n");
    }
    EXPECT_EQ(Names(), Strings{"empty"});
    EXPECT_EQ(Names("empty"), Strings{});
}

TEST_F(ZekNew, LeavesNothingThatItCannotTell) {
    std::filesystem::create_directory("empty");
    for (const std::string folder : {"board", "empty"}) {
        const Result result = Zek({"new", folder}, {.out = "/dev/full"});
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.err, "zek: cannot write to standard output: No space left on device\n");
    }
    EXPECT_EQ(Names(), Strings{"empty"});
    EXPECT_EQ(Names("empty"), Strings{});
}

TEST_F(ZekNew, RefusesAnEmptyName) {
    const Result result = Zek({"new", ""});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err.substr(0, result.err.find('\n')), "zek: a file name is empty");
}

TEST_F(ZekNew, TellsThePathAsItIs) { EXPECT_EQ(Zek({"new", "a\x1b\xe4"}).out, "a\x1b\xe4/board.zek\n"); }

TEST_F(ZekNew, TouchesNothingThatIsThere) {
    Write("file", "x");
    std::filesystem::create_directory("full");
    Write("full/mine", "x");
    std::filesystem::create_symlink("nowhere", "lost");
    const struct {
        std::string folder;
        std::string why;
    } rows[] = {{"file", "file is no folder: a new board takes an empty one, or a name that is free"},
                {"full", "full is no empty folder: a new board takes an empty one, or a name that is free"},
                {"full/mine", "full/mine is no folder: a new board takes an empty one, or a name that is free"},
                {"lost", "lost is no folder: a new board takes an empty one, or a name that is free"},
                {"missing/board", "cannot make missing/board: No such file or directory"}};
    for (const auto& row : rows) {
        const Result result = Zek({"new", row.folder});
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "zek: " + row.why + '\n');
    }
    EXPECT_EQ(Names("full"), Strings{"mine"});
}

}  // namespace

}  // namespace zek::test
