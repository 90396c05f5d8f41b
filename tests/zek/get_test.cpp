#include "zek/command.h"

namespace zek::test {

namespace {

class ZekGet : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        Write("a.zek",
              "[DEFINE]\nVT_READ = 4\nVT_CALC = 2\nTEMP = 0x11\nBUSTYPE_SMBUS = 1\n"
              "[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\n"
              "[PROPERTY]\nColour = light red\nCount = 7\n"
              "[SENSOR]\nPARENT = Board\nNAME = CPU/0\nID = 0x10\nTYPE = TEMP\nINITFLAG = 0\nCONTROLMASK = 3\n"
              "VALUE = VT_READ,0x20,8,BUSTYPE_SMBUS,0x48\nVALUE_X = VT_CALC,+,3,G_T\n"
              "[SENSOR]\nPARENT = Board\nNAME = \"#1\"\nID = 2\nTYPE = 3\nINITFLAG = 0\nCONTROLMASK = 3\n"
              "VALUE = VT_CALC,>>,1,2\n"
              "[TABLE]\nNAME = Curve\nTYPE = 1\n0.255 = 9\n4.5 = 0x2A\n"
              "[GLOBAL]\nG_T = VT_CALC,-,1,2\n"
              "[TAVRGROUP]\nNAME = All\nID = 1\nPID = 0\nSENSORS = 16,2\n");
        const Result result = Zek({"compile", "a.zek"});
        ASSERT_EQ(result.code, 0) << result.err;
    }
};

