// Operators and predefined names.
#include "check/vocabulary.h"

#include <unistd.h>

#include "check/check_test.h"
#include "yardstick/random.h"

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

namespace {

/// So many that look-ups do not ask the table itself.
constexpr unsigned kMany = 200;

std::string NameOf(unsigned number) { return "A_NAME_THAT_IS_NOT_SHORT_" + std::to_string(number); }

/// Defines many names, the first of them NameOf(first), and makes a look-up.
void DefineMany(unsigned first) {
    for (unsigned i = first; i < first + kMany; ++i) AddPredDefineValue(NameOf(i), i);
    unsigned value = 0;
    ASSERT_EQ(GetPreDefinedValue(NameOf(first), &value), 1U);
}

/// Looks every name up and expects what the table holds.
void ExpectLookUpsAsInTheTable() {
    for (unsigned i = 0; i < 3 * kMany; ++i) {
        SCOPED_TRACE(NameOf(i));
        const auto place = g_tblPreDefine.find(NameOf(i));
        unsigned value = 99999;
        ASSERT_EQ(GetPreDefinedValue(NameOf(i), &value), unsigned{place != g_tblPreDefine.end()});
        ASSERT_EQ(value, place == g_tblPreDefine.end() ? 99999 : place->second);
    }
}

}  // namespace

TEST_F(PredefinedNames, AreFoundAmongManyAsTheyAreDefined) {
    Random random(1);
    for (unsigned i = 0; i < 2 * kMany; ++i) {
        AddPredDefineValue(NameOf(random.Below(2 * kMany)), i);
        ExpectLookUpsAsInTheTable();
    }
    EXPECT_GT(g_tblPreDefine.size(), kMany);
}

TEST_F(PredefinedNames, AreFoundAmongManyHoweverTheyBegin) {
    DefineMany(0);
    const std::vector<std::string> names = {"", "\0"s, "\0\0"s, "A", "A\0"s, "B", "Bc", "\xFF", "\xFF\xFF", "7", "77"};
    unsigned defined = 0;
    for (const std::string& name : names) {
        unsigned value = 99999;
        EXPECT_EQ(GetPreDefinedValue(name, &value), 0U) << name;
        AddPredDefineValue(name, ++defined);
    }
    for (unsigned i = 0; i < names.size(); ++i) {
        SCOPED_TRACE(names[i]);
        unsigned value = 99999;
        EXPECT_EQ(GetPreDefinedValue(names[i], &value), 1U);
        EXPECT_EQ(value, i + 1);
    }
}

TEST_F(PredefinedNames, AreFoundAfterAHostHasChangedTheTable) {
    DefineMany(0);
    g_tblPreDefine[NameOf(kMany)] = 1;
    ExpectLookUpsAsInTheTable();
    for (unsigned i = 0; i < kMany; i += 3) g_tblPreDefine.erase(NameOf(i));
    ExpectLookUpsAsInTheTable();
    // One for another: seen once one of our own functions has changed the table.
    g_tblPreDefine.erase(NameOf(1));
    g_tblPreDefine[NameOf(0)] = 2;
    AddPredDefineValue(NameOf(1), 3);
    ExpectLookUpsAsInTheTable();
    g_tblPreDefine.erase(NameOf(1));
    AddPredDefineValue(NameOf(2 * kMany), 4);
    AddPredDefineValue(NameOf(2 * kMany + 1), 5);
    ExpectLookUpsAsInTheTable();
}

TEST_F(PredefinedNames, ThatAHostHasExchangedAreFoundOnceThereIsOneMore) {
    DefineMany(0);
    ExpectLookUpsAsInTheTable();
    const auto exchange = [](unsigned out, unsigned in) {
        ASSERT_EQ(g_tblPreDefine.erase(NameOf(out)), 1U);
        g_tblPreDefine[NameOf(in)] = in;
    };
    exchange(1, kMany);
    g_tblPreDefine[NameOf(2)] = 77777;
    AddPredDefineValue(NameOf(kMany + 1), 5);
    ExpectLookUpsAsInTheTable();
    // One less and one more again, with a look-up between and without.
    exchange(3, kMany + 2);
    g_tblPreDefine.erase(NameOf(4));
    unsigned value = 0;
    EXPECT_EQ(GetPreDefinedValue(NameOf(4), &value), 0U);
    AddPredDefineValue(NameOf(kMany + 3), 6);
    ExpectLookUpsAsInTheTable();
    exchange(5, kMany + 4);
    g_tblPreDefine.erase(NameOf(6));
    AddPredDefineValue(NameOf(kMany + 5), 7);
    ExpectLookUpsAsInTheTable();
}

TEST_F(PredefinedNames, ThatAreDefinedAnewHaveTheirNewValue) {
    DefineMany(0);
    ExpectLookUpsAsInTheTable();
    for (unsigned i = 0; i < kMany; i += 7) {
        AddPredDefineValue(NameOf(i), i + 1000);
        unsigned value = 0;
        ASSERT_EQ(GetPreDefinedValue(NameOf(i), &value), 1U);
        EXPECT_EQ(value, i + 1000);
    }
    ExpectLookUpsAsInTheTable();
}

TEST_F(PredefinedNames, AreFoundInNoTimeWhileManyAreDefined) {
    constexpr unsigned kNames = 100'000;
    InChild([] {
        // Reading the table for every name that is defined would take minutes.
        alarm(20);
        for (unsigned i = 0; i < kNames; ++i) {
            AddPredDefineValue(NameOf(i), i);
            unsigned value = 0;
            ASSERT_EQ(GetPreDefinedValue(NameOf(i / 2), &value), 1U);
            ASSERT_EQ(value, i / 2);
        }
    });
}

TEST_F(PredefinedNames, OfAnEndedCompilationAreNotFound) {
    DefineMany(0);
    gccCompEnd();
    for (unsigned i = kMany; i < 2 * kMany; ++i) g_tblPreDefine[NameOf(i)] = i;
    ExpectLookUpsAsInTheTable();
}

TEST_F(PredefinedNames, OfADebugImageAreFound) {
    DefineMany(0);
    ASSERT_EQ(gccOutputD("names.zekd"), 1U);
    gccCompEnd();
    DefineMany(kMany);
    g_tblPreDefine.clear();
    ASSERT_EQ(gdInit("names.zekd", nullptr), 1U);
    ASSERT_EQ(g_tblPreDefine.size(), kMany);
    ExpectLookUpsAsInTheTable();
}

}  // namespace zek::test
