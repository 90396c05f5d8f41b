#include <algorithm>
#include <filesystem>
#include <sstream>

#include "boards/boards.h"
#include "code_table.h"
#include "zek/command.h"

namespace zek::test {

namespace {

const std::string kWords = "[INCLUDE]\nFILE = zek/words.zek\n";
const std::string kAction = "[ACTION]\nNAME = Step\nARGNUMBER = 1\nVALUE = VT_WRITE,0,8,BUSTYPE_SMBUS,0x2C,ARG1\n";
const std::string kRepeater = kWords + kAction + "[REPEATER]\n";
const std::string kView = "[TAVRGROUP]\nNAME = Fans\nID = 1\nPID = 0\nSENSORS =\n";
const std::string kTable = "[TABLE]\nNAME = Curve\nTYPE = 1\n0.255 = 0\n";

class ZekLint : public ZekTest {
protected:
    /// What the rules find, but for the unused, which are not what most rows are about: LINE:COLUMN: text [code], one a
    /// line.
    static std::string Found(const std::string& source, const std::string& only = "L") {
        Write("a.zek", source);
        return FoundIn({"check", "a.zek"}, only);
    }

    static std::string FoundIn(const Strings& arguments, const std::string& only) {
        const Result result = Zek(arguments);
        EXPECT_EQ(result.signal, 0);
        std::istringstream lines(result.err);
        std::string found;
        for (std::string line; std::getline(lines, line);) {
            if (line.find(" [" + only) == line.npos || !line.ends_with(']')) continue;
            const std::size_t warning = line.find(": warning: ");
            EXPECT_NE(warning, line.npos) << line;
            found += line.erase(warning, std::string(": warning").size()).substr(line.find(':') + 1) + '\n';
        }
        return found;
    }

    /// What one rule finds.
    struct Row {
        const char* code;
        std::string source;
        std::string found;  ///< without the code
    };

    static void Expect(const std::vector<Row>& rows) {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.source);
            const std::string code = " [" + std::string(row.code) + "]\n";
            EXPECT_EQ(Found(row.source, row.code), row.found.empty() ? "" : row.found + code);
        }
    }
};

/// The codes of the table that the rules have.
std::vector<const tool::CodeRow*> LintRows() {
    std::vector<const tool::CodeRow*> rows;
    for (const tool::CodeGroup& group : tool::CodeGroups()) {
        for (const tool::CodeRow& row : group.rows) {
            if (group.origin == tool::Origin::kLint) rows.push_back(&row);
        }
    }
    return rows;
}

