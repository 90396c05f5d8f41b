// The commands in the pages do what the pages say.
#include <algorithm>
#include <filesystem>
#include <regex>

#include "docs/page.h"
#include "docs/run.h"
#include "support/process_test.h"

namespace zek::test {
namespace {

class Commands : public ProcessTest {
protected:
    static int Zek(const std::string& words) { return RunCommand(ZEK_COMMAND " " + words); }

    /// Compiles the source that a page shows, by the name that the page gives it.
    static void Compile(const std::string& page, const std::string& source) {
        Write(source, Block(page, "zek " + source));
        ASSERT_EQ(Zek("compile " + source), 0) << Read("stderr");
    }

    /// What an image must hold for the dump in the page, and what it holds.
    static std::string Shown(const std::string& page, const std::string& image) {
        return Dump(BytesOfDump(Block(page, "dump " + image)));
    }
    static std::string Written(const std::string& image) { return Dump(WithoutTime(Read(image))); }
};

TEST_F(Commands, ShowTheTreeOfTheReadme) {
    Compile("README.md", "first.zek");
    EXPECT_TRUE(std::filesystem::exists("first.zkd"));
    EXPECT_EQ(Zek("tree first.zki"), 0);
    EXPECT_EQ(Read("stdout"), Block("README.md", "text zek tree"));
}

TEST_F(Commands, CheckAFaultySourceAsThePageShows) {
    Write("faulty.zek", Block("docs/language.md", "zek faulty.zek"));
    EXPECT_EQ(Zek("check faulty.zek"), 1);
    EXPECT_EQ(Read("stderr"), Block("docs/language.md", "text zek check"));
}

TEST_F(Commands, FindWhatThePagesAllowAndNothingElse) {
    const struct {
        const char* page;
        std::string source;
        std::vector<std::string> codes;
    } rows[] = {{"docs/findings.md", "allowed.zek", {"W101", "W101", "L161"}}, {"docs/lint.md", "fans.zek", {"L101"}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.page);
        const std::string text = Block(row.page, "zek " + row.source);
        Write(row.source, text);
        EXPECT_EQ(Zek("check " + row.source), 0);
        EXPECT_EQ(Read("stderr"), "");
        Write(row.source, std::regex_replace(text, std::regex("zek: allow"), ""));
        EXPECT_EQ(Zek("check --format github " + row.source), 0);
        const std::string found = Read("stdout");
        const std::regex title("title=([A-Z0-9]+)::");
        std::vector<std::string> codes;
        for (std::sregex_iterator match(found.begin(), found.end(), title), end; match != end; ++match) {
            codes.push_back((*match)[1]);
        }
        EXPECT_EQ(codes, row.codes) << found;
    }
}

TEST_F(Commands, PrintWhatTheirPageShows) {
    const std::string page = "docs/commands.md";
    Compile(page, "board.zek");
    std::string source = Read("board.zek");
    source.replace(source.find("LIMIT = 40"), 10, "LIMIT = 45");
    source.replace(source.find("TYPE         = 1"), 16, "TYPE         = 2");
    Write("changed.zek", source);
    ASSERT_EQ(Zek("compile changed.zek"), 0) << Read("stderr");
    const std::vector<std::string> shown = BlocksOf(page, "text zek ");
    ASSERT_GE(shown.size(), 7U);
    for (const std::string& words : shown) {
        SCOPED_TRACE(words);
        // What is different is an answer as well.
        EXPECT_EQ(Zek(words), words.starts_with("diff ") ? 1 : 0) << Read("stderr");
        const std::string block = Block(page, "text zek " + words);
        if (words.starts_with("map ")) {
            EXPECT_NE(Read("stdout").find('\n' + block), std::string::npos) << Read("stdout");
        } else {
            EXPECT_EQ(Read("stdout"), block);
        }
    }
    EXPECT_EQ(Zek("get --json board.zki GLOBAL/G_None"), 1);
    EXPECT_EQ(Read("stdout"), "");
    ASSERT_EQ(Zek("map board.zki board.zkd"), 0);
    const std::string map = Read("stdout");
    const std::string lines = std::to_string(std::count(map.begin(), map.end(), '\n'));
    EXPECT_NE(SourceFile(page).find("Of the " + lines + " lines"), std::string::npos) << lines;
}

TEST_F(Commands, FindTheExamplesLaidOut) {
    std::string sources;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ZEK_SOURCE_DIR "/examples")) {
        if (entry.path().extension() == ".zek") sources += ' ' + entry.path().string();
    }
    ASSERT_NE(sources, "");
    EXPECT_EQ(Zek("fmt --check" + sources), 0) << Read("stdout");
}

TEST_F(Commands, WriteTheCompiledImageThatThePageShows) {
    Compile("docs/compiled-image.md", "board.zek");
    EXPECT_EQ(Shown("docs/compiled-image.md", "board.zki"), Written("board.zki"));
}

TEST_F(Commands, WriteTheDebugImageThatThePageShows) {
    Compile("docs/debug-image.md", "lamp.zek");
    EXPECT_EQ(Shown("docs/debug-image.md", "lamp.zkd"), Written("lamp.zkd"));
}

}  // namespace
}  // namespace zek::test
