#include <nlohmann/json.hpp>

#include "zek/command.h"

namespace zek::test {

namespace {

struct Misspelt {
    const char* name;
    std::string source;
    std::string code;
    std::string meant;  ///< empty: nothing is near enough
};

class ZekSuggestion : public ZekTest, public testing::WithParamInterface<Misspelt> {};

TEST_P(ZekSuggestion, IsTheNearestNameOfTheRightKind) {
    const Misspelt& row = GetParam();
    Write("a.zek", row.source);
    const auto json = nlohmann::json::parse(Zek({"check", "--format", "json", "a.zek"}).out);
    for (const auto& finding : json["sources"][0]["findings"]) {
        if (finding["code"] != row.code) continue;
        EXPECT_EQ(finding.contains("fix") ? finding["fix"]["text"] : nlohmann::json(""), row.meant) << finding;
        return;
    }
    FAIL() << json;
}

const std::string kWords = "[DEFINE]\nVT_VALUE = 1\nVT_CALC = 2\nVT_CALL = 3\nVT_TABLE = 10\nFIRST = 5\n";
std::string Global(const std::string& items) { return std::string(kWords) + "[GLOBAL]\n" + items; }
const std::string kSensor = std::string(kWords) +
                            "[GROUP]\nPARENT = 0\nNAME = G\nCHILDGROUP = 0\n[SENSOR]\nPARENT = G\nNAME = S\nTYPE = 1\n"
                            "INITFLAG = 0\nCONTROLMASK = 0\nVALUE = VT_VALUE,1\n";
const std::string kView = "[TAVRGROUP]\nNAME = A\nID = 1\nPID = 0\n";
constexpr char kGroup[] = "[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\n";

INSTANTIATE_TEST_SUITE_P(
    Name, ZekSuggestion,
    testing::Values(
        Misspelt{"Section", "[SENSR]\n", "E002", "SENSOR"}, Misspelt{"NoSection", "[FOO]\n", "E002", ""},
        Misspelt{"Key", std::string(kGroup) + "VALUE_INI = 1\n", "W004", "VALUE_INIT"},
        Misspelt{"KeyOfAnotherKind", std::string(kGroup) + "SENSORS = 1\n", "W004", ""},
        Misspelt{"SectionInSmallLetters", "[Group]\n", "E002", "GROUP"},
        Misspelt{"BracketMissing", "[GROUP\n", "E002", "[GROUP]"},
        Misspelt{"BracketMissingBehindAMisspeltName", "[SENSR\n", "E002", "[SENSOR]"},
        Misspelt{"TextBehindTheBracket", "[SENSOR] x\n", "E002", "[SENSOR]"},
        Misspelt{"BracketMissingBehindNoName", "[FOO\n", "E002", ""},
        Misspelt{"EqualsMissing", std::string(kGroup) + "PARENT 0\n", "W004", "PARENT = 0"},
        Misspelt{"ColonForEquals", "[SENSOR]\nINITFLAG: 1, 2 ; text\n", "E102", "INITFLAG = 1, 2"},
        Misspelt{"EqualsMissingBeforeAComment", std::string(kGroup) + "PARENT 0 ; a = b\n", "W004", "PARENT = 0"},
        Misspelt{"EqualsInTheNextLine", std::string(kGroup) + "NAME 0 \\\n = 1\n", "W004", "NAME"},
        Misspelt{"EqualsMissingBehindNoKey", std::string(kGroup) + "COLOUR 0\n", "W004", ""},
        Misspelt{"BlankInAKey", std::string(kGroup) + "NAME 0 = 1\n", "W004", "NAME"},
        Misspelt{"KeyInCapitals", std::string(kGroup) + "Parent = 0\n", "W004", "PARENT"},
        Misspelt{"BlankBeforeAnOperator", Global("G_A = VT_CALC, +,1,1\n"), "E110", "+"},
        Misspelt{"OperatorInCapitals", Global("G_A = VT_CALC,POW,1,1\n"), "E110", "pow"},
        Misspelt{"OperatorOfAnotherLanguage", Global("G_A = VT_CALC,=,1,1,1,0\n"), "E110", "=="},
        Misspelt{"BlankBeforeAGlobal", Global("G_X = VT_VALUE,1\nG_A = VT_VALUE, G_X\n"), "E106", "G_X"},
        Misspelt{"NameThatNeedsQuotes",
                 Global("G_A = VT_CALL,Double1\n") + "[ACTION]\nNAME = \"Double #1\"\nVALUE = VT_VALUE,1\n", "E307",
                 "\"Double #1\""},
        Misspelt{"NameInQuotes",
                 Global("G_A = VT_CALL,\"Double,1\"\n") + "[ACTION]\nNAME = \"Double, 1\"\nVALUE = VT_VALUE,1\n",
                 "E307", "Double, 1"},
        Misspelt{"StepOutsideAnAction", kSensor + "ID = 1\nVALUE_11 = VT_VALUE,1\nVALUE_12 = VT_VALUE,VALUE_1\n",
                 "E309", ""},
        Misspelt{"Word", Global("G_A = VT_CALC,+,FIRTS,1\n"), "E106", "FIRST"},
        Misspelt{"Type", Global("G_A = VT_VALU,1\n"), "E108", "VT_VALUE"},
        Misspelt{"Operator", Global("G_A = VT_CALC,pwo,1,1\n"), "E110", "pow"},
        Misspelt{"Global", Global("G_Limit = VT_VALUE,1\nG_A = VT_VALUE,G_Limt\n"), "E305", "G_Limit"},
        Misspelt{"WordIsNoGlobal", Global("G_A = VT_VALUE,G_FIRST\n"), "E305", ""},
        Misspelt{"Table", Global("G_A = VT_TABLE,Curv,1\n") + "[TABLE]\nNAME = Curve\nTYPE = 1\n", "E306", "Curve"},
        Misspelt{"Action", Global("G_A = VT_CALL,Dubble\n") + "[ACTION]\nNAME = Double\nVALUE = VT_VALUE,1\n", "E307",
                 "Double"},
        Misspelt{"Group", std::string(kGroup) + "[GROUP]\nPARENT = Bord\nNAME = Fans\nCHILDGROUP = 0\n", "E301",
                 "Board"},
        Misspelt{"Step", std::string(kWords) + "[ACTION]\nNAME = A\nVALUE_11 = VT_VALUE,1\nVALUE = VT_VALUE,VALUE_1\n",
                 "E309", "VALUE_11"},
        Misspelt{"GlobalOrWord", Global("G_Limit = VT_VALUE,1\nG_A = VT_VALUE,GLimit\n"), "E106", "G_Limit"},
        Misspelt{"NoGlobalForANumber", Global("G_Limit = VT_VALUE,1\n") + "[TABLE]\nNAME = A\nTYPE = GLimit\n", "E106",
                 ""},
        Misspelt{"StepOrWord",
                 std::string(kWords) + "[ACTION]\nNAME = A\nVALUE_11 = VT_VALUE,1\nVALUE = VT_VALUE,VALU_11\n", "E106",
                 "VALUE_11"},
        Misspelt{"ArgumentOrWord", std::string(kWords) + "[ACTION]\nNAME = A\nARGNUMBER = 2\nVALUE = VT_VALUE,AGR2\n",
                 "E106", "ARG2"},
        Misspelt{"Argument", std::string(kWords) + "[ACTION]\nNAME = A\nARGNUMBER = 12\nVALUE = VT_VALUE,ARG112\n",
                 "E304", "ARG11"},
        Misspelt{"NoArgument", std::string(kWords) + "[ACTION]\nNAME = A\nVALUE = VT_VALUE,ARG1\n", "E304", ""},
        Misspelt{"View",
                 "[TAVRGROUP]\nNAME = A\nID = 100\nPID = 0\nSENSORS =\n"
                 "[TAVRGROUP]\nNAME = B\nID = 7\nPID = 10\nSENSORS =\n",
                 "E302", "100"},
        Misspelt{"ListedSensor", kSensor + "ID = 4711\n" + kView + "SENSORS = 471\n", "E303", "471"},
        Misspelt{"Sensor",
                 kSensor + "ID = 4711\n" + kView +
                     "SENSORS = 471,4711\n[TAVRGROUP]\nNAME = B\nID = 2\n"
                     "PID = 0\nSENSORS = 4712\n",
                 "W301", ""},
        Misspelt{"SensorThatNobodyLists", kSensor + "ID = 4711\n" + kView + "SENSORS = 471\n", "W301", "4711"},
        Misspelt{"Condition", "[DEFINE]\nREAR = 1\n[IFDEF]\nDEFINEWORD = RAER\n", "L143", "REAR"},
        Misspelt{"TextOfView", "[PROPERTY]\nICON = a\n" + std::string(kView) + "SENSORS =\nP_ICNO = b\n", "L101",
                 "P_ICON"}),
    RowName());

class ZekFileSuggestion : public ZekTest {
protected:
    static std::string Meant(const std::string& name, const Strings& options = {}) {
        Write("board.zek", "[INCLUDE]\nFILE = " + name + '\n');
        Strings arguments = {"check", "--format", "json", "board.zek"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const auto finding = nlohmann::json::parse(Zek(arguments).out)["sources"][0]["findings"][0];
        EXPECT_EQ(finding["code"], "E003");
        return finding.contains("fix") ? finding["fix"]["text"] : nlohmann::json("");
    }
};

TEST_F(ZekFileSuggestion, IsAFileInTheSearchedFolders) {
    for (const char* folder : {"parts", "other", "other/inner"}) std::filesystem::create_directory(folder);
    Write("parts/words.zek", "");
    Write("other/inner/tables.zek", "");
    Write("board.zek", "");
    EXPECT_EQ(Meant("parts/word.zek"), "parts/words.zek");
    EXPECT_EQ(Meant("part/words.zek"), "parts/words.zek");
    EXPECT_EQ(Meant("parts\\word.zek"), "parts/words.zek");
    EXPECT_EQ(Meant("zek/wrods.zek"), "zek/words.zek");
    EXPECT_EQ(Meant("iner/tables.zek", {"-I", "other"}), "inner/tables.zek");
    EXPECT_EQ(Meant(std::filesystem::current_path().string() + "/parts/word.zek"),
              std::filesystem::current_path().string() + "/parts/words.zek");
    // A folder is no file, a file that includes itself is none to include, and this is too far off.
    EXPECT_EQ(Meant("other/iner"), "");
    EXPECT_EQ(Meant("bord.zek"), "");
    EXPECT_EQ(Meant("parts/wardz1.zek"), "");
}

TEST_F(ZekFileSuggestion, WordsOfTheCommandLineAreSuggestedToo) {
    Write("a.zek", std::string(kGroup) + "[GROUP]\nPARENT = Board\nNAME = B\nCHILDGROUP = LIMT\n");
    EXPECT_NE(Zek({"check", "-D", "LIMIT=1", "a.zek"}).err.find("did you mean LIMIT?"), std::string::npos);
}

}  // namespace

}  // namespace zek::test
