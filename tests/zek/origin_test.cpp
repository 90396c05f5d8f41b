#include <nlohmann/json.hpp>

#include "zek/board_source.h"
#include "zek/command.h"

namespace zek::test {

namespace {

class ZekOrigin : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        Write("words.zek", kBoardWords);
        Compile("a", kBoard);
    }
};

TEST_F(ZekOrigin, FollowsAValueToItsSource) {
    const struct {
        const char* path;
        const char* shown;
    } rows[] = {
        {"SENSOR/Inlet/VALUE",
         "a.zek:21: value VT_CALC,+,LIMIT,G_T\n"
         "a.zek:13: section [SENSOR]\n"
         "words.zek:2: definition VT_CALC = 2\n  included from a.zek:2\n"
         "words.zek:5: definition LIMIT = 7\n  included from a.zek:2\n"
         "a.zek:4: global G_T = VT_CALC,-,1,2\n"
         "compiled:\n"
         "  0x1e000002 value type 2 (0x2)\n"
         "  0x1f000001 operator 1 (0x1)\n"
         "  0x11000006 number 7 (0x7)\n"
         "  0x04000000 global \"T\"\n"},
        {"SENSOR/#2/PARENT",
         "a.zek:23: value Left\na.zek:22: section [SENSOR]\na.zek:9: group Left\n"
         "compiled:\n  0x18000002 group \"Left\"\n"},
        {"SENSOR/#1/TYPE",
         "a.zek:17: value TEMP\na.zek:13: section [SENSOR]\n"
         "words.zek:4: definition TEMP = 17\n  included from a.zek:2\n"
         "compiled:\n  0x11000003 number 17 (0x11)\n"},
        {"TAVRGROUP/All/SENSORS",
         "a.zek:39: value 1,2\na.zek:35: section [TAVRGROUP]\na.zek:13: sensor Inlet\na.zek:22: sensor Old\n"
         "compiled:\n  0x11000000 number 1 (0x1)\n  0x11000001 number 2 (0x2)\n"},
        {"DEFINE/LIMIT",
         "words.zek:5: value 7\n  included from a.zek:2\nwords.zek:1: section [DEFINE]\n  included from a.zek:2\n"
         "compiled: no entry of its own\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        const Result result = Zek({"origin", "a.zkd", row.path, "a.zki"});
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.out, row.shown);
        EXPECT_EQ(result.err, "");
        const std::string alone = Zek({"origin", "a.zkd", row.path}).out;
        EXPECT_EQ(alone, result.out.substr(0, result.out.find("compiled:")));
    }
}

TEST_F(ZekOrigin, WordDefinedAgainIsToldWhereItGotItsNumber) {
    Write("a.zek", std::string("[DEFINE]\nLIMIT = 3\n") + kBoard + "[DEFINE]\nLIMIT = 9\n");
    ASSERT_EQ(Zek({"compile", "a.zek"}).code, 0);
    const std::string out = Zek({"origin", "a.zkd", "SENSOR/Inlet/VALUE"}).out;
    EXPECT_NE(out.find("a.zek:43: definition LIMIT = 9\n"), std::string::npos) << out;
    EXPECT_EQ(Zek({"get", "a.zki", "SENSOR/Inlet/VALUE/2"}).out, "9\n");
}

