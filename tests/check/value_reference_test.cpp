// The second pass of VALUE entries: every operand is what its place in the value asks for.
#include "check/check_test.h"
#include "check/vocabulary.h"

namespace zek::test {

namespace {

const std::string kNoDigit = " has not been defined and is not a valid number.";

/// What the operands may refer to; stands behind the section in question.
const std::string kAround =
    std::string("[GLOBAL]\nG_A=T0\n[TABLE]\nNAME=TBL\nTYPE=1\n[ACTION]\nNAME=ONE\nARGNUMBER=1\n") +
    "[ACTION]\nNAME=NONE\n" + kWords;

/// A value on line 2, as VALUE_X of a device. The messages are given without what all have in common, or whole.
CheckedRow DeviceRow(const char* name, const std::string& value, unsigned valid,
                     const std::vector<std::string>& messages) {
    std::string errors;
    for (const std::string& message : messages) {
        const bool whole = message.starts_with("Error[") || message.starts_with("Warning[");
        errors += (whole ? "" : "Error[main.zek:2]: [DEVICE]:VALUE_X, ") + message + "\n";
    }
    return {name, "[DEVICE]\nVALUE_X=" + value + "\nNAME=D\nID=1\nINITFLAG=0\nCONTROLMASK=0\n" + kAround, valid,
            errors};
}

CheckedRow Passes(const char* name, const std::string& value) { return DeviceRow(name, value, 1, {}); }
CheckedRow Fails(const char* name, const std::string& value, const std::vector<std::string>& messages) {
    return DeviceRow(name, value, 0, messages);
}

/// The same as VALUE of an [ACTION] with the items given, behind it.
CheckedRow ActionRow(const char* name, const std::string& value, const std::string& items,
                     const std::vector<std::string>& messages) {
    std::string errors;
    for (const std::string& message : messages) errors += "Error[main.zek:2]: [ACTION]:VALUE, " + message + "\n";
    return {name, "[ACTION]\nVALUE=" + value + "\nNAME=SELF\n" + items + kAround, messages.empty() ? 1U : 0U, errors};
}

std::string NoGlobal(const std::string& name) { return "The GLOBAL entry with NAME " + name + " does not exist."; }
std::string NoAction(const std::string& name) { return "The ACTION with NAME " + name + " does not exist."; }
std::string NoArgument(const std::string& name) { return "The ARG name " + name + " is invalid."; }
std::string NoValue(const std::string& name) { return "The VALUE name " + name + " is not valid in this section."; }
std::string Count(const std::string& action, unsigned needed, unsigned given) {
    return "Error[main.zek:2]: [DEVICE]:VALUE_X The ACTION " + action + " needs " + std::to_string(needed) +
           " PARAMS, but total " + std::to_string(given) + " PARAMS here.";
}

}  // namespace

using Operand = CheckedSource;
TEST_P(Operand, IsClassifiedByItsPrefix) { ExpectOutcome(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    Kind, Operand,
    testing::Values(Passes("Number", "T1,0x10"), Passes("PredefinedName", "T1,SEVEN"), Passes("Global", "T1,G_A"),
                    Passes("Argument", "T1,ARG0"), Fails("Text", "T1,x", {"x" + kNoDigit}),
                    Fails("Empty", "T1,", {kNoDigit}), Fails("UnknownGlobal", "T1,G_B", {NoGlobal("G_B")}),
                    Fails("ArgumentAboveTheBound", "T1,ARG1", {NoArgument("ARG1")}),
                    Fails("ArgumentWithoutNumber", "T1,ARGUMENT", {NoArgument("ARGUMENT")}),
                    Fails("ValueName", "T1,VALUE_1", {NoValue("VALUE_1")}),
                    // A device's own values are of another type than those that may be referred to.
                    Fails("ValueOfTheDevice", "T1,VALUE_X", {NoValue("VALUE_X")}),
                    Fails("ValuePrefixAlone", "T1,VALUE_", {"VALUE_" + kNoDigit}),
                    Fails("ArgumentPrefixAlone", "T1,ARG", {"ARG" + kNoDigit}),
                    Fails("GlobalPrefixAlone", "T1,G_", {"G_" + kNoDigit}),
                    Fails("SmallPrefix", "T1,g_A", {"g_A" + kNoDigit})),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Predefined, Operand,
    testing::Values(CheckedRow{"PrefixAlone", "[GLOBAL]\nG_A=T7,VALUE_,ARG,G_\n[DEFINE]\nT7=7\nVALUE_=1\nARG=1\nG_=1\n",
                               1, ""},
                    CheckedRow{"NameWithAPrefix",
                               "[GLOBAL]\nG_A=T7,VALUE_1,ARGS,G_X\n[DEFINE]\nT7=7\nVALUE_1=1\nARGS=1\nG_X=1\n", 0,
                               "Error[main.zek:2]: [GLOBAL]:G_A, The VALUE name VALUE_1 is not valid in this section.\n"
                               "Error[main.zek:2]: [GLOBAL]:G_A, The ARG name ARGS is invalid.\n"
                               "Error[main.zek:2]: [GLOBAL]:G_A, The GLOBAL entry with NAME G_X does not exist.\n"}),
    RowName());

using ValueType = CheckedSource;
TEST_P(ValueType, ResolvesItsOperandsInOrder) { ExpectOutcome(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    Simple, ValueType,
    testing::Values(Passes("Zero", "T0"), Passes("WithoutPayload", "T50,x,y"), Passes("AboveTheLast", "T105,x"),
                    Passes("OneOperand", "T101,G_A"), Fails("OneOperandFails", "T101,G_B", {NoGlobal("G_B")}),
                    Passes("OneOperandToo", "T103,1"), Fails("OneOperandTooFails", "T103,x", {"x" + kNoDigit}),
                    Fails("ValueNameOnly", "T104,1", {NoValue("1")}), Fails("ValueNameEmpty", "T104,", {NoValue("")}),
                    Passes("Arithmetic", "T2,pow,G_A,2"),
                    Fails("ArithmeticFails", "T2,-,G_B,ARG1", {NoGlobal("G_B"), NoArgument("ARG1")}),
                    Passes("Comparison", "T2,<=,1,2,G_A,ARG0"),
                    Fails("ComparisonFails", "T2,==,a,b,c,d",
                          {"a" + kNoDigit, "b" + kNoDigit, "c" + kNoDigit, "d" + kNoDigit}),
                    Passes("Composite", "T6,1,SEVEN,G_A,2"),
                    Fails("CompositeFails", "T6,G_A,ARG0,G_B,x",
                          {"G_A" + kNoDigit, "ARG0" + kNoDigit, NoGlobal("G_B"), "x" + kNoDigit}),
                    Passes("ListOfFour", "T7,1,2,G_A,ARG0"), Passes("EmptyList", "T7"),
                    Fails("ListOfFourFails", "T7,1,x,2,G_B", {"x" + kNoDigit, NoGlobal("G_B")}),
                    Passes("Table", "T10,TBL,G_A"),
                    Fails("TableFails", "T10,NONE,G_B", {"The TABLE with NAME NONE does not exist.", NoGlobal("G_B")})),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Call, ValueType,
    testing::Values(Passes("Call", "T3,ONE,G_A"), Passes("CallOfNone", "T3,NONE"),
                    Fails("CallOfNobody", "T3,TBL,1", {NoAction("TBL")}),
                    Fails("CallWithTooMany", "T3,ONE,x,2", {"x" + kNoDigit, Count("ONE", 1, 2)}),
                    Fails("CallWithTooFew", "T3,ONE", {Count("ONE", 1, 0)}),
                    Fails("CallOfNobodyWithBadParameter", "T3,X,G_B", {NoAction("X"), NoGlobal("G_B")}),
                    Passes("CallOn", "T102,G_A,ONE,1"),
                    Fails("CallOnFails", "T102,G_B,X,G_C", {NoGlobal("G_B"), NoAction("X"), NoGlobal("G_C")}),
                    Fails("CallOnWithWrongCount", "T102,x,NONE,y",
                          {"x" + kNoDigit, "y" + kNoDigit, Count("NONE", 0, 1)})),
    RowName());

// Outside of actions a call has as many arguments as it names; everything else has argument 0 alone.
INSTANTIATE_TEST_SUITE_P(
    ArgumentBound, ValueType,
    testing::Values(
        Passes("OfOneArgument", "T3,ONE,ARG1"), Fails("AboveOneArgument", "T3,ONE,ARG2", {NoArgument("ARG2")}),
        Fails("PrefixAloneIsNotCounted", "T3,ONE,ARG,ARG2", {"ARG" + kNoDigit, NoArgument("ARG2"), Count("ONE", 1, 2)}),
        Fails("OthersAreNotCounted", "T3,ONE,1,ARG2", {NoArgument("ARG2"), Count("ONE", 1, 2)}),
        Fails("CallOnHasArgument0", "T102,ARG1,ONE,ARG1", {NoArgument("ARG1"), NoArgument("ARG1")}),
        CheckedRow{"OfTwoInASensor",
                   "[SENSOR]\nVALUE_INIT=T3,TWO,ARG0,ARG1\nVALUE_EXIT=T3,TWO,ARG2,ARG3\nNAME=S\nID=1\nPARENT=ROOT\n"
                   "TYPE=1\nINITFLAG=0\nCONTROLMASK=0\nVALUE=T0\n" +
                       Group("ROOT") + TavrGroup("T", "1", "0", "1") + "[ACTION]\nNAME=TWO\nARGNUMBER=2\n" + kWords,
                   0, "Error[main.zek:3]: [SENSOR]:VALUE_EXIT, The ARG name ARG3 is invalid.\n"}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    InAction, ValueType,
    testing::Values(
        ActionRow("ArgNumberBounds", "T7,ARG0,ARG2,ARG3", "ARGNUMBER=2\n", {NoArgument("ARG3")}),
        ActionRow("ArgNumberBoundsCalls", "T3,ONE,ARG2", "ARGNUMBER=2\n", {}),
        ActionRow("NoArgNumber", "T3,ONE,ARG1", "", {NoArgument("ARG1")}),
        ActionRow("NoArgNumberButZero", "T3,ONE,ARG0", "", {}),
        ActionRow("ArgNumberIsAName", "T1,ARG0", "ARGNUMBER=SEVEN\n", {NoArgument("ARG0")}),
        ActionRow("OwnValues", "T7,VALUE_1,VALUE_0x1", "VALUE_1=T1,5\nVALUE_0x1=T1,6\n", {}),
        ActionRow("OwnValueBySpelling", "T7,VALUE_2,VALUE_0x01", "VALUE_2=T0\nVALUE_1=T0\n", {NoValue("VALUE_0x01")}),
        ActionRow("OwnValueByType104", "T104,VALUE_3", "VALUE_3=T0\n", {}),
        ActionRow("OwnValuePrefixByType104", "T104,VALUE_", "VALUE_=T0\n", {}),
        ActionRow("ValueOfAnotherAction", "T1,VALUE_3", "[ACTION]\nNAME=OTHER\nVALUE_3=T0\n", {NoValue("VALUE_3")}),
        ActionRow("OwnValueOfTheSameName", "T1,VALUE_3", "VALUE_3=T0\n[ACTION]\nNAME=OTHER\nVALUE_3=T1,VALUE_3\n", {}),
        CheckedRow{"ValueOfTheActionBefore",
                   std::string("[ACTION]\nNAME=A\nVALUE_3=T1,VALUE_3\n[ACTION]\nNAME=B\nVALUE=T1,VALUE_3\n") + kWords,
                   0, "Error[main.zek:6]: [ACTION]:VALUE, The VALUE name VALUE_3 is not valid in this section.\n"},
        ActionRow("FixedValues", "T7,VALUE_IPMI", "VALUE_IPMI=T0\n", {NoValue("VALUE_IPMI")})),
    RowName());

using BusAccess = CheckedSource;
TEST_P(BusAccess, ResolvesItsReferencesBeforeItsNumbers) { ExpectOutcome(GetParam()); }

constexpr char kSmbusAddress[] = "Error[main.zek:2]:SMBUS address field is wrong!";
constexpr char kSmbusType[] = "Error[main.zek:2]: SMBUS type is wrong!";

/// What is said of the operands G_x,r,ARG0,G_y and of the list ARG1,G_z, behind what is said `first`.
std::vector<std::string> BadBus(std::vector<std::string> first, bool list) {
    for (const std::string& message : {NoGlobal("G_x"), NoGlobal("G_y"), "r" + kNoDigit, "ARG0" + kNoDigit}) {
        first.push_back(message);
    }
    if (list) first.insert(first.end(), {NoArgument("ARG1"), NoGlobal("G_z")});
    return first;
}

std::string TooMuch(const std::string& word) {
    return "Warning[main.zek:2]: [DEVICE]:VALUE_X, Too much sub-strings for value type " + word + ".";
}

INSTANTIATE_TEST_SUITE_P(
    Plain, BusAccess,
    testing::Values(Passes("Type4", "T4,G_A,0x20,BUSTYPE_SMBUS,ARG0"), Passes("Type8", "T8,1,2,3,4"),
                    Passes("Type5", "T5,G_A,1,SEVEN,ARG0,G_A"), Passes("Type9", "T9,1,2,3,4,5"),
                    Passes("IoPort", "T4,1,2,BUSTYPE_SIMPLEIOPORT,0"),
                    Fails("IoPortAtAnotherAddress", "T4,1,2,BUSTYPE_SIMPLEIOPORT,0x10",
                          {"The BaseAddress 0x10 of BUSTYPE_SIMPLEIOPORT must be 0."}),
                    CheckedRow{"IoPortThatIsNotDefined",
                               "[GLOBAL]\nG_A=T4,1,2,BUSTYPE_SIMPLEIOPORT,0\n[DEFINE]\nT4=4\n", 0,
                               "Error[main.zek:2]: [GLOBAL]:G_A, BUSTYPE_SIMPLEIOPORT" + kNoDigit + "\n"},
                    Fails("Type4Fails", "T4,G_x,r,ARG0,G_y", BadBus({}, false)),
                    Fails("Type8Fails", "T8,G_x,r,ARG0,G_y", BadBus({}, false)),
                    Fails("Type5Fails", "T5,G_x,r,ARG0,G_y,ARG1,G_z", BadBus({TooMuch("T5")}, true)),
                    Fails("Type9Fails", "T9,G_x,r,ARG0,G_y,ARG1,G_z", BadBus({TooMuch("T9")}, true))),
    RowName());

// What the two SMBUS rules say is worded as an error and fails nothing.
INSTANTIATE_TEST_SUITE_P(
    Smbus, BusAccess,
    testing::Values(Passes("Type12", "T12,G_A,1,BUSTYPE_SMBUS,0x00"), Passes("Type11", "T11,1,2,BUSTYPE_SMBUS,0x00,5"),
                    DeviceRow("AnotherZero", "T12,1,2,BUSTYPE_SMBUS,0x0", 1, {kSmbusAddress}),
                    DeviceRow("AnotherBus", "T12,1,2,SEVEN,0x00", 1, {kSmbusType}),
                    DeviceRow("BothInType12", "T12,1,2,BUSTYPE_SIMPLEIOPORT,0", 1, {kSmbusAddress, kSmbusType}),
                    DeviceRow("BothInType11", "T11,1,2,1,ARG0,5", 1, {kSmbusAddress, kSmbusType}),
                    Fails("Type12Fails", "T12,G_x,r,ARG0,G_y", BadBus({kSmbusAddress, kSmbusType}, false)),
                    Fails("Type11Fails", "T11,G_x,r,ARG0,G_y,ARG1,G_z",
                          BadBus({TooMuch("T11"), kSmbusAddress, kSmbusType}, true))),
    RowName());

}  // namespace zek::test
