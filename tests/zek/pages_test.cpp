// The manual pages and completions that the build makes of the commands.
#include <regex>
#include <set>
#include <sstream>

#include "zek/command.h"

namespace zek::test {

namespace {

class ZekPages : public ZekTest {
protected:
    static std::string Page(const std::string& name) { return Read(std::string(ZEK_PAGES) + '/' + name); }
    static Result Shell(const std::string& shell, const std::string& text) {
        return Program({shell, "-c", text}, {.environment = {{"HOME", "."}}}).Finish();
    }

    /// Every match of the first group, in order.
    static Strings All(const std::string& text, const char* pattern) {
        const std::regex regex(pattern);
        Strings all;
        for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match) {
            all.push_back((*match)[1]);
        }
        return all;
    }

    /// The options in the help of a command.
    static Strings Options(const std::string& command) {
        return All(Zek({command, "--help"}).out, "\n  (?:-[A-Za-z],)?(--[a-z-]+)");
    }

    /// What bash offers behind these words, the last of which may be unfinished.
    static Strings Offered(const Strings& words) {
        std::string line = "source " ZEK_PAGES "/bash/zek; COMP_WORDS=(";
        for (const std::string& word : words) line += " '" + word + '\'';
        line += "); COMP_CWORD=" + std::to_string(words.size() - 1) + "; _zek; printf '%s\\n' \"${COMPREPLY[@]}\"";
        std::istringstream out(Shell("bash", line).out);
        Strings offered;
        for (std::string one; std::getline(out, one);) offered.push_back(one);
        return offered;
    }
};

TEST_F(ZekPages, ManualHasAPageForEachCommandWithEachOption) {
    const Strings commands = CommandNames();
    ASSERT_GE(commands.size(), 7U);
    std::set<std::string> pages = {"zek.1"};
    for (const std::string& command : commands) {
        pages.insert("zek-" + command + ".1");
        const std::string page = Page("man1/zek-" + command + ".1");
        EXPECT_NE(Page("man1/zek.1").find(std::regex_replace("zek-" + command, std::regex("-"), "\\-")),
                  std::string::npos);
        for (const std::string& option : Options(command)) {
            const std::string written = std::regex_replace(option, std::regex("-"), "\\-");
            EXPECT_NE(page.find("\\fB" + written + "\\fR"), std::string::npos) << command << ' ' << option;
        }
    }
    const Strings made = Names(ZEK_PAGES "/man1");
    EXPECT_EQ(std::set<std::string>(made.begin(), made.end()), pages);
}

TEST_F(ZekPages, ManualHasItsSectionsInTheUsualOrder) {
    Strings names = {"zek"};
    for (const std::string& command : CommandNames()) names.push_back("zek-" + command);
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        const std::string page = Page("man1/" + name + ".1");
        Strings wanted = {"NAME", "SYNOPSIS", "DESCRIPTION", name == "zek" ? "COMMANDS" : "OPTIONS", "EXIT STATUS"};
        if (name == "zek" || name == "zek-compile" || name == "zek-check") wanted.push_back("ENVIRONMENT");
        wanted.push_back("EXAMPLES");
        if (name != "zek") wanted.push_back("SEE ALSO");
        EXPECT_EQ(All(page, "\\.SH ([A-Z ]+)\n"), wanted);
    }
    const std::string page = Page("man1/zek-compile.1");
    for (const char* variable : {"NO_COLOR", "TERM", "COLUMNS", "SOURCE_DATE_EPOCH"}) {
        for (const char* file : {"man1/zek.1", "man1/zek-compile.1"}) {
            EXPECT_NE(Page(file).find(std::string(".TP\n\\fB") + variable + "\\fR\n"), std::string::npos) << variable;
        }
    }
}

TEST_F(ZekPages, ManualFitsEightyColumns) {
    for (const std::string& name : Names(ZEK_PAGES "/man1")) {
        SCOPED_TRACE(name);
        std::istringstream lines(
            Page("man1/" + name) +
            Shell("sh", "GROFF_NO_SGR=1 groff -man -Tascii -rLL=80n -P-cbou " ZEK_PAGES "/man1/" + name).out);
        for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << line;
    }
}

TEST_F(ZekPages, ManualIsSoundForTheFormatter) {
    const Result result = Shell("sh", "groff -man -Tutf8 -ww -z " ZEK_PAGES "/man1/*.1");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    const Result shown = Shell("sh", "GROFF_NO_SGR=1 groff -man -Tascii -P-cbou " ZEK_PAGES "/man1/zek-compile.1");
    EXPECT_NE(shown.out.find("zek compile [OPTIONS] SOURCE\n"), std::string::npos) << shown.out;
    EXPECT_NE(shown.out.find("-D, --define NAME=VALUE\n"), std::string::npos) << shown.out;
    EXPECT_NE(shown.out.find("  zek compile board.zek -o out/board.zki -g out/board.zkd -I common\n"),
              std::string::npos);
}

TEST_F(ZekPages, ShellsCanReadTheirCompletions) {
    for (const auto& [shell, file] : {std::pair{"bash", "bash/zek"}, {"zsh", "zsh/_zek"}, {"fish", "fish/zek.fish"}}) {
        const Result result = Program({shell, "-n", std::string(ZEK_PAGES) + '/' + file}).Finish();
        EXPECT_EQ(result.code, 0) << shell;
        EXPECT_EQ(result.err, "") << shell;
    }
}

