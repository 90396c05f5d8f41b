// So many findings are shown, and all are counted.
#include <nlohmann/json.hpp>

#include "zek/command.h"

namespace zek::test {

namespace {

using nlohmann::json;

class ZekMaxFindings : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        // W101 three times, and L111 below.
        Write("warned.zek",
              "[PROPERTY]\nA = 1,2\nB = 1,2\nC = 1,2\n[SYSTEM]\nTYPE = 1x\nMODEL = A\nSOUTHBRIDGE = 2x\n"
              "NORTHBRIDGE = 3x\nFLAG = 4x\nZEKLOOP = 1\n");
    }
};

TEST_F(ZekMaxFindings, ShowsTheFirstAndCountsAll) {
    const Result all = Zek({"check", "warned.zek"});
    EXPECT_EQ(all.code, 0);
    EXPECT_TRUE(all.err.ends_with("warned.zek: 7 warnings\n")) << all.err;
    const Result two = Zek({"check", "--max-findings", "2", "warned.zek"});
    EXPECT_EQ(two.code, 0);
    const std::string summary = "warned.zek: 7 warnings; not shown: 5 warnings (--max-findings)\n";
    ASSERT_TRUE(two.err.ends_with(summary)) << two.err;
    EXPECT_TRUE(all.err.starts_with(two.err.substr(0, two.err.size() - summary.size()))) << two.err;
    EXPECT_EQ(Zek({"check", "--max-findings", "7", "warned.zek"}).err, all.err);
    EXPECT_EQ(Zek({"check", "-Werror", "--max-findings", "1", "warned.zek"}).code, 1);
    EXPECT_EQ(Zek({"compile", "--max-findings", "1", "warned.zek"}).err.substr(0, 16), "warned.zek:2:7: ");
}

TEST_F(ZekMaxFindings, MessagesAsTheyComeAreAllShown) {
    const Result all = Zek({"compile", "--raw", "warned.zek"});
    EXPECT_TRUE(all.err.ends_with("\nwarned.zek: 3 warnings\n")) << all.err;
    EXPECT_EQ(Zek({"compile", "--raw", "--max-findings", "1", "warned.zek"}).err, all.err);
}

TEST_F(ZekMaxFindings, RulesOfLintAreShownByTheirPlaces) {
    const Result result = Zek({"check", "--no-warn", "W101", "--max-findings", "2", "warned.zek"});
    std::string places;
    for (std::size_t at = 0; (at = result.err.find("warned.zek:", at)) != std::string::npos; at += 11) {
        places += result.err.substr(at + 11, 2);
    }
    EXPECT_EQ(places, "6:8: 4");
    EXPECT_NE(result.err.find("\nwarned.zek: 4 warnings; not shown: 2 warnings (--max-findings)\n"), std::string::npos);
}

TEST_F(ZekMaxFindings, ManyWarningsHideNoError) {
    Write("a.zek", Read("warned.zek") + "[PROPERTY]\n1 = 2\n[GROUP]\nNAME = A\n");
    const Result result = Zek({"check", "--max-findings", "1", "a.zek"});
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.err.find(": error: "), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("; not shown: "), std::string::npos) << result.err;
}

TEST_F(ZekMaxFindings, CommentsAllowWhatIsNotShown) {
    Write("a.zek", "[PROPERTY]\nA = 1,2\nB = 1,2\nC = 1,2\nD = 1,2 ; zek: allow W101\n");
    EXPECT_TRUE(Zek({"check", "--max-findings", "1", "a.zek"})
                    .err.ends_with("\na.zek: 3 warnings; not shown: 2 warnings (--max-findings)\n"));
}

TEST_F(ZekMaxFindings, CommentsOfSharedFilesAreCountedToo) {
    std::string shared = "[DEFINE]\n";
    for (int i = 0; i < 5; ++i) shared += "W" + std::to_string(i) + " = 1 ; zek: allow L111\n";
    Write("common.zek", shared);
    for (const char* name : {"a.zek", "b.zek"}) Write(name, "[INCLUDE]\nFILE = common.zek\n");
    const Result result = Zek({"check", "--max-findings", "2", "a.zek", "b.zek"});
    EXPECT_EQ(WithoutExcerpts(result.err),
              "common.zek:2:21: warning: nothing is found here that 'zek: allow L111' would allow [L001]\n"
              "a.zek:2:8: note: included from here\n"
              "common.zek:3:21: warning: nothing is found here that 'zek: allow L111' would allow [L001]\n"
              "common.zek: 5 warnings; not shown: 3 warnings (--max-findings)\n");
    EXPECT_EQ(Zek({"check", "--error", "L001", "--max-findings", "2", "a.zek", "b.zek"}).code, 1);
}

TEST_F(ZekMaxFindings, DocumentsTellItToo) {
    const auto shown = [](const char* format) {
        const Result result = Zek({"check", "--format", format, "--max-findings", "2", "warned.zek"});
        EXPECT_EQ(result.code, 0);
        return result.out;
    };
    const std::string left = "warned.zek: not shown: 5 warnings (--max-findings)";
    const json source = json::parse(shown("json"))["sources"][0];
    EXPECT_EQ(source["warnings"], 7);
    EXPECT_EQ(source["notShown"], json::parse(R"({"errors": 0, "warnings": 5, "notes": 0})"));
    EXPECT_EQ(source["findings"].size(), 2U);
    const json results = json::parse(shown("sarif"))["runs"][0]["results"];
    ASSERT_EQ(results.size(), 3U);
    EXPECT_EQ(results[2], json::parse(R"({"kind": "informational", "level": "none", "message": {"text": ")" + left +
                                      R"("}, "locations": [{"physicalLocation": {"artifactLocation": {"uri":
                                      "warned.zek"}}}]})"));
    const std::string github = shown("github");
    EXPECT_EQ(std::count(github.begin(), github.end(), '\n'), 3);
    EXPECT_TRUE(github.ends_with("\n::notice title=zek::" + left + '\n')) << github;
}

}  // namespace

}  // namespace zek::test
