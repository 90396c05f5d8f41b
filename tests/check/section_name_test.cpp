// The names and ids of sections, and the parents of groups.
#include "check/check_test.h"

namespace zek::test {

using NameAndId = CheckedSource;
TEST_P(NameAndId, IsReportedForTheFirstClashAlone) { ExpectOutcome(GetParam()); }

std::string NameAgain(unsigned line, const std::string& section, const std::string& name, unsigned first) {
    return "Error[main.zek:" + std::to_string(line) + "]: [" + section + "], NAME " + name +
           " is redefined.It has been defined in Line[main.zek:" + std::to_string(first) + "].\n";
}

std::string IdAgain(unsigned line, const std::string& section, const std::string& id, unsigned first) {
    return "Error[main.zek:" + std::to_string(line) + "]: [" + section + "], ID " + id +
           " is redefined.It has been defined in Line[main.zek:" + std::to_string(first) + "].\n";
}

INSTANTIATE_TEST_SUITE_P(
    Kind, NameAndId,
    testing::Values(
        CheckedRow{"Group", Group("A") + Group("A"), 0, NameAgain(6, "GROUP", "A", 2)},
        CheckedRow{"Sensor",
                   Sensor("A", "1") + Sensor("A", "2") + Group("ROOT") + TavrGroup("T", "1", "0", "1,2") + kWords, 0,
                   NameAgain(10, "SENSOR", "A", 2)},
        CheckedRow{"SensorId",
                   Sensor("A", "1") + Sensor("B", "1") + Group("ROOT") + TavrGroup("T", "1", "0", "1") + kWords, 0,
                   IdAgain(11, "SENSOR", "1", 3)},
        CheckedRow{"Device", Device("A", "1") + Device("A", "2"), 0, NameAgain(7, "DEVICE", "A", 2)},
        CheckedRow{"DeviceId", Device("A", "0x1F") + Device("B", "31"), 0, IdAgain(8, "DEVICE", "31", 3)},
        CheckedRow{"Action", "[ACTION]\nNAME=A\n[ACTION]\nNAME=A\n", 0, NameAgain(4, "ACTION", "A", 2)},
        CheckedRow{"Table", "[TABLE]\nNAME=A\nTYPE=1\n[TABLE]\nNAME=A\nTYPE=1\n", 0, NameAgain(5, "TABLE", "A", 2)},
        CheckedRow{"TavrGroup", TavrGroup("A", "1", "0", "") + TavrGroup("A", "2", "0", ""), 0,
                   NameAgain(7, "TAVRGROUP", "A", 2)},
        CheckedRow{"TavrGroupId", TavrGroup("A", "1", "0", "") + TavrGroup("B", "1", "0", ""), 0,
                   IdAgain(8, "TAVRGROUP", "1", 3)},
        CheckedRow{"AcrossKinds", Device("A", "1") + TavrGroup("A", "1", "0", "") + "[TABLE]\nNAME=A\nTYPE=1\n", 1, ""},
        CheckedRow{"ByCase", Device("A", "1") + Device("a", "2"), 1, ""}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Order, NameAndId,
    testing::Values(CheckedRow{"EachPointsToTheFirst", Device("A", "1") + Device("A", "2") + Device("A", "3"), 0,
                               NameAgain(7, "DEVICE", "A", 2) + NameAgain(12, "DEVICE", "A", 2)},
                    CheckedRow{"NameBeforeIdInOneSection", Device("A", "1") + Device("A", "1"), 0,
                               NameAgain(7, "DEVICE", "A", 2)},
                    // An earlier section with the ID comes before a later one with the name.
                    CheckedRow{"IdOfAnEarlierSection", Device("A", "1") + Device("B", "2") + Device("B", "1"), 0,
                               IdAgain(13, "DEVICE", "1", 3)},
                    CheckedRow{"NameOfAnEarlierSection", Device("A", "1") + Device("B", "2") + Device("A", "2"), 0,
                               NameAgain(12, "DEVICE", "A", 2)},
                    CheckedRow{"FirstOfARepeatedName", Device("A", "1") + "NAME=B\n" + Device("B", "2"), 0,
                               "Error[main.zek:6]: [DEVICE], Entry NAME is redefined.\n"}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    IdValue, NameAndId,
    testing::Values(CheckedRow{"WrapsAt32Bits", Device("A", "1") + Device("B", "4294967297"), 0,
                               IdAgain(8, "DEVICE", "4294967297", 3)},
                    CheckedRow{"IgnoresWhatFollowsTheDigits", Device("A", "7") + Device("B", "7x"), 0,
                               IdAgain(8, "DEVICE", "7x", 3)},
                    // A predefined name is no number here.
                    CheckedRow{"PredefinedNames",
                               Device("A", "SEVEN") + Device("B", "SEVEN") + Device("C", "7") + kWords, 1, ""},
                    CheckedRow{"PredefinedNamesAreNotZero", Device("A", "SEVEN") + Device("B", "0") + kWords, 1, ""}),
    RowName());

using GroupParent = CheckedSource;
TEST_P(GroupParent, BeginsOnAnEarlierLineNumber) { ExpectOutcome(GetParam()); }

std::string NoParent(unsigned line) {
    return "Error[main.zek:" + std::to_string(line) + "]: Parent of this group hasn't been defined.\n";
}

INSTANTIATE_TEST_SUITE_P(
    Of, GroupParent,
    testing::Values(CheckedRow{"Chain", Group("A") + Group("B", "A") + Group("C", "B"), 1, ""},
                    // The second rule, that the parent exists anywhere, is met.
                    CheckedRow{"Later", Group("B", "A") + Group("A"), 0, NoParent(1)},
                    CheckedRow{"Itself", Group("A", "A"), 0, NoParent(1)},
                    CheckedRow{"ByCase", Group("A") + Group("B", "a"), 0,
                               NoParent(5) + "Error[main.zek:7]: [GROUP]:PARENT, Parent GROUP a does not exist.\n"},
                    CheckedRow{"OneOfTwoOfTheName", Group("B", "A") + Group("A") + Group("C", "A") + Group("A"), 0,
                               NoParent(1) + NameAgain(14, "GROUP", "A", 6)},
                    // Without a parent, the group's name is not compared; the other rules still are.
                    CheckedRow{"MissingHidesARepeatedName", Group("A") + Group("A", "X") + "NAME=C\n" + Group("A"), 0,
                               NoParent(5) +
                                   "Error[main.zek:9]: [GROUP], Entry NAME is redefined.\n"
                                   "Error[main.zek:7]: [GROUP]:PARENT, Parent GROUP X does not exist.\n" +
                                   NameAgain(11, "GROUP", "A", 2)},
                    // The rule reads the first PARENT; a repeated one is looked at by the entry's own check.
                    CheckedRow{"GivenTwice", Group("A") + Group("B", "A") + "PARENT=X\n", 0,
                               "Error[main.zek:9]: [GROUP], Entry PARENT is redefined.\n"
                               "Error[main.zek:9]: [GROUP]:PARENT, Parent GROUP X does not exist.\n"}),
    RowName());

using ParentRule = CheckTest;

TEST_F(ParentRule, ReadsTheFirstTwoEntriesWhateverTheyAre) {
    ASSERT_EQ(Check(Group("A") + Group("B", "A")), 1U);
    CZEKSection& parent = SectionOf(kGroupSection);
    CZEKSection& child = SectionOf(kGroupSection, 1);
    std::swap(parent.m_vpEntry[1], parent.m_vpEntry[2]);
    Messages();
    EXPECT_EQ(child.IsValidEx(0), 0U);
    EXPECT_EQ(Messages(), NoParent(5)) << "the NAME is there, but not the second entry";
    std::swap(child.m_vpEntry[0], child.m_vpEntry[2]);
    EXPECT_EQ(child.IsValidEx(0), 1U) << "the first entry is a CHILDGROUP of 0";
    EXPECT_EQ(Messages(), "");
}

TEST_F(ParentRule, ComparesLineNumbersWithoutASign) {
    ASSERT_EQ(Check(Group("A") + Group("B", "A")), 1U);
    CZEKSection& child = SectionOf(kGroupSection, 1);
    Messages();
    child.m_dwLine = 0x80000000;
    EXPECT_EQ(child.IsValidEx(0), 1U);
    SectionOf(kGroupSection).m_dwLine = 0x80000000;
    child.m_dwLine = 5;
    EXPECT_EQ(child.IsValidEx(0), 0U);
    EXPECT_EQ(Messages(), NoParent(5));
}

using AcrossFiles = CheckTest;

TEST_F(AcrossFiles, LineNumbersOfParentsAreComparedAsTheyStand) {
    Write("far.zek", "\n\n\n\n\n\n\n\n\n" + Group("FAR") + Group("LATE", "NEAR"));
    EXPECT_EQ(Check("[INCLUDE]\nFILE=far.zek\n" + Group("NEAR") + Group("CHILD", "FAR")), 0U);
    // LATE was read before NEAR but stands on a higher line number; CHILD was read behind FAR but stands on a lower
    // one.
    EXPECT_EQ(Errors(), "Error[main.zek:7]: Parent of this group hasn't been defined.\n");
}

TEST_F(AcrossFiles, AParentOnTheSameLineNumberIsNotEarlier) {
    Write("far.zek", "\n\n" + Group("FAR"));
    EXPECT_EQ(Check("[INCLUDE]\nFILE=far.zek\n" + Group("CHILD", "FAR")), 0U);
    EXPECT_EQ(Errors(), "Error[main.zek:3]: Parent of this group hasn't been defined.\n");
}

TEST_F(AcrossFiles, EarlierDefinitionsAreNamedWithTheirFile) {
    Write("sub.zek", Device("A", "1") + "[PROPERTY]\nP=1\n");
    EXPECT_EQ(Check("[PROPERTY]\nP=1\n[INCLUDE]\nFILE=sub.zek\n" + Device("A", "2") + Device("B", "1")), 0U);
    EXPECT_EQ(Errors(),
              "Error[sub.zek:7]: [PROPERTY], Entry P is redefined.It has been defined in Line[main.zek:2].\n"
              "Error[main.zek:6]: [DEVICE], NAME A is redefined.It has been defined in Line[sub.zek:2].\n"
              "Error[main.zek:12]: [DEVICE], ID 1 is redefined.It has been defined in Line[sub.zek:3].\n");
}

TEST_F(AcrossFiles, OnlyThePartBehindTheLastBackslashIsNamed) {
    std::filesystem::create_directory("dir");
    Write("dir/sub.zek", "[QUORZEK]\nVERSION=1\n");
    EXPECT_EQ(Check("[INCLUDE]\nFILE=dir\\sub.zek\nFILE=dir/sub.zek\n"), 0U);
    EXPECT_EQ(Errors(),
              "Error[sub.zek:1]: SECTION QUORZEK is redefined. The MAX number of QUORZEK is one.\n"
              "Error[dir/sub.zek:1]: SECTION QUORZEK is redefined. The MAX number of QUORZEK is one.\n");
}

using EmptyEntries = CheckTest;

TEST_F(EmptyEntries, AreComparedWithNone) {
    Source("[DEVICE]\n[DEVICE]\n");
    for (CZEKSection* device : *FindSectHead(kDeviceSection)) EXPECT_EQ(device->IsValidEx(0), 1U);
    EXPECT_EQ(Errors(), "");
}

using GroupWithoutParent = CheckTest;

TEST_F(GroupWithoutParent, CountsAsOneOfTheEmptyName) {
    Source("\n[GROUP]\nNAME=A\n");
    EXPECT_EQ(SectionOf(kGroupSection).IsValidEx(0), 0U);
    EXPECT_EQ(Errors(), "Error[main.zek:2]: Parent of this group hasn't been defined.\n");
}

TEST_F(GroupWithoutParent, IsAChildOfAnEarlierOneOfTheEmptyName) {
    EXPECT_EQ(Check("[GROUP]\nNAME=\"\"\n[GROUP]\nNAME=A\n"), 0U) << "the first pass stores the empty name";
    Messages();
    EXPECT_EQ(SectionOf(kGroupSection, 1).IsValidEx(0), 1U);
    EXPECT_EQ(Messages(), "");
}

}  // namespace zek::test