TEST_F(ZekPages, BashOffersCommandsOptionsWordsAndFiles) {
    Strings all = CommandNames();
    all.insert(all.end(), {"help", "--help", "--version"});
    EXPECT_EQ(Offered({"zek", ""}), all);
    EXPECT_EQ(Offered({"zek", "ver"}), Strings{"verify"});
    EXPECT_EQ(Offered({"zek", "help", ""}), CommandNames());
    for (const std::string& command : CommandNames()) {
        const Strings offered = Offered({"zek", command, "--"});
        const Strings options = Options(command);
        EXPECT_EQ(std::set<std::string>(offered.begin(), offered.end()),
                  std::set<std::string>(options.begin(), options.end()))
            << command;
    }
    EXPECT_EQ(Offered({"zek", "compile", "--emit", ""}), (Strings{"image", "c"}));
    EXPECT_EQ(Offered({"zek", "check", "--format", "=", ""}), (Strings{"text", "json", "sarif", "github"}));
    EXPECT_EQ(Offered({"zek", "check", "--format", "="}), (Strings{"text", "json", "sarif", "github"}));
    EXPECT_EQ(Offered({"zek", "check", "--format", "=", "s"}), Strings{"sarif"});
    EXPECT_EQ(Offered({"zek", "explain", "W101", "E11"}), (Strings{"E110", "E111", "E112", "E113"}));
    EXPECT_EQ(Offered({"zek", "check", "-W", "e"}), Strings{"error"});
    for (const char* option : {"--no-warn", "--error"}) {
        EXPECT_EQ(Offered({"zek", "check", option, "W10"}), (Strings{"W101", "W102"})) << option;
        EXPECT_EQ(Offered({"zek", "check", option, "E"}), Strings{""}) << option;
    }
    Write("a b.zek", "");
    Write("other", "");
    EXPECT_EQ(Offered({"zek", "compile", "a"}), Strings{"a b.zek"});
    EXPECT_EQ(Offered({"zek", "compile", "-o", "o"}), Strings{"other"});
    EXPECT_EQ(Offered({"zek", "compile", "--max-files", "o"}), Strings{""});
}

TEST_F(ZekPages, FishOffersCommandsAndOptions) {
    const std::string offered = Shell("fish", "source " ZEK_PAGES "/fish/zek.fish; complete -C'zek '").out;
    EXPECT_NE(offered.find("help\tShow the help of a command"), std::string::npos) << offered;
    const std::string helped = Shell("fish", "source " ZEK_PAGES "/fish/zek.fish; complete -C'zek help '").out;
    for (const std::string& command : CommandNames()) {
        EXPECT_NE(offered.find(command + '\t'), std::string::npos) << command << offered;
        EXPECT_NE(('\n' + helped).find('\n' + command + '\n'), std::string::npos) << command << helped;
        const std::string options =
            Shell("fish", "source " ZEK_PAGES "/fish/zek.fish; complete -C'zek " + command + " --'").out;
        for (const std::string& option : Options(command)) {
            EXPECT_NE(options.find(option + '\t'), std::string::npos) << command << ' ' << option << options;
        }
    }
    EXPECT_EQ(Shell("fish", "source " ZEK_PAGES "/fish/zek.fish; complete -C'zek compile --emit '").out.substr(0, 2),
              "c\t");
    for (const char* words : {"explain", "check --error", "compile --no-warn", "check -W"}) {
        EXPECT_TRUE(Shell("fish", std::string("source " ZEK_PAGES "/fish/zek.fish; complete -C'zek ") + words + " W10'")
                        .out.starts_with("W101"))
            << words;
    }
}

TEST_F(ZekPages, ZshIsToldEveryOption) {
    for (const std::string& command : CommandNames()) {
        const Result told = Shell("zsh", "_arguments() { print -l -- \"$@\" }; words=(zek " + command +
                                             " x); CURRENT=3; source " ZEK_PAGES "/zsh/_zek");
        for (const std::string& option : Options(command)) {
            EXPECT_NE(told.out.find(option + '['), std::string::npos) << command << ' ' << option << told.err;
        }
    }
    const std::string explain = Shell("zsh",
                                      "_arguments() { print -l -- \"$@\" }; words=(zek explain x); CURRENT=3; "
                                      "source " ZEK_PAGES "/zsh/_zek")
                                    .out;
    EXPECT_NE(explain.find("*:CODE:(E001 "), std::string::npos) << explain;
    const std::string help = Shell("zsh",
                                   "_arguments() { print -l -- \"$@\" }; words=(zek help x); CURRENT=3; "
                                   "source " ZEK_PAGES "/zsh/_zek")
                                 .out;
    EXPECT_TRUE(help.starts_with(":COMMAND:(compile ")) << help;
    const Result commands =
        Shell("zsh", "_describe() { print -l -- ${(P)2} }; words=(zek x); CURRENT=2; f() { source " ZEK_PAGES
                     "/zsh/_zek }; f");
    EXPECT_TRUE(commands.out.starts_with("compile:Check a source and ")) << commands.out << commands.err;
    EXPECT_NE(commands.out.find("\nhelp:Show the help of a command\n"), std::string::npos) << commands.out;
}

}  // namespace

}  // namespace zek::test