/// What a text names hangs on where it stands: a NAME is no word, an operand no action.
TEST_F(ZekOrigin, FollowsWhatATextIsAlone) {
    Write("a.zek",
          "[DEFINE]\nVT_CALL = 3\nVT_CALC = 2\nVT_TABLE = 10\nVT_IF = 102\nTWO = 2\n"
          "[GROUP]\nPARENT = 0\nNAME = TWO\nCHILDGROUP = TWO\n"
          "[ACTION]\nNAME = TWO\nARGNUMBER = 0\nVALUE = VT_CALL,TWO\nVALUE_1 = VT_IF,TWO,TWO\n"
          "VALUE_2 = VT_CALC,+,7,VALUE_1\n"
          "[TABLE]\nNAME = 7\nTYPE = 1\n0.255 = 9\n"
          "[GLOBAL]\nG_A = VT_TABLE,7,TWO\nG_B = VT_CALC,-,G_A,TWO\n[REPEATER]\nR = TWO,TWO\n"
          "[SENSOR]\nPARENT = TWO\nNAME = s\nID = 7\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 0\n"
          "VALUE = TWO,+,1,1\n"
          "[TAVRGROUP]\nNAME = v\nID = 1\nPID = 0\nSENSORS = 7\n"
          "[TAVRGROUP]\nNAME = w\nID = 3\nPID = 1\nSENSORS = 7\n");
    const Result compiled = Zek({"compile", "a.zek"});
    ASSERT_EQ(compiled.code, 0) << compiled.err;
    const std::string two = "a.zek:6: definition TWO = 2\n";
    const struct {
        const char* path;
        std::string steps;
    } rows[] = {
        {"GROUP/TWO/NAME", ""},
        {"GROUP/TWO/CHILDGROUP", two},
        {"ACTION/TWO/VALUE", "a.zek:2: definition VT_CALL = 3\na.zek:11: action TWO\n"},
        {"ACTION/TWO/VALUE_1", "a.zek:5: definition VT_IF = 102\n" + two + "a.zek:11: action TWO\n"},
        {"ACTION/TWO/VALUE_2", "a.zek:3: definition VT_CALC = 2\na.zek:15: value VALUE_1 = VT_IF,TWO,TWO\n"},
        {"GLOBAL/G_A", "a.zek:4: definition VT_TABLE = 10\na.zek:17: table 7\n" + two},
        {"GLOBAL/G_B", "a.zek:3: definition VT_CALC = 2\na.zek:22: global G_A = VT_TABLE,7,TWO\n" + two},
        {"REPEATER/R", "a.zek:11: action TWO\n"},
        {"SENSOR/#7/PARENT", "a.zek:7: group TWO\n"},
        {"TAVRGROUP/v/PID", ""},
        {"TAVRGROUP/w/PID", "a.zek:34: view v\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        const std::string out = Zek({"origin", "a.zkd", row.path}).out;
        const std::size_t section = out.find('\n', out.find(": section "));
        ASSERT_NE(section, std::string::npos) << out;
        EXPECT_EQ(out.substr(section + 1), row.steps);
    }
}

/// The name of one file may be the end of another's.
TEST_F(ZekOrigin, TellsTheIncludesOfJustThatFile) {
    std::filesystem::create_directory("dir");
    Write("a.zek", "[DEFINE]\nONE = 1\n[INCLUDE]\nFILE = dir\\c.zek\n[INCLUDE]\nFILE = b.zek\n");
    Write("dir/c.zek", "[INCLUDE]\nFILE = b.zek\n");
    Write("dir/b.zek", "[GLOBAL]\nG_A = ONE,1\n");
    Write("b.zek", "[GLOBAL]\nG_B = ONE,1\n");
    const Result compiled = Zek({"compile", "a.zek"});
    ASSERT_EQ(compiled.code, 0) << compiled.err;
    EXPECT_TRUE(
        Zek({"origin", "a.zkd", "GLOBAL/G_A"})
            .out.starts_with("dir\\b.zek:2: value ONE,1\n  included from dir\\c.zek:2\n  included from a.zek:4\n"));
    EXPECT_TRUE(
        Zek({"origin", "a.zkd", "GLOBAL/G_B"}).out.starts_with("b.zek:2: value ONE,1\n  included from a.zek:6\n"));
}

/// The files beside two others are asked for by one name.
TEST_F(ZekOrigin, EachWayToFilesOfOneNameIsTold) {
    for (const std::string side : {"left", "right"}) {
        std::filesystem::create_directory(side);
        Write(side + "/all.zek", "[INCLUDE]\nFILE = words.zek\n");
        Write(side + "/words.zek", "[PROPERTY]\n" + side + " = 1\n");
    }
    Write("a.zek", "[PROPERTY]\nA = 1\n[INCLUDE]\nFILE = left/all.zek\n[INCLUDE]\nFILE = right/all.zek\n");
    const Result compiled = Zek({"compile", "a.zek"});
    ASSERT_EQ(compiled.code, 0) << compiled.err;
    const std::string ways =
        "  included from left/all.zek:2\n  included from a.zek:4\n"
        "  or included from right/all.zek:2\n  included from a.zek:6\n";
    for (const std::string path : {"PROPERTY/left", "PROPERTY/right"}) {
        EXPECT_EQ(Zek({"origin", "a.zkd", path}).out,
                  "words.zek:2: value 1\n" + ways + "words.zek:1: section [PROPERTY]\n" + ways);
    }
    const auto step = nlohmann::json::parse(Zek({"origin", "--json", "a.zkd", "PROPERTY/right"}).out)["steps"][0];
    EXPECT_EQ(step, nlohmann::json::parse(R"({"what": "value", "text": "1", "file": "words.zek", "line": 2,
        "includedFrom": [{"file": "left/all.zek", "line": 2}, {"file": "a.zek", "line": 4}],
        "orIncludedFrom": [[{"file": "right/all.zek", "line": 2}, {"file": "a.zek", "line": 6}]]})"));
}

TEST_F(ZekOrigin, FileMayIncludeAnotherOfItsName) {
    std::filesystem::create_directory("sub");
    Write("main.zek", "[INCLUDE]\nFILE = a.zek\n");
    Write("a.zek", "[INCLUDE]\nFILE = sub/b.zek\n");
    Write("sub/b.zek", "[INCLUDE]\nFILE = a.zek\n");
    Write("sub/a.zek", "[PROPERTY]\nInner = 1\n");
    ASSERT_EQ(Zek({"compile", "main.zek"}).code, 0);
    const std::string ways =
        "  included from main.zek:2\n"
        "  or included from sub/b.zek:2\n  included from a.zek:2\n  included from main.zek:2\n";
    EXPECT_EQ(Zek({"origin", "main.zkd", "PROPERTY/Inner"}).out,
              "a.zek:2: value 1\n" + ways + "a.zek:1: section [PROPERTY]\n" + ways);
}

TEST_F(ZekOrigin, ImageMayHoldNoSection) {
    Write("e.zek", "; nothing\n");
    ASSERT_EQ(Zek({"compile", "e.zek", "-D", "X=1"}).code, 0);
    ExpectRefused({{{"origin", "e.zkd", "PROPERTY/Y"}, 1, "e.zkd has no value PROPERTY/Y"},
                   {{"origin", "e.zkd", "DEFINE/X"},
                    1,
                    "e.zkd: DEFINE/X stands in no source; the compiler was given it, as by -D: 1"}});
}

TEST_F(ZekOrigin, OfManyWaysTenAreTold) {
    Write("b.zek", "[DEFINE]\nA = 1\n");
    std::string source;
    std::string ways;
    for (int i = 0; i < 11; ++i) {
        source += "[INCLUDE]\nFILE = b.zek\n";
        if (i == 10) continue;
        ways += std::string(i == 0 ? "  " : "  or ") + "included from a.zek:" + std::to_string(2 * i + 2) + '\n';
    }
    Write("a.zek", source);
    const Result compiled = Zek({"compile", "a.zek"});
    ASSERT_EQ(compiled.code, 0) << compiled.err;
    EXPECT_TRUE(Zek({"origin", "a.zkd", "DEFINE/A"})
                    .out.starts_with("b.zek:2: value 1\n" + ways + "  or included in other ways\nb.zek:1: "));
    const auto step = nlohmann::json::parse(Zek({"origin", "--json", "a.zkd", "DEFINE/A"}).out)["steps"][0];
    EXPECT_EQ(step["orIncludedFrom"].size(), 9U);
    EXPECT_EQ(step["moreWays"], true);
}

/// Paths are those of `get`, down to one value, the byte of a table and any spelling of an ID.
TEST_F(ZekOrigin, TakesPathsAsGetDoes) {
    Write("a.zek",
          "[DEFINE]\nVT_CALC = 2\nLIMIT = 7\nVT_CALL = 3\n"
          "[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\n"
          "[SENSOR]\nPARENT = Board\nNAME = A\nID = 0X2\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 0\n"
          "VALUE = VT_CALC,+,LIMIT,\"1,2\"\n"
          "[SENSOR]\nPARENT = Board\nNAME = B\nID = 1x\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 0\n"
          "VALUE = VT_CALC,+,2,1\n"
          "[TAVRGROUP]\nNAME = All\nID = 1\nPID = 0\nSENSORS = 1,2\n"
          "[TABLE]\nNAME = First\nTYPE = 1\n0.255 = 9\n7 = LIMIT\n"
          "[TABLE]\nNAME = Second\nTYPE = 1\n8 = 1\n"
          "[ACTION]\nNAME = Act\nARGNUMBER = 1\nVALUE = VT_CALL,Act,LIMIT\n"
          "[REPEATER]\nR = LIMIT,Act,LIMIT\n");
    const Result compiled = Zek({"compile", "a.zek"});
    ASSERT_EQ(compiled.code, 0) << compiled.err;
    const std::string limit = "a.zek:3: definition LIMIT = 7\n";
    const struct {
        const char* path;
        std::string shown;
    } rows[] = {
        {"SENSOR/A/VALUE/0",
         "a.zek:16: value VT_CALC\na.zek:9: section [SENSOR]\na.zek:2: definition VT_CALC = 2\n"
         "compiled:\n  0x1e000002 value type 2 (0x2)\n"},
        {"SENSOR/A/VALUE/2",
         "a.zek:16: value LIMIT\na.zek:9: section [SENSOR]\n" + limit + "compiled:\n  0x11000003 number 7 (0x7)\n"},
        {"SENSOR/A/VALUE/3",
         "a.zek:16: value 1,2\na.zek:9: section [SENSOR]\ncompiled:\n  0x11000002 number 1 (0x1)\n"},
        {"SENSOR/#2/NAME", "a.zek:11: value A\na.zek:9: section [SENSOR]\ncompiled:\n  0x12000000 string \"A\"\n"},
        {"SENSOR/#1/NAME", "a.zek:19: value B\na.zek:17: section [SENSOR]\ncompiled:\n  0x12000001 string \"B\"\n"},
        {"TAVRGROUP/#1/SENSORS/1",
         "a.zek:29: value 2\na.zek:25: section [TAVRGROUP]\na.zek:9: sensor A\n"
         "compiled:\n  0x11000001 number 2 (0x2)\n"},
        {"TABLE/First/8", "a.zek:33: value 9\na.zek:30: section [TABLE]\ncompiled: no entry of its own\n"},
        // A word is no number there, so it counts as 0 and its definition does nothing.
        {"TABLE/First/7", "a.zek:34: value LIMIT\na.zek:30: section [TABLE]\ncompiled: no entry of its own\n"},
        {"TABLE/Second/7", "a.zek:34: value LIMIT\na.zek:30: section [TABLE]\ncompiled: no entry of its own\n"},
        {"REPEATER/R/0",
         "a.zek:44: value LIMIT\na.zek:43: section [REPEATER]\ncompiled:\n  0x11000000 number 0 (0x0)\n"},
        {"REPEATER/R/2",
         "a.zek:44: value LIMIT\na.zek:43: section [REPEATER]\n" + limit + "compiled:\n  0x11000003 number 7 (0x7)\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        const Result result = Zek({"origin", "a.zkd", row.path, "a.zki"});
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.out, row.shown);
    }
    for (const char* path : {"SENSOR/A/VALUE/4", "SENSOR/A/NAME/1", "DEFINE/LIMIT/1", "SENSOR/#3/NAME"}) {
        EXPECT_EQ(Zek({"origin", "a.zkd", path}).err, std::string("zek: a.zkd has no value ") + path + '\n');
    }
    EXPECT_EQ(Zek({"origin", "a.zkd", "DEFINE/LIMIT/0"}).out, "a.zek:3: value 7\na.zek:1: section [DEFINE]\n");
}

TEST_F(ZekOrigin, OfSeveralItemsOfAWordTheOneThatCountsIsShown) {
    Write("b.zek",
          "[DEFINE]\nWORD = 1\nBEHIND = 1\n[IFDEF]\nDEFINEWORD = WORD\nWORD = 2\nBEHIND = 2\n[DEFINE]\nWORD = 3\n"
          "[SYSTEM]\nTYPE = WORD\nFLAG = BEHIND\nZEKLOOP = 1\nMODEL = A\nSOUTHBRIDGE = 0\nNORTHBRIDGE = 0\n");
    ASSERT_EQ(Zek({"compile", "b.zek"}).code, 0);
    for (const char* path : {"DEFINE/WORD", "IFDEF/WORD"}) {
        EXPECT_EQ(Zek({"origin", "b.zkd", path}).out, "b.zek:9: value 3\nb.zek:8: section [DEFINE]\n");
    }
    for (const char* path : {"DEFINE/BEHIND", "IFDEF/BEHIND"}) {
        EXPECT_EQ(Zek({"origin", "b.zkd", path}).out, "b.zek:7: value 2\nb.zek:4: section [IFDEF]\n");
    }
    EXPECT_EQ(Zek({"origin", "b.zkd", "SYSTEM/TYPE"}).out,
              "b.zek:11: value WORD\nb.zek:10: section [SYSTEM]\nb.zek:9: definition WORD = 3\n");
    EXPECT_EQ(Zek({"origin", "b.zkd", "SYSTEM/FLAG"}).out,
              "b.zek:12: value BEHIND\nb.zek:10: section [SYSTEM]\nb.zek:7: definition BEHIND = 2\n");
}

TEST_F(ZekOrigin, OfSeveralItemsOfAWordTheLastThatIsReadIsShown) {
    const struct {
        std::string text;
        std::string shown;
    } rows[] = {
        {"[DEFINE]\nV = 1\n[IFDEF]\nDEFINEWORD = V\nW = 6\n[DEFINE]\nW = 6\n",
         "a.zek:7: value 6\na.zek:6: section [DEFINE]\n"},
        {"[DEFINE]\nX = 6\nW = X\n[DEFINE]\nX = 9\nW = 9\n[DEFINE]\nW = X\nX = 10\n",
         "a.zek:8: value 9\na.zek:7: section [DEFINE]\n"},
        {"[DEFINE]\nW = 1\n[INCLUDE]\nFILE = words.zek\n[DEFINE]\nW = 1\n[INCLUDE]\nFILE = words.zek\n",
         "words.zek:2: value 1\n  included from a.zek:4\n  or included from a.zek:8\n"
         "words.zek:1: section [DEFINE]\n  included from a.zek:4\n  or included from a.zek:8\n"},
    };
    Write("words.zek", "[DEFINE]\nW = 1\n");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        Write("a.zek", row.text);
        ASSERT_EQ(Zek({"compile", "a.zek"}).code, 0);
        EXPECT_EQ(Zek({"origin", "a.zkd", "DEFINE/W"}).out, row.shown);
    }
}

