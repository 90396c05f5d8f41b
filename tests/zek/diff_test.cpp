#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "zek/board_source.h"
#include "zek/command.h"

namespace zek::test {

namespace {

/// The text with one piece of it replaced everywhere.
std::string With(std::string text, const std::string& from, const std::string& to) {
    EXPECT_NE(text.find(from), std::string::npos) << from;
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

class ZekDiff : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        Write("words.zek", kBoardWords);
        Compile("a", kBoard);
    }

    /// Compares a with b of that text, compiled images or debug images; the exit code must fit what is shown.
    static std::string Shown(const std::string& text, Strings options = {}, const std::string& ending = ".zki") {
        Compile("b", text);
        options.insert(options.begin(), {"diff", "a" + ending, "b" + ending});
        const Result result = Zek(options);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.code, result.out.empty() ? 0 : 1);
        return result.out;
    }
};

TEST_F(ZekDiff, ComparesRowsAsWrittenOrAsBytes) {
    const std::string inTwoRows = With(kBoard, "0.255 = 9\n", "0.99 = 9\n100.255 = 9\n");
    EXPECT_EQ(Shown(inTwoRows), "");
    EXPECT_EQ(Shown(inTwoRows, {}, ".zkd"),
              "removed TABLE/Curve/0.255: \"9\"\nadded TABLE/Curve/0.99: \"9\"\nadded TABLE/Curve/100.255: \"9\"\n");
}

TEST_F(ZekDiff, TellsWhatChangedByName) {
    const struct {
        std::string text;
        std::string shown;
        std::string breaking;
    } rows[] = {
        {kBoard, "", ""},
        {With(kBoard, "= 40\n", "= 45\nTHRESHOLD_FH = 0x3c\n"),
         "changed SENSOR/Inlet/THRESHOLD_WH: \"40\" to \"45\"\nadded SENSOR/Inlet/THRESHOLD_FH: \"60\"\n", ""},
        {With(kBoard, "THRESHOLD_WH = 40\n", ""), "removed SENSOR/Inlet/THRESHOLD_WH: \"40\"\n",
         "removed SENSOR/Inlet/THRESHOLD_WH: \"40\"\n"},
        {With(kBoard, "TYPE = TEMP", "TYPE = 18"), "changed SENSOR/Inlet/TYPE: \"17\" to \"18\"\n",
         "changed SENSOR/Inlet/TYPE: \"17\" to \"18\"\n"},
        {With(kBoard, "ID = 5", "ID = 6"), "changed TAVRGROUP/All/ID: \"5\" to \"6\"\n",
         "changed TAVRGROUP/All/ID: \"5\" to \"6\"\n"},
        {With(kBoard, "G_T = VT_CALC,-,1,2", "G_T = VT_CALC,-,1,3"), "changed GLOBAL/G_T: \"2,-,1,2\" to \"2,-,1,3\"\n",
         ""},
        {With(kBoard, "VT_VALUE,9", "VT_CALC,+,1,8"), "changed SENSOR/Old/VALUE_X: \"1,9\" to \"2,+,1,8\"\n",
         "changed SENSOR/Old/VALUE_X: \"1,9\" to \"2,+,1,8\"\n"},
        {With(kBoard, "G_T", "G_U"),
         "removed GLOBAL/G_T: \"2,-,1,2\"\nadded GLOBAL/G_U: \"2,-,1,2\"\n"
         "changed SENSOR/Inlet/VALUE: \"2,+,7,G_T\" to \"2,+,7,G_U\"\n",
         "removed GLOBAL/G_T: \"2,-,1,2\"\n"},
        {std::string(kBoard) + "[PROPERTY]\nColour = red\n", "added PROPERTY/Colour: \"red\"\n", ""},
        {With(kBoard, "0.255 = 9\n", "0.255 = 9\n7 = 8\n"), "changed TABLE/Curve/7: \"9\" to \"8\"\n", ""},
        {std::string(kBoard) + "[GROUP]\nPARENT = 0\nNAME = R/2\nCHILDGROUP = 0\n", "added GROUP/R\\/2\n", ""},
    };
    for (const auto& row : rows) {
        const auto sorted = [](const std::string& text) {
            std::multiset<std::string> lines;
            std::istringstream in(text);
            for (std::string line; std::getline(in, line);) lines.insert(line);
            return lines;
        };
        SCOPED_TRACE(row.shown);
        // The kinds come in the order of the images.
        EXPECT_EQ(sorted(Shown(row.text)), sorted(row.shown));
        EXPECT_EQ(Shown(row.text, {"--breaking"}), row.breaking);
    }
}

