#include <algorithm>
#include <array>
#include <map>
#include <sstream>

#include "docs/page.h"
#include "zek/command.h"

namespace zek::test {

namespace {

class ZekUsage : public ZekTest {};

TEST_F(ZekUsage, HelpOfEveryCommandHasAnExample) {
    for (const std::string& command : CommandNames()) {
        SCOPED_TRACE(command);
        const Result help = Zek({command, "--help"});
        EXPECT_EQ(help.code, 0);
        EXPECT_EQ(help.err, "");
        EXPECT_NE(help.out.find("Usage: zek " + command + " "), std::string::npos) << help.out;
        EXPECT_NE(help.out.find("Example:\n  zek " + command + " "), std::string::npos) << help.out;
    }
}

TEST_F(ZekUsage, HelpNamesTheCommandsAndTheExitCodes) {
    const Result help = Zek({"--help"});
    EXPECT_EQ(help.code, 0);
    EXPECT_EQ(help.err, "");
    Strings texts = {"Example:\n  zek compile ", "\nExit codes:\n  0 fine\n  1 errors in a source, a difference",
                     "\n  2 the command line is wrong", "\n  3 a file is not a valid image\n"};
    for (const std::string& text : texts) EXPECT_NE(help.out.find(text), std::string::npos) << text << "\n" << help.out;
}

/// What the exit codes of a command mean, as its help says.
std::map<int, std::string> ExitCodesOf(const std::string& command) {
    const std::string help = Zek({command, "--help"}).out;
    std::istringstream lines(help.substr(help.find("\nExit codes:\n") + 1));
    std::string line;
    std::getline(lines, line);
    std::map<int, std::string> exits;
    while (std::getline(lines, line)) {
        if (line.starts_with("    ")) {
            std::prev(exits.end())->second += line.substr(3);
        } else if (!line.empty()) {
            exits[line[2] - '0'] = line.substr(4);
        }
    }
    return exits;
}

TEST_F(ZekUsage, HelpFitsEightyColumnsBelowTheOptions) {
    for (const std::string& command : CommandNames()) {
        SCOPED_TRACE(command);
        const std::string help = Zek({command, "--help"}).out;
        std::istringstream lines(help.substr(help.find("\nExample:\n")));
        for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << line;
    }
}

/// A row for each code and meaning, with the commands for which it has that.
TEST_F(ZekUsage, ExitCodesAreThoseOfThePage) {
    std::vector<std::array<std::string, 3>> rows;  // code, meaning, commands
    for (const int code : {0, 1, 2, 3}) {
        const std::string number = std::to_string(code);
        for (const std::string& command : CommandNames()) {
            const std::map<int, std::string> exits = ExitCodesOf(command);
            ASSERT_TRUE(exits.contains(0) && exits.contains(2)) << command;
            if (!exits.contains(code)) continue;
            const std::string& means = exits.at(code);
            auto row = std::find_if(rows.begin(), rows.end(),
                                    [&](const auto& other) { return other[0] == number && other[1] == means; });
            if (row == rows.end()) row = rows.insert(rows.end(), {number, means, ""});
            (*row)[2] += ((*row)[2].empty() ? "`" : ", `") + command + '`';
        }
    }
    std::string table = "| Exit code | Of | Means |\n|---|---|---|\n";
    for (const auto& [code, means, commands] : rows) {
        const bool isOfAll = std::count(commands.begin(), commands.end(), ',') + 1 == std::ssize(CommandNames());
        table += "| " + code + " | " + (isOfAll ? "all" : commands) + " | " + means + " |\n";
    }
    EXPECT_NE(SourceFile("docs/language.md").find(table + '\n'), std::string::npos) << table;
}

TEST_F(ZekUsage, HelpIsACommandToo) {
    EXPECT_EQ(Zek({"help"}).out, Zek({"--help"}).out);
    for (const std::string& command : CommandNames()) {
        const Result result = Zek({"help", command});
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.out, Zek({command, "--help"}).out);
    }
}

TEST_F(ZekUsage, HelpCallsThingsByOneName) {
    const std::string help = Zek({"--help"}).out;
    EXPECT_NE(help.find("Usage: zek [OPTIONS] COMMAND\n"), std::string::npos) << help;
    EXPECT_NE(help.find("\nCommands:\n  compile "), std::string::npos) << help;
    for (const std::string command : {"compile", "check"}) {
        const std::string text = Zek({command, "--help"}).out;
        EXPECT_NE(text.find("\n  -I,--include DIR            Look"), std::string::npos) << text;
    }
}

TEST_F(ZekUsage, WrongCommandLineIsToldAsItIs) {
    const struct {
        Strings arguments;
        std::string why;
    } rows[] = {
        {{}, "a command is required"},
        {{"frobnicate", "a.zek"}, "there is no command frobnicate"},
        {{"ckeck", "a.zek"}, "there is no command ckeck; did you mean check?"},
        {{"help", "dmup"}, "there is no command dmup; did you mean dump?"},
        {{"--verison"}, "there is no option --verison; did you mean --version?"},
        {{"--versionn"}, "there is no option --versionn; did you mean --version?"},
        {{"--versionn", "check", "a.zek"}, "there is no option --versionn; did you mean --version?"},
        {{"--colr=always"}, "there is no option --colr"},
        {{"check", "--colr=always", "a.zek"}, "there is no option --colr; did you mean --color?"},
        {{"compile", "a.zek", "--debugimage", "b"}, "there is no option --debugimage; did you mean --debug-image?"},
        {{"dump", "a", "b"}, "there is no place for b"},
        {{"dump", "a", "b", "[c]"}, "there is no place for b [c]"},
        // Behind -- nothing is an option.
        {{"get", "--", "-dash.zki", "SENSOR/S1/ID", "extra"}, "there is no place for extra"},
        {{"get", "--", "-dash.zki", "SENSOR/S1/ID", "--extra", "-x"}, "there is no place for --extra -x"},
        {{"get", "a", "b", "--", "-x"}, "there is no place for -x"},
        {{"dump", "a", "--", "--no-such"}, "there is no place for --no-such"},
        {{"frobnicate", "check", "a.zek"}, "there is no command frobnicate"},
        {{"dump", "--extra", "--", "a", "b"}, "there is no option --extra"},
        {{"--", "frobnicate"}, "there is no command frobnicate"},
        {{"--", "--version"}, "there is no command --version"},
        {{"--"}, "a command is required"},
        {{"--frobnicate"}, "there is no option --frobnicate"},
        {{"-V"}, "there is no option -V"},
        {{"compile"}, "SOURCE is required"},
        {{"check", "a.zek", "--frobnicate"}, "there is no option --frobnicate"},
        {{"compile", "a.zek", "-o", ""}, "a file name is empty"},
        {{"check", "a.zek", "--max-files", "0"}, "--max-files: 0 is not a number from 1 to 999999999"},
        {{"check", "a.zek", "--max-files", "1x"}, "--max-files: 1x is not a number from 1 to 999999999"},
        {{"compile", "a.zek", "--max-files", "1000000000"},
         "--max-files: 1000000000 is not a number from 1 to 999999999"},
        // Nothing that a terminal would obey.
        {{"--\x1b[31mfoo", "x"}, "there is no option --\\x1b[31mfoo"},
        {{"\x1b[31m\n"}, "there is no command \\x1b[31m\\x0a"},
        {{"check", "x", "--\xff\x1b"}, "there is no option --\\xff\\x1b"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        EXPECT_EQ(Zek(row.arguments).err, "zek: " + row.why + "\nRun with --help for more information.\n");
    }
}

TEST_F(ZekUsage, LintPointsToCheck) {
    WriteSound("a.zek");
    for (const Strings& words : std::vector<Strings>{{"lint", "a.zek"}, {"lint", "--list", "a.zek"}}) {
        const Result result = Zek(words);
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "zek: 'zek lint --list' lists the rules; 'zek check a.zek' runs them\n");
    }
}

TEST_F(ZekUsage, VersionIsThatOfTheProject) {
    const Result version = Zek({"--version"});
    EXPECT_EQ(version.code, 0);
    EXPECT_EQ(version.out, "zek " ZEK_TOOL_VERSION "\n");
    EXPECT_EQ(version.err, "");
}

TEST_F(ZekUsage, WrongCommandLineEndsWithTwo) {
    WriteSound("a.zek");
    const std::vector<Strings> rows = {{},
                                       {"frobnicate"},
                                       {"--frobnicate"},
                                       {"compile"},
                                       {"compile", "a.zek", "b.zek"},
                                       {"compile", "--frobnicate", "a.zek"},
                                       {"compile", "a.zek", "-o"},
                                       {"compile", "a.zek", "-o", ""},
                                       {"compile", "a.zek", "-g", ""},
                                       {"compile", ""},
                                       {"check"},
                                       {"check", "a.zek", ""},
                                       {"check", "a.zek", "-o", "b"},
                                       {"check", "a.zek", "--max-files"},
                                       {"check", "a.zek", "--max-files", "-1"},
                                       {"verify"},
                                       {"verify", "--frobnicate", "a"},
                                       {"verify", "a", ""},
                                       {"dump"},
                                       {"dump", "a", "b"},
                                       {"tree"},
                                       {"tree", "a", "b"}};
    for (const Strings& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row));
        const Result result = Zek(row);
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.err.starts_with("zek: ")) << result.err;
    }
    EXPECT_EQ(Names(), Strings{"a.zek"});
}

