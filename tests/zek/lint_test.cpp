// The rules of lint, each with what it finds and what it leaves alone.
#include <algorithm>

#include "zek/lint_source.h"

namespace zek::test {

namespace {

TEST_F(ZekLint, FindsTextsThatTheImageLoses) {
    Expect({
        {"L101", kView + "P_ICON = fan\nP_A = 1\n",
         "6:1: [TAVRGROUP]:P_ICON, is lost: no [SENSOR], [DEVICE], [SYSTEM] or [PROPERTY] uses the name ICON"},
        {"L101", kView + "P_ICON = fan\n[PROPERTY]\nICON = any\n", ""},
        {"L101", kView + "P_ICON = fan\n[DEVICE]\nNAME = D\nID = 1\nINITFLAG = 0\nCONTROLMASK = 0\nP_ICON = any\n", ""},
        {"L101", kView + "P_ICON = fan\n[DEVICE]\nNAME = D\nID = 1\nINITFLAG = 0\nCONTROLMASK = 0\nP_P_ICON = any\n",
         "6:1: [TAVRGROUP]:P_ICON, is lost: no [SENSOR], [DEVICE], [SYSTEM] or [PROPERTY] uses the name ICON"},
    });
    Write("a.zek", kView + "P_ICON = fan\nP_A = 1\n");
    const Result result = Zek({"check", "a.zek"});
    EXPECT_NE(result.err.find("a.zek:7:1: note: P_A stands behind it and is lost, too\n"), std::string::npos)
        << result.err;
}

TEST_F(ZekLint, NamesSomeOfManyTextsThatAreLostBehindAnother) {
    std::string source = kView + "P_ICON = fan\n";
    for (int i = 0; i < 100; ++i) source += "P_A" + std::to_string(i) + " = 1\n";
    Write("a.zek", source);
    const std::string said = WithoutExcerpts(Zek({"check", "a.zek"}).err);
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 23) << said;
    EXPECT_NE(said.find("P_A19 stands behind it and is lost, too\na.zek:6:1: note: and 80 more behind these\n"),
              said.npos)
        << said;
    source.resize(source.find("P_A21 "));
    Write("a.zek", source);
    EXPECT_NE(Zek({"check", "a.zek"}).err.find(": note: and 1 more behind these\n"), said.npos);
}

TEST_F(ZekLint, NamesSomeOfManyDefinitionsOfAnUnusedWord) {
    const auto found = [](int definitions) {
        std::string source;
        for (int i = 0; i < definitions; ++i) source += "[DEFINE]\nW = 1\n";
        Write("a.zek", source);
        return WithoutExcerpts(Zek({"check", "a.zek"}).err);
    };
    const std::string many = found(100);
    EXPECT_EQ(std::count(many.begin(), many.end(), '\n'), 23) << many;
    EXPECT_NE(many.find("a.zek:42:1: note: it is defined here, too\n"
                        "a.zek:2:1: note: and 79 more behind these\n"),
              many.npos)
        << many;
    const std::string one = found(22);
    EXPECT_NE(one.find(": note: and 1 more behind these\n"), one.npos) << one;
}

TEST_F(ZekLint, CommentAtAnyDefinitionAllowsAnUnusedWord) {
    const std::string plain = "[DEFINE]\nW = 1\n";
    const std::string allowed = "[DEFINE]\nW = 1 ; zek: allow L135\n";
    for (const std::string& source : {allowed + plain, plain + allowed, allowed + allowed}) {
        SCOPED_TRACE(source);
        Write("a.zek", source);
        EXPECT_EQ(Zek({"check", "a.zek"}).err, "");
    }
}

TEST_F(ZekLint, FindsOperandsThatBecomeNothing) {
    Expect({
        {"L102", kRepeater + "R = 8,Step,ARGx\n",
         "8:12: [REPEATER]:R, ARGx is no argument and compiles to 0xFFFFFFFF, which stands for nothing"},
        {"L102", kRepeater + "R = 8,Step,ARG1\n", ""},
        {"L102", kRepeater + "R = 8,Step,ARGx\n[DEFINE]\nARGx = 1\n", ""},
        {"L103", kRepeater + "R = 8,Step,-1\n",
         "8:12: [REPEATER]:R, -1 compiles to 0xFFFFFFFF, which stands for nothing"},
        {"L103", kRepeater + "R = 8,Step,ALL\n[DEFINE]\nALL = 0xFFFFFFFF\n",
         "8:12: [REPEATER]:R, ALL compiles to 0xFFFFFFFF, which stands for nothing"},
        {"L103", kRepeater + "R = 8,Step,-2\n", ""},
        {"L103", kWords + "[GLOBAL]\nG_A = VT_VALUE,4294967295\n",
         "4:16: [GLOBAL]:G_A, 4294967295 compiles to 0xFFFFFFFF, which stands for nothing"},
        {"L103", kWords + "[GLOBAL]\nG_A = VT_VALUE,4294967294\n", ""},
        {"L103", "[SYSTEM]\nTYPE = 1\nMODEL = A\nFLAG = 0xFFFFFFFF\nZEKLOOP = 1\n",
         "4:8: [SYSTEM]:FLAG, 0xFFFFFFFF compiles to 0xFFFFFFFF, which stands for nothing"},
        {"L103", "[SYSTEM]\nTYPE = 1\nMODEL = 0xFFFFFFFF\nFLAG = 0x7FFFFFFF\nZEKLOOP = 1\n", ""},
    });
}

TEST_F(ZekLint, FindsNamesWhereOnlyNumbersCount) {
    const std::string define = "[DEFINE]\nWORD = 7\n";
    Expect({
        {"L104", kRepeater + "R = WORD,Step,1\n" + define,
         "8:5: [REPEATER]:R, the count WORD is no plain number and compiles to 0"},
        {"L104", kRepeater + "R = G_A,Step,1\n[GLOBAL]\nG_A = VT_VALUE,1\n",
         "8:5: [REPEATER]:R, the count G_A is no plain number and compiles to 0"},
        {"L104", kRepeater + "R = 0x10,Step,WORD\n" + define, ""},
        {"L105", "[TAVRGROUP]\nNAME = A\nID = 1\nPID = 0\nSENSORS = 7,WORD\n" + define,
         "5:13: [TAVRGROUP]:SENSORS, WORD is no plain number and compiles to 0xFFFFFFFF"},
        {"L105", "[TAVRGROUP]\nNAME = A\nID = 1\nPID = 0\nSENSORS = 7,Fan\n",
         "5:13: [TAVRGROUP]:SENSORS, Fan is no plain number and compiles to 0xFFFFFFFF"},
        {"L105", "[TAVRGROUP]\nNAME = A\nID = 1\nPID = 0\nSENSORS = 7,0x07\n" + define, ""},
        {"L106", "[TAVRGROUP]\nNAME = A\nID = 1\nPID = WORD\nSENSORS =\n" + define,
         "4:7: [TAVRGROUP]:PID, WORD is no plain number: the check compares it as 0"},
        {"L106", kWords + "[ACTION]\nNAME = A\nARGNUMBER = WORD\nVALUE = VT_NONE\n" + define,
         "5:13: [ACTION]:ARGNUMBER, WORD is no plain number: the check compares it as 0"},
        {"L106", "[TAVRGROUP]\nNAME = A\nID = WORD\nPID = 0\nSENSORS =\n" + define, ""},
        {"L107", kTable + "7 = WORD\n" + define, "5:5: [TABLE]:7, WORD is no plain number and compiles to 0"},
        {"L107", kTable + "7 = 0x07\n" + define, ""},
    });
    const std::string sensor =
        kWords +
        "[GROUP]\nPARENT = 0\nNAME = B\nCHILDGROUP = 0\n[SENSOR]\nPARENT = B\nNAME = S\nTYPE = 1\n"
        "INITFLAG = 0\nCONTROLMASK = 0\nVALUE = VT_NONE\n[TAVRGROUP]\nNAME = A\nID = 1\nPID = 0\n";
    const std::string header = "[SENSOR]\n";
    std::string byWord = sensor + "SENSORS = 0\n" + define;
    byWord.insert(byWord.find(header) + header.size(), "ID = WORD\n");
    std::string byNumber = sensor + "SENSORS = 7\n" + define;
    byNumber.insert(byNumber.find(header) + header.size(), "ID = 7\n");
    Expect({{"L106", byWord, "8:6: [SENSOR]:ID, WORD is no plain number: the check compares it as 0"},
            {"L106", byNumber, ""}});
}

TEST_F(ZekLint, FindsOperandsOfTypesWithout) {
    const std::string global = "[DEFINE]\nVT_A = 13\nVT_B = 105\nVT_C = 1\nVT_D = 104\nVT_E = 100\n[GLOBAL]\nG_A = ";
    Expect({
        {"L108", global + "VT_A,1\n",
         "8:12: [GLOBAL]:G_A, the operands are lost, since VT_A is the value type 13, which takes none"},
        {"L108", global + "VT_B,1,2\n",
         "8:12: [GLOBAL]:G_A, the operands are lost, since VT_B is the value type 105, which takes none"},
        {"L108", global + "VT_E,ARG9\n",
         "8:12: [GLOBAL]:G_A, the operands are lost, since VT_E is the value type 100, which takes none"},
        {"L108", global + "VT_A\n", ""},
        {"L108", global + "VT_C,1\n", ""},
    });
}

TEST_F(ZekLint, FindsNumbersThatCountAsOthers) {
    Expect({
        {"L111", "[DEFINE]\nA = 12V\n", "2:5: [DEFINE]:A, 12V counts as 12: what stands behind the digits is ignored"},
        {"L111", kWords + "[GLOBAL]\nG_A = VT_VALUE,0x1G\n",
         "4:16: [GLOBAL]:G_A, 0x1G counts as 1: what stands behind the digits is ignored"},
        {"L111", kWords + "[GLOBAL]\nG_A = VT_VALUE,\"12 \"\n[DEFINE]\nA = 0x1F\n", ""},
        {"L112", "[DEFINE]\nA = 4294967297\n", "2:5: [DEFINE]:A, 4294967297 does not fit and counts as 1"},
        {"L112", "[DEFINE]\nA = 4294967295\n", ""},
        {"L113", kTable + "7 = -2\n", "5:5: [TABLE]:7, -2 is negative and counts as 254"},
        {"L113", kWords + "[DEFINE]\nA = -2\n[GLOBAL]\nG_A = VT_VALUE,-2\n", ""},
    });
}

TEST_F(ZekLint, FindsNumbersInKeysArgumentsAndRows) {
    Expect({
        {"L111", kTable + "1-2 = 7\n", "5:1: [TABLE]:1-2, 1-2 counts as 1: what stands behind the digits is ignored"},
        {"L111", kTable + "1.2.3 = 7\n",
         "5:1: [TABLE]:1.2.3, 2.3 counts as 2: what stands behind the digits is ignored"},
        {"L111", kTable + "1.2 = 7\n0x1F = 8\n", ""},
        {"L112", kTable + "4294967297 = 7\n", "5:1: [TABLE]:4294967297, 4294967297 does not fit and counts as 1"},
        {"L111", kWords + "[ACTION]\nNAME = A\nARGNUMBER = 1\nVALUE = VT_VALUE,ARG1x\n",
         "6:18: [ACTION]:VALUE, ARG1x counts as ARG1: what stands behind the digits is ignored"},
        {"L111", kWords + "[ACTION]\nNAME = A\nARGNUMBER = 1\nVALUE = VT_VALUE,ARG01\n", ""},
        {"L112", kWords + "[ACTION]\nNAME = A\nARGNUMBER = 1\nVALUE = VT_VALUE,ARG4294967297\n",
         "6:18: [ACTION]:VALUE, ARG4294967297 does not fit and counts as ARG1"},
        {"L113", kRepeater + "R = 8,Step,ARG-1\n", "8:12: [REPEATER]:R, ARG-1 is negative and counts as ARG4294967295"},
        {"L113", "[DEFINE]\nDOWN = -2\nLOW = DOWN\n[GROUP]\nPARENT = 0\nNAME = A\nCHILDGROUP = LOW\n",
         "7:14: [GROUP]:CHILDGROUP, LOW is negative and counts as 4294967294"},
        {"L113", kWords + "[DEFINE]\nMASK = -2\n[GLOBAL]\nG_A = VT_READ_BITS,0,MASK,BUSTYPE_SMBUS,0x48\n",
         "6:22: [GLOBAL]:G_A, MASK is negative and counts as 4294967294"},
        {"L113", kWords + "[DEFINE]\nDOWN = -2\nDOWN_AGAIN = 0xFFFFFFFE\n[GLOBAL]\nG_A = VT_VALUE,DOWN\n", ""},
        {"L114", kTable + "7 = 256\n", "5:5: [TABLE]:7, 256 does not fit a byte and counts as 0"},
        {"L114", kTable + "7 = 0x1FE\n", "5:5: [TABLE]:7, 0x1FE does not fit a byte and counts as 254"},
        {"L114", kTable + "7 = 255\n8 = -1\n", ""},
        {"L113", kTable + "7 = -1\n", "5:5: [TABLE]:7, -1 is negative and counts as 255"},
        {"L103", "[TAVRGROUP]\nNAME = A\nID = 1\nPID = 0\nSENSORS = 0xFFFFFFFF\n",
         "5:11: [TAVRGROUP]:SENSORS, 0xFFFFFFFF compiles to 0xFFFFFFFF, which stands for nothing"},
    });
}

/// The rule of negative numbers leaves those that stand for nothing to the rule of these.
TEST_F(ZekLint, TellsOnceOfANumberThatStandsForNothing) {
    const std::string nothing = " compiles to 0xFFFFFFFF, which stands for nothing [L103]\n";
    EXPECT_EQ(Found(kRepeater + "R = -1,Step,1\n"), "8:5: [REPEATER]:R, -1" + nothing);
    EXPECT_EQ(Found("[GROUP]\nPARENT = 0\nNAME = A\nCHILDGROUP = -1\n"), "4:14: [GROUP]:CHILDGROUP, -1" + nothing);
    EXPECT_EQ(Found("[TAVRGROUP]\nNAME = A\nID = 1\nPID = 0\nSENSORS = -1\n"),
              "5:11: [TAVRGROUP]:SENSORS, -1" + nothing);
    EXPECT_EQ(Found("[DEFINE]\nNONE = -1\n[GROUP]\nPARENT = 0\nNAME = A\nCHILDGROUP = NONE\n"),
              "6:14: [GROUP]:CHILDGROUP, NONE" + nothing);
}

TEST_F(ZekLint, TellsOfANegativeNumberWhereTheOtherRuleIsNotToTell) {
    Write("a.zek", "[GROUP]\nPARENT = 0\nNAME = A\nCHILDGROUP = -1\n");
    EXPECT_EQ(FoundIn({"check", "--no-warn", "L103", "a.zek"}, "L"),
              "4:14: [GROUP]:CHILDGROUP, -1 is negative and counts as 4294967295 [L113]\n");
}

TEST_F(ZekLint, TellsOnceWhatCountsOfARow) {
    EXPECT_EQ(Found(kTable + "2 = 4294967552\n3 = 300x\n", "L11"),
              "5:5: [TABLE]:2, 4294967552 does not fit and counts as 0 [L112]\n"
              "6:5: [TABLE]:3, 300x counts as 44: what stands behind the digits is ignored [L111]\n");
    EXPECT_EQ(FoundIn({"check", "--no-warn", "L111", "--no-warn", "L112", "a.zek"}, "L11"),
              "5:5: [TABLE]:2, 4294967552 does not fit a byte and counts as 0 [L114]\n"
              "6:5: [TABLE]:3, 300x does not fit a byte and counts as 44 [L114]\n");
}

TEST_F(ZekLint, ShowsEmptyAndLongTexts) {
    Expect({
        {"L105", "[TAVRGROUP]\nNAME = A\nID = 1\nPID = 0\nSENSORS = 1,,1\n",
         "5:13: [TAVRGROUP]:SENSORS, '' is no plain number and compiles to 0xFFFFFFFF"},
        {"L101", kView + "P_ = 1\n",
         "6:1: [TAVRGROUP]:P_, is lost: no [SENSOR], [DEVICE], [SYSTEM] or [PROPERTY] uses the name ''"},
        {"L111", "[DEFINE]\n" + std::string(300, 'A') + " = 1V\n",
         "2:304: [DEFINE]:" + std::string(300, 'A') + ", 1V counts as 1: what stands behind the digits is ignored"},
        {"L111", "[DEFINE]\n" + std::string(301, 'A') + " = 1V\n",
         "2:305: [DEFINE]:" + std::string(100, 'A') +
             "... (301 bytes), 1V counts as 1: what stands behind the digits is ignored"},
    });
}

TEST_F(ZekLint, FindsArgumentsThatNobodyPasses) {
    const std::string show = kWords + kAction + "[ACTION]\nNAME = Show\nARGNUMBER = 2\nVALUE = VT_CALC,+,";
    const std::string call = "[REPEATER]\nR = 8,Show,1,2\n";
    Expect({
        {"L109", show + "ARG0,ARG1\n", "10:19: [ACTION]:VALUE, no caller passes ARG0"},
        {"L109", show + "ARG0,ARG1\n" + call, "10:19: [ACTION]:VALUE, no caller passes ARG0"},
        {"L109", show + "ARG2,ARG1\n" + call, ""},
        {"L109", show + "ARG0,ARG1\n[DEFINE]\nARG0 = 7\n", ""},
        {"L109", kWords + "[GLOBAL]\nG_A = VT_VALUE,ARG0\n", "4:16: [GLOBAL]:G_A, no caller passes ARG0"},
        {"L109", kWords + "[DEVICE]\nNAME = D\nID = 1\nINITFLAG = 0\nCONTROLMASK = 0\nVALUE_SET = VT_VALUE,ARG0\n", ""},
        {"L109", kRepeater + "R = 8,Step,ARG16777216\n", "8:12: [REPEATER]:R, no caller passes ARG16777216"},
        {"L109", kRepeater + "R = 8,Step,ARG16777215\n", ""},
    });
    Write("a.zek", show + "ARG0,ARG1\n" + call);
    EXPECT_NE(Zek({"check", "a.zek"}).err.find("a.zek:12:1: note: this passes 2, the first of them ARG1\n"),
              std::string::npos);
}

TEST_F(ZekLint, FindsWhatNothingUses) {
    const std::string call = "[REPEATER]\nR = 8,Step,1\n";
    const std::string reads =
        kWords + "[ACTION]\nNAME = A\nVALUE_1 = VT_READ,0,8,BUSTYPE_SMBUS,0x48\nVALUE_2 = VT_JUMP,VALUE_3\n";
    Expect({
        {"L131", kWords + kAction, "4:8: [ACTION]:NAME, nothing calls the action Step"},
        {"L131", kWords + kAction + call, ""},
        {"L131", kWords + "[ACTION]\nNAME = A\nVALUE = VT_CALL,A\n", "4:8: [ACTION]:NAME, nothing calls the action A"},
        {"L131", kWords + "[ACTION]\nNAME = A\nVALUE_IPMI = VT_VALUE,1\n", ""},
        {"L131", kWords + "[ACTION]\nNAME = A\nVALUE = VT_VALUE,1\n[PROPERTY]\nA = A\n",
         "4:8: [ACTION]:NAME, nothing calls the action A"},
        {"L132", kTable, "2:8: [TABLE]:NAME, nothing uses the table Curve"},
        {"L132", kWords + kTable + "[GLOBAL]\nG_A = VT_TABLE,Curve,1\n", ""},
        {"L132", kWords + kTable + "[GLOBAL]\nG_A = VT_VALUE,1\nG_B = VT_IPMI,1,2\n",
         "4:8: [TABLE]:NAME, nothing uses the table Curve"},
        {"L133", kWords + "[GLOBAL]\nG_A = VT_VALUE,1\nG_B = VT_VALUE,G_A\n",
         "5:1: [GLOBAL]:G_B, nothing uses this global"},
        {"L133", kWords + "[GLOBAL]\nG_A = VT_VALUE,G_A\n", "4:1: [GLOBAL]:G_A, nothing uses this global"},
        {"L133", kRepeater + "R = 8,Step,G_A\n[GLOBAL]\nG_A = VT_VALUE,1\n", ""},
        {"L134", reads + "VALUE_3 = VT_WAIT,5\n", "5:1: [ACTION]:VALUE_1, nothing uses what this step works out"},
        {"L134", reads + "VALUE_3 = VT_CALC,+,VALUE_1,1\n", ""},
        {"L134", reads + "VALUE_3 = VT_WRITE,0,8,BUSTYPE_SMBUS,0x48,VALUE_1\n", ""},
        {"L134", kWords + "[ACTION]\nNAME = A\nVALUE_1 = VT_VALUE,VALUE_1\nVALUE_IPMI = VT_VALUE,1\n",
         "5:1: [ACTION]:VALUE_1, nothing uses what this step works out"},
        {"L135", "[DEFINE]\nA = 1\n", "2:1: [DEFINE]:A, nothing uses the word A"},
        {"L135", "[DEFINE]\nA = 1\n[IFDEF]\nDEFINEWORD = A\n", ""},
        {"L135", "[DEFINE]\nA = 1\n[IFDEF]\nDEFINEWORD = A\nB = A\n", "5:1: [IFDEF]:B, nothing uses the word B"},
        {"L135", "[DEFINE]\nA = 1\n[GROUP]\nPARENT = 0\nNAME = A\nCHILDGROUP = A\n", ""},
        {"L135", "[DEFINE]\nA = 1\n[GROUP]\nPARENT = 0\nNAME = A\nCHILDGROUP = 0\n",
         "2:1: [DEFINE]:A, nothing uses the word A"},
        {"L135", "[DEFINE]\nVT_A = 50\nB = 1\n[GLOBAL]\nG_A = VT_A,B\n", ""},
        {"L135", "[DEFINE]\nA = 1 ; zek: allow L135 for the front end\n", ""},
    });
}

TEST_F(ZekLint, TellsOnceOfAnUnusedWordThatIsDefinedTwice) {
    Write("a.zek",
          "[DEFINE]\nA = 1\n[IFDEF]\nDEFINEWORD = A2\nB = 1\n[DEFINE]\nB = 2\nA2 = 2\nC = 3\n[DEFINE]\nC = C\n");
    const Result result = Zek({"check", "--no-warn", "L141", "--no-warn", "L143", "--no-warn", "L142", "a.zek"});
    EXPECT_EQ(WithoutExcerpts(result.err),
              "a.zek:2:1: warning: [DEFINE]:A, nothing uses the word A [L135]\n"
              "a.zek:5:1: warning: [IFDEF]:B, nothing uses the word B [L135]\n"
              "a.zek:7:1: note: it is defined here, too\n"
              "a.zek:9:1: warning: [DEFINE]:C, nothing uses the word C [L135]\n"
              "a.zek:11:1: note: it is defined here, too\n"
              "a.zek: 3 warnings\n");
}

TEST_F(ZekLint, FindsThresholdsThatFall) {
    const std::string before = kWords +
                               "[GROUP]\nPARENT = 0\nNAME = B\nCHILDGROUP = 0\n[TAVRGROUP]\nNAME = A\nID = 1\n"
                               "PID = 0\nSENSORS = 1\n[SENSOR]\nPARENT = B\nNAME = S\nID = 1\nTYPE = 1\n"
                               "INITFLAG = 0\nCONTROLMASK = 0\nVALUE = VT_NONE\n";
    Expect({
        {"L121", before + "THRESHOLD_FL = -20\nTHRESHOLD_WL = -30\nTHRESHOLD_FH = 40\n",
         "21:16: [SENSOR]:THRESHOLD_WL, -30 is below THRESHOLD_FL, which is -20"},
        {"L121", before + "THRESHOLD_FH = 9\nTHRESHOLD_FL = 10\n",
         "20:16: [SENSOR]:THRESHOLD_FH, 9 is below THRESHOLD_FL, which is 10"},
        {"L121", before + "THRESHOLD_FL = -20\nTHRESHOLD_WL = -10\nTHRESHOLD_WH = 40\nTHRESHOLD_FH = 40\n", ""},
        {"L121", before + "THRESHOLD_FL = 0xFFFFFFF0\nTHRESHOLD_WH = 2147483648\nTHRESHOLD_FH = 3000000000\n", ""},
        {"L121", before + "THRESHOLD_WH = 1\nTHRESHOLD_FH = 0xFFFFFFF0\n",
         "21:16: [SENSOR]:THRESHOLD_FH, 0xFFFFFFF0 is below THRESHOLD_WH, which is 1"},
        {"L121", before + "THRESHOLD_WH = 1\nTHRESHOLD_FH = LOW\n[DEFINE]\nLOW = 0xFFFFFFF0\n",
         "21:16: [SENSOR]:THRESHOLD_FH, LOW is below THRESHOLD_WH, which is 1"},
        {"L121", before + "THRESHOLD_FL = 30 ; zek: allow L121\nTHRESHOLD_WL = 20 ; zek: allow L121\n", ""},
    });
    const std::string header = "[SENSOR]\n";
    std::string allowed = before + "THRESHOLD_FL = 4\nTHRESHOLD_WL = 3\nTHRESHOLD_WH = 2\n";
    EXPECT_EQ(std::ranges::count(Found(allowed, "L121"), '\n'), 2);
    allowed.replace(allowed.find(header), header.size(), "[SENSOR] ; zek: allow L121 it counts down\n");
    EXPECT_EQ(Found(allowed, "L"), "");
    allowed.insert(0, "[TABLE] ; zek: allow L121\nNAME = Curve\nTYPE = 1\n0.255 = 0\n");
    EXPECT_EQ(Found(allowed, "L"), "1:22: nothing is found here that 'zek: allow L121' would allow [L001]\n");
}

TEST_F(ZekLint, FindsWordsThatStandForSomethingElse) {
    Expect({
        {"L141", "[DEFINE]\nA = 1\n[IFDEF]\nDEFINEWORD = A\nA = 2\n",
         "5:1: [IFDEF]:A, the word A is defined again, as 2: this value holds everywhere, also above"},
        {"L141", "[DEFINE]\nA = 1\n[DEFINE]\nA = 0x01\n", ""},
        {"L143", "[IFDEF]\nDEFINEWORD = A\nB = 1\n[DEFINE]\nA = 1\n",
         "2:14: [IFDEF]:DEFINEWORD, the word A is not defined here, but the items below are defined all the same"},
        {"L143", "[DEFINE]\nA = 1\n[IFDEF]\nDEFINEWORD = A\nB = 1\n", ""},
    });
    Write("a.zek", "[IFDEF]\nDEFINEWORD = A\nB = 1\n[DEFINE]\nA = 1\n");
    EXPECT_EQ(FoundIn({"check", "-D", "A=1", "a.zek"}, "L143"), "");
}

TEST_F(ZekLint, FindsWordsUsedBeforeTheyAreDefined) {
    const std::string group = "[GROUP]\nPARENT = 0\nNAME = A\nCHILDGROUP = A\n";
    const std::string define = "[DEFINE]\nA = 1\n";
    const std::string found = "4:14: [GROUP]:CHILDGROUP, the word A is used before it is defined";
    Expect({
        {"L142", group + define, found},
        {"L142", define + group, ""},
        {"L142", define + group + "[DEFINE]\nA = 1\n", ""},
        {"L142",
         "[GLOBAL]\nG_A = VT_A,B\nG_B = VT_A,B\n[DEFINE]\nB = 1\n" + kWords + "[DEFINE]\nVT_A = VT_VALUE\nB = 2\n",
         "2:7: [GLOBAL]:G_A, the word VT_A is used before it is defined [L142]\n"
         "2:12: [GLOBAL]:G_A, the word B is used before it is defined"},
        // A number goes before a word.
        {"L142", kWords + "[GLOBAL]\nG_A = VT_VALUE,0x1\n[DEFINE]\nx1 = 1\n", ""},
    });
    Write("words.zek", define);
    Write("a.zek", group + "[INCLUDE]\nFILE = words.zek\n");
    EXPECT_EQ(FoundIn({"check", "a.zek"}, "L142"), found + " [L142]\n");
    EXPECT_NE(Zek({"check", "a.zek"}).err.find("words.zek:2:1: note: it is defined here\n"), std::string::npos);
    EXPECT_EQ(FoundIn({"check", "-D", "A=1", "a.zek"}, "L142"), "");
    Write("a.zek", "[INCLUDE]\nFILE = words.zek\n" + group);
    EXPECT_EQ(FoundIn({"check", "a.zek"}, "L142"), "");
}

TEST_F(ZekLint, FindsTablesThatDoNotSetAllTheirBytes) {
    const std::string second = "[TABLE]\nNAME = Other\nTYPE = 1\n";
    Expect({
        {"L151", "[TABLE]\nNAME = Curve\nTYPE = 1\n1.255 = 7\n",
         "2:8: [TABLE]:NAME, Curve sets 255 of its 256 bytes: from byte 0 on, those that no row sets are 0"},
        {"L151", "[TABLE]\nNAME = Curve\nTYPE = 1\n8.255 = 7\n0.7 = 1\n", ""},
        {"L151", kTable + second, ""},
        {"L152", kTable + second + "0.9 = 7\n11.255 = 7\n",
         "6:8: [TABLE]:NAME, Other sets 255 of its 256 bytes: from byte 10 on, those that no row sets are those of the "
         "table before"},
        {"L152", kTable + second + "0.9 = 7\n10.255 = 7\n", ""},
    });
    Write("a.zek", kTable + second);
    EXPECT_NE(Zek({"check", "a.zek"}).err.find("a.zek:2:1: note: the table before\n"), std::string::npos);
}

TEST_F(ZekLint, FindsTextsThatTheCuttingLoses) {
    Expect({
        {"L161", "[PROPERTY]\nA = ab\"cd\"\n",
         "2:5: [PROPERTY]:A, 'ab' is lost, since it stands outside the quotes of 'cd'"},
        {"L161", "[PROPERTY]\nA = \"cd\" ef\n",
         "2:10: [PROPERTY]:A, 'ef' is lost, since it stands outside the quotes of 'cd'"},
        {"L161", kWords + "[GLOBAL]\nG_A = VT_CALC, \"+\" ,\"1\", \"2\"\n", ""},
        {"L161", "[PROPERTY]\nA = \"cd\",ef\n", ""},
        {"L161", "[PROPERTY]\nA = b,\\\n  c d \"\" , e\n",
         "3:3: [PROPERTY]:A, 'c d' is lost, since it stands outside the quotes of ''"},
        {"L162", "[PROPERTY]\nA = \"b, c ; d\n",
         "2:6: [PROPERTY]:A, the quote is not closed, so that it takes everything to the end"},
        {"L162", "[PROPERTY]\nA = \"b, c\" ; \"d\n", ""},
        {"L163", "[TAVRGROUP]\nNAME = Fans\nID = 1\nPID = 0\nSENSORS ; none\n",
         "5:1: [TAVRGROUP]:SENSORS, there is no = behind the key"},
        {"L163", "[GROUP]\nPARENT = 0\nNAME = A\nCHILDGROUP = 0\n= 5\n",
         "5:1: [GROUP]:= 5, there is no = behind the key"},
        {"L163", "[TAVRGROUP]\nNAME = Fans\nID = 1\nPID = 0\nSENSORS \\\n ; none\n\n",
         "5:1: [TAVRGROUP]:SENSORS, there is no = behind the key"},
        {"L163", "[TAVRGROUP]\nNAME = Fans\nID = 1\nPID = 0\nSENSORS \\\n = ; none\n", ""},
        {"L163", kView, ""},
    });
}

}  // namespace

}  // namespace zek::test
