// What zek_compare prints, and that it ends with 1 rather than print a table that lacks something. The programs that it
// runs are scripts here, so that what they tell is known.
#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>

#include "boards/boards.h"
#include "docs/page.h"
#include "docs/run.h"
#include "support/process_test.h"

namespace zek::test {
namespace {

using Strings = std::vector<std::string>;

/// Each takes the place of a program: writes what that one would, and tells round figures.
const std::map<std::string, std::string> kPrograms = {
    {"zek_board", "for last; do :; done\necho source > \"$last\"\n"},
    {"zek_floor", "echo '{\"seconds\": 0.001}'\n"},
    {"flatc", "echo encoded > \"$3/$(basename \"$5\" .json).bin\"\n"},
    {"protoc", "echo encoded\n"},
    {"dtc", "echo encoded > \"$7\"\n"},
    {"compile_once", R"(phases= code=0 IFS=:
while [ $# -gt 0 ]; do
    case $1 in
        --debug | --image) echo image > "$2"; shift ;;
        --load-image) phases=gcInit ;;
        --view-image) phases=ImageView ;;
        --load-debug) phases=gdInit ;;
        */errors-*) phases='start:parse:check:end' code=1 ;;
        *.zek) phases='start:parse:check:debug image:compiled image:end' ;;
    esac
    shift
done
separator=
printf '{"messages": 0, "phases": ['
for phase in $phases; do
    printf '%s{"name": "%s", "seconds": 0.002}' "$separator" "$phase"
    separator=', '
done
echo ']}'
exit $code
)"},
    {"zek_calls", R"(calls=$(dirname "$0")/calls
if [ "$1" = --list ]; then cat "$calls"; exit; fi
separator=
echo '{"benchmarks": ['
for size in 100 200; do
    while read -r call; do
        printf '%s{"run_type": "iteration", "run_name": "%s/%s", "cpu_time": 12.5}\n' "$separator" "$call" "$size"
        separator=,
    done < "$calls"
done
echo ']}'
)"},
};

const Strings kCalls = {"gcGetSectByName", "gcGetSectByName, absent", "SectionNamed", "SectionNamed, absent",
                        "hash look-up",    "hash look-up, absent"};
const Strings kCallsInTwoOrders = {"gcGetSectByID",  "gcGetSectByIndex", "gcGetEntryByType",  "gcGetValueByIndex",
                                   "gcGetValueByID", "gdGetSectByIndex", "gdGetEntryByIndex", "gdGetValue"};

class ZekCompare : public ProcessTest {
protected:
    void SetUp() override {
        ProcessTest::SetUp();
        std::filesystem::create_directory("bin");
        std::filesystem::copy_file(ZEK_COMPARE_PROGRAM, "bin/zek_compare");
        for (const auto& [name, text] : kPrograms) Replace(name, text);
        std::string calls;
        for (const std::string& call : AllCalls()) calls += call + '\n';
        Write("bin/calls", calls);
        const std::string path = std::filesystem::absolute("bin").string() + ':' + std::getenv("PATH");
        setenv("PATH", path.c_str(), 1);
    }

    static Strings AllCalls() {
        Strings calls = kCalls;
        for (const std::string& call : kCallsInTwoOrders) calls.insert(calls.end(), {call, call + ", few"});
        return calls;
    }

    /// Puts a script into the place of a program.
    static void Replace(const std::string& program, const std::string& script) {
        const std::string file = "bin/" + program;
        Write(file, "#!/bin/sh\n" + script);
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }

    static int Run(const std::string& options) { return RunCommand("bin/zek_compare --folder files " + options); }
};

/// The first cells of a table of the output, by its title.
Strings FirstCells(const std::string& output, const std::string& title) {
    Strings cells;
    std::istringstream lines(output.substr(output.find("\n## " + title + "\n")));
    std::string line;
    for (int i = 0; i < 5; ++i) std::getline(lines, line);
    while (std::getline(lines, line) && line.starts_with("| ")) {
        const std::string cell = line.substr(2, line.find(" |") - 2);
        cells.push_back(cell.substr(0, cell.find_last_not_of(' ') + 1));
    }
    return cells;
}

