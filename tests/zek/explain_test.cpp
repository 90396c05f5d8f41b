#include <nlohmann/json.hpp>
#include <sstream>

#include "code_table.h"
#include "docs/page.h"
#include "zek/command.h"

namespace zek::test {

namespace {

class ZekExplain : public ZekTest {};

TEST_F(ZekExplain, TellsCauseExampleAndCure) {
    const Result result = Zek({"explain", "W101", "E103"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "W101: Warning[%s:%u]: [%s]:%s, More than one sub-string and get the first one as\n"
              "  sub-string.\n"
              "\n"
              "Cause: A number or text has a comma in it; what follows the comma is dropped.\n"
              "\n"
              "Example:\n"
              "  [PROPERTY]\n"
              "  Vendor = Example, Limited\n"
              "\n"
              "Cure: Quote the text.\n"
              "\n"
              "E103: Error[%s:%u]: [%s]:%s, Entry value type is invalid.\n"
              "\n"
              "Cause: An entry whose class and type do not agree.\n"
              "\n"
              "Cure: No source leads to it; report it.\n");
}

/// But for what the example holds.
TEST_F(ZekExplain, IsPlainTextInEightyColumns) {
    for (const tool::CodeGroup& group : tool::CodeGroups()) {
        for (const tool::CodeRow& row : group.rows) {
            SCOPED_TRACE(row.code);
            const std::string said = Zek({"explain", row.code}).out;
            std::string text = said;
            if (*row.example) text.erase(text.find("\nExample:\n"), text.find("\nCure: ") - text.find("\nExample:\n"));
            EXPECT_EQ(text.find('`'), std::string::npos) << text;
            EXPECT_EQ(text.find("]("), std::string::npos) << text;
            std::istringstream lines(text);
            for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << line;
        }
    }
    EXPECT_NE(Zek({"explain", "E101"}).out.find("\"Sections and keys\" of language.md"), std::string::npos);
}

TEST_F(ZekExplain, TakesACodeWithItsBrackets) {
    EXPECT_EQ(Zek({"explain", "[W101]", "[E103]"}).out, Zek({"explain", "W101", "E103"}).out);
    EXPECT_EQ(Zek({"explain", "[W101,E103]"}).err, "zek: there is no code W101,E103\n");
    EXPECT_EQ(Zek({"explain", "["}).err, "zek: there is no code [\n");
}

TEST_F(ZekExplain, RefusesAnUnknownCode) {
    const Result result = Zek({"explain", "E1O1"});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "zek: there is no code E1O1; did you mean E101?\n");
}

TEST_F(ZekExplain, ListsEveryCode) {
    const std::string list = Zek({"explain"}).out;
    for (const tool::CodeGroup& group : tool::CodeGroups()) {
        for (const tool::CodeRow& row : group.rows) {
            EXPECT_NE(list.find(std::string(row.code) + "  " + row.format + '\n'), std::string::npos) << row.code;
        }
    }
}

TEST_F(ZekExplain, WritesThePageOfMessages) {
    EXPECT_EQ(Zek({"explain", "--markdown"}).out, SourceFile("docs/messages.md"));
}

/// Every example leads to what it is an example of.
TEST_F(ZekExplain, ShowsSourcesThatLeadThere) {
    std::size_t examples = 0;
    for (const tool::CodeGroup& group : tool::CodeGroups()) {
        for (const tool::CodeRow& row : group.rows) {
            if (!*row.example) continue;
            SCOPED_TRACE(row.code);
            ++examples;
            Write("a.zek", row.example);
            const auto json = nlohmann::json::parse(Zek({"check", "--verbose", "--format", "json", "a.zek"}).out);
            bool found = false;
            for (const auto& finding : json["sources"][0]["findings"]) found |= finding["code"] == row.code;
            EXPECT_TRUE(found) << json;
        }
    }
    EXPECT_GT(examples, 30U);
}

}  // namespace

}  // namespace zek::test
