// The second pass of texts, lists and repeater items: what they refer to exists.
#include "check/check_test.h"

namespace zek::test {

using Parent = CheckedSource;
TEST_P(Parent, IsAGroupOfThatName) { ExpectOutcome(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    Of, Parent,
    testing::Values(
        CheckedRow{"TopGroup", Group("A", "0"), 1, ""}, CheckedRow{"Group", Group("A") + Group("B", "A"), 1, ""},
        CheckedRow{"GroupOfNobody", Group("A", "X"), 0,
                   "Error[main.zek:1]: Parent of this group hasn't been defined.\n"
                   "Error[main.zek:3]: [GROUP]:PARENT, Parent GROUP X does not exist.\n"},
        CheckedRow{"GroupByAnotherNumberForTheTop", Group("A", "00"), 0,
                   "Error[main.zek:1]: Parent of this group hasn't been defined.\n"
                   "Error[main.zek:3]: [GROUP]:PARENT, Parent GROUP 00 does not exist.\n"},
        CheckedRow{"SensorBeforeItsGroup", Sensor("S", "1", "A") + TavrGroup("T", "1", "0", "1") + Group("A") + kWords,
                   1, ""},
        CheckedRow{"SensorOfTheTop", Sensor("S", "1", "0") + TavrGroup("T", "1", "0", "1") + Group("A") + kWords, 0,
                   "Error[main.zek:4]: [SENSOR]:PARENT, Parent GROUP 0 does not exist.\n"},
        CheckedRow{"SensorOfAGroupNamedAsTheTop",
                   Sensor("S", "1", "0") + TavrGroup("T", "1", "0", "1") + Group("0") + kWords, 1, ""},
        CheckedRow{"SensorByCase", Sensor("S", "1", "a") + TavrGroup("T", "1", "0", "1") + Group("A") + kWords, 0,
                   "Error[main.zek:4]: [SENSOR]:PARENT, Parent GROUP a does not exist.\n"},
        CheckedRow{"SensorOfATavrGroup", Sensor("S", "1", "T") + TavrGroup("T", "1", "0", "1") + kWords, 0,
                   "Error[main.zek:4]: [SENSOR]:PARENT, Parent GROUP T does not exist.\n"}),
    RowName());

using ParentElsewhere = CheckTest;

TEST_F(ParentElsewhere, IsNotLookedFor) {
    CZEKSection& section = *CZEKSection::Create("main.zek", "DEVICE", 1);
    CGESTRING entry(kParent, tagNOTATION{kRequired});
    entry.Init("main.zek", "PARENT", "NOBODY", 2);
    EXPECT_EQ(entry.IsValid(&section, 0), 1U);
    EXPECT_EQ(entry.IsValidEx(&section, 0), 1U);
    EXPECT_EQ(Messages(), "");
}

using ParentId = CheckedSource;
TEST_P(ParentId, IsTheIdOfATavrGroup) { ExpectOutcome(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    Of, ParentId,
    testing::Values(CheckedRow{"Top", TavrGroup("A", "1", "0x0", ""), 1, ""},
                    CheckedRow{"Itself", TavrGroup("A", "1", "1", ""), 1, ""},
                    CheckedRow{"LaterByValue", TavrGroup("A", "1", "0x10", "") + TavrGroup("B", "16", "0", ""), 1, ""},
                    CheckedRow{"Nobody", TavrGroup("A", "1", "2", ""), 0,
                               "Error[main.zek:4]: [TAVRGROUP]:PID, Parent TAVRGROUP with ID 2 does not exist.\n"},
                    // The ID of the other may be a predefined name; the PID as one counts as 0.
                    CheckedRow{"PredefinedId", TavrGroup("A", "SEVEN", "7", "") + kWords, 1, ""},
                    CheckedRow{"PredefinedPid", TavrGroup("A", "1", "SEVEN", "") + kWords, 1, ""},
                    CheckedRow{"LongPredefinedPid", TavrGroup("A", "2", "BUSTYPE_SMBUS", "") + kWords, 1, ""},
                    // An ID that is a number is that number, although a predefined name is written like it.
                    CheckedRow{"NumberBeforePredefinedName",
                               TavrGroup("A", "+5", "5", "") + TavrGroup("B", "1", "9", "") + "[DEFINE]\n+5=9\n", 0,
                               "Error[main.zek:9]: [TAVRGROUP]:PID, Parent TAVRGROUP with ID 9 does not exist.\n"}),
    RowName());

using SensorId = CheckedSource;
TEST_P(SensorId, IsListedByATavrGroup) { ExpectOutcome(GetParam()); }

constexpr char kNotListed[] = "Error[main.zek:3]: [SENSOR]:ID, The parent TAVRGROUP of SENSOR with ID ";

/// One sensor of this ID, and what lists sensors.
CheckedRow SensorRow(const char* name, const std::string& id, const std::string& others, bool listed,
                     const std::string& further = "") {
    return {name, Sensor("S", id) + Group("ROOT") + others + kWords, listed ? 1U : 0U,
            (listed ? "" : kNotListed + id + " does not exist.\n") + further};
}

INSTANTIATE_TEST_SUITE_P(
    Of, SensorId,
    testing::Values(
        SensorRow("ByValue", "0x10", TavrGroup("A", "1", "0", "3,16"), true,
                  "Error[main.zek:17]: [TAVRGROUP]:SENSORS, The SENSOR with ID 3 does not exist.\n"),
        SensorRow("BySecondGroup", "2", TavrGroup("A", "1", "0", "") + TavrGroup("B", "2", "0", "2"), true),
        SensorRow("NotListed", "2", TavrGroup("A", "1", "0", ""), false), SensorRow("NoTavrGroup", "2", "", false),
        // In the list a predefined name stands for its value. The list itself, when it is checked, takes numbers only.
        SensorRow("PredefinedElement", "7", TavrGroup("A", "1", "0", "SEVEN"), true,
                  "Error[main.zek:17]: [TAVRGROUP]:SENSORS, The SENSOR with ID SEVEN does not exist.\n"),
        // The sensor's own ID is taken as a number only, 0 when it is none.
        SensorRow("PredefinedId", "SEVEN", TavrGroup("A", "1", "0", "7"), false),
        SensorRow("PredefinedIdCountsAsZero", "SEVEN", TavrGroup("A", "1", "0", "0"), true,
                  "Error[main.zek:17]: [TAVRGROUP]:SENSORS, The SENSOR with ID 0 does not exist.\n"),
        SensorRow("LongPredefinedIdCountsAsZero", "BUSTYPE_SMBUS", TavrGroup("A", "1", "0", "0"), true,
                  "Error[main.zek:17]: [TAVRGROUP]:SENSORS, The SENSOR with ID 0 does not exist.\n"),
        SensorRow("ElementThatIsNoNumberCountsAsZero", "0", TavrGroup("A", "1", "0", "junk"), true),
        // It is 0, not what the element before it was.
        SensorRow("ElementThatIsTooLongCountsAsZero", "0", TavrGroup("A", "1", "0", "5,00000000001"), true,
                  "Error[main.zek:17]: [TAVRGROUP]:SENSORS, The SENSOR with ID 5 does not exist.\n")),
    RowName());

using SensorsOfTavrGroup = CheckedSource;
TEST_P(SensorsOfTavrGroup, AreReportedUpToTheFirstKnownAndNeverFail) { ExpectOutcome(GetParam()); }

constexpr char kNoSensor[] = "Error[main.zek:5]: [TAVRGROUP]:SENSORS, The SENSOR with ID ";

/// A list, in a source with the sensors 1, 2 and 7 (by name), which a second group lists.
CheckedRow ListRow(const char* name, const std::string& list, const std::vector<std::string>& unknown) {
    std::string errors;
    for (const std::string& id : unknown) errors += kNoSensor + id + " does not exist.\n";
    return {name,
            TavrGroup("A", "1", "0", list) + TavrGroup("B", "2", "0", "1,2,0") + Group("ROOT") + Sensor("S", "1") +
                Sensor("T", "0x2") + Sensor("U", "SEVEN") + kWords,
            1, errors};
}

INSTANTIATE_TEST_SUITE_P(Of, SensorsOfTavrGroup,
                         testing::Values(ListRow("Known", "1", {}), ListRow("Empty", "", {}),
                                         ListRow("AllUnknown", "3,4,3", {"3", "4", "3"}),
                                         ListRow("FirstKnown", "1,8,9", {}), ListRow("SecondKnown", "8,0x1,9", {"8"}),
                                         ListRow("SensorByPredefinedName", "7", {}),
                                         ListRow("PredefinedNameIsNoNumberHere", "SEVEN", {"SEVEN"}),
                                         ListRow("EmptyElement", ",2", {""})),
                         RowName());

using RepeaterReference = CheckedSource;
TEST_P(RepeaterReference, IsResolved) { ExpectOutcome(GetParam()); }

constexpr char kItem[] = "Error[main.zek:2]: [REPEATER]:R, ";
constexpr char kNoDigit[] = " has not been defined and is not a valid number.\n";

CheckedRow ItemRow(const char* name, const std::string& value, std::vector<std::string> errors) {
    std::string all;
    for (const std::string& error : errors) all += error;
    return {name,
            "[REPEATER]\nR=" + value + "\n[ACTION]\nNAME=TWO\nARGNUMBER=2\n[ACTION]\nNAME=NONE\n[GLOBAL]\nG_A=T0\n" +
                kWords,
            errors.empty() ? 1U : 0U, all};
}

INSTANTIATE_TEST_SUITE_P(
    Of, RepeaterReference,
    testing::Values(
        ItemRow("Numbers", "3,TWO,0x10,SEVEN", {}), ItemRow("Globals", "G_A,TWO,G_A,G_A", {}),
        // An argument is taken whatever its number.
        ItemRow("Arguments", "1,TWO,ARG99,ARGx", {}), ItemRow("NoParameters", "SEVEN,NONE", {}),
        ItemRow("UnknownActionAlone", "1,X,1", {std::string(kItem) + "The ACTION with NAME X does not exist.\n"}),
        ItemRow("WrongCount", "1,TWO,1,2,3",
                {"Error[main.zek:2]: [REPEATER]:R The ACTION TWO needs 2 PARAMS, but total 3 PARAMS here.\n"}),
        ItemRow("EveryStepInItsOrder", "G_B,NONE,x,G_C,ARG",
                {std::string(kItem) + "The GLOBAL entry with NAME G_B does not exist.\n",
                 kItem + std::string("x") + kNoDigit,
                 std::string(kItem) + "The GLOBAL entry with NAME G_C does not exist.\n",
                 kItem + std::string("ARG") + kNoDigit,
                 "Error[main.zek:2]: [REPEATER]:R The ACTION NONE needs 0 PARAMS, but total 3 PARAMS here.\n"}),
        ItemRow("ActionBeforeCount", "x,X",
                {std::string(kItem) + "The ACTION with NAME X does not exist.\n", kItem + std::string("x") + kNoDigit}),
        ItemRow("PrefixesAlone", "G_,NONE", {kItem + std::string("G_") + kNoDigit}),
        ItemRow("ArgumentAsCount", "ARG1,NONE", {kItem + std::string("ARG1") + kNoDigit}),
        ItemRow("ValueName", "1,TWO,1,VALUE_1", {kItem + std::string("VALUE_1") + kNoDigit})),
    RowName());

using EntryReference = CheckTest;

TEST_F(EntryReference, OfAnEntryWithoutDataPasses) {
    CZEKSection& section = *CZEKSection::Create("main.zek", "SENSOR", 1);
    CGESTRING parent(kParent, tagNOTATION{kRequired});
    CGESTRINGLIST sensors(kSensors, tagNOTATION{kRequired});
    CGEVALUE value(kValue, tagNOTATION{kRequired});
    CGEREPEATER item(kRepeaterItem, tagNOTATION{kRequired});
    CGEDWORD number(kDefinition, tagNOTATION{kRequired});
    for (CZEKEntry* entry : std::initializer_list<CZEKEntry*>{&parent, &sensors, &value, &item, &number}) {
        EXPECT_EQ(entry->IsValidEx(&section, 0), 1U);
    }
    EXPECT_EQ(Messages(), "");
}

TEST_F(EntryReference, IsLookedForInNoListButSensors) {
    CZEKSection& section = *CZEKSection::Create("main.zek", "TAVRGROUP", 1);
    CGESTRINGLIST list(kListClass | 1, tagNOTATION{kRequired});
    list.Init("main.zek", "LIST", "", 2);
    *static_cast<std::vector<std::string>*>(list.m_ZekEntryData.GetData()) = {"8", "junk"};
    EXPECT_EQ(list.IsValidEx(&section, 0), 1U);
    EXPECT_EQ(Messages(), "");
}

}  // namespace zek::test
