#include "boards/boards.h"
#include "docs/run.h"
#include "support/process_test.h"

namespace zek::test {
namespace {

/// Runs in a folder of its own.
class ZekBoard : public ProcessTest {
protected:
    static int Run(const std::string& arguments) { return RunCommand(ZEK_BOARD_PROGRAM " " + arguments); }
};

TEST_F(ZekBoard, PrintsASource) {
    EXPECT_EQ(Run("--sensors 20"), 0);
    EXPECT_EQ(Read("stdout"), bench::ZekSource("board", 20));
    EXPECT_EQ(Read("stderr"), "");
}

TEST_F(ZekBoard, WritesAnyShapeAndSeedToAFile) {
    EXPECT_EQ(Run("--sensors 20 --seed 5 --shape tails -o tails.zek"), 0);
    EXPECT_EQ(Read("tails.zek"), bench::ZekSource("tails", 20, 5));
    EXPECT_EQ(Read("stdout"), "");
}

TEST_F(ZekBoard, WritesIncludedFilesBesideTheSource) {
    std::filesystem::create_directory("boards");
    EXPECT_EQ(Run("--sensors 20 --seed 5 --shape includes -o boards/board.zek"), 0);
    EXPECT_EQ(Read("boards/board.zek"), bench::ZekSource("includes", 20, 5));
    const std::vector<bench::IncludedFile> files = bench::IncludedFiles("includes", 20, 5);
    EXPECT_EQ(files.size(), 20U);
    for (const bench::IncludedFile& file : files) EXPECT_EQ(Read("boards/" + file.path), file.text) << file.path;
}

TEST_F(ZekBoard, WritesTheOtherFormats) {
    EXPECT_EQ(Run("--sensors 20 --seed 5 --format json -o board.json"), 0);
    EXPECT_EQ(Read("board.json"), bench::BoardIn("json", 20, 5));
}

TEST_F(ZekBoard, ListsEveryShape) {
    EXPECT_EQ(Run("--list"), 0);
    const std::string list = '\n' + Read("stdout");
    for (const std::string_view shape : bench::ShapeNames()) {
        const std::size_t line = list.find("\n" + std::string(shape) + ' ');
        ASSERT_NE(line, std::string::npos) << shape;
        EXPECT_TRUE(list.substr(0, list.find('\n', line + 1)).ends_with(bench::WhatSizeCounts(shape))) << shape;
    }
}

TEST_F(ZekBoard, TellsWhatIsWrong) {
    const std::string help = "Run with --help for more information.\n";
    const std::pair<const char*, std::string> rows[] = {
        {"", "zek_board: --sensors is required\n" + help},
        {"--sensors 9", "zek_board: --sensors: Value 9 not in range 10 to 1000000\n" + help},
        {"--sensors 20 --seed -1", "zek_board: Could not convert: --seed = -1\n" + help},
        {"--sensors 20 --format dts --shape rows", "zek_board: --format: there is no dts of the shape rows\n" + help},
        {"--sensors 20 --shape parts",
         "zek_board: --output: the shape parts is several files, so one is needed\n" + help},
        {"--sensors 20 -o missing/board.zek", "zek_board: cannot write missing/board.zek: No such file or directory\n"},
    };
    for (const auto& [arguments, message] : rows) {
        SCOPED_TRACE(arguments);
        EXPECT_EQ(Run(arguments), 2);
        EXPECT_EQ(Read("stdout"), "");
        EXPECT_EQ(Read("stderr"), message);
    }
}

TEST_F(ZekBoard, TellsThatTheOutputIsFull) {
    EXPECT_EQ(Run("--sensors 20 -o /dev/full"), 2);
    EXPECT_EQ(Read("stderr"), "zek_board: cannot write /dev/full: No space left on device\n");
    EXPECT_EQ(RunCommand("(" ZEK_BOARD_PROGRAM " --sensors 20 >/dev/full)"), 2);
    EXPECT_EQ(Read("stderr"), "zek_board: cannot write to standard output: No space left on device\n");
}

}  // namespace
}  // namespace zek::test
