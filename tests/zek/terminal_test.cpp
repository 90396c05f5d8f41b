// What is shown on a terminal, and what elsewhere.
#include <sstream>

#include "zek/command.h"

namespace zek::test {

namespace {

class ZekTerminal : public ZekTest {
protected:
    /// The line with the caret below the line of the source; both as they come.
    struct Excerpt {
        std::string line;
        std::string caret;
    };

    static Excerpt ExcerptOf(const std::string& said) {
        std::istringstream lines(said);
        Excerpt excerpt;
        for (std::string line; std::getline(lines, line); excerpt.line = line) {
            if (line.find('^') == line.npos) continue;
            excerpt.caret = line;
            return excerpt;
        }
        ADD_FAILURE() << said;
        return excerpt;
    }

    /// What a terminal with so many columns gets for a property with this text behind its first comma.
    static Excerpt On(unsigned columns, const std::string& before, const std::string& after,
                      const std::string& wanted = {}) {
        Write("a.zek",
              "[PROPERTY]\nK = " + before + "\n[GROUP]\nPARENT = 0\nNAME = " + before + ",HERE" + after + "\n");
        Setting setting = {.terminalColumns = static_cast<unsigned short>(columns)};
        if (!wanted.empty()) setting.environment = {{"COLUMNS", wanted}};
        return ExcerptOf(Zek({"check", "--color=never", "--error=W101", "a.zek"}, setting).err);
    }
};

bool HasColour(const std::string& text) { return text.find('\x1b') != text.npos; }

TEST_F(ZekTerminal, HasColoursUnlessSomebodyMinds) {
    Write("a.zek", "[FOO]\n");
    const struct {
        Strings environment;
        Strings options;
        bool colour;
    } rows[] = {
        {{"TERM", "xterm"}, {}, true},         {{"NO_COLOR", "1"}, {}, false},
        {{"NO_COLOR", ""}, {}, true},          {{"TERM", "dumb"}, {}, false},
        {{"TERM", "xterm"}, {"never"}, false}, {{"NO_COLOR", "1"}, {"always"}, true},
        {{"TERM", "dumb"}, {"always"}, true},  {{"TERM", "xterm"}, {"auto"}, true},
    };
    for (const auto& row : rows) {
        Strings words = {"check", "a.zek"};
        if (!row.options.empty()) words.push_back("--color=" + row.options[0]);
        SCOPED_TRACE(row.environment[0] + row.environment[1] + words.back());
        const Setting on = {.terminalColumns = 80, .environment = {{row.environment[0], row.environment[1]}}};
        EXPECT_EQ(HasColour(Zek(words, on).err), row.colour);
    }
    EXPECT_FALSE(HasColour(Zek({"check", "a.zek"}, {.environment = {{"TERM", "xterm"}, {"NO_COLOR", ""}}}).err));
    EXPECT_TRUE(HasColour(Zek({"check", "--color=always", "a.zek"}).err));
    EXPECT_EQ(Zek({"check", "--color", "pink", "a.zek"}).code, 2);
}

TEST_F(ZekTerminal, ShowsALineInOneRow) {
    for (const unsigned columns : {40U, 60U, 80U, 120U, 200U}) {
        SCOPED_TRACE(columns);
        const Excerpt shown = On(columns, std::string(300, 'a'), ',' + std::string(300, 'b'));
        EXPECT_EQ(shown.line.size(), columns);
        EXPECT_LE(shown.caret.size(), columns);
        EXPECT_EQ(shown.line.substr(shown.caret.find('^'), 4), "HERE") << shown.line << '\n' << shown.caret;
        EXPECT_EQ(shown.caret.substr(shown.caret.find('^')), "^~~~");
    }
}

TEST_F(ZekTerminal, TakesTheWidthOfColumnsFirstAndEightyForNone) {
    const std::string far(300, 'a');
    EXPECT_EQ(On(100, far, far, "72").line.size(), 72U);
    EXPECT_EQ(On(100, far, far, "wide").line.size(), 100U);
    EXPECT_EQ(On(100, far, far, "0").line.size(), 100U);
    EXPECT_EQ(On(10, far, far).line.size(), 40U);
}

/// Tabs go to the same place in both lines, since both begin with eight columns.
TEST_F(ZekTerminal, UnderlinesWhatIsMeant) {
    const struct {
        std::string before;
        std::string blanks;
    } rows[] = {
        {"abc", "    "},
        {"\xe6\xb8\xa9\xe5\xba\xa6", "     "},         // two wide characters
        {"e\xcc\x81", "  "},                           // an accent of its own
        {"\xf0\x9f\x8c\xa1\xf0\x9f\x98\x80", "    "},  // a thermometer, narrow, and a face, wide
        {"a\tb", " \t  "},
        {"\xff", "     "},  // shown as \xff
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.before);
        EXPECT_EQ(On(80, row.before, "").caret, "      |        " + row.blanks + "^~~~");
    }
}

TEST_F(ZekTerminal, UnderlinesAllColumnsOfWideCharacters) {
    Write("a.zek", "[GROUP]\nPARENT = 0\nNAME = a,\xe6\xb8\xa9\xe5\xba\xa6,b\n");
    EXPECT_EQ(ExcerptOf(Zek({"check", "--error=W101", "--color=never", "a.zek"}, {.terminalColumns = 80}).err).caret,
              "      |          ^~~~");
}

TEST_F(ZekTerminal, GetsNothingThatItObeysFromRawMessages) {
    Write("a.zek", "[F\x1b[31mOO]\n\tK=\xff\n");
    const std::string there = Zek({"check", "--raw", "a.zek"}, {.terminalColumns = 80}).err;
    EXPECT_EQ(there.find('\x1b'), there.npos) << there;
    EXPECT_NE(there.find("F\\x1b[31mOO"), there.npos) << there;
    const std::string elsewhere = Zek({"check", "--raw", "a.zek"}).err;
    EXPECT_NE(elsewhere.find("F\x1b[31mOO"), elsewhere.npos) << elsewhere;
}

}  // namespace

}  // namespace zek::test
