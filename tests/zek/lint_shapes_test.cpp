// The sources that the rules of lint are measured with: each must have as much to find as it says.
#include "lint/lint_shapes.h"

#include <nlohmann/json.hpp>
#include <set>

#include "zek/command.h"

namespace zek::test {

namespace {

class LintShapes : public ZekTest {
protected:
    /// How often the findings of a check have a code.
    static unsigned FindingsOf(const std::string& code) {
        const auto told =
            nlohmann::json::parse(Zek({"check", "--format", "json", "--max-findings", "10000", "lint.zek"}).out);
        unsigned count = 0;
        for (const auto& finding : told["sources"][0]["findings"]) count += finding["code"] == code ? 1 : 0;
        return count;
    }
};

TEST_F(LintShapes, HaveAsMuchToFindAsTheySay) {
    for (const bench::LintShape& shape : bench::LintShapes()) {
        // The other beyond what one byte counts and what is said in one finding.
        for (const unsigned size : {1U, 300U}) {
            SCOPED_TRACE(shape.code + (' ' + std::to_string(size) + ' ') + shape.each);
            bench::WriteLintSource(".", shape, size);
            EXPECT_EQ(FindingsOf(shape.code), bench::FindingsIn(shape, size));
        }
    }
}

TEST_F(LintShapes, CoverEveryRule) {
    std::set<std::string> rules;
    for (const bench::LintShape& shape : bench::LintShapes()) rules.insert(shape.code);
    std::istringstream list(Zek({"lint", "--list"}).out);
    for (std::string line; std::getline(list, line);) EXPECT_TRUE(rules.erase(line.substr(0, 4))) << line;
    EXPECT_EQ(rules, (std::set<std::string>{"L001", "W301"}));
}

/// A row for each shape of the rules that are asked for.
TEST_F(LintShapes, AreMeasuredByRule) {
    const Result result = Program({ZEK_LINT_GROWTH, "-f", "files", "-n", "10", "-r", "1", "L105", "L109"}).Finish();
    EXPECT_EQ(result.code, 0) << result.err;
    std::istringstream lines(result.out);
    Strings rows;
    for (std::string line; std::getline(lines, line);) rows.push_back(line);
    const std::pair<std::string, std::string> wanted[] = {
        {"| L105 |", " sensors of a list |"}, {"| L109 |", " globals |"}, {"| L109 |", " arguments of a call |"}};
    ASSERT_EQ(rows.size(), 2 + std::size(wanted)) << result.out;
    for (std::size_t i = 0; i < std::size(wanted); ++i) {
        EXPECT_TRUE(rows[2 + i].starts_with(wanted[i].first)) << rows[2 + i];
        EXPECT_NE(rows[2 + i].find(wanted[i].second), std::string::npos) << rows[2 + i];
    }
}

TEST_F(LintShapes, AreMeasuredForWhatThereIs) {
    const auto measured = [](Strings words) {
        words.insert(words.begin(), {ZEK_LINT_GROWTH, "-f", "files", "-n", "10", "-r", "1"});
        return Program(words).Finish();
    };
    EXPECT_EQ(measured({"-n", "9"}).code, 2);
    EXPECT_EQ(measured({"--most", "much"}).code, 2);
    const Result unknown = measured({"L105", "L199", "l105"});
    EXPECT_EQ(unknown.code, 2);
    EXPECT_EQ(unknown.out, "");
    EXPECT_EQ(unknown.err,
              "zek_lint_growth: no source is made for L199\nzek_lint_growth: no source is made for l105\n");
}

/// Ten times as much takes more, but not a million times as long.
TEST_F(LintShapes, FailWhereTheyGrowTooMuch) {
    const auto measured = [](const std::string& most) {
        return Program({ZEK_LINT_GROWTH, "-f", "files", "-n", "20000", "-r", "1", "--most", most, "L163"}).Finish();
    };
    const Result fine = measured("6");
    EXPECT_EQ(fine.code, 0);
    EXPECT_EQ(fine.err, "");
    const Result failed = measured("0");
    EXPECT_EQ(failed.code, 1);
    EXPECT_EQ(failed.err, "above --most: L163, keys of a section\n");
    EXPECT_EQ(std::count(failed.out.begin(), failed.out.end(), '\n'), 3) << failed.out;
}

}  // namespace

}  // namespace zek::test
