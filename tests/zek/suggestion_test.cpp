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

constexpr char kWords[] = "[DEFINE]\nVT_VALUE = 1\nVT_CALC = 2\nVT_CALL = 3\nVT_TABLE = 10\nFIRST = 5\n";
std::string Global(const std::string& items) { return std::string(kWords) + "[GLOBAL]\n" + items; }
constexpr char kGroup[] = "[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\n";

INSTANTIATE_TEST_SUITE_P(
    Name, ZekSuggestion,
    testing::Values(
        Misspelt{"Section", "[SENSR]\n", "E002", "SENSOR"}, Misspelt{"NoSection", "[FOO]\n", "E002", ""},
        Misspelt{"Key", std::string(kGroup) + "VALUE_INI = 1\n", "W004", "VALUE_INIT"},
        Misspelt{"KeyOfAnotherKind", std::string(kGroup) + "SENSORS = 1\n", "W004", ""},
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
                 "E309", "VALUE_11"}),
    RowName());

}  // namespace

}  // namespace zek::test