TEST_F(ZekDiff, TellsTheSameOfDebugImages) {
    const std::string text = With(With(kBoard, "= 40\n", "= 45\n"), "ID = 5", "ID = 6");
    const std::string compiled = Shown(text);
    EXPECT_EQ(compiled,
              "changed SENSOR/Inlet/THRESHOLD_WH: \"40\" to \"45\"\nchanged TAVRGROUP/All/ID: \"5\" to \"6\"\n");
    EXPECT_EQ(Shown(text, {}, ".zkd"), compiled);
}

/// One more leaves the others what they are.
TEST_F(ZekDiff, TellsWhichFilesOfDebugImagesAreIncluded) {
    for (const char* file : {"p.zek", "q.zek"}) Write(file, "[DEFINE]\nP = 1\n");
    const auto including = [](const std::string& file) { return "[INCLUDE]\nFILE = " + file + '\n' + kBoard; };
    const std::string added = "added INCLUDE/FILE: \"p.zek\"\n";
    EXPECT_EQ(Shown(including("p.zek"), {}, ".zkd"), "added DEFINE/P: \"1\"\n" + added);
    EXPECT_EQ(Shown(including("p.zek")), "");
    Compile("a", including("q.zek"));
    EXPECT_EQ(Shown(including("p.zek"), {}, ".zkd"), "removed INCLUDE/FILE: \"q.zek\"\n" + added);
    EXPECT_EQ(Shown(including("p.zek\nFILE = q.zek"), {}, ".zkd"), added);
    EXPECT_EQ(Shown(including("p.zek"), {"--breaking"}, ".zkd"), "");
    const auto json = nlohmann::json::parse(Zek({"diff", "--json", "a.zkd", "b.zkd"}).out)["differences"];
    EXPECT_EQ(json, nlohmann::json::parse(R"([{"change": "removed", "path": "INCLUDE/FILE", "section": "INCLUDE",
        "key": "FILE", "old": "q.zek", "breaking": false}, {"change": "added", "path": "INCLUDE/FILE",
        "section": "INCLUDE", "key": "FILE", "new": "p.zek", "breaking": false}])"));
}

TEST_F(ZekDiff, ComparesWordsOfTheCommandLineWithThoseOfTheSource) {
    const std::string source = "[PROPERTY]\nP = 1\n";
    ZekTest::Compile("a", source, {"-D", "Q=1"});
    EXPECT_EQ(Shown(source, {}, ".zkd"), "removed DEFINE/Q: \"1\"\n");
    EXPECT_EQ(Shown("[DEFINE]\nQ = 2\n" + source, {}, ".zkd"), "changed DEFINE/Q: \"1\" to \"2\"\n");
    EXPECT_EQ(Shown("[DEFINE]\nQ = 1\n" + source, {}, ".zkd"), "");
}

/// The children of a group that was renamed are what they were.
TEST_F(ZekDiff, TellsARenamedSectionAsOne) {
    const std::string text = With(With(kBoard, "Left", "Right"), "= Old", "= New");
    EXPECT_EQ(Shown(text), "renamed GROUP/Left to GROUP/Right\nrenamed SENSOR/Old to SENSOR/New\n");
    EXPECT_EQ(Shown(With(kBoard, "= Old", "= New"), {"--breaking"}), "renamed SENSOR/Old to SENSOR/New\n");
    EXPECT_EQ(Shown(With(With(kBoard, "= Old", "= New"), "VT_VALUE,9", "VT_VALUE,8")),
              "removed SENSOR/Old\nadded SENSOR/New\n");
}

