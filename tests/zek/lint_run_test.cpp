// The list of the rules, and where they are run.
#include <algorithm>
#include <filesystem>
#include <sstream>

#include "boards/boards.h"
#include "boards/source_files.h"
#include "code_table.h"
#include "zek/lint_source.h"

namespace zek::test {

namespace {

/// The codes of the table that the rules have.
std::vector<const tool::CodeRow*> LintRows() {
    std::vector<const tool::CodeRow*> rows;
    for (const tool::CodeGroup& group : tool::CodeGroups()) {
        for (const tool::CodeRow& row : group.rows) {
            if (group.origin == tool::Origin::kLint) rows.push_back(&row);
        }
    }
    return rows;
}

TEST_F(ZekLint, ListsEachRuleWithCodeNameAndSentence) {
    const Result result = Zek({"lint", "--list"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    std::istringstream lines(result.out);
    std::string line;
    for (const tool::CodeRow* row : LintRows()) {
        ASSERT_TRUE(std::getline(lines, line)) << row->code;
        EXPECT_TRUE(line.starts_with(std::string(row->code) + "  ")) << line;
        ASSERT_GT(line.size(), 28U);
        const std::string sentence = line.substr(28);
        EXPECT_TRUE(sentence.ends_with('.')) << line;
        EXPECT_TRUE(std::string(row->cause).starts_with(sentence)) << line;
    }
    EXPECT_FALSE(std::getline(lines, line)) << line;
    const Result bare = Zek({"lint"});
    EXPECT_EQ(bare.code, 2);
    EXPECT_EQ(bare.err, "zek: 'zek lint --list' lists the rules; 'zek check' runs them\n");
}

TEST_F(ZekLint, PageNamesEveryRule) {
    const Result list = Zek({"lint", "--list"});
    EXPECT_NE(Read(ZEK_LINT_PAGE).find("\n```text zek lint\n" + list.out + "```\n"), std::string::npos) << list.out;
}

TEST_F(ZekLint, FindsItsExamples) {
    for (const tool::CodeRow* row : LintRows()) EXPECT_NE(Found(row->example, row->code), "") << row->code;
}

TEST_F(ZekLint, LeavesExitCodeAndCompileAlone) {
    Write("a.zek", kView + "P_ICON = fan\n");
    EXPECT_EQ(Zek({"check", "a.zek"}).code, 0);
    const Result compiled = Zek({"compile", "a.zek"});
    EXPECT_EQ(compiled.code, 0);
    EXPECT_EQ(compiled.err, "");
}

TEST_F(ZekLint, IsAllowedByComments) {
    EXPECT_EQ(Found(kView + "P_ICON = fan ; zek: allow L101\n"), "");
    EXPECT_EQ(Found(kView + "; zek: allow L101\nP_ICON = fan\n"), "");
    EXPECT_EQ(Found(kView + "SENSORS = 1 ; zek: allow L105\n[PROPERTY]\nA = 1\n"), "");
    EXPECT_EQ(Found("[PROPERTY]\nA = 1 ; zek: allow L101\n"),
              "2:20: nothing is found here that 'zek: allow L101' would allow [L001]\n");
}

TEST_F(ZekLint, RunsOnlyTheRulesOfTheTextWhereTheSourceHasErrors) {
    EXPECT_EQ(Found("[GROUP]\n[PROPERTY]\nA = \"b\n" + kView + "P_ICON = fan\n"),
              "3:6: [PROPERTY]:A, the quote is not closed, so that it takes everything to the end [L162]\n");
}

/// Another source may use what stands in a file that both read.
TEST_F(ZekLint, LeavesAloneWhatOtherSourcesMayUse) {
    std::filesystem::create_directories("one/inner");
    std::filesystem::create_directories("two");
    Write("shared.zek", "[DEFINE]\nSHARED = 1\n");
    Write("one/inner/own.zek", "[DEFINE]\nOWN = 1\n");
    Write("one/one.zek",
          "[INCLUDE]\nFILE = ../shared.zek\nFILE = inner/own.zek\nFILE = zek/words.zek\n[DEFINE]\nMAIN = 1\n");
    Write("two/two.zek", "[PROPERTY]\nA = 1\n");
    const std::string own = "2:1: [DEFINE]:OWN, nothing uses the word OWN [L135]\n";
    const std::string main = "6:1: [DEFINE]:MAIN, nothing uses the word MAIN [L135]\n";
    EXPECT_EQ(FoundIn({"check", "one/one.zek"}, "L135"), main + own);
    EXPECT_EQ(FoundIn({"check", "one/one.zek", "two/two.zek"}, "L135"), main);
    Write("one/two.zek", "");
    EXPECT_EQ(FoundIn({"check", "one/one.zek"}, "L135"), main);
}

TEST_F(ZekLint, LooksOnceAtAFileThatIsReadUnderTwoNames) {
    std::filesystem::create_directory("parts");
    Write("parts/words.zek", "[DEFINE]\nLIMIT = 12abc\n");
    Write("a.zek",
          "[INCLUDE]\nFILE = parts/words.zek\nFILE = ./parts/words.zek\nFILE = parts//../parts/words.zek\n"
          "[GLOBAL]\nG_A = VT_VALUE,LIMIT\n[DEFINE]\nVT_VALUE = 1\n");
    EXPECT_EQ(Found(Read("a.zek"), "L111"),
              "2:9: [DEFINE]:LIMIT, 12abc counts as 12: what stands behind the digits is ignored [L111]\n");
}

TEST_F(ZekLint, FindsNothingInTheExample) {
    const std::filesystem::path example = ZEK_EXAMPLE;
    EXPECT_EQ(Zek({"check", example.string()}).err, "");
}

/// Those with mistakes aside, and the one of rows, whose first table leaves bytes out.
TEST_F(ZekLint, FindsNothingInBoards) {
    for (const std::string_view shape : bench::ShapeNames()) {
        SCOPED_TRACE(shape);
        const bool rows = shape == "rows";
        bench::WriteIncluded(".", shape, 50);
        const std::string found = Found(bench::ZekSource(shape, 50));
        EXPECT_EQ(found.empty(), !rows) << found;
        EXPECT_EQ(found.find("[L151]") != found.npos, rows) << found;
        EXPECT_EQ(std::count(found.begin(), found.end(), '\n'), rows ? 1 : 0) << found;
    }
}

}  // namespace

}  // namespace zek::test