TEST_F(ZekOrigin, ImageThatDoesNotBelongEndsWithOne) {
    Write("b.zek", std::string(kBoard).replace(std::string(kBoard).find("THRESHOLD_WH = 40"), 17, "THRESHOLD_WH = 41"));
    ASSERT_EQ(Zek({"compile", "b.zek"}).code, 0);
    const Result result = Zek({"origin", "a.zkd", "SENSOR/Inlet/ID", "b.zki"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.err.starts_with("zek: b.zki and a.zkd do not belong together: the debug image compiles to "))
        << result.err;
}

TEST_F(ZekOrigin, JsonSaysTheSame) {
    const Result result = Zek({"origin", "--json", "a.zkd", "SENSOR/#1/TYPE", "a.zki"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(nlohmann::json::parse(result.out), nlohmann::json::parse(R"({"schema": "zek-origin/1",
        "path": "SENSOR/#1/TYPE", "steps": [
        {"what": "value", "text": "TEMP", "file": "a.zek", "line": 17, "includedFrom": []},
        {"what": "section", "text": "[SENSOR]", "file": "a.zek", "line": 13, "includedFrom": []},
        {"what": "definition", "text": "TEMP = 17", "file": "words.zek", "line": 4,
         "includedFrom": [{"file": "a.zek", "line": 2}]}],
        "words": [{"word": 285212675, "class": "number", "number": 17}]})"));
}

TEST_F(ZekOrigin, WhatCannotBeFollowedIsTold) {
    ExpectRefused({
        {{"origin", "a.zkd", "SENSOR/Other/ID"}, 1, "a.zkd has no value SENSOR/Other/ID"},
        {{"origin", "a.zkd", "SENSOR/Inlet/THEORY"}, 1, "a.zkd has no value SENSOR/Inlet/THEORY"},
        {{"origin", "a.zki", "GLOBAL/G_T"}, 2, "a.zki is no debug image"},
        {{"origin", "a.zkd", "GLOBAL/G_T", "a.zkd"}, 2, "a.zkd is no compiled image"},
        {{"origin", "missing", "GLOBAL/G_T"}, 2, "cannot read missing: No such file or directory"},
        {{"origin", "a.zek", "GLOBAL/G_T"}, 3, "a.zek: is neither a compiled nor a debug image (bad-magic at byte 0)"},
    });
    EXPECT_EQ(Program({"sh", "-c", ZEK_PROGRAM " origin - GLOBAL/G_T < a.zkd"}).Finish().code, 0);
}

}  // namespace

}  // namespace zek::test
