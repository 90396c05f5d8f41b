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
        Write("a.zek", kBoard);
        const Result result = Zek({"compile", "a.zek"});
        ASSERT_EQ(result.code, 0) << result.err;
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
    const struct {
        Strings arguments;
        int code;
        const char* why;
    } rows[] = {
        {{"origin", "a.zkd", "SENSOR/Other/ID"}, 1, "a.zkd has no value SENSOR/Other/ID"},
        {{"origin", "a.zkd", "SENSOR/Inlet/THEORY"}, 1, "a.zkd has no value SENSOR/Inlet/THEORY"},
        {{"origin", "a.zki", "GLOBAL/G_T"}, 2, "a.zki is no debug image"},
        {{"origin", "a.zkd", "GLOBAL/G_T", "a.zkd"}, 2, "a.zkd is no compiled image"},
        {{"origin", "missing", "GLOBAL/G_T"}, 2, "cannot read missing: No such file or directory"},
        {{"origin", "a.zek", "GLOBAL/G_T"}, 3, "a.zek: is neither a compiled nor a debug image (bad-magic at byte 0)"},
    };
    for (const auto& row : rows) {
        const Result result = Zek(row.arguments);
        EXPECT_EQ(result.code, row.code);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, std::string("zek: ") + row.why + '\n');
    }
    EXPECT_EQ(Program({"sh", "-c", ZEK_PROGRAM " origin - GLOBAL/G_T < a.zkd"}).Finish().code, 0);
}

}  // namespace

}  // namespace zek::test