TEST_F(ZekGet, ShowsTheSameOfBothImages) {
    const struct {
        const char* path;
        const char* value;
    } rows[] = {
        {"SENSOR/CPU\\/0/TYPE", "17"},
        {"SENSOR/#0x10/TYPE", "17"},
        {"SENSOR/#16/NAME", "CPU/0"},
        {"SENSOR/\\#1/ID", "2"},
        {"SENSOR/#16/VALUE", "4,32,8,1,72"},
        {"SENSOR/#16/VALUE/4", "72"},
        {"SENSOR/#16/VALUE_X", "2,+,3,G_T"},
        {"SENSOR/#2/VALUE/1", ">>"},
        {"GLOBAL/G_T", "2,-,1,2"},
        {"PROPERTY/Colour", "light red"},
        {"PROPERTY/Count", "7"},
        {"TAVRGROUP/All/SENSORS", "16,2"},
        {"TAVRGROUP/#1/SENSORS/1", "2"},
        {"GROUP/Board/PARENT", "0"},
        {"TABLE/Curve/4", "42"},
        {"TABLE/Curve/255", "9"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        for (const char* image : {"a.zki", "a.zkd"}) {
            const Result result = Zek({"get", image, row.path});
            EXPECT_EQ(result.code, 0);
            EXPECT_EQ(result.out, std::string(row.value) + '\n') << image;
            EXPECT_EQ(result.err, "");
        }
    }
}

/// What numbers and operands may look like; a value of type 3 is a call.
constexpr char kOddlyWritten[] =
    "[DEFINE]\nVT_VALUE = 1\nVT_CALC = 2\nVT_CALL = 3\nLIMIT = 7\nODD = -40\n"
    "[SYSTEM]\nTYPE = -1\nMODEL = 12\nSOUTHBRIDGE = 0\nNORTHBRIDGE = +5\nFLAG = 12abc\nZEKLOOP = 0x1Fg\n"
    "[GROUP]\nPARENT = 0\nNAME = 0x10\nCHILDGROUP = 007\n"
    "[SENSOR]\nPARENT = 0x10\nNAME = S\nID = LIMIT\nTYPE = ODD\nINITFLAG = 0\nCONTROLMASK = 4294967298\n"
    "THRESHOLD_WH = -40\nTHRESHOLD_WL = \" 8,9\"\nVALUE = VT_CALC,+,-7,\"12,3\"\nVALUE_B = VT_CALL,\"A,B\",+1,LIMIT\n"
    "[ACTION]\nNAME = \"A,B\"\nARGNUMBER = 0x2z,3\nVALUE = VT_VALUE,0\nVALUE_1 = "
    "VT_CALC,==,ARG1,VALUE_2,G_T,ODD\nVALUE_2 = VT_VALUE,1x\n"
    "[ACTION]\nNAME = Act\nARGNUMBER = 1\nVALUE = VT_VALUE,ARG0\n"
    "[TABLE]\nNAME = First\nTYPE = LIMIT\n0.9 = 5\n7 = LIMIT\n8 = 0x123\n0x5 = -1\n"
    "[TABLE]\nNAME = Second\nTYPE = 1\n3 = 9z\n2.3 = 8\n"
    "[GLOBAL]\nG_T = VT_VALUE,010\n"
    "[REPEATER]\nR = LIMIT,Act,1\nQ = -2,Act,LIMIT\n"
    "[TAVRGROUP]\nNAME = V\nID = 1z\nPID = 0\nSENSORS = 0,LIMIT,7a\n";

TEST_F(ZekGet, ShowsTheSameOfBothImagesHoweverItWasWritten) {
    Write("b.zek", kOddlyWritten);
    const Result compiled = Zek({"compile", "b.zek"});
    ASSERT_EQ(compiled.code, 0) << compiled.err;
    const struct {
        const char* path;
        const char* value;
    } rows[] = {
        {"SYSTEM/TYPE", "4294967295"},
        {"SYSTEM/NORTHBRIDGE", "5"},
        {"SYSTEM/FLAG", "12"},
        {"SYSTEM/ZEKLOOP", "31"},
        {"GROUP/0x10/CHILDGROUP", "7"},
        {"SENSOR/#7/NAME", "S"},
        {"SENSOR/S/PARENT", "0x10"},
        {"SENSOR/S/TYPE", "4294967256"},
        {"SENSOR/S/CONTROLMASK", "2"},
        {"SENSOR/S/THRESHOLD_WH", "4294967256"},
        {"SENSOR/S/THRESHOLD_WL", "8"},
        {"SENSOR/S/VALUE", "2,+,4294967289,12"},
        {"SENSOR/S/VALUE_/3", "12"},
        {"SENSOR/S/VALUE_B", "3,A,B,1,7"},
        {"SENSOR/S/VALUE_B/1", "A,B"},
        {"ACTION/A,B/ARGNUMBER", "2"},
        {"ACTION/A,B/VALUE_1", "2,==,ARG1,VALUE_2,G_T,4294967256"},
        {"ACTION/A,B/VALUE_2", "1,1"},
        {"TABLE/First/TYPE", "7"},
        {"TABLE/First/0", "5"},
        {"TABLE/First/5", "255"},
        {"TABLE/First/7", "0"},
        {"TABLE/First/8", "35"},
        {"TABLE/First/10", "0"},
        {"TABLE/Second/2", "8"},
        {"TABLE/Second/3", "8"},
        {"TABLE/Second/9", "5"},
        {"GLOBAL/G_T", "1,10"},
        {"REPEATER/R", "0,Act,1"},
        {"REPEATER/Q", "4294967294,Act,7"},
        {"TAVRGROUP/#1/SENSORS", "0,4294967295,7"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        for (const char* image : {"b.zki", "b.zkd"}) {
            EXPECT_EQ(Zek({"get", image, row.path}).out, std::string(row.value) + '\n') << image;
        }
        EXPECT_EQ(Zek({"get", "b.zki", row.path, "--json"}).out, Zek({"get", "b.zkd", row.path, "--json"}).out);
    }
}

TEST_F(ZekGet, ShowsWhatOneImageAloneHas) {
    EXPECT_EQ(Zek({"get", "a.zkd", "TABLE/Curve/4.5"}).out, "42\n");
    EXPECT_EQ(Zek({"get", "a.zkd", "DEFINE/TEMP"}).out, "17\n");
}

TEST_F(ZekGet, WordThatIsDefinedSeveralTimesHasTheLastValue) {
    // TAKEN got the value that OTHER had there, though the check looks OTHER up again.
    Write("b.zek",
          "[DEFINE]\nWORD = 1\nBEHIND = 1\nOTHER = 5\nTAKEN = OTHER\n[IFDEF]\nDEFINEWORD = WORD\nWORD = 2\nBEHIND = 2\n"
          "[DEFINE]\nWORD = 3\nOTHER = 6\nGIVEN = 7\n[SYSTEM]\nTYPE = WORD\nFLAG = BEHIND\nZEKLOOP = TAKEN\n"
          "MODEL = A\nSOUTHBRIDGE = 0\nNORTHBRIDGE = 0\n");
    ASSERT_EQ(Zek({"compile", "b.zek", "-D", "GIVEN=8"}).code, 0);
    const struct {
        const char* word;
        const char* value;
    } rows[] = {{"DEFINE/WORD", "3\n"},    {"IFDEF/WORD", "3\n"},   {"SYSTEM/TYPE", "3\n"},  {"DEFINE/BEHIND", "2\n"},
                {"IFDEF/BEHIND", "2\n"},   {"SYSTEM/FLAG", "2\n"},  {"DEFINE/OTHER", "6\n"}, {"DEFINE/TAKEN", "5\n"},
                {"SYSTEM/ZEKLOOP", "5\n"}, {"DEFINE/GIVEN", "7\n"}, {"IFDEF/OTHER", ""}};
    for (const auto& row : rows) EXPECT_EQ(Zek({"get", "b.zkd", row.word}).out, row.value) << row.word;
}

TEST_F(ZekGet, IncludesAreInTheDebugImage) {
    Write("b.zek", "[PROPERTY]\nB = 1\n");
    Write("c.zek", "[PROPERTY]\nC = 1\n");
    Write("main.zek", "[PROPERTY]\nA = 1\n[INCLUDE]\nFILE = b.zek\nFILE = c.zek\n");
    ASSERT_EQ(Zek({"compile", "main.zek"}).code, 0);
    const struct {
        const char* path;
        const char* value;
        const char* origin;
    } rows[] = {{"INCLUDE/FILE", "b.zek,c.zek\n", "main.zek:4: value b.zek\nmain.zek:3: section [INCLUDE]\n"},
                {"INCLUDE/FILE/0", "b.zek\n", "main.zek:4: value b.zek\nmain.zek:3: section [INCLUDE]\n"},
                {"INCLUDE/FILE/1", "c.zek\n", "main.zek:5: value c.zek\nmain.zek:3: section [INCLUDE]\n"},
                {"INCLUDE/FILE/2", "", ""},
                {"INCLUDE/FOLDER", "", ""}};
    for (const auto& row : rows) {
        EXPECT_EQ(Zek({"get", "main.zkd", row.path}).out, row.value) << row.path;
        EXPECT_EQ(Zek({"origin", "main.zkd", row.path}).out, row.origin) << row.path;
    }
    const Result compiled = Zek({"get", "main.zki", "INCLUDE/FILE"});
    EXPECT_EQ(compiled.code, 1);
    EXPECT_EQ(compiled.err, "zek: main.zki has no value INCLUDE/FILE\n");
}

/// However often their file is read.
TEST_F(ZekGet, IncludesAreToldOnce) {
    Write("b.zek", "[INCLUDE]\nFILE = c.zek\n");
    Write("c.zek", "[DEFINE]\nC = 1\n");
    Write("main.zek", "[INCLUDE]\nFILE = b.zek\nFILE = b.zek\n");
    ASSERT_EQ(Zek({"compile", "main.zek"}).code, 0);
    EXPECT_EQ(Zek({"get", "main.zkd", "INCLUDE/FILE"}).out, "b.zek,b.zek,c.zek\n");
}

TEST_F(ZekGet, WordOfTheCommandLineIsThatOfADefine) {
    Write("b.zek", "[DEFINE]\nB = 1\n[IFDEF]\nDEFINEWORD = GIVEN\nC = 3\n[PROPERTY]\nP = 1\n");
    ASSERT_EQ(Zek({"compile", "b.zek", "-D", "GIVEN=8"}).code, 0);
    EXPECT_EQ(Zek({"get", "b.zkd", "DEFINE/GIVEN"}).out, "8\n");
    EXPECT_EQ(Zek({"get", "b.zkd", "DEFINE/GIVEN/0"}).out, "8\n");
    for (const char* command : {"get", "origin"}) {
        EXPECT_EQ(Zek({command, "b.zkd", "DEFINE/GIVE"}).err,
                  "zek: b.zkd has no value DEFINE/GIVE; did you mean DEFINE/GIVEN?\n");
    }
    const Strings paths = {"IFDEF/GIVEN", "DEFINE/C", "DEFINE/GIVEN/1"};
    for (const std::string& path : paths) {
        EXPECT_EQ(Zek({"get", "b.zkd", path}).err, "zek: b.zkd has no value " + path + '\n');
    }
    EXPECT_EQ(Zek({"get", "b.zki", "DEFINE/GIVEN"}).code, 1);
    const Result origin = Zek({"origin", "b.zkd", "DEFINE/GIVEN"});
    EXPECT_EQ(origin.code, 1);
    EXPECT_EQ(origin.err, "zek: b.zkd: DEFINE/GIVEN stands in no source; the compiler was given it, as by -D: 8\n");
}

TEST_F(ZekGet, NumberForNoneIsShownAsTheNumberThatItIs) {
    Write("b.zek",
          "[DEFINE]\nVT_CALC = 2\n[GLOBAL]\nG_N = VT_CALC,+,-1,G_N\n[SYSTEM]\nTYPE = 0xFFFFFFFF\nMODEL = "
          "A\nSOUTHBRIDGE = 0\nNORTHBRIDGE = 0\nFLAG = 0\nZEKLOOP = 1\n");
    ASSERT_EQ(Zek({"compile", "b.zek"}).code, 0);
    EXPECT_EQ(Zek({"get", "b.zki", "GLOBAL/G_N"}).out, "2,+,4294967295,G_N\n");
    EXPECT_EQ(Zek({"get", "b.zki", "SYSTEM/TYPE"}).out, "4294967295\n");
    EXPECT_NE(Zek({"get", "b.zki", "SYSTEM/TYPE", "--json"}).out.find("[\n 4294967295\n"), std::string::npos);
}

TEST_F(ZekGet, ValueThatIsNotThereEndsWithOneOrIsTheDefault) {
    for (const char* path : {"SENSOR/Other/ID", "SENSOR/#7/ID", "SENSOR/#2/THEORY", "SENSOR/#2/ID/1", "GLOBAL/G_None",
                             "TABLE/Curve/256", "TABLE/Curve/04", "TABLE/Other/4", "SYSTEM/MODEL"}) {
        SCOPED_TRACE(path);
        const Result missing = Zek({"get", "a.zki", path});
        EXPECT_EQ(missing.code, 1);
        EXPECT_EQ(missing.out, "");
        EXPECT_EQ(missing.err, std::string("zek: a.zki has no value ") + path + '\n');
        const Result given = Zek({"get", "a.zki", path, "--default", "x y"});
        EXPECT_EQ(given.code, 0);
        EXPECT_EQ(given.out, "x y\n");
        EXPECT_EQ(given.err, "");
        EXPECT_EQ(Zek({"get", "a.zki", path, "--default", ""}).out, "\n");
    }
}

/// `origin` says the same of the debug image.
TEST_F(ZekGet, PathThatIsNearIsTold) {
    const struct {
        const char* path;
        const char* near;
    } rows[] = {
        {"SENSOR/CPU\\/1/ID", "SENSOR/CPU\\/0/ID"},
        {"SENSOR/cpu\\/0/VALUE/1", "SENSOR/CPU\\/0/VALUE/1"},
        {"SENSOR/CPU\\/0/TYPES", "SENSOR/CPU\\/0/TYPE"},
        {"SENSOR/#0x10/value_x/2", "SENSOR/#16/VALUE_X/2"},
        {"SENSOR/#16/value x/2", "SENSOR/#16/VALUE_X/2"},
        {"SENSOR/\\#12/ID", "SENSOR/\\#1/ID"},
        {"PROPERTY/Color", "PROPERTY/Colour"},
        {"GLOBAL/T", nullptr},
        {"SENSOR/#3/ID", nullptr},
    };
    for (const auto& row : rows) {
        const std::string why = " has no value " + std::string(row.path) +
                                (row.near ? "; did you mean " + std::string(row.near) + "?\n" : "\n");
        EXPECT_EQ(Zek({"get", "a.zki", row.path}).err, "zek: a.zki" + why);
        EXPECT_EQ(Zek({"get", "a.zkd", row.path}).err, "zek: a.zkd" + why);
        EXPECT_EQ(Zek({"origin", "a.zkd", row.path}).err, "zek: a.zkd" + why);
        if (!row.near) continue;
        EXPECT_EQ(Zek({"get", "a.zki", row.near}).code, 0) << row.near;
    }
}

TEST_F(ZekGet, TellsWhatIsNoPath) {
    const struct {
        const char* path;
        std::string why;
    } rows[] = {
        {"", "there are no [] sections"},
        {"SENSORS/x/ID", "there are no [SENSORS] sections; did you mean SENSOR?"},
        {"sensor/x/ID", "there are no [sensor] sections; did you mean SENSOR?"},
        {"FAN/x/ID", "there are no [FAN] sections"},
        {"SENSOR/x", "SENSOR/NAME/KEY or SENSOR/#ID/KEY is one, and perhaps the place of a value behind it"},
        {"GLOBAL", "GLOBAL/KEY is one, and perhaps the place of a value behind it"},
        {"GLOBAL/G_X/1/2", "GLOBAL/KEY is one, and perhaps the place of a value behind it"},
        {"SENSOR/#x/ID", "behind the # an ID must stand"},
        {"SENSOR/#4294967296/ID", "behind the # an ID must stand"},
        {"SENSOR/x/VALUE/y", "behind the key the place of a value must stand, from 0"},
    };
    for (const auto& row : rows) {
        const Result result = Zek({"get", "a.zki", row.path, "--default", "1"});
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, std::string("zek: ") + row.path + " is no path to a value: " + row.why + '\n');
    }
}

TEST_F(ZekGet, FilesEndAsWithOtherCommands) {
    EXPECT_EQ(Zek({"get", "missing", "GLOBAL/G_T"}).code, 2);
    EXPECT_EQ(Zek({"get", "a.zek", "GLOBAL/G_T", "--default", "1"}).code, 3);
    const Result result = Program({"sh", "-c", ZEK_PROGRAM " get - GLOBAL/G_T < a.zki"}).Finish();
    EXPECT_EQ(result.out, "2,-,1,2\n");
}

}  // namespace

}  // namespace zek::test