TEST_F(ZekCompare, PrintsEveryRowOfEveryTable) {
    ASSERT_EQ(Run("--short"), 0) << Read("stderr");
    EXPECT_EQ(Read("stderr"), "");
    const std::string output = Read("stdout");
    EXPECT_EQ(FirstCells(output, "Whole processes"),
              (Strings{"500, zek", "500, flatc", "500, protoc", "500, dtc", "1,000, zek", "1,000, flatc",
                       "1,000, protoc", "1,000, dtc"}));
    EXPECT_EQ(FirstCells(output, "Phases"), (Strings{"start", "parse", "check", "debug image", "compiled image", "end",
                                                     "gcInit", "ImageView", "gdInit", "whole process of the compile"}));
    EXPECT_EQ(FirstCells(output, "The machine"),
              (Strings{"read into fresh memory", "copy in memory", "scan into sections and items",
                       "parse and enumerate, by the parser library", "write to each page of fresh memory",
                       "read lines of the cache, each telling the next"}));
    EXPECT_EQ(FirstCells(output, "Calls"), AllCalls());
    Strings shapes = bench::LopsidedShapes();
    std::sort(shapes.begin(), shapes.end());
    EXPECT_EQ(FirstCells(output, "Shapes"), shapes);
    EXPECT_EQ(FirstCells(output, "Targets").size(), 4 + 4 + 10 + 5 + 4 + 16 + 1U);
}

TEST_F(ZekCompare, TellsWhatItsSpeedsCountAndHowEachPhaseGrows) {
    ASSERT_EQ(Run("--short"), 0) << Read("stderr");
    const Strings targets = FirstCells(Read("stdout"), "Targets");
    const Strings expected = {
        "start + parse + check + compiled image, MB/s, 500 sensors",
        "start + parse + check + compiled image, MB/s, 500 sensors, as if the scan were 860",
        "parse + check + compiled image, without start, MB/s, 500 sensors",
        "parse + check + compiled image, without start, MB/s, 500 sensors, as if the scan were 860",
        "growth of the whole process, exponent from 500 to 1,000 sensors",
        "growth of start, exponent from 500 to 1,000 sensors",
        "growth of parse, exponent from 500 to 1,000 sensors",
        "growth of check, exponent from 500 to 1,000 sensors",
        "growth of debug image, exponent from 500 to 1,000 sensors",
        "growth of compiled image, exponent from 500 to 1,000 sensors",
        "growth of end, exponent from 500 to 1,000 sensors",
        "growth of gcInit, exponent from 500 to 1,000 sensors",
        "growth of ImageView, exponent from 500 to 1,000 sensors",
        "growth of gdInit, exponent from 500 to 1,000 sensors",
    };
    ASSERT_GE(targets.size(), 4 + expected.size());
    EXPECT_EQ(Strings(targets.begin() + 4, targets.begin() + 4 + static_cast<int>(expected.size())), expected);
}

TEST_F(ZekCompare, LeavesOutWhatItIsToldTo) {
    ASSERT_EQ(Run("--short --no-boards --no-calls --shape rows,errors"), 0) << Read("stderr");
    const std::string output = Read("stdout");
    EXPECT_EQ(FirstCells(output, "Shapes"), (Strings{"errors", "rows"}));
    EXPECT_EQ(output.find("## "), output.rfind("## "));
}

TEST_F(ZekCompare, LeavesTheOtherToolsOut) {
    for (const char* tool : {"flatc", "protoc", "dtc"}) Replace(tool, "exit 1\n");
    ASSERT_EQ(Run("--short --no-tools --no-calls --shapes 0"), 0) << Read("stderr");
    EXPECT_EQ(FirstCells(Read("stdout"), "Whole processes"), (Strings{"500, zek", "1,000, zek"}));
}

/// The options of each command of the page that runs zek_compare.
Strings CommandsOfThePage() {
    const std::string begin = "`build-bench/bin/zek_compare ";
    const std::string page = SourceFile("docs/performance.md");
    Strings commands;
    for (std::size_t at = page.find(begin); at != std::string::npos; at = page.find(begin, at + 1)) {
        const std::size_t options = at + begin.size();
        commands.push_back(page.substr(options, page.find('`', options) - options));
    }
    return commands;
}

TEST_F(ZekCompare, TakesTheCommandsOfThePage) {
    const Strings commands = CommandsOfThePage();
    EXPECT_GE(commands.size(), 6U);
    for (const std::string& options : commands) {
        SCOPED_TRACE(options);
        EXPECT_EQ(Run("--short " + options), 0);
        EXPECT_EQ(Read("stderr"), "");
    }
}

