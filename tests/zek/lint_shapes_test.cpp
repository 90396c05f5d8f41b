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
        const auto told = nlohmann::json::parse(Zek({"check", "--format", "json", "a.zek"}).out);
        unsigned count = 0;
        for (const auto& finding : told["sources"][0]["findings"]) count += finding["code"] == code ? 1 : 0;
        return count;
    }
};

TEST_F(LintShapes, HaveAsMuchToFindAsTheySay) {
    for (const bench::LintShape& shape : bench::LintShapes()) {
        for (const unsigned size : {1U, 4U}) {
            const std::string source = bench::LintSource(shape, size);
            SCOPED_TRACE(source);
            Write("a.zek", source);
            EXPECT_EQ(FindingsOf(shape.code), bench::FindingsIn(shape, size));
        }
    }
}

TEST_F(LintShapes, CoverEveryRule) {
    std::set<std::string> rules;
    for (const bench::LintShape& shape : bench::LintShapes()) rules.insert(shape.code);
    std::istringstream list(Zek({"lint", "--list"}).out);
    for (std::string line; std::getline(list, line);) EXPECT_TRUE(rules.erase(line.substr(0, 4))) << line;
    EXPECT_TRUE(rules.empty());
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
    EXPECT_EQ(Program({ZEK_LINT_GROWTH, "-n", "9"}).Finish().code, 2);
}

}  // namespace

}  // namespace zek::test
