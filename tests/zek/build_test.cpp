// What a build asks of `zek compile`: dependency files, sources of C, equal bytes, words from outside.
#include <chrono>
#include <fstream>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>

#include "zek/command.h"

namespace zek::test {

namespace {

class ZekBuild : public ZekTest {
protected:
    static Result Shell(const std::string& command) { return Program({"sh", "-c", command}).Finish(); }

    /// A source in a folder of that name, with a file that it includes; `compile.sh` compiles it into main.zki.
    static void WriteIn(const std::string& folder) {
        std::filesystem::create_directory(folder);
        WriteSound(folder + "/part.zek");
        Write(folder + "/main.zek", "[INCLUDE]\nFILE = part.zek\n");
        Write("compile.sh",
              std::string(ZEK_PROGRAM) + " compile '" + folder + "/main.zek' -o main.zki -g main.zkd --depfile d\n");
    }

    /// Compiles a board whose threshold is the word LIMIT and gives it as the image has it, or what went wrong.
    static std::string LimitOf(const std::string& before, const Strings& options) {
        WriteSound("limit.zek");
        std::string text = Read("limit.zek");
        Write("limit.zek", before + text.replace(text.find("_WH = 40"), 8, "_WH = LIMIT"));
        Strings arguments = {"compile", "limit.zek"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Result result = Zek(arguments);
        if (result.code != 0) return result.err;
        const std::string tree = Zek({"tree", "limit.zki"}).out;
        const std::size_t at = tree.find("THRESHOLD_WH=") + 13;
        return tree.substr(at, tree.find('\n', at) - at);
    }
};

constexpr char kNoSyntax[] = "there is no way to write a name for both Make and Ninja: ";

TEST_F(ZekBuild, DependencyFileNamesOutputsAndEveryFileOnce) {
    WriteSound("part.zek");
    Write("a.zek", "[INCLUDE]\nFILE = part.zek\nFILE = part.zek\nFILE = zek/words.zek\n");
    // The second reading of the part defines everything again, so only the first compiles.
    Write("once.zek", "[INCLUDE]\nFILE = words.zek\nFILE = part.zek\nFILE = words.zek\n");
    Write("words.zek", "[DEFINE]\nW = 1\n");
    EXPECT_EQ(Zek({"compile", "a.zek", "--depfile", "d"}).code, 1);
    EXPECT_FALSE(std::filesystem::exists("d"));
    const Result result = Zek({"compile", "once.zek", "-o", "o.zki", "--depfile", "d"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(Read("d"), "o.zki once.zkd: \\\n  once.zek \\\n  words.zek \\\n  part.zek\n\nwords.zek:\n\npart.zek:\n");
}

TEST_F(ZekBuild, DependencyFileGoesToStandardOutputWhereItsNameIsADash) {
    WriteSound("a.zek");
    const Result result = Zek({"compile", "a.zek", "-o", "/dev/null", "--depfile", "-"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "a.zkd: \\\n  a.zek\n");
}

TEST_F(ZekBuild, DependencyFileIsWrittenWithTheImagesOrNotAtAll) {
    WriteSound("a.zek");
    Write("old", "old");
    const struct {
        Strings more;
        std::string why;
    } rows[] = {
        {{"--depfile", "missing/d"}, "cannot write missing/d: No such file or directory"},
        {{"--depfile", "a.zek"}, "the dependency file would replace a source: a.zek"},
        {{"--depfile", "./a.zki"}, "an image and the dependency file would go to the same file: a.zki and ./a.zki"},
        {{"--depfile", "a.zkd"}, "an image and the dependency file would go to the same file: a.zkd and a.zkd"},
        {{"--depfile", "old", "-o", "/dev/null", "-g", "/dev/zero"},
         "--depfile: neither image is a file: /dev/null and /dev/zero"},
        {{"--depfile", "old", "-o", "a;b"}, std::string(kNoSyntax) + "a;b"},
        {{"--depfile", "old", "-o", "a%b"}, "Make takes the name of an output for a pattern: a%b"},
    };
    for (const auto& row : rows) {
        Strings arguments = {"compile", "a.zek"};
        arguments.insert(arguments.end(), row.more.begin(), row.more.end());
        const Result result = Zek(arguments);
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.err, "zek: " + row.why + '\n');
    }
    EXPECT_EQ(Read("old"), "old");
    EXPECT_EQ(Names(), (Strings{"a.zek", "old"}));
}

/// Names that Make and Ninja must read alike.
constexpr const char* kFolders[] = {"a b",     "#a",  "a$b", "a:b",  "a\\b", "a]b",      "(a){b}",
                                    "a~@!,+b", "a%b", "$$",  "\xe4", " a",   "a  b$ #:c"};

TEST_F(ZekBuild, NinjaFindsTheFilesOfItsDependencyFile) {
    Write("build.ninja", "rule zek\n command = sh compile.sh\n depfile = d\n deps = gcc\nbuild main.zki: zek\n");
    for (const std::string folder : kFolders) {
        SCOPED_TRACE(folder);
        WriteIn(folder);
        const Result built = Shell("rm -f .ninja* main.zki; ninja && ninja -t deps main.zki");
        EXPECT_EQ(built.code, 0) << built.out << built.err;
        EXPECT_NE(built.out.find("\n    " + folder + "/main.zek\n    " + folder + "/part.zek\n"), std::string::npos)
            << built.out;
    }
}

TEST_F(ZekBuild, MakeFindsTheFilesOfItsDependencyFile) {
    Write("Makefile", "main.zki:\n\tsh compile.sh\n-include d\n");
    for (const std::string folder : kFolders) {
        SCOPED_TRACE(folder);
        WriteIn(folder);
        ASSERT_EQ(Shell("rm -f d main.zki; make -s").code, 0);
        const auto now = std::filesystem::last_write_time("main.zki");
        std::filesystem::last_write_time(folder + "/main.zek", now - std::chrono::hours(2));
        std::filesystem::last_write_time(folder + "/part.zek", now - std::chrono::hours(1));
        EXPECT_EQ(Shell("make -q").code, 0);
        std::filesystem::last_write_time(folder + "/part.zek", now + std::chrono::hours(1));
        EXPECT_EQ(Shell("make -q").code, 1);
        // Gone, and included no more.
        std::filesystem::remove(folder + "/part.zek");
        WriteSound(folder + "/main.zek");
        const Result gone = Shell("make");
        // The rule that says so would be a pattern.
        EXPECT_EQ(gone.code, folder == "a%b" ? 2 : 0) << gone.err;
    }
}

TEST_F(ZekBuild, NameThatMakeOrNinjaCannotReadIsRefused) {
    for (const std::string name : {"a\"b",    "a'b",   "a*b",    "a;b",  "a<b",  "a=b", "a>b",   "a?b",       "a^b",
                                   "a`b",     "a&b",   "a|b",    "a\tb", "a\nb", "ab:", "ab ",   "ab\\",      "a\\ b",
                                   "a\\\\#b", "a\\:b", "a[1].b", "a(1)", "(a)",  "~",   "~root", ".//./~root"}) {
        SCOPED_TRACE(name);
        WriteSound("a.zek");
        const Result result = Zek({"compile", "a.zek", "-o", name, "--depfile", "d"});
        EXPECT_EQ(result.code, 2);
        EXPECT_TRUE(result.err.starts_with("zek: " + std::string(kNoSyntax))) << result.err;
    }
    EXPECT_EQ(Names(), Strings{"a.zek"});
}

TEST_F(ZekBuild, EmitsTheImageAsAnArrayForC) {
    WriteSound("a.zek");
    ASSERT_EQ(Zek({"compile", "a.zek", "--timestamp", "7"}).code, 0);
    const Result result = Zek({"compile", "a.zek", "--timestamp", "7", "--emit", "c"});
    EXPECT_EQ(result.code, 0) << result.err;
    Write("main.c",
          "#include <stddef.h>\n#include <stdint.h>\n#include <stdio.h>\n"
          "extern const unsigned char a_image[];\nextern const size_t a_image_size;\n"
          "int main(void) {\n"
          "    if ((uintptr_t)a_image % 16 != 0) return 1;\n"
          "    return fwrite(a_image, 1, a_image_size, stdout) == a_image_size ? 0 : 2;\n}\n");
    for (const std::string compiler : {"gcc -std=c11", "g++ -std=c++11 -x c++", "g++ -std=c++20 -x c++"}) {
        SCOPED_TRACE(compiler);
        const Result built = Shell(compiler + " -Wall -Wextra -Werror -pedantic -c a.c && gcc main.c a.o -o main");
        EXPECT_EQ(built.code, 0) << built.err;
        EXPECT_EQ(Dump(Shell("./main").out), Dump(Read("a.zki")));
    }
}

TEST_F(ZekBuild, ArrayIsNamedByItsFile) {
    WriteSound("a.zek");
    const struct {
        std::string file;
        std::string name;
    } rows[] = {{"rev-2.board.c", "rev_2_board_image"},
                {"2u.c", "zek_2u_image"},
                {"\xe4.c", "zek___image"},
                {"-", "a_image"},
                {"_.c", "zek___image"}};
    for (const auto& row : rows) {
        const Result result = Zek({"compile", "a.zek", "--emit", "c", "-o", row.file});
        const std::string text = row.file == "-" ? result.out : Read(row.file);
        std::smatch found;
        ASSERT_TRUE(std::regex_search(text, found, std::regex("const unsigned char ([^[]*)\\["))) << result.err;
        EXPECT_EQ(found[1], row.name);
    }
    const Result wrong = Zek({"compile", "a.zek", "--emit", "rust"});
    EXPECT_EQ(wrong.code, 2);
    EXPECT_EQ(wrong.err, "zek: --emit: rust is none of image, c\nRun with --help for more information.\n");
}

TEST_F(ZekBuild, TimeStampIsThatOfTheOptionThenOfTheVariable) {
    WriteSound("a.zek");
    const struct {
        Strings more;
        const char* variable;
        unsigned stamp;
    } rows[] = {{{"--timestamp", "0"}, nullptr, 0},
                {{"--timestamp", "4294967295"}, "5", 4294967295U},
                {{}, "1700000000", 1700000000},
                // The low 32 bits, as the library has it.
                {{}, "4294967299", 3}};
    for (const auto& row : rows) {
        Strings arguments = {"compile", "a.zek"};
        arguments.insert(arguments.end(), row.more.begin(), row.more.end());
        Setting setting;
        if (row.variable) setting.environment = {{"SOURCE_DATE_EPOCH", row.variable}};
        ASSERT_EQ(Zek(arguments, setting).code, 0);
        for (const char* file : {"a.zki", "a.zkd"}) EXPECT_EQ(Read(file).substr(20, 4), Word(row.stamp));
        EXPECT_EQ(Zek({"verify", "a.zki", "a.zkd"}).code, 0);
    }
}

TEST_F(ZekBuild, TimeStampThatIsNoNumberEndsWithTwo) {
    WriteSound("a.zek");
    for (const std::string text : {"x", "1x", "-1", " 1", "18446744073709551616"}) {
        const std::string why = text + " is no number of seconds\n";
        const Result option = Zek({"compile", "a.zek", "--timestamp=" + text});
        EXPECT_EQ(option.code, 2);
        EXPECT_EQ(option.err, "zek: --timestamp: " + why);
        const Result variable = Zek({"compile", "a.zek"}, {.environment = {{"SOURCE_DATE_EPOCH", text}}});
        EXPECT_EQ(variable.code, 2);
        EXPECT_EQ(variable.err, "zek: SOURCE_DATE_EPOCH: " + why);
    }
    EXPECT_EQ(Zek({"compile", "a.zek"}, {.environment = {{"SOURCE_DATE_EPOCH", ""}}}).err,
              "zek: SOURCE_DATE_EPOCH: nothing is no number of seconds\n");
    EXPECT_EQ(Zek({"compile", "a.zek", "--timestamp", ""}).err, "zek: --timestamp: nothing is no number of seconds\n");
    EXPECT_EQ(Names(), Strings{"a.zek"});
}

TEST_F(ZekBuild, WordsOfTheCommandLineAreDefinedBeforeTheSourceIsRead) {
    const struct {
        std::string before;
        Strings options;
        std::string limit;
    } rows[] = {
        {"", {"-D", "LIMIT=40"}, "40"},
        {"", {"-DLIMIT=0x28"}, "40"},
        {"", {"--define", "LIMIT="}, "0"},
        {"", {"-D", "A=7", "-D", "LIMIT=A"}, "7"},
        {"", {"-D", "LIMIT=1", "-D", "LIMIT=2"}, "2"},
        {"[DEFINE]\nLIMIT = 9\n", {"-D", "LIMIT=1"}, "9"},
        {"[DEFINE]\nLIMIT = BASE\n", {"-D", "BASE=11"}, "11"},
        {"", {"-D", "LIMIT=-2"}, "4294967294"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.options));
        EXPECT_EQ(LimitOf(row.before, row.options), row.limit);
        EXPECT_EQ(Zek({"verify", "--pair", "limit.zki", "limit.zkd"}).code, 0);
    }
    EXPECT_EQ(Zek({"check", "-D", "LIMIT=1", "limit.zek", "limit.zek"}).code, 0);
    EXPECT_EQ(Zek({"check", "limit.zek"}).code, 1);
}

TEST_F(ZekBuild, WhatIsNoDefinitionEndsWithTwo) {
    const struct {
        std::string definition;
        std::string why;
    } rows[] = {
        {"LIMIT", "is not NAME=VALUE"},
        {"=1", "the name is missing"},
        {"1A=1", "a word must not begin with a digit"},
        {"#A=1", "a word must not begin with #, as a comment does"},
        {"A B=1", "a word has no blanks and none of , ; = \" [ ]"},
        {"LIMIT=12x", "12x is neither a number nor a word defined before"},
        {"LIMIT=12345678901", "12345678901 is neither a number nor a word defined before"},
        {"LIMIT=OTHER", "OTHER is neither a number nor a word defined before"},
        {"LIMIT=0x", "0x is neither a number nor a word defined before"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(LimitOf("", {"-D", row.definition}), "zek: -D " + row.definition + ": " + row.why + '\n');
    }
    EXPECT_EQ(Names(), Strings{"limit.zek"});
}

TEST_F(ZekBuild, ReadsStandardInputAndWritesStandardOutputWhereTheNamesAreDashes) {
    WriteSound("a.zek");
    ASSERT_EQ(Zek({"compile", "a.zek", "--timestamp", "1"}).code, 0);
    const Result piped = Shell(ZEK_PROGRAM " compile - -o - -g g.zkd --timestamp 1 < a.zek | cat");
    EXPECT_EQ(piped.code, 0);
    EXPECT_EQ(Dump(piped.out), Dump(Read("a.zki")));
    EXPECT_EQ(Shell("cat a.zek | " ZEK_PROGRAM " check -").code, 0);
    EXPECT_EQ(Shell(ZEK_PROGRAM " compile - < a.zek").err,
              "zek: standard input has no name for its images: give -o and -g\n");
    EXPECT_EQ(Shell(ZEK_PROGRAM " compile a.zek -o - -g - | cat; test ! -e -").err,
              "zek: both images would go to the same file: - and -\n");
    const Result full = Zek({"compile", "a.zek", "-o", "-", "-g", "other"}, {.out = "/dev/full"});
    EXPECT_EQ(full.code, 2);
    EXPECT_EQ(full.err, "zek: cannot write to standard output: No space left on device\n");
    EXPECT_EQ(Names(), (Strings{"a.zek", "a.zkd", "a.zki", "g.zkd"}));
}

TEST_F(ZekBuild, ProblemMatcherTakesErrorsAndWarningsApart) {
    std::ifstream file(ZEK_SOURCE_DIR "/share/zek/github/problem-matcher.json");
    const auto pattern = nlohmann::json::parse(file).at("problemMatcher").at(0).at("pattern").at(0);
    const std::regex regex(pattern.at("regexp").get<std::string>());
    Write("faulty.zek", "[GROUP]\nPARENT = 0\nNAME = Board\nCOLOUR = red\n\n[SENSR]\nNAME = Inlet\n");
    std::istringstream lines(Zek({"check", "faulty.zek"}).err + "zek: cannot read a:1: error: x\n");
    Strings found;
    for (std::string line; std::getline(lines, line);) {
        std::smatch match;
        if (!std::regex_match(line, match, regex)) continue;
        EXPECT_EQ(match[pattern.at("file").get<std::size_t>()], "faulty.zek");
        found.push_back(match[pattern.at("line").get<std::size_t>()].str() + ' ' +
                        match[pattern.at("severity").get<std::size_t>()].str());
        EXPECT_EQ(match[pattern.at("message").get<std::size_t>()].str().substr(0, 1), "[") << line;
    }
    EXPECT_EQ(found, (Strings{"4 warning", "6 error", "1 error"}));
    // With a column and a code.
    std::smatch match;
    const std::string full = "a.zek:3:7: error: is [odd] [E012]";
    ASSERT_TRUE(std::regex_match(full, match, regex));
    EXPECT_EQ(match[pattern.at("column").get<std::size_t>()], "7");
    EXPECT_EQ(match[pattern.at("message").get<std::size_t>()], "is [odd]");
    EXPECT_EQ(match[pattern.at("code").get<std::size_t>()], "E012");
}

TEST_F(ZekBuild, HooksRunCommandsThatTakeSources) {
    std::ifstream file(ZEK_SOURCE_DIR "/.pre-commit-hooks.yaml");
    std::size_t hooks = 0;
    WriteSound("-a.zek");
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("  entry: ")) continue;
        ++hooks;
        EXPECT_TRUE(line.starts_with("  entry: zek ")) << line;
        EXPECT_EQ(Shell(ZEK_PROGRAM + line.substr(12) + " -a.zek").code, 0) << line;
    }
    EXPECT_EQ(hooks, 2U);
}

}  // namespace

}  // namespace zek::test
