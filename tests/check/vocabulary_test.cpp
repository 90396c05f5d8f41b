// Operators and predefined names.
#include "check/vocabulary.h"

#include "check/check_test.h"

namespace zek::test {

using namespace std::string_literals;

TEST(Operator, HasACodeInTheOrderOfTheTable) {
    const std::vector<std::pair<std::string, unsigned>> rows = {
        {"+", 1},   {"-", 2},    {"*", 3},    {"/", 4},   {"|", 5},    {"&", 6},    {"%", 7},   {"^", 8},    {">>", 9},
        {"<<", 10}, {"pow", 20}, {"==", 101}, {">", 102}, {">=", 103}, {"!=", 104}, {"<", 105}, {"<=", 106},
    };
    ASSERT_EQ(g_NTMapOper.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(rows[i].first);
        EXPECT_EQ(g_NTMapOper[i].pszName, rows[i].first);
        EXPECT_EQ(g_NTMapOper[i].dwID, rows[i].second);
        EXPECT_EQ(GetOperator(rows[i].first), rows[i].second);
    }
}

TEST(Operator, IsTheWholeTextExactly) {
    for (const std::string& text :
         {""s,   "="s,  "POW"s, "Pow"s, "po"s, "pow "s, " +"s,  "+ "s, "++"s,  "<>"s,  "=="s + '=',
          "=>"s, "=<"s, "!"s,   "~"s,   "||"s, "&&"s,   "<<<"s, "1"s,  "101"s, "+\0"s, "\0+"s}) {
        SCOPED_TRACE("text '" + text + "'");
        EXPECT_EQ(GetOperator(text), 0U);
    }
}

using PredefinedNames = CheckTest;

TEST_F(PredefinedNames, AreThoseOfTheSourceAlone) {
    EXPECT_TRUE(g_tblPreDefine.empty());
    Source("[DEFINE]\nA=1\n[IFDEF]\nDEFINEWORD=A\nB=2\n");
    EXPECT_EQ(g_tblPreDefine, (std::map<std::string, unsigned>{{"A", 1}, {"B", 2}}));
    gccCompEnd();
    EXPECT_TRUE(g_tblPreDefine.empty());
}

TEST_F(PredefinedNames, AreFoundByTheirExactText) {
    AddPredDefineValue("Name", 5);
    AddPredDefineValue("", 6);
    AddPredDefineValue("N\0ul"s, 7);
    unsigned value = 99;
    for (const std::string& text : {"name"s, "NAME"s, "Nam"s, "Name "s, "N"s, "N\0u"s}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(GetPreDefinedValue(text, &value), 0U);
        EXPECT_EQ(value, 99U);
    }
    for (const auto& [text, expected] : {std::pair("Name"s, 5U), std::pair(""s, 6U), std::pair("N\0ul"s, 7U)}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(GetPreDefinedValue(text, &value), 1U);
        EXPECT_EQ(value, expected);
    }
}

TEST_F(PredefinedNames, KeepTheLastDefinitionSilently) {
    AddPredDefineValue("A", 1);
    AddPredDefineValue("A", 0);
    EXPECT_EQ(g_tblPreDefine, (std::map<std::string, unsigned>{{"A", 0}}));
    EXPECT_EQ(Messages(), "");
}

TEST_F(PredefinedNames, KeepTheLastDefinitionOfASectionThatIsThenRefused) {
    EXPECT_EQ(Check("[DEFINE]\nA=1\nA=2\n"), 0U);
    EXPECT_EQ(Errors(), "Error[main.zek:3]: [DEFINE], Entry A is redefined.\n");
    EXPECT_EQ(g_tblPreDefine, (std::map<std::string, unsigned>{{"A", 2}}));
}

TEST_F(PredefinedNames, AreKnownToTheCheckInEntriesThatPrecedeThem) {
    EXPECT_EQ(Check("[DEFINE]\nB=A\n[TABLE]\nNAME=T\nTYPE=A\n[DEFINE]\nA=2\n"), 1U);
    // B was read before A was defined, so it defines nothing.
    EXPECT_EQ(Errors(), "Error[main.zek:2]: [DEFINE]:B, A has not been defined and is not a valid number.\n");
    EXPECT_EQ(g_tblPreDefine, (std::map<std::string, unsigned>{{"A", 2}}));
}

TEST_F(PredefinedNames, AreDefinedWithWhatStandsWhereTheyAreRead) {
    EXPECT_EQ(Check("[DEFINE]\nA=1\nB=A\n[DEFINE]\nA=2\n"), 1U);
    EXPECT_EQ(Errors(), "");
    EXPECT_EQ(g_tblPreDefine, (std::map<std::string, unsigned>{{"A", 2}, {"B", 1}}));
    EXPECT_EQ(*static_cast<unsigned*>(EntryOf(SectionOf(kDefineSection), "B").m_ZekEntryData.GetData()), 2U);
}

TEST_F(PredefinedNames, AreNotDefinedByAnItemThatFails) {
    const std::string failed =
        "Error[main.zek:2]: [DEFINE]:A, junk has not been defined and is not a valid number.\n"
        "Error[main.zek:3]: [DEFINE]:1B, Entry name is invalid.\n"
        "Error[main.zek:4]: [DEFINE]:C, No sub-string.\n";
    EXPECT_EQ(Check("[DEFINE]\nA=junk\n1B=1\nC=\nD=4\n"), 0U);
    EXPECT_EQ(Errors(), failed + failed) << "once while it is read and once by the check";
    EXPECT_EQ(g_tblPreDefine, (std::map<std::string, unsigned>{{"D", 4}}));
}

}  // namespace zek::test
