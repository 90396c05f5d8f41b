// The two passes over all sections, and what a section must not share with the others of its kind.
#include "check/check_test.h"

namespace zek::test {

using TwoPasses = CheckTest;

TEST_F(TwoPasses, AcceptAnEmptySource) {
    EXPECT_EQ(gccCheck(), 1U);
    EXPECT_EQ(Check(""), 1U);
    EXPECT_EQ(Errors(), "");
}

TEST_F(TwoPasses, GoOverTheKindsInTheOrderOfTheirFirstSections) {
    EXPECT_EQ(
        Check("[TABLE]\nNAME=A\nTYPE=x\n[DEVICE]\nNAME=D\nID=x\nINITFLAG=0\nCONTROLMASK=0\n[TABLE]\nNAME=B\nTYPE=y\n"),
        0U);
    EXPECT_EQ(Errors(),
              "Error[main.zek:3]: [TABLE]:TYPE, x has not been defined and is not a valid number.\n"
              "Error[main.zek:11]: [TABLE]:TYPE, y has not been defined and is not a valid number.\n"
              "Error[main.zek:6]: [DEVICE]:ID, x has not been defined and is not a valid number.\n");
}

TEST_F(TwoPasses, NameAMissingEntryWhileItIsTold) {
    Source("[TABLE]\nNAME=A\n");
    Messages();
    std::string name;
    AtEachMessage([&name] { name = CGSTABLE::m_sHeader.at(0)->m_vpEntry.at(1)->m_strName; });
    EXPECT_EQ(gccCheck(), 0U);
    EXPECT_EQ(name, "TYPE");
    EXPECT_EQ(CGSTABLE::m_sHeader.at(0)->m_vpEntry.at(1)->m_strName, "");
}

TEST_F(TwoPasses, StopBehindAFirstThatFindsSomething) {
    // The two devices share their name, which only the second pass looks at.
    EXPECT_EQ(Check(Device("D", "x") + Device("D", "y")), 0U);
    EXPECT_EQ(Errors(),
              "Error[main.zek:3]: [DEVICE]:ID, x has not been defined and is not a valid number.\n"
              "Error[main.zek:8]: [DEVICE]:ID, y has not been defined and is not a valid number.\n");
}

TEST_F(TwoPasses, GoOnWhenTheFirstOnlyWarns) {
    EXPECT_EQ(Check(Device("D,more", "1") + Device("D", "2")), 0U);
    EXPECT_EQ(Errors(),
              "Warning[main.zek:2]: [DEVICE]:NAME, More than one sub-string and get the first one as sub-string.\n"
              "Error[main.zek:7]: [DEVICE], NAME D is redefined.It has been defined in Line[main.zek:2].\n");
}

TEST_F(TwoPasses, RefuseAnUnknownTypeOfSectionWithoutLookingAtItsEntries) {
    Source("\n[DEVICE]\n");
    SectionOf(kDeviceSection).m_dwType = 0x2000000F;
    EXPECT_EQ(gccCheck(), 0U);
    EXPECT_EQ(Errors(), "Error[main.zek:2]: [DEVICE], section type is invalid.\n");
    EXPECT_EQ(CZEKSection::m_svpHSection.front()->front()->IsValidEx(0), 1U) << "no rule is made for the type";
}

TEST_F(TwoPasses, RefuseASectionNamedUnlikeItsTypeWithoutLookingAtItsEntries) {
    Source("\n[DEVICE]\n[TABLE]\n");
    SectionOf(kDeviceSection).m_strName = "device";
    SectionOf(kTableSection).m_dwType = kActionSection;
    EXPECT_EQ(gccCheck(), 0U);
    EXPECT_EQ(Errors(),
              "Error[main.zek:2]: Section name device is invalid.\n"
              "Error[main.zek:3]: Section name TABLE is invalid.\n");
}

using OneOfAKind = CheckedSource;
TEST_P(OneOfAKind, IsReportedByEverySectionWhenThereAreMore) { ExpectOutcome(GetParam()); }

const std::string kSystem = "[SYSTEM]\nTYPE=1\nMODEL=M\nFLAG=1\nZEKLOOP=1\n";

INSTANTIATE_TEST_SUITE_P(
    Of, OneOfAKind,
    testing::Values(CheckedRow{"OneEach", kSystem + "[QUORZEK]\nVERSION=1\n", 1, ""},
                    CheckedRow{"TwoSystems", kSystem + "\n" + kSystem, 0,
                               "Error[main.zek:1]: SECTION SYSTEM is redefined. The MAX number of SYSTEM is one.\n"
                               "Error[main.zek:7]: SECTION SYSTEM is redefined. The MAX number of SYSTEM is one.\n"},
                    CheckedRow{"ThreeHeaders", "[QUORZEK]\nVERSION=1\n[QUORZEK]\nVERSION=1\n[QUORZEK]\nVERSION=2\n", 0,
                               "Error[main.zek:1]: SECTION QUORZEK is redefined. The MAX number of QUORZEK is one.\n"
                               "Error[main.zek:3]: SECTION QUORZEK is redefined. The MAX number of QUORZEK is one.\n"
                               "Error[main.zek:5]: SECTION QUORZEK is redefined. The MAX number of QUORZEK is one.\n"}),
    RowName());

using KeyAcrossSections = CheckedSource;
TEST_P(KeyAcrossSections, IsReportedForTheFirstPairAlone) { ExpectOutcome(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    Of, KeyAcrossSections,
    testing::Values(
        CheckedRow{"Properties", "[PROPERTY]\nA=1\n[PROPERTY]\nB=1\nA=2\n", 0,
                   "Error[main.zek:5]: [PROPERTY], Entry A is redefined.It has been defined in Line[main.zek:2].\n"},
        CheckedRow{"Globals", std::string("[GLOBAL]\nG_A=T0\n[GLOBAL]\nG_A=T0\n") + kWords, 0,
                   "Error[main.zek:4]: [GLOBAL], Entry G_A is redefined.It has been defined in Line[main.zek:2].\n"},
        CheckedRow{"Repeaters", "[REPEATER]\nA=1,N\n[REPEATER]\nA=1,N\n[ACTION]\nNAME=N\n", 0,
                   "Error[main.zek:4]: [REPEATER], Entry A is redefined.It has been defined in Line[main.zek:2].\n"},
        CheckedRow{"ByCase", "[PROPERTY]\nA=1\n[PROPERTY]\na=1\n", 1, ""},
        CheckedRow{"AcrossKinds", "[PROPERTY]\nA=1\n[DEFINE]\nA=1\n", 1, ""},
        // The earliest section counts first, then the order of this section's keys.
        CheckedRow{"EarliestSectionFirst", "[PROPERTY]\nA=1\n[PROPERTY]\nB=1\n[PROPERTY]\nB=2\nA=2\n", 0,
                   "Error[main.zek:7]: [PROPERTY], Entry A is redefined.It has been defined in Line[main.zek:2].\n"},
        CheckedRow{"OwnKeysInOrder", "[PROPERTY]\nA=1\nB=1\n[PROPERTY]\nC=1\nB=2\nA=2\n", 0,
                   "Error[main.zek:6]: [PROPERTY], Entry B is redefined.It has been defined in Line[main.zek:3].\n"},
        CheckedRow{"FirstOfARepeatedKey", "[PROPERTY]\nA=1\nA=2\n[PROPERTY]\nA=3\nA=4\n", 0,
                   "Error[main.zek:3]: [PROPERTY], Entry A is redefined.\n"
                   "Error[main.zek:5]: [PROPERTY], Entry A is redefined.It has been defined in Line[main.zek:2].\n"
                   "Error[main.zek:6]: [PROPERTY], Entry A is redefined.\n"},
        CheckedRow{"EachLaterSectionOnce", "[PROPERTY]\nA=1\n[PROPERTY]\nA=2\n[PROPERTY]\nA=3\n", 0,
                   "Error[main.zek:4]: [PROPERTY], Entry A is redefined.It has been defined in Line[main.zek:2].\n"
                   "Error[main.zek:6]: [PROPERTY], Entry A is redefined.It has been defined in Line[main.zek:2].\n"},
        CheckedRow{"DefinitionsMayRepeat", "[DEFINE]\nA=1\n[DEFINE]\nA=2\n[IFDEF]\nDEFINEWORD=A\nA=3\n", 1, ""}),
    RowName());

using KeyWithinASection = CheckedSource;
TEST_P(KeyWithinASection, IsReportedOncePerRepetition) { ExpectOutcome(GetParam()); }

std::string Repeated(unsigned line, const std::string& section, const std::string& key) {
    return "Error[main.zek:" + std::to_string(line) + "]: [" + section + "], Entry " + key + " is redefined.\n";
}

INSTANTIATE_TEST_SUITE_P(
    Of, KeyWithinASection,
    testing::Values(
        CheckedRow{"Twice", "[PROPERTY]\nA=1\nB=1\nA=2\n", 0, Repeated(4, "PROPERTY", "A")},
        CheckedRow{"ThreeTimes", "[PROPERTY]\nA=1\nA=2\nA=3\n", 0,
                   Repeated(3, "PROPERTY", "A") + Repeated(4, "PROPERTY", "A")},
        // Those of the first key come first, wherever they stand.
        CheckedRow{"SeveralThreeTimes", "[PROPERTY]\nA=1\nB=1\nC=1\nB=2\nA=2\nC=2\nC=3\nB=3\nA=3\n", 0,
                   Repeated(6, "PROPERTY", "A") + Repeated(10, "PROPERTY", "A") + Repeated(5, "PROPERTY", "B") +
                       Repeated(9, "PROPERTY", "B") + Repeated(7, "PROPERTY", "C") + Repeated(8, "PROPERTY", "C")},
        CheckedRow{"ByCase", "[PROPERTY]\nA=1\na=1\n", 1, ""},
        CheckedRow{"OneDefinition", "[DEFINE]\nA=1\nA=1\n", 0, Repeated(3, "DEFINE", "A")},
        CheckedRow{"InIfdef", "[IFDEF]\nDEFINEWORD=X\nA=1\nDEFINEWORD=2\nA=2\n", 0,
                   Repeated(4, "IFDEF", "DEFINEWORD") + Repeated(5, "IFDEF", "A")},
        CheckedRow{"ADeclaredKey", "[QUORZEK]\nVERSION=1\nVERSION=2\n", 0, Repeated(3, "QUORZEK", "VERSION")},
        // The declared entries stand before the added ones, whatever their lines.
        CheckedRow{"DeclaredBeforeAdded", "[TABLE]\n7=1\n7=2\nTYPE=1\nTYPE=2\nNAME=A\nNAME=B\n", 0,
                   Repeated(7, "TABLE", "NAME") + Repeated(5, "TABLE", "TYPE") + Repeated(3, "TABLE", "7")}),
    RowName());

/// A section with so many keys, no two alike, which begin with `begin` and end with `end`.
std::string ManyKeys(unsigned count, const std::string& begin, const std::string& end) {
    std::string text = "[PROPERTY]\n";
    for (unsigned i = 0; i < count; ++i) text += begin + std::to_string(i) + end + "=1\n";
    return text;
}

INSTANTIATE_TEST_SUITE_P(
    AmongMany, KeyWithinASection,
    testing::Values(CheckedRow{"AlikeAtTheEnd", ManyKeys(64, "K", "_THE_END") + ManyKeys(65, "L", "_THE_END"), 1, ""},
                    CheckedRow{"AlikeAtTheBeginning",
                               ManyKeys(64, "THE_BEGINNING_", "") + ManyKeys(300, "ANOTHER_", ""), 1, ""},
                    CheckedRow{"InThe64thEntry", ManyKeys(63, "K", "_THE_END") + "K0_THE_END=2\n", 0,
                               Repeated(65, "PROPERTY", "K0_THE_END")},
                    CheckedRow{"InThe65thEntry", ManyKeys(64, "K", "_THE_END") + "K63_THE_END=2\n", 0,
                               Repeated(66, "PROPERTY", "K63_THE_END")},
                    CheckedRow{"InManyEntries", ManyKeys(300, "K", "") + "K299=2\nK0=2\nK299=3\n", 0,
                               Repeated(303, "PROPERTY", "K0") + Repeated(302, "PROPERTY", "K299") +
                                   Repeated(304, "PROPERTY", "K299")}),
    RowName());

using IncludeSection = CheckTest;

TEST_F(IncludeSection, IsNotComparedWithAnything) {
    Write("a.zek", "[DEFINE]\nA=1\n");
    EXPECT_EQ(Check("[INCLUDE]\nFILE=a.zek\nFILE=a.zek\n[INCLUDE]\nFILE=a.zek\n"), 1U);
    EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeSection, IsLookedAtByTheFirstPass) {
    EXPECT_EQ(Check("[INCLUDE]\nPATH=a.zek\n"), 0U);
    const std::string bad = "Error[main.zek:2]: [INCLUDE]:PATH, Entry name is invalid.\n";
    EXPECT_EQ(Errors(), bad + bad) << "once while it is read and once by the check";
}

using KeyWithoutData = CheckTest;

TEST_F(KeyWithoutData, IsNotARepeatedOne) {
    ASSERT_EQ(Check("[PROPERTY]\nA=1\n[PROPERTY]\nA=2\nB=1\nC=1\n"), 0U);
    const CZEKSection& earlier = SectionOf(kPropertySection);
    CZEKSection& later = SectionOf(kPropertySection, 1);
    later.m_vpEntry[2]->m_strName = "B";
    Messages();
    EXPECT_EQ(later.IsValidEx(0), 0U);
    EXPECT_EQ(Messages(),
              "Error[main.zek:4]: [PROPERTY], Entry A is redefined.It has been defined in Line[main.zek:2].\n" +
                  Repeated(6, "PROPERTY", "B"));
    earlier.m_vpEntry[0]->m_ZekEntryData.Destory();
    later.m_vpEntry[1]->m_ZekEntryData.Destory();
    EXPECT_EQ(later.IsValidEx(0), 1U);
    EXPECT_EQ(Messages(), "");
}

using UnlistedSection = CheckTest;

TEST_F(UnlistedSection, HasNoKeysInCommonWithAnyOther) {
    CZEKSection section(kPropertySection, tagNOTATION{2});
    section.Init("main.zek", "PROPERTY", 1);
    section.m_vpEntry.push_back(new CGESTRING(kProperty, tagNOTATION{10}));
    section.m_vpEntry[0]->Init("main.zek", "KEY", "text", 2);
    EXPECT_EQ(section.IsValidEx(0), 1U);
    EXPECT_EQ(Errors(), "");
}

TEST_F(UnlistedSection, MayNotHaveTheNameOfAListedOne) {
    Source("[TABLE]\nNAME=A\n[TABLE]\nNAME=B\n");
    CZEKSection section(kTableSection, tagNOTATION{2});
    section.Init("main.zek", "TABLE", 7);
    section.m_vpEntry.push_back(new CGESTRING(kName, tagNOTATION{1}));
    section.m_vpEntry[0]->Init("main.zek", "NAME", "B", 8);
    EXPECT_EQ(section.m_vpEntry[0]->IsValid(&section, 0), 1U);
    for (CZEKSection* table : *FindSectHead(kTableSection)) table->IsValid(0);
    Messages();
    EXPECT_EQ(section.IsValidEx(0), 0U);
    EXPECT_EQ(Messages(), "Error[main.zek:8]: [TABLE], NAME B is redefined.It has been defined in Line[main.zek:4].\n");
}

TEST_F(UnlistedSection, IsOneTooManyOfItsKind) {
    Source("[SYSTEM]\n");
    CZEKSection section(kSystemSection, tagNOTATION{1});
    section.Init("main.zek", "SYSTEM", 7);
    EXPECT_EQ(section.IsValidEx(0), 0U);
    EXPECT_EQ(Errors(), "Error[main.zek:7]: SECTION SYSTEM is redefined. The MAX number of SYSTEM is one.\n");
}

}  // namespace zek::test
