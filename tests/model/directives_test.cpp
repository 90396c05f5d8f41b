#include "check/vocabulary.h"
#include "model/section.h"
#include "model/section_text.h"
#include "support/process_test.h"

namespace zek::test {

namespace {

using Names = std::map<std::string, unsigned>;

const CGSIFDEF& Ifdef(std::size_t index = 0) { return static_cast<const CGSIFDEF&>(*CGSIFDEF::m_sHeader.at(index)); }

void ExpectCondition(const CGSIFDEF& section, unsigned seen, unsigned condition) {
    EXPECT_EQ(section.m_dwSeen, seen);
    EXPECT_EQ(section.m_dwCondition, condition);
}

}  // namespace

using Define = ProcessTest;

TEST_F(Define, MakesEveryKeyAPredefinedName) {
    Source("[DEFINE]\nA=0x10\nB=A\nname=-1\nC=\"\"\nNAME=7 ignored\n");
    EXPECT_EQ(Errors(), "");
    EXPECT_EQ(g_tblPreDefine, (Names{{"A", 16}, {"B", 16}, {"C", 0}, {"NAME", 7}, {"name", 0xFFFFFFFF}}));
    EXPECT_EQ(EntriesOf(*CGSDEFINE::m_sHeader.at(0)),
              "DWORD 10010001 10 A 2 [0x10]\nDWORD 10010001 10 B 3 [A]\nDWORD 10010001 10 name 4 [-1]\n"
              "DWORD 10010001 10 C 5 []\nDWORD 10010001 10 NAME 6 [7 ignored]\n");
    EXPECT_EQ(*static_cast<unsigned*>(CGSDEFINE::m_sHeader.at(0)->m_vpEntry[1]->m_ZekEntryData.GetData()), 16U);
}

TEST_F(Define, KeepsButDoesNotDefineWhatIsUnsound) {
    Source("[DEFINE]\nA=B\n1st=1\nC=\nD=1,2\nE=2\n");
    EXPECT_EQ(Errors(),
              "Error[main.zek:2]: [DEFINE]:A, B has not been defined and is not a valid number.\n"
              "Error[main.zek:3]: [DEFINE]:1st, Entry name is invalid.\n"
              "Error[main.zek:4]: [DEFINE]:C, No sub-string.\n"
              "Warning[main.zek:5]: [DEFINE]:D, More than one sub-string and get the first one as sub-string.\n");
    EXPECT_EQ(g_tblPreDefine, (Names{{"D", 1}, {"E", 2}}));
    EXPECT_EQ(CGSDEFINE::m_sHeader.at(0)->m_vpEntry.size(), 5U);
}

TEST_F(Define, TakesAnItemFromAHost) {
    CZEKSection* section = CZEKSection::Create("main.zek", "DEFINE", 1);
    EXPECT_EQ(section->SetEntry("main.zek", "A", "nothing", 2), 1U) << "an unsound item is taken";
    EXPECT_EQ(section->SetEntry("main.zek", "A", "3", 3), 1U);
    EXPECT_EQ(g_tblPreDefine, (Names{{"A", 3}}));
    EXPECT_EQ(section->m_vpEntry.size(), 2U);
}

using IfdefSection = ProcessTest;

struct ConditionRow {
    const char* name;
    const char* firstItem;
    unsigned condition;
    const char* declared;  ///< the DEFINEWORD entry after the first item
    const char* messages;
};

class IfdefCondition : public ProcessTest, public testing::WithParamInterface<ConditionRow> {};

TEST_P(IfdefCondition, IsStoredAndTheNamesAreDefinedAnyway) {
    Source("[DEFINE]\nKNOWN=5\n[IFDEF]\n" + std::string(GetParam().firstItem) + "\nX=1\nDEFINEWORD=2\n");
    EXPECT_EQ(Errors(), GetParam().messages);
    ExpectCondition(Ifdef(), 1, GetParam().condition);
    EXPECT_EQ(EntriesOf(Ifdef()), GetParam().declared + std::string("DWORD 10010001 10 X 5 [1]\n"
                                                                    "DWORD 10010001 10 DEFINEWORD 6 [2]\n"));
    EXPECT_EQ(g_tblPreDefine, (Names{{"DEFINEWORD", 2}, {"KNOWN", 5}, {"X", 1}}));
}

INSTANTIATE_TEST_SUITE_P(
    Word, IfdefCondition,
    testing::Values(ConditionRow{"Known", "DEFINEWORD=KNOWN", 1, "STRING 10020016 1 DEFINEWORD 4 [KNOWN]\n", ""},
                    ConditionRow{"Unknown", "DEFINEWORD=OTHER", 0, "STRING 10020016 1 DEFINEWORD 4 [OTHER]\n", ""},
                    ConditionRow{"OfOtherCase", "DEFINEWORD=known", 0, "STRING 10020016 1 DEFINEWORD 4 [known]\n", ""},
                    ConditionRow{"Number", "DEFINEWORD=5", 0, "STRING 10020016 1 DEFINEWORD 4 [5]\n", ""},
                    ConditionRow{
                        "FirstOfTwo", "DEFINEWORD=KNOWN,Z", 1, "STRING 10020016 1 DEFINEWORD 4 [KNOWN] [Z]\n",
                        "Warning[main.zek:4]: [IFDEF]:DEFINEWORD, More than one sub-string and get the first one as "
                        "sub-string.\n"},
                    ConditionRow{"Missing", "DEFINEWORD=", 0, "STRING 10020016 1 DEFINEWORD 4\n",
                                 "Error[main.zek:4]: [IFDEF]:DEFINEWORD, No sub-string.\n"},
                    ConditionRow{"UnderAnotherKey", "WORD=KNOWN", 0, "STRING 10020016 1\n", ""}),
    RowName());

TEST_F(IfdefSection, StartsWithBothFlagsClear) {
    CZEKSection::Create("main.zek", "IFDEF", 1);
    ExpectCondition(Ifdef(), 0, 0);
    ExpectCondition(CGSIFDEF(), 0, 0);
    CGSIFDEF::m_sHeader.pop_back();
}

TEST_F(IfdefSection, IsClearedByItsConstructionStep) {
    auto& section = static_cast<CGSIFDEF&>(*CZEKSection::Create("main.zek", "IFDEF", 1));
    section.m_dwSeen = section.m_dwCondition = 1;
    section.Init0();
    ExpectCondition(section, 0, 0);
    CGSIFDEF::m_sHeader.pop_back();
}

TEST_F(IfdefSection, AnswersTheConditionWithoutStoringIt) {
    AddPredDefineValue("KNOWN", 0);
    CGSIFDEF known;
    EXPECT_EQ(known.ChkIFDEF("main.zek", "DEFINEWORD", "KNOWN", 1), 1U);
    ExpectCondition(known, 0, 0);
    CGSIFDEF unknown;
    EXPECT_EQ(unknown.ChkIFDEF("main.zek", "DEFINEWORD", "OTHER", 1), 0U);
    EXPECT_EQ(unknown.ChkIFDEF("main.zek", "KNOWN", "1", 1), 0U);
    CGSIFDEF::m_sHeader.clear();
}

TEST_F(IfdefSection, SeesTheNamesThatAnEarlierOneDefined) {
    Source("[IFDEF]\nDEFINEWORD=X\nX=1\n[IFDEF]\nDEFINEWORD=X\n");
    ExpectCondition(Ifdef(0), 1, 0);
    ExpectCondition(Ifdef(1), 1, 1);
}

using Include = ProcessTest;

TEST_F(Include, ReadsTheFileBeforeWhatFollows) {
    Write("inc.zek", "[TABLE]\nNAME=inner\n[DEFINE]\nA=1\n");
    Source("[TABLE]\nNAME=before\n[INCLUDE]\nFILE=inc.zek\n[TABLE]\nNAME=after\n[DEFINE]\nB=A\n");
    EXPECT_EQ(Errors(), "");
    ASSERT_EQ(CGSTABLE::m_sHeader.size(), 3U);
    const char* names[] = {"before", "inner", "after"};
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(CGSTABLE::m_sHeader[i]->m_vpEntry[0]->m_vstrSubStr.at(0), names[i]);
    EXPECT_EQ(CGSTABLE::m_sHeader[1]->GetFile(0), "inc.zek");
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, std::vector<std::string>({"main.zek", "inc.zek"}));
    EXPECT_EQ(g_tblPreDefine, (Names{{"A", 1}, {"B", 1}}));
    EXPECT_EQ(EntriesOf(*CGSINCLUDE::m_sHeader.at(0)), "STRING 10020019 2 FILE 4 [inc.zek]\n");
}

