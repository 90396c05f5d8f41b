// Findings as they are reviewed and shown, without a source that has been compiled.
#include "finding.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "code_table.h"
#include "failure.h"
#include "finding_review.h"
#include "memory_file.h"
#include "renderer.h"
#include "shared_allows.h"

namespace zek::tool {

namespace {

TEST(CodeTable, HoldsEachCodeOnceUnderItsLetter) {
    std::set<std::string> codes;
    for (const CodeGroup& group : CodeGroups()) {
        std::string before;
        for (const CodeRow& row : group.rows) {
            const std::string code = row.code;
            SCOPED_TRACE(code);
            EXPECT_TRUE(codes.insert(code).second);
            EXPECT_EQ(code.size(), 4U);
            EXPECT_LT(before, code);
            before = code;
            EXPECT_EQ(row.level == Level::kError, code[0] == 'E');
            EXPECT_EQ(group.origin == Origin::kLibrary, code[0] != 'L');
            EXPECT_EQ(RowOfCode(code), &row);
            for (const char* text : {row.format, row.cause, row.cure}) EXPECT_STRNE(text, "");
        }
    }
    EXPECT_EQ(RowOfCode("E999"), nullptr);
    EXPECT_EQ(GroupOfCode("E999"), nullptr);
}

TEST(CodeTable, FindsTheCodeOfAFormat) {
    EXPECT_STREQ(RowOfFormat("Error[%s:%u]: SMBUS type is wrong!\n")->code, "W303");
    // W005 is that of a word which stands below.
    EXPECT_STREQ(RowOfFormat("Error[%s:%u]: [%s]:%s, %s has not been defined and is not a valid number.\n")->code,
                 "E106");
    EXPECT_EQ(RowOfFormat("no such message\n"), nullptr);
    EXPECT_EQ(WithoutPlace("Error[%s:%u]:SMBUS address"), "SMBUS address");
    EXPECT_EQ(WithoutPlace("Warning[%s:%u], [%s]:%s FILE"), "[%s]:%s FILE");
    EXPECT_EQ(WithoutPlace("Create section"), "Create section");
}

/// A finding about a source that the test holds.
Finding About(const std::string& code, const Place& place, const std::string& message = "text") {
    Finding finding;
    finding.code = code;
    finding.place = place;
    finding.message = message;
    return finding;
}

/// What is left of findings, and of what comments say of codes of the library and the command.
std::vector<Finding> Reviewed(const std::vector<Finding>& all, const Levels& levels,
                              const std::vector<std::string>& paths, SourceText& text,
                              std::vector<SharedAllow>* shared = nullptr) {
    Review review(levels, paths, text, kMostFindings);
    for (const Finding& finding : all) review.Add(finding);
    review.AddComments({Origin::kLibrary, Origin::kCommand}, shared);
    return review.Kept();
}

/// The codes that are left of findings about the lines of a source, with the first letter of their severity and, for
/// those of comments, the line.
std::string Left(const std::string& source, const std::vector<std::pair<std::string, unsigned>>& findings,
                 const Levels& levels = {}) {
    const MemoryFile file(source);
    SourceText text;
    std::vector<Finding> all;
    for (const auto& [code, line] : findings) all.push_back(About(code, {file.Name(), line}));
    std::string left;
    for (const Finding& finding : Reviewed(all, levels, {file.Name(), file.Name()}, text)) {
        left += left.empty() ? "" : " ";
        left += std::string(1, "nwe"[static_cast<int>(finding.severity)]) + ':' + finding.code;
        if (finding.place.column) left += '@' + std::to_string(finding.place.line);
    }
    return left;
}

TEST(Review, GivesSeverityByTableAndCommandLine) {
    const std::vector<std::pair<std::string, unsigned>> all = {{"E101", 1}, {"W004", 1}, {"W101", 1}, {"W002", 1}};
    EXPECT_EQ(Left("", all), "e:E101 w:W004 w:W101");
    Levels levels;
    levels.RaiseWarnings();
    EXPECT_EQ(Left("", all, levels), "e:E101 e:W004 e:W101");
    levels.Warn("W101");
    levels.Hide("W004");
    EXPECT_EQ(Left("", all, levels), "e:E101 w:W101");
    levels.Raise("W004");
    levels.Raise("E101");
    levels.ShowHidden();
    EXPECT_EQ(Left("", all, levels), "e:E101 e:W004 w:W101 n:W002");
    levels.Warn("W002");
    EXPECT_EQ(Left("", all, levels), "e:E101 e:W004 w:W101 w:W002");
}

TEST(Review, RefusesCodesThatThereAreNotAndLesserErrors) {
    Levels levels;
    const auto why = [&](void (Levels::*tell)(const std::string&), const std::string& code) -> std::string {
        try {
            (levels.*tell)(code);
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.Code(), kUsageOrFiles);
            return failure.what();
        }
        return "";
    };
    EXPECT_EQ(why(&Levels::Warn, "E101"), "E101 is an error and stays one");
    EXPECT_EQ(why(&Levels::Hide, "E101"), "E101 is an error and stays one");
    EXPECT_EQ(why(&Levels::Raise, "nonsense"), "there is no code nonsense");
    EXPECT_EQ(why(&Levels::Raise, "E1011"), "there is no code E1011; did you mean E101?");
    EXPECT_EQ(why(&Levels::Raise, "e305"), "there is no code e305; did you mean E305?");
}

TEST(Review, AllowsOnTheLineAndAboveIt) {
    EXPECT_EQ(Left("A = 1 ; zek: allow W101\n", {{"W101", 1}}), "");
    EXPECT_EQ(Left("A = 1 #zek:allow W101\n", {{"W101", 1}}), "");
    EXPECT_EQ(Left("; zek: allow W101 as the vendor writes it\n\n; another\nA = 1\n", {{"W101", 4}}), "");
    EXPECT_EQ(Left("; zek: allow W101, W102\nA = 1\n", {{"W101", 2}, {"W102", 2}, {"W101", 2}}), "");
    EXPECT_EQ(Left("; zek: allow W101\n; zek: allow W102\nA = 1\n", {{"W101", 3}, {"W102", 3}}), "");
    EXPECT_EQ(Left("A = 1,\\ ; zek: allow W101\n 2\n", {{"W101", 2}}), "");
    EXPECT_EQ(Left("A = 1,\\\n 2 ; zek: allow W101\n", {{"W101", 1}}), "");
}

TEST(Review, TellsCommentsThatAllowNothing) {
    EXPECT_EQ(Left("A = 1 ; zek: allow W101\nB = 1\n", {{"W101", 2}}), "w:W101 w:L001@1");
    EXPECT_EQ(Left("A = 1 ; zek: allow W102\n", {{"W101", 1}}), "w:W101 w:L001@1");
    EXPECT_EQ(Left("A = 1 ; zek: allow W101\n", {{"E101", 1}}), "e:E101");
    EXPECT_EQ(Left("A = 1 ; zek: allow E101\n", {{"E101", 1}}), "e:E101 w:L002@1");
    EXPECT_EQ(Left("A = 1 ; zek: allow W999\n", {}), "w:L003@1");
    EXPECT_EQ(Left("A = 1 ; zek: allow W101 ; zek: allow L001\n", {}), "w:L001@1");
    EXPECT_EQ(Left("; zek: allow L001\nA = 1 ; zek: allow W101\n", {}), "");
    for (const char* none : {"A = 1 ; zek: allowed W101\n", "A = 1 ; allow W101\n", "A = 1;zek: allow W101\n",
                             "A = \" ; zek: allow W101\"\n", "A = 1 ; zek: allowance(W101)\n", ""}) {
        EXPECT_EQ(Left(none, {}), "") << none;
    }
    for (const char* cut : {"A = 1 ; zek: allow\n", "A = 1 ; zek: allow \t\n", "A = 1 ; zek: allow(W101)\n",
                            "A = 1 ; zek: allow: W101\n", "A = 1 ; zek: allow,W101\n"}) {
        EXPECT_EQ(Left(cut, {{"W101", 1}}), "w:W101 w:L004@1") << cut;
    }
    Levels levels;
    levels.Hide("W101");
    EXPECT_EQ(Left("A = 1 ; zek: allow W101\n", {{"W101", 1}}, levels), "");
}

TEST(Review, ReadsManyCommentsInNoTime) {
    std::string source;
    for (int i = 0; i < 200'000; ++i) source += "; zek: allow W101\n";
    EXPECT_EQ(Left(source + "A = 1\n", {{"W101", 200'001}}), "");
}

/// One finding with everything, and the source it is about.
struct Shown {
    MemoryFile file = MemoryFile("[GLOBAL]\nG_\xc3\xbc = \tVT_X,\xff\n");
    SourceText text;
    SourceFindings all;

    Shown() {
        Finding finding = About("E108", text.SubString(file.Name(), 2, 0), "bad \x1b \xff");
        finding.severity = Severity::kError;
        finding.notes = {{"the section", text.Head(file.Name(), 1)}, {"why not", {}}};
        finding.fix = Fix{finding.place, "VT_Y"};
        finding.way = {{"main,1:%.zek", 7}};
        all = {"main,1:%.zek", {finding}};
    }

    std::string By(Renderer& renderer) {
        std::string shown = renderer.Begin() + renderer.Of(all, text) + renderer.Separator() +
                            renderer.Of({"other.zek"}, text) + renderer.End(1);
        for (std::size_t at; (at = shown.find(file.Name())) != shown.npos;) shown.replace(at, file.Name().size(), "a");
        return shown;
    }
};

TEST(TextOfFindings, UnderlinesAndNotes) {
    EXPECT_EQ(Shown().By(*TextRenderer({})),
              "a:2:9: error: bad \\x1b \\xff [E108]\n"
              "    2 | G_\xc3\xbc = \tVT_X,\\xff\n"
              "      |       \t^~~~\n"
              "a:1:1: note: the section\n"
              "    1 | [GLOBAL]\n"
              "      | ^~~~~~~~\n"
              "a:2:9: note: why not\n"
              "a:2:9: note: did you mean VT_Y?\n"
              "main,1:%.zek:7: note: included from here\n"
              "main,1:%.zek: 1 error\n");
}

TEST(TextOfFindings, IsColouredWhereThatIsWanted) {
    const std::string shown = Shown().By(*TextRenderer({.colour = true}));
    EXPECT_TRUE(shown.starts_with("\x1b[1ma:2:9:\x1b[0m \x1b[1;31merror:\x1b[0m bad \\x1b \\xff [E108]\n")) << shown;
    EXPECT_NE(shown.find("\t\x1b[1;31m^~~~\x1b[0m\n"), shown.npos) << shown;
    EXPECT_NE(shown.find("\x1b[1;36mnote:\x1b[0m the section\n"), shown.npos) << shown;
}

TEST(TextOfFindings, ShowsAPartOfALongLine) {
    const MemoryFile file("K = " + std::string(300, 'a') + ",HERE," + std::string(300, 'b') + "\n");
    SourceText text;
    Finding finding = About("W101", text.SubString(file.Name(), 1, 1));
    const std::string shown = TextRenderer({})->Of({"a", {finding}}, text);
    const std::string before = "..." + std::string(59, 'a') + ',';
    EXPECT_NE(shown.find("\n    1 | " + before + "HERE," + std::string(95, 'b') + "...\n      | " +
                         std::string(before.size(), ' ') + "^~~~\n"),
              shown.npos)
        << shown;
}

TEST(Review, LeavesCommentsOfIncludedFilesToAllSources) {
    const MemoryFile main("A = 1 ; zek: allow W101\n");
    const MemoryFile included("B = 1 ; zek: allow W101\nC = 1 ; zek: allow W101\nD = 1 ; zek: allow W101, L001\n");
    SourceText text;
    std::vector<SharedAllow> shared;
    const std::vector<Finding> told =
        Reviewed({About("W101", {included.Name(), 2})}, {}, {main.Name(), included.Name()}, text, &shared);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].place, (Place{main.Name(), 1, 20, 4}));
    std::string idle;
    for (const SharedAllow& allow : shared) {
        EXPECT_EQ(allow.unused.place.path, included.Name());
        idle += std::to_string(allow.unused.place.line) + (allow.idle ? "+ " : "- ");
    }
    // What may be unused without being told, and the comment that says so, are no idle ones.
    EXPECT_EQ(idle, "1+ 2- 3- 3- ");
}

TEST(SharedAllows, AreUnusedWhereNoSourceNeedsThem) {
    const MemoryFile file("A\n");
    const auto unused = [&](const std::vector<std::vector<bool>>& sources) {
        SharedAllows all;
        for (const std::vector<bool>& idle : sources) {
            std::vector<SharedAllow> shared;
            for (unsigned i = 0; i < idle.size(); ++i) {
                shared.push_back({About("L001", {file.Name(), 1, i + 1, 4}, "t"), idle[i]});
            }
            all.Add(WrittenShared(shared));
        }
        std::string told;
        for (const SourceFindings& source : all.Unused(kMostFindings)) {
            EXPECT_EQ(source.source, file.Name());
            for (const Finding& finding : source.findings) {
                EXPECT_EQ(finding.message, "t");
                told += std::to_string(finding.place.column);
            }
        }
        return told;
    };
    EXPECT_EQ(unused({{true, true, true}, {true, false, true}}), "13");
    EXPECT_EQ(unused({{false}, {true}}), "");
    EXPECT_EQ(unused({}), "");
    const std::vector<Place> way = {{"main\xff", 2, 8, 9}, {"part", 3, 1, 4}};
    Finding included = About("L001", {file.Name(), 1, 1, 4});
    included.way = way;
    SharedAllows both;
    both.Add(WrittenShared({{included, true}, {About("L001", {file.Name(), 1, 2, 4}), true}}));
    const std::vector<SourceFindings> told = both.Unused(kMostFindings);
    ASSERT_EQ(told.at(0).findings.size(), 2U);
    for (const Finding& finding : told[0].findings) EXPECT_EQ(finding.way, way);
    SharedAllows unknown;
    unknown.Add(WrittenShared({{About("L001", {file.Name(), 1, 1, 4}), true}}));
    unknown.AddUnknown();
    EXPECT_TRUE(unknown.Unused(kMostFindings).empty());
}

TEST(GithubOfFindings, EscapesWhatHasAMeaning) {
    EXPECT_EQ(
        Shown().By(*GithubRenderer()),
        "::error file=a,line=2,col=8,endColumn=11,title=E108::bad \\x1b \\xff%0Anote: the section a:1%0Anote: why "
        "not%0Adid you mean VT_Y?%0Aincluded from main,1:%25.zek:7\n");
    SourceText text;
    const Finding finding = About("W101", {"a,b:%.zek"}, "100%, or: so");
    EXPECT_EQ(GithubRenderer()->Of({"a", {finding}}, text),
              "::warning file=a%2Cb%3A%25.zek,title=W101::100%25, or: so\n");
}

TEST(SarifOfFindings, HoldNoFixThatCanOnlyBeShown) {
    SourceText text;
    for (const std::string meant : {"VT_Y", "VT_\xff", "VT_\x1b"}) {
        Finding finding = About("E108", {"a", 1, 1, 4});
        finding.fix = Fix{finding.place, meant};
        const auto json = nlohmann::json::parse(SarifRenderer()->Of({"a", {finding}}, text));
        EXPECT_EQ(json.contains("fixes"), meant == "VT_Y") << json;
    }
}

TEST(FindingsOfNoSource, TellWhyThereAreNone) {
    EXPECT_EQ(TextRenderer({})->OfFailure("a,\xff", "why\x1b"), "");
    EXPECT_EQ(GithubRenderer()->OfFailure("a,\xff", "why: 1%\x1b"), "::error title=zek::why: 1%25\\x1b\n");
    EXPECT_EQ(JsonRenderer()->OfFailure("a,\xff", "why\x1b"),
              R"({"source":{"bytes":"612cff"},"errors":0,"warnings":0,"notShown":{"errors":0,"warnings":0,"notes":0},)"
              R"("findings":[],"failure":"why\\x1b"})");
    const auto sarif = SarifRenderer();
    EXPECT_EQ(sarif->OfFailure("a,\xff", "why\x1b"), "");
    EXPECT_EQ(sarif->End(2),
              R"(], "invocations": [{"executionSuccessful":false,"exitCode":2,"toolExecutionNotifications":[{"level":)"
              R"("error","message":{"text":"why\\x1b"},"locations":[{"physicalLocation":{"artifactLocation":{"uri":)"
              R"("a%2c%ff"}}}]}]}]}]})"
              "\n");
}

TEST(JsonOfFindings, CountsWhatIsNotShownBySeverity) {
    SourceText text;
    SourceFindings all = {"a"};
    all.left[static_cast<std::size_t>(Severity::kError)] = 3;
    all.left[static_cast<std::size_t>(Severity::kWarning)] = 2;
    all.left[static_cast<std::size_t>(Severity::kNote)] = 1;
    EXPECT_EQ(
        JsonRenderer()->Of(all, text),
        R"({"source":"a","errors":3,"warnings":2,"notShown":{"errors":3,"warnings":2,"notes":1}, "findings": []})");
}

TEST(JsonOfFindings, HoldsEverything) {
    const auto json = nlohmann::json::parse(Shown().By(*JsonRenderer()));
    EXPECT_EQ(json["schema"], "zek-findings/2");
    EXPECT_EQ(json["exitCode"], 1);
    const nlohmann::json place = {{"path", "a"}, {"line", 2}, {"column", 9}, {"length", 4}};
    const nlohmann::json none = {{"errors", 0}, {"warnings", 0}, {"notes", 0}};
    EXPECT_EQ(json["sources"],
              nlohmann::json::array(
                  {{{"source", "main,1:%.zek"},
                    {"errors", 1},
                    {"warnings", 0},
                    {"notShown", none},
                    {"findings",
                     nlohmann::json::array(
                         {{{"code", "E108"},
                           {"severity", "error"},
                           {"message", "bad \\x1b \\xff"},
                           {"place", place},
                           {"notes", nlohmann::json::array(
                                         {{{"text", "the section"},
                                           {"place", {{"path", "a"}, {"line", 1}, {"column", 1}, {"length", 8}}}},
                                          {{"text", "why not"}}})},
                           {"fix", {{"place", place}, {"text", "VT_Y"}}},
                           {"includedFrom", nlohmann::json::array({{{"path", "main,1:%.zek"}, {"line", 7}}})}}})}},
                   {{"source", "other.zek"},
                    {"errors", 0},
                    {"warnings", 0},
                    {"notShown", none},
                    {"findings", nlohmann::json::array()}}}));
}

}  // namespace

}  // namespace zek::tool