/// A program that does not do what it should, and what is said of it.
struct BrokenProgram {
    const char* name;
    const char* program;
    std::string script;
    std::string message;
};

class BrokenCompare : public ZekCompare, public testing::WithParamInterface<BrokenProgram> {};

TEST_P(BrokenCompare, EndsWithOneAndTellsIt) {
    Replace(GetParam().program, GetParam().script);
    EXPECT_EQ(Run("--short"), 1);
    const std::string message = Read("stderr");
    EXPECT_TRUE(message.starts_with("zek_compare: ")) << message;
    EXPECT_NE(message.find(GetParam().message), std::string::npos) << message;
}

std::string Instead(const std::string& program, const std::string& text, const std::string& other) {
    std::string script = kPrograms.at(program);
    const std::size_t place = script.find(text);
    return place == std::string::npos ? "" : script.replace(place, text.size(), other);
}

INSTANTIATE_TEST_SUITE_P(
    Program, BrokenCompare,
    testing::Values(
        BrokenProgram{"CompilerIsSilent", "compile_once", "", "board-500.zki from: "},
        BrokenProgram{"CompilerTellsNothing", "compile_once", Instead("compile_once", "echo ']}'", "echo"),
                      "not what it should tell: "},
        BrokenProgram{"CompilerTellsNoPhases", "compile_once",
                      Instead("compile_once", "for phase in $phases", "for phase in"), "not what it should tell: "},
        BrokenProgram{"CompilerLeavesAPhaseOut", "compile_once",
                      Instead("compile_once", "'start:parse:check:end'", "'start:check:end'"),
                      "not what it should tell: "},
        BrokenProgram{"PhaseTakesNoTime", "compile_once", Instead("compile_once", "0.002", "0"),
                      "start of zek is 0.000000, which is no figure"},
        BrokenProgram{"CompilerAcceptsMistakes", "compile_once", Instead("compile_once", "code=1", "code=0"),
                      "exit code 0 instead of 1 of: "},
        BrokenProgram{"FloorIsSilent", "zek_floor", "", "not what it should tell: "},
        BrokenProgram{"FloorTakesNoTime", "zek_floor", "echo '{\"seconds\": 0}'\n",
                      "seconds of read image is 0.000000, which is no figure"},
        BrokenProgram{"FloorFails", "zek_floor", "exit 3\n", "exit code 3 instead of 0 of: "},
        BrokenProgram{"CallsAreSilent", "zek_calls", "", "no calls from: "},
        BrokenProgram{"CallsHaveNoResults", "zek_calls", Instead("zek_calls", "echo '{", "exit; echo '{"),
                      "no results from: "},
        BrokenProgram{"CallIsNotMeasured", "zek_calls",
                      Instead("zek_calls", "    printf", "    [ \"$call\" = SectionNamed ] || printf"),
                      "ns of SectionNamed was not measured"},
        BrokenProgram{"CallIsNotMeasuredAtEachSize", "zek_calls", Instead("zek_calls", "100 200", "100"),
                      "ns of gcGetSectByName was not measured"},
        BrokenProgram{"CallTakesNoTime", "zek_calls", Instead("zek_calls", "12.5", "0.0"),
                      "ns of gcGetSectByName is 0.000000, which is no figure"},
        BrokenProgram{"CallIsNotListed", "zek_calls", Instead("zek_calls", "then cat", "then head -n 3"),
                      "measured, but not listed: SectionNamed, absent"},
        BrokenProgram{"CallOfATargetIsMissing", "zek_calls",
                      Instead("zek_calls", "calls=$(dirname \"$0\")/calls", "calls=calls; head -n 3 bin/calls > calls"),
                      "ns of hash look-up was not measured"},
        BrokenProgram{"ToolWritesNothing", "flatc", "", "tool-500.bin from: flatc --binary"},
        BrokenProgram{"ToolPrintsNothing", "protoc", "", "tool-500.pb from: protoc --encode"},
        BrokenProgram{"ToolIsMissing", "dtc", "exit 127\n", "exit code 127 instead of 0 of: dtc -q"},
        BrokenProgram{"GeneratorFails", "zek_board", "exit 2\n", "exit code 2 instead of 0 of: "}),
    RowName());

}  // namespace
}  // namespace zek::test