struct IncludeRow {
    const char* name;
    const char* item;
    const char* entry;
    const char* messages;
};

class IncludeItem : public ProcessTest, public testing::WithParamInterface<IncludeRow> {};

TEST_P(IncludeItem, StaysAsAnEntryThoughNothingIsLoaded) {
    Write("inc.zek", "[TABLE]\n");
    Source("[INCLUDE]\n" + std::string(GetParam().item) + "\n");
    EXPECT_EQ(Errors(), GetParam().messages);
    EXPECT_EQ(EntriesOf(*CGSINCLUDE::m_sHeader.at(0)), GetParam().entry);
    EXPECT_TRUE(CGSTABLE::m_sHeader.empty());
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, std::vector<std::string>({"main.zek"}));
}

INSTANTIATE_TEST_SUITE_P(
    With, IncludeItem,
    testing::Values(IncludeRow{"MissingFile", "FILE=none.zek", "STRING 10020019 2 FILE 2 [none.zek]\n",
                               "Warning[main.zek:2], [INCLUDE]:FILE FILE none.zek cannot be loaded.\n"},
                    IncludeRow{"QuotedMissingFile", "FILE = \"a,b.zek\"", "STRING 10020019 2 FILE 2 [a,b.zek]\n",
                               "Warning[main.zek:2], [INCLUDE]:FILE FILE \"a,b.zek\" cannot be loaded.\n"},
                    IncludeRow{"WrongKey", "PATH=inc.zek", "STRING 10020019 2 PATH 2 [inc.zek]\n",
                               "Error[main.zek:2]: [INCLUDE]:PATH, Entry name is invalid.\n"},
                    IncludeRow{"NoName", "FILE=", "STRING 10020019 2 FILE 2\n",
                               "Error[main.zek:2]: [INCLUDE]:FILE, No sub-string.\n"},
                    IncludeRow{"EmptyName", "FILE=\"\"", "STRING 10020019 2 FILE 2 []\n",
                               "Error[main.zek:2]: [INCLUDE]:FILE, No sub-string.\n"}),
    RowName());