TEST_F(ZekLint, ListsEachRuleWithCodeNameAndSentence) {
    const Result result = Zek({"lint", "--list"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    std::istringstream lines(result.out);
    std::string line;
    for (const tool::CodeRow* row : LintRows()) {
        ASSERT_TRUE(std::getline(lines, line)) << row->code;
        EXPECT_TRUE(line.starts_with(std::string(row->code) + "  ")) << line;
        ASSERT_GT(line.size(), 28U);
        const std::string sentence = line.substr(28);
        EXPECT_TRUE(sentence.ends_with('.')) << line;
        EXPECT_TRUE(std::string(row->cause).starts_with(sentence)) << line;
    }
    EXPECT_FALSE(std::getline(lines, line)) << line;
    const Result bare = Zek({"lint"});
    EXPECT_EQ(bare.code, 2);
    EXPECT_EQ(bare.err, "zek: 'zek lint --list' lists the rules; 'zek check' runs them\n");
}

TEST_F(ZekLint, PageNamesEveryRule) {
    const Result list = Zek({"lint", "--list"});
    EXPECT_NE(Read(ZEK_LINT_PAGE).find("\n```text zek lint\n" + list.out + "```\n"), std::string::npos) << list.out;
}

TEST_F(ZekLint, FindsItsExamples) {
    for (const tool::CodeRow* row : LintRows()) EXPECT_NE(Found(row->example, row->code), "") << row->code;
}

TEST_F(ZekLint, LeavesExitCodeAndCompileAlone) {
    Write("a.zek", kView + "P_ICON = fan\n");
    EXPECT_EQ(Zek({"check", "a.zek"}).code, 0);
    const Result compiled = Zek({"compile", "a.zek"});
    EXPECT_EQ(compiled.code, 0);
    EXPECT_EQ(compiled.err, "");
}

TEST_F(ZekLint, IsAllowedByComments) {
    EXPECT_EQ(Found(kView + "P_ICON = fan ; zek: allow L101\n"), "");
    EXPECT_EQ(Found(kView + "; zek: allow L101\nP_ICON = fan\n"), "");
    EXPECT_EQ(Found(kView + "SENSORS = 1 ; zek: allow L105\n[PROPERTY]\nA = 1\n"), "");
    EXPECT_EQ(Found("[PROPERTY]\nA = 1 ; zek: allow L101\n"),
              "2:20: nothing is found here that 'zek: allow L101' would allow [L001]\n");
}

TEST_F(ZekLint, RunsOnlyTheRulesOfTheTextWhereTheSourceHasErrors) {
    EXPECT_EQ(Found("[GROUP]\n[PROPERTY]\nA = \"b\n" + kView + "P_ICON = fan\n"),
              "3:6: [PROPERTY]:A, the quote is not closed, so that it takes everything to the end [L162]\n");
}

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
        {"L113", kTable + "7 = -2\n", "5:5: [TABLE]:7, -2 is negative and counts as 4294967294"},
        {"L113", kWords + "[DEFINE]\nA = -2\n[GLOBAL]\nG_A = VT_VALUE,-2\n", ""},
    });
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
        {"L121", before + "THRESHOLD_FL = 30 ; zek: allow L121\nTHRESHOLD_WL = 20 ; zek: allow L121\n", ""},
    });
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
    Write("a.zek", "[IFDEF]\nDEFINEWORD = A\nB = 1\n");
    EXPECT_EQ(FoundIn({"check", "-D", "A=1", "a.zek"}, "L143"), "");
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
}

TEST_F(ZekLint, FindsNothingInTheExample) {
    const std::filesystem::path example = ZEK_EXAMPLE;
    EXPECT_EQ(Zek({"check", example.string()}).err, "");
}

/// Those with mistakes aside, and the one of rows, whose first table leaves bytes out.
TEST_F(ZekLint, FindsNothingInBoards) {
    for (const std::string_view shape : bench::ShapeNames()) {
        SCOPED_TRACE(shape);
        const bool rows = shape == "rows";
        const std::string found = Found(bench::ZekSource(shape, 50, 1));
        EXPECT_EQ(found.empty(), !rows) << found;
        EXPECT_EQ(found.find("[L151]") != found.npos, rows) << found;
        EXPECT_EQ(std::count(found.begin(), found.end(), '\n'), rows ? 1 : 0) << found;
    }
}

TEST_F(ZekLint, FindsTextsThatTheCuttingLoses) {
    Expect({
        {"L161", "[PROPERTY]\nA = ab\"cd\"\n",
         "2:8: [PROPERTY]:A, 'ab' is lost, since it stands outside the quotes of 'cd'"},
        {"L161", "[PROPERTY]\nA = \"cd\" ef\n",
         "2:6: [PROPERTY]:A, 'ef' is lost, since it stands outside the quotes of 'cd'"},
        {"L161", kWords + "[GLOBAL]\nG_A = VT_CALC, \"+\" ,\"1\", \"2\"\n", ""},
        {"L161", "[PROPERTY]\nA = \"cd\",ef\n", ""},
        {"L162", "[PROPERTY]\nA = \"b, c ; d\n",
         "2:6: [PROPERTY]:A, the quote is not closed, so that it takes everything to the end"},
        {"L162", "[PROPERTY]\nA = \"b, c\" ; \"d\n", ""},
        {"L163", "[TAVRGROUP]\nNAME = Fans\nID = 1\nPID = 0\nSENSORS ; none\n",
         "5:1: [TAVRGROUP]:SENSORS, there is no = behind the key"},
        {"L163", "[GROUP]\nPARENT = 0\nNAME = A\nCHILDGROUP = 0\n= 5\n",
         "5:1: [GROUP]:= 5, there is no = behind the key"},
        {"L163", kView, ""},
    });
}

}  // namespace

}  // namespace zek::test