TEST_F(ZekUsage, NameMayLookLikeAnOptionOrAList) {
    WriteSound("-a.zek");
    EXPECT_EQ(Zek({"check", "--", "-a.zek"}).code, 0);
    WriteSound("[a,b]");
    EXPECT_EQ(Zek({"check", "[a,b]"}).err, "");
    EXPECT_EQ(Zek({"check", "[a,b]", "./-a.zek"}).code, 0);
}

TEST_F(ZekUsage, BracketsAreTakenAsTheyStand) {
    WriteSound("[a,b]");
    ASSERT_EQ(Zek({"compile", "[a,b]", "-o", "[i,j]", "-g", "[]"}).code, 0);
    EXPECT_EQ(Names(), (Strings{"[]", "[a,b]", "[i,j]"}));
    EXPECT_EQ(Zek({"get", "[i,j]", "SENSOR/none/NAME", "--default", "[none,1]"}).out, "[none,1]\n");
    EXPECT_EQ(Zek({"check", "[none,1]"}).err, "zek: cannot read [none,1]: No such file or directory\n");
    EXPECT_EQ(Zek({"check", "[a,b]", "--format", "[json]"}).err,
              "zek: --format: [json] is none of text, json, sarif, github\nRun with --help for more information.\n");
    EXPECT_EQ(Zek({"check", "[a,b]", "-D", "[x]"}).code, Zek({"check", "[a,b]", "-D", "x"}).code);
    EXPECT_EQ(Zek({"[check]"}).err, "zek: there is no command [check]\nRun with --help for more information.\n");
}