TEST_F(Include, OfTwoNamesReadsTheFirst) {
    Write("a,b.zek", "[TABLE]\n");
    Source("[INCLUDE]\nFILE=\"a,b.zek\",c.zek\n");
    EXPECT_EQ(Errors(),
              "Warning[main.zek:2]: [INCLUDE]:FILE, More than one sub-string and get the first one as sub-string.\n");
    EXPECT_EQ(CGSTABLE::m_sHeader.size(), 1U);
}

TEST_F(Include, GoesOnWithTheNextItem) {
    Write("inc.zek", "[TABLE]\n");
    Source("[INCLUDE]\nFILE=none.zek\nFILE=inc.zek\nFILE=inc.zek\n");
    EXPECT_EQ(Errors(), "Warning[main.zek:2], [INCLUDE]:FILE FILE none.zek cannot be loaded.\n");
    EXPECT_EQ(CGSTABLE::m_sHeader.size(), 2U);
    EXPECT_EQ(CGSINCLUDE::m_sHeader.at(0)->m_vpEntry.size(), 3U);
}

TEST_F(Include, StandsBesideAFileNamedWithABackslash) {
    std::filesystem::create_directory("sub");
    Write("sub/main.zek", "[INCLUDE]\nFILE=inc.zek\nFILE=none.zek\n");
    Write("sub/inc.zek", "[TABLE]\n");
    ASSERT_EQ(gccCompStart("sub\\main.zek"), 1U);
    gccParse();
    EXPECT_EQ(Errors(), "Warning[main.zek:3], [INCLUDE]:FILE FILE none.zek cannot be loaded.\n");
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, std::vector<std::string>({"sub\\main.zek", "sub\\inc.zek"}));
}

TEST_F(Include, IsNotLookedForBesideAFileNamedWithASlash) {
    std::filesystem::create_directory("sub");
    Write("sub/inc.zek", "[TABLE]\n");
    Source("[INCLUDE]\nFILE=inc.zek\n", "sub/main.zek");
    EXPECT_EQ(Errors(), "Warning[sub/main.zek:2], [INCLUDE]:FILE FILE inc.zek cannot be loaded.\n");
}

}  // namespace zek::test