/// Nor do those who name an action or a table differ.
TEST_F(ZekDiff, TellsARenamedActionOrTableAsOne) {
    const auto named = [&](const std::string& name, const std::string& calls) {
        return "[ACTION]\nNAME = " + name + "\nARGNUMBER = 0\nVALUE = VT_CALL," + calls + "\n";
    };
    const std::string words = "[DEFINE]\nVT_CALL = 3\nVT_IF = 102\nVT_TABLE = 10\n";
    const std::string users =
        "[SENSOR]\nPARENT = Board\nNAME = User\nID = 3\nTYPE = 3\nINITFLAG = 0\nCONTROLMASK = 3\n"
        "VALUE = VT_CALL,Do\nVALUE_X = VT_IF,1,Do\nVALUE_Y = VT_TABLE,Curve,1\n[REPEATER]\nR = 1,Do\n";
    const std::string base = With(kBoard, "SENSORS = 1,2", "SENSORS = 1,2,3") + words + users;
    const struct {
        std::string before;
        std::string after;
        std::string shown;
    } rows[] = {
        // It calls itself.
        {named("Do", "Do"), named("New", "New"), "renamed ACTION/Do to ACTION/New\n"},
        // Each calls the next, and the last one none of them.
        {named("Do", "B") + named("B", "C") + named("C", "C"), named("New", "Y") + named("Y", "Z") + named("Z", "Z"),
         "renamed ACTION/Do to ACTION/New\nrenamed ACTION/B to ACTION/Y\nrenamed ACTION/C to ACTION/Z\n"},
        // They call each other.
        {named("Do", "B") + named("B", "Do"), named("New", "Y") + named("Y", "New"),
         "renamed ACTION/Do to ACTION/New\nrenamed ACTION/B to ACTION/Y\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.shown);
        Compile("a", base + row.before);
        const std::string text = With(base, "Do\n", "New\n") + row.after;
        for (const char* ending : {".zki", ".zkd"}) {
            EXPECT_EQ(Shown(text, {}, ending), row.shown);
            EXPECT_EQ(Shown(With(text, "Curve", "Bend"), {}, ending),
                      row.shown + "renamed TABLE/Curve to TABLE/Bend\n");
        }
    }
}

/// Actions that call the next one, and the last one perhaps the first.
std::string Chain(const std::string& name, unsigned length, const std::string& last, bool backwards = false) {
    std::string text;
    for (unsigned i = 0; i < length; ++i) {
        const std::string value = i + 1 < length ? "VT_CALL," + name + std::to_string(i + 1) : last;
        const std::string action =
            "[ACTION]\nNAME = " + name + std::to_string(i) + "\nARGNUMBER = 0\nVALUE = " + value + '\n';
        text = backwards ? action + text : text + action;
    }
    return text;
}

std::string ChainRenamed(unsigned length) {
    std::string shown;
    for (unsigned i = 0; i < length; ++i) {
        shown += "renamed ACTION/Old" + std::to_string(i) + " to ACTION/New" + std::to_string(i) + '\n';
    }
    return shown;
}

constexpr char kChainWords[] = "[DEFINE]\nVT_VALUE = 1\nVT_CALL = 3\n";

TEST_F(ZekDiff, FollowsALongChainOfRenamedActionsInAnyOrder) {
    constexpr unsigned kLength = 500;
    Compile("a", kChainWords + Chain("Old", kLength, "VT_VALUE,1"));
    for (const bool backwards : {false, true}) {
        const std::string text = kChainWords + Chain("New", kLength, "VT_VALUE,1", backwards);
        EXPECT_EQ(Shown(text), ChainRenamed(kLength));
        EXPECT_EQ(Shown(text, {}, ".zkd"), ChainRenamed(kLength));
    }
}

TEST_F(ZekDiff, CircleThatIsAnotherHidesNoneThatIsTheSame) {
    constexpr unsigned kLength = 200;
    const auto circle = [&](const std::string& name, const std::string& number) {
        // Another action calls the first one and is called by the last one.
        return Chain(name, kLength, "VT_CALL," + name + "Turn") + "[ACTION]\nNAME = " + name +
               "Turn\nARGNUMBER = 0\nVALUE = VT_CALL," + name + "0\nVALUE_1 = VT_VALUE," + number + '\n';
    };
    const auto pair = [](const std::string& a, const std::string& b) {
        return "[ACTION]\nNAME = " + a + "\nARGNUMBER = 0\nVALUE_7 = VT_CALL," + b + "\n[ACTION]\nNAME = " + b +
               "\nARGNUMBER = 0\nVALUE_8 = VT_CALL," + a + '\n';
    };
    Compile("a", kChainWords + circle("Old", "1") + pair("Ping", "Pong"));
    const std::string changed = Shown(kChainWords + circle("New", "2") + pair("Tick", "Tock"));
    EXPECT_TRUE(changed.find("removed ACTION/Old0\n") != changed.npos &&
                changed.find("renamed ACTION/Old") == changed.npos)
        << changed;
    EXPECT_NE(changed.find("renamed ACTION/Ping to ACTION/Tick\nrenamed ACTION/Pong to ACTION/Tock\n"), changed.npos)
        << changed;
    EXPECT_EQ(Shown(kChainWords + circle("New", "1") + pair("Ping", "Pong")),
              ChainRenamed(kLength) + "renamed ACTION/OldTurn to ACTION/NewTurn\n");
}

TEST_F(ZekDiff, TellsAnActionThatWasRenamedAndChangedAsTwo) {
    const auto text = [](const std::string& name, const std::string& value) {
        return std::string(kBoard) + "[DEFINE]\nVT_CALL = 3\n[ACTION]\nNAME = " + name +
               "\nARGNUMBER = 0\nVALUE = VT_VALUE," + value + "\n[GLOBAL]\nG_Y = VT_CALL," + name + "\n";
    };
    Compile("a", text("Do", "1"));
    EXPECT_EQ(Shown(text("New", "2")),
              "removed ACTION/Do\nadded ACTION/New\nchanged GLOBAL/G_Y: \"3,Do\" to \"3,New\"\n");
}

TEST_F(ZekDiff, IdentifiersThatWereGivenOutAnewAreNoDifference) {
    // A property first and the sensors the other way round: other identifiers, other places.
    const std::string text = kBoard;
    const std::size_t inlet = text.find("[SENSOR]");
    const std::size_t old = text.find("[SENSOR]", inlet + 1);
    const std::size_t behind = text.find("[TABLE]");
    const std::string turned =
        text.substr(0, inlet) + text.substr(old, behind - old) + text.substr(inlet, old - inlet) + text.substr(behind);
    EXPECT_EQ(Shown(turned), "");
    EXPECT_NE(WithoutTime(Read("a.zki")), WithoutTime(Read("b.zki")));
    EXPECT_EQ(Shown("[PROPERTY]\nColour = red\n" + turned), "added PROPERTY/Colour: \"red\"\n");
}

TEST_F(ZekDiff, NumberForNoneIsANumberWhateverItsIdentifier) {
    const std::string board = With(kBoard, "TYPE = 3\n", "TYPE = -1\nTHRESHOLD_WL = 0xFFFFFFFF\n") +
                              "[TAVRGROUP]\nNAME = Odd\nID = 6\nPID = 0\nSENSORS = 1,-1\n[GLOBAL]\nG_N = VT_VALUE,-1\n";
    const std::string sensors =
        "[SENSOR]\nPARENT = Board\nNAME = Odd\nID = -1\nTYPE = 3\nINITFLAG = 0\nCONTROLMASK = 3\nVALUE = VT_VALUE,1\n";
    Compile("a", board + sensors);
    EXPECT_EQ(Shown("[DEFINE]\nVT = 1\n[GLOBAL]\nG_0 = VT,12345\n" + board + sensors, {"--breaking"}), "");
    EXPECT_EQ(Shown("[DEFINE]\nVT = 1\n[GLOBAL]\nG_0 = VT,12345\n" + board + sensors),
              "added GLOBAL/G_0: \"1,12345\"\n");
    EXPECT_EQ(Shown(With(board, "TYPE = -1", "TYPE = 4") + sensors),
              "changed SENSOR/Old/TYPE: \"4294967295\" to \"4\"\n");
}

TEST_F(ZekDiff, AnotherSpellingIsNoDifferenceOfDebugImages) {
    Compile("a", With(kBoard, "= 40\n", "= -40\n"));
    EXPECT_EQ(Shown(With(kBoard, "= 40\n", "= 0xFFFFFFD8\n"), {}, ".zkd"), "");
    EXPECT_EQ(Shown(With(kBoard, "= 40\n", "= -41\n"), {}, ".zkd"),
              "changed SENSOR/Inlet/THRESHOLD_WH: \"4294967256\" to \"4294967255\"\n");
}

TEST_F(ZekDiff, ComparesTheValueThatAWordHasInTheEnd) {
    const std::string text = std::string(kBoard) + "[DEFINE]\nX = 3\nA = X\n[DEFINE]\nX = 2\n";
    Compile("a", text);
    EXPECT_EQ(Shown(text + "[DEFINE]\nX = 5\n", {}, ".zkd"), "changed DEFINE/X: \"2\" to \"5\"\n");
    EXPECT_EQ(Zek({"get", "b.zkd", "DEFINE/A"}).out, "3\n");
    EXPECT_EQ(Zek({"get", "b.zkd", "DEFINE/X"}).out, "5\n");
}

TEST_F(ZekDiff, JsonSaysTheSame) {
    const std::string out = Shown(With(With(kBoard, "= 40\n", "= 45\n"), "= Old", "= New"), {"--json"});
    EXPECT_EQ(nlohmann::json::parse(out), nlohmann::json::parse(R"({"schema": "zek-diff/1", "differences": [
        {"change": "changed", "path": "SENSOR/Inlet/THRESHOLD_WH", "section": "SENSOR", "name": "Inlet",
         "key": "THRESHOLD_WH", "old": "40", "new": "45", "breaking": false},
        {"change": "renamed", "path": "SENSOR/Old", "section": "SENSOR", "name": "Old", "newName": "New",
         "breaking": true}]})"));
}

TEST_F(ZekDiff, WhatCannotBeComparedIsTold) {
    ExpectRefused({
        {{"diff", "a.zki", "a.zkd"}, 2, "one image is compiled, the other a debug image"},
        {{"diff", "a.zki", "missing"}, 2, "cannot read missing: No such file or directory"},
        {{"diff", "a.zek", "a.zki"}, 3, "a.zek: is neither a compiled nor a debug image (bad-magic at byte 0)"},
    });
    EXPECT_EQ(Program({"sh", "-c", ZEK_PROGRAM " diff - a.zki < a.zki"}).Finish().code, 0);
}

}  // namespace

}  // namespace zek::test
