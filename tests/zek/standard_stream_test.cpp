// The file name -, for every command: standard input or output, or refused where that makes no sense.
#include <set>

#include "zek/command.h"

namespace zek::test {

namespace {

class ZekDash : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        for (const std::string name : {"a", "b"}) {
            WriteSound(name + ".zek", name == "a" ? 2 : 3);
            ASSERT_EQ(Zek({"compile", name + ".zek", "--timestamp", "1"}).code, 0);
        }
        files_ = Names();
    }

    static std::string Replaced(std::string text, const std::string& what, const std::string& by) {
        for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size()) {
            text.replace(at, what.size(), by);
        }
        return text;
    }

    Strings files_;
};

constexpr char kPath[] = "SENSOR/#2/NAME";

/// Each @ is standard input, and where it has this file, the command does what it does with the file's name.
TEST_F(ZekDash, StandsForStandardInputAndOutput) {
    const struct {
        Strings arguments;
        std::string in;
    } rows[] = {
        {{"compile", "@", "-o", "-", "-g", "/dev/null", "--timestamp", "1"}, "a.zek"},
        {{"compile", "a.zek", "-o", "/dev/null", "-g", "-", "--timestamp", "1"}, ""},
        {{"compile", "a.zek", "-o", "a.zki", "-g", "/dev/null", "--timestamp", "1", "--depfile", "-"}, ""},
        {{"check", "@"}, "a.zek"},
        {{"check", "b.zek", "@"}, "a.zek"},
        {{"explain", "E101"}, ""},
        {{"lint", "--list"}, ""},
        {{"verify", "@"}, "a.zki"},
        {{"verify", "b.zki", "@"}, "a.zkd"},
        {{"verify", "--json", "--notes", "@"}, "a.zkd"},
        {{"verify", "--pair", "@", "a.zkd"}, "a.zki"},
        {{"verify", "--pair", "--json", "a.zki", "@"}, "a.zkd"},
        {{"dump", "@"}, "a.zki"},
        {{"dump", "--json", "@"}, "a.zkd"},
        {{"tree", "@"}, "a.zkd"},
        {{"tree", "--json", "@"}, "a.zki"},
        {{"get", "@", kPath}, "a.zki"},
        {{"get", "--json", "@", kPath}, "a.zkd"},
        {{"origin", "@", kPath}, "a.zkd"},
        {{"origin", "@", kPath, "a.zki"}, "a.zkd"},
        {{"origin", "a.zkd", kPath, "@"}, "a.zki"},
        {{"diff", "@", "b.zki"}, "a.zki"},
        {{"diff", "b.zkd", "@"}, "a.zkd"},
        {{"map", "@"}, "a.zki"},
        {{"map", "@", "a.zkd"}, "a.zki"},
        {{"map", "a.zki", "@"}, "a.zkd"},
        {{"decompile", "@"}, "a.zkd"},
        {{"decompile", "@", "-o", "-"}, "a.zkd"},
        {{"decompile", "@", "-o", "-"}, "a.zki"},
        {{"fmt", "--check", "@"}, "a.zek"},
    };
    std::set<std::string> commands = {"new"};  // writes a folder
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        commands.insert(row.arguments[0]);
        Strings dashed = row.arguments;
        Strings named = row.arguments;
        std::replace(dashed.begin(), dashed.end(), std::string("@"), std::string("-"));
        std::replace(named.begin(), named.end(), std::string("@"), row.in);
        const Result result = Zek(dashed, {.in = row.in});
        const Result wanted = Zek(named);
        EXPECT_EQ(result.code, wanted.code);
        EXPECT_LT(wanted.code, 2) << wanted.err;
        EXPECT_EQ(result.err, "");
        const bool bytes = row.arguments[0] == "compile" || row.in.empty();
        EXPECT_EQ(result.out, bytes ? wanted.out : Replaced(wanted.out, row.in, "-"));
        EXPECT_EQ(Names(), files_) << "nothing has that name";
    }
    const Strings all = CommandNames();
    EXPECT_EQ(commands, std::set<std::string>(all.begin(), all.end()));
}

TEST_F(ZekDash, OfFmtIsBoth) {
    Write("f.zek", "[GLOBAL]  \nG_A=1\n");
    for (const Strings& arguments : std::vector<Strings>{{"fmt", "-"}, {"fmt"}}) {
        const Result result = Zek(arguments, {.in = "f.zek"});
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.out, "[GLOBAL]\nG_A = 1\n");
    }
    EXPECT_EQ(Read("f.zek"), "[GLOBAL]  \nG_A=1\n");
}

TEST_F(ZekDash, IsRefusedWhereItMakesNoSense) {
    const std::string help = "\nRun with --help for more information.";
    const std::string once = "standard input can be read only once, and - stands for several files" + help;
    const std::string folder = "- is standard input or output and no folder; a folder of that name is ./-" + help;
    const std::string both = "the findings and a file would both go to standard output";
    const struct {
        Strings arguments;
        std::string why;
    } rows[] = {
        {{"compile", "-"}, "standard input has no name for its images: give -o and -g"},
        {{"compile", "-", "-o", "x"}, "standard input has no name for its images: give -o and -g"},
        {{"compile", "a.zek", "-o", "-", "-g", "-"}, "both images would go to the same file: - and -"},
        {{"compile", "a.zek", "-o", "-", "--depfile", "-"},
         "an image and the dependency file would go to the same file: - and -"},
        {{"compile", "a.zek", "--format", "json", "-o", "-"}, both},
        {{"compile", "a.zek", "--format", "sarif", "-g", "-"}, both},
        {{"compile", "a.zek", "--format", "github", "--depfile", "-"}, both},
        {{"compile", "a.zek", "-I", "-"}, "--include: " + folder},
        {{"check", "-", "-"}, once},
        {{"check", "-", "a.zek", "-"}, once},
        {{"verify", "-", "-"}, once},
        {{"verify", "--pair", "-", "-"}, once},
        {{"origin", "-", kPath, "-"}, once},
        {{"diff", "-", "-"}, once},
        {{"map", "-", "-"}, once},
        {{"fmt", "-", "-"}, once},
        {{"new", "-"}, "DIR: " + folder},
        {{"explain", "-", "-"}, "there is no code -"},
        {{"lint", "-"}, "'zek lint --list' lists the rules; 'zek check -' runs them"},
        {{"dump", "-", "-"}, "there is no place for -" + help},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        const Result result = Zek(row.arguments, {.in = "a.zek"});
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "zek: " + row.why + '\n');
        EXPECT_EQ(Names(), files_);
    }
    EXPECT_EQ(Zek({"new", "./-"}).code, 0);
    EXPECT_TRUE(std::filesystem::is_directory("-"));
}

}  // namespace

}  // namespace zek::test