struct Unwritable {
    const char* name;
    Setting setting;
    const char* reason;
};

class ZekStandardOutput : public ZekTest, public testing::WithParamInterface<Unwritable> {};

TEST_P(ZekStandardOutput, ThatCannotBeWrittenEndsWithTwo) {
    WriteSound("a.zek");
    ASSERT_EQ(Zek({"compile", "a.zek"}).code, 0);
    const std::map<std::string, std::vector<Strings>> rows = {
        {"compile", {{"b.zek", "-o", "-", "-g", "b.zkd"}, {"b.zek", "--format", "json"}}},
        {"check", {{"--format", "json", "a.zek"}, {"--format", "github", "bad.zek"}}},
        {"explain", {{}, {"W101"}, {"--markdown"}}},
        {"verify", {{"a.zki"}, {"--json", "a.zki"}}},
        {"dump", {{"a.zki"}, {"--json", "a.zkd"}}},
        {"tree", {{"a.zki"}, {"--json", "a.zki"}}},
        {"get", {{"a.zki", "GROUP/Board/NAME"}}},
        {"origin", {{"a.zkd", "GROUP/Board/NAME"}}},
        {"diff", {{"--json", "a.zki", "a.zki"}}},
        {"map", {{"a.zki"}}},
        {"fmt", {{"--check", "ragged.zek"}}},
        {"decompile", {{"a.zki"}, {"a.zkd"}}},
        {"new", {{"board"}}},
        {"lint", {{"--list"}}},
    };
    WriteSound("b.zek");
    Write("bad.zek", "[FOO]\n");
    Write("ragged.zek", "  [GROUP]\n");
    const auto fails = [](const Strings& arguments) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const Result result = Zek(arguments, GetParam().setting);
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.err, std::string("zek: cannot write to standard output: ") + GetParam().reason + '\n');
    };
    for (const char* option : {"--help", "--version"}) fails({option});
    ASSERT_FALSE(CommandNames().empty());
    for (const std::string& command : CommandNames()) {
        ASSERT_TRUE(rows.contains(command)) << command;
        fails({command, "--help"});
        for (Strings arguments : rows.at(command)) {
            arguments.insert(arguments.begin(), command);
            fails(arguments);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Out, ZekStandardOutput,
                         testing::Values(Unwritable{"Full", {.out = "/dev/full"}, "No space left on device"},
                                         Unwritable{"Closed", {.closedOut = true}, "Bad file descriptor"},
                                         Unwritable{"NobodyReads", {.readerGone = true}, "Broken pipe"}),
                         RowName());

TEST_F(ZekUsage, CompileNeedsNoStandardOutput) {
    WriteSound("a.zek");
    const Result result = Zek({"compile", "a.zek"}, {.closedOut = true});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(Names(), (Strings{"a.zek", "a.zkd", "a.zki"}));
}

}  // namespace

}  // namespace zek::test
