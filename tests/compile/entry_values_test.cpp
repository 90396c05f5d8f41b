#include "check/vocabulary.h"
#include "compile/image_bytes.h"
#include "debugimage/debug_bytes.h"
#include "model/entry_data.h"

namespace zek::test {

namespace {

struct ClassName {
    unsigned classWord;
    const char* name;
};

constexpr ClassName kNames[] = {{0x03000000, "property"}, {0x04000000, "global"},  {0x05000000, "value"},
                                {0x06000000, "repeater"}, {0x12000000, "string"},  {0x18000000, "group"},
                                {0x1a000000, "action"},   {0x1c000000, "table"},   {0x1d000000, "argument"},
                                {0x1e000000, "type"},     {0x1f000000, "operator"}};

/// A word as what it stands for.
std::string Meaning(unsigned word) {
    if (word == 0xFFFFFFFF) return "unresolved";
    if (word >> 24 == 0x11) return "number " + std::to_string(GetTblData(g_tblDword, word));
    const tagGCVALUE value = GetTblData(word);
    for (const ClassName& row : kNames) {
        if (word >> 24 != row.classWord >> 24 || value.dwKind == 0) continue;
        return std::string(row.name) + ' ' + (value.dwKind == 1 ? std::to_string(value.qwNumber) : value.pszName);
    }
    return "word " + std::to_string(word);
}

std::string Meanings(const tagGCENTRY& entry) {
    std::string text;
    for (const unsigned word : entry.vdwValues) text += (text.empty() ? "" : ", ") + Meaning(word);
    return text;
}

/// One name in every table, and the predefined names TWO, G_TWO (which looks like a reference) and 0x7 (like a number).
void FillTables() {
    for (const char* name : {"IPMI", "", "INIT"}) InsertTbl(g_tblValue, g_idxValue, name, 1);
    InsertTbl(g_tblGlobal, g_idxGlobal, "X", 1);
    InsertTbl(g_tblGroup, g_idxGroup, "0", 1);
    InsertTbl(g_tblGroup, g_idxGroup, "A", 1);
    InsertTbl(g_tblAction, g_idxAction, "Do", 1);
    InsertTbl(g_tblTableName, g_idxTableName, "T", 1);
    AddPredDefineValue("TWO", 2);
    AddPredDefineValue("G_TWO", 22);
    AddPredDefineValue("0x7", 70);
}

std::string Compiled(unsigned section, const std::string& data) {
    CZekEntryData holder;
    holder.SetBuffer(ToVector(data));
    tagGCENTRY entry;
    entry.vdwValues.push_back(0x1d000063);
    SetEntryValues(section, holder.GetType(), holder.GetData(), entry);
    return Meanings(entry);
}

std::string NumberData(unsigned number) { return Joined({0x10010001, number}); }

std::string RepeaterData(const std::string& count, const std::string& action, const Texts& list) {
    return Word(0x10100001) + Str(count) + Str(action) + List(list);
}

struct ValueCase {
    const char* name;
    unsigned section;
    std::string data;
    std::string words;
};

ValueCase Value(const char* name, unsigned type, const std::string& payload, const std::string& words) {
    return {name, 0x20000005, ValueData(0x10080000, type, "T", payload), words};
}

struct OperandCase {
    const char* name;
    std::string text;
    std::string word;
};

}  // namespace

class EntryValues : public ProcessTest, public testing::WithParamInterface<ValueCase> {};

TEST_P(EntryValues, AreAppendedAsTheWordsOfTheirData) {
    FillTables();
    const std::string& words = GetParam().words;
    EXPECT_EQ(Compiled(GetParam().section, GetParam().data), "argument 99" + (words.empty() ? "" : ", " + words));
}

INSTANTIATE_TEST_SUITE_P(
    Text, EntryValues,
    testing::Values(ValueCase{"Row", 0x20000008, TextData(0x10020012, "7"), ""},
                    ValueCase{"NameOfAnAction", 0x20000007, TextData(0x10020015, "Do"), "action Do"},
                    ValueCase{"NameOfAnUnknownAction", 0x20000007, TextData(0x10020015, "Don't"), "word 0"},
                    ValueCase{"ParentOfAGroup", 0x20000004, TextData(0x10020014, "0"), "group 0"},
                    ValueCase{"NameOfAGroup", 0x20000004, TextData(0x10020015, "A"), "group A"},
                    ValueCase{"ParentOfASensor", 0x20000005, TextData(0x10020014, "A"), "group A"},
                    ValueCase{"ParentOfASensorUnknown", 0x20000005, TextData(0x10020014, "B"), "word 0"},
                    ValueCase{"NameOfASensor", 0x20000005, TextData(0x10020015, "A"), "string A"},
                    ValueCase{"NameOfADevice", 0x20000006, TextData(0x10020015, "Do"), "string Do"},
                    ValueCase{"NameOfATable", 0x20000008, TextData(0x10020015, "T"), "string T"},
                    ValueCase{"ParentElsewhere", 0x20000007, TextData(0x10020014, "A"), "string A"},
                    ValueCase{"Version", 0x20000001, TextData(0x10020001, "1"), "string 1"},
                    ValueCase{"Model", 0x20000003, TextData(0x10020013, ""), "string "},
                    ValueCase{"Property", 0x20000002, TextData(0x10020017, "TWO"), "string TWO"},
                    ValueCase{"PrefixP", 0x20000005, TextData(0x10020018, "5"), "string 5"},
                    ValueCase{"DefineWord", 0x2000000d, TextData(0x10020016, "w"), "string w"},
                    ValueCase{"File", 0x2000000e, TextData(0x10020019, "f"), "string f"},
                    ValueCase{"FirstNumericKey", 0x20000005, TextData(0x10028002, "0x10"), "number 16"},
                    ValueCase{"LastNumericKey", 0x20000009, TextData(0x10028011, "7"), "number 7"},
                    ValueCase{"NumericKeyByName", 0x20000005, TextData(0x10028002, "TWO"), "number 2"},
                    ValueCase{"NumericKeyByNameLikeANumber", 0x20000005, TextData(0x10028002, "0x7"), "number 70"},
                    ValueCase{"NumericKeyOfAnUnknownKind", 0x20000005, TextData(0x10028fff, "5"), "number 5"},
                    ValueCase{"KindBehindTheNumericKeys", 0x20000005, TextData(0x10029002, "5"), "string 5"},
                    ValueCase{"NumericKeyThatIsNoNumber", 0x20000005, TextData(0x10028002, "x"), "number 4294967295"},
                    ValueCase{"NumericKeyWithTrailingText", 0x20000005, TextData(0x10028002, "12abc"), "number 12"}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Other, EntryValues,
    testing::Values(ValueCase{"Number", 0x2000000c, NumberData(300), "number 300"},
                    ValueCase{"Sensors", 0x20000009, Word(0x10048001) + List({"1", "x", "0x10", "TWO"}),
                              "number 1, number 4294967295, number 16, number 4294967295"},
                    ValueCase{"SensorsByNameLikeANumber", 0x20000009, Word(0x10048001) + List({"0x7"}), "number 7"},
                    ValueCase{"NumericListOfAnUnknownKind", 0x20000009, Word(0x10048fff) + List({"5"}), "number 5"},
                    ValueCase{"ListBehindTheNumericLists", 0x20000009, Word(0x10049001) + List({"5"}), "string 5"},
                    ValueCase{"SensorsEmpty", 0x20000009, Word(0x10048001) + List({}), ""},
                    ValueCase{"OtherList", 0x20000009, Word(0x10040001) + List({"1", "x"}), "string 1, string x"},
                    ValueCase{"Repeater", 0x2000000b, RepeaterData("3", "Do", {"G_X", "ARG1", "x"}),
                              "number 3, action Do, global X, argument 1, unresolved"},
                    ValueCase{"RepeaterWithoutANumber", 0x2000000b, RepeaterData("TWO", "Don't", {}),
                              "number 0, word 0"},
                    ValueCase{"UnknownClass", 0x20000005, Word(0x10200001), ""}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Value, EntryValues,
    testing::Values(
        Value("None", 0, "", "type 0"), Value("One", 1, Strings({"7"}), "type 1, number 7"),
        Value("Arithmetic", 2, Strings({"+", "G_X", "3", "4", "5"}), "type 2, operator 1, global X, number 3"),
        Value("Power", 2, Strings({"pow", "1", "2", "", ""}), "type 2, operator 20, number 1, number 2"),
        Value("NoOperator", 2, Strings({"=", "1", "2", "3", "4"}), "type 2, operator 0, number 1, number 2"),
        Value("Comparison", 2, Strings({"==", "1", "2", "3", "4"}),
              "type 2, operator 101, number 1, number 2, number 3, number 4"),
        Value("LastComparison", 2, Strings({"<=", "1", "2", "3", "x"}),
              "type 2, operator 106, number 1, number 2, number 3, unresolved"),
        Value("Call", 3, Strings({"Do"}) + List({"1", "VALUE"}), "type 3, action Do, number 1, value "),
        Value("CallUnknown", 3, Strings({"G_X"}) + List({}), "type 3, word 0"),
        Value("Four", 4, Strings({"G_X", "2", "3", "4"}), "type 4, global X, number 2, number 3, number 4"),
        Value("Five", 5, Strings({"1", "2", "3", "4"}) + List({"5", "ARG0"}),
              "type 5, number 1, number 2, number 3, number 4, number 5, argument 0"),
        Value("Six", 6, Strings({"1", "2"}) + List({"G_X"}), "type 6, number 1, number 2, global X"),
        Value("Seven", 7, List({"1", "TWO"}), "type 7, number 1, number 2"), Value("SevenEmpty", 7, List({}), "type 7"),
        Value("Eight", 8, Strings({"1", "2", "3", "4"}), "type 8, number 1, number 2, number 3, number 4"),
        Value("Nine", 9, Strings({"1", "2", "3", "4"}) + List({}), "type 9, number 1, number 2, number 3, number 4"),
        Value("Ten", 10, Strings({"T", "2"}), "type 10, table T, number 2"),
        Value("TenUnknown", 10, Strings({"X", "2"}), "type 10, word 0, number 2"),
        Value("Eleven", 11, Strings({"1", "2", "3", "4"}) + List({"5"}),
              "type 11, number 1, number 2, number 3, number 4, number 5"),
        Value("Twelve", 12, Strings({"1", "2", "3", "4"}), "type 12, number 1, number 2, number 3, number 4"),
        Value("Thirteen", 13, "", "type 13"), Value("Hundred", 100, "", "type 100"),
        Value("HundredOne", 101, Strings({"VALUE_INIT"}), "type 101, value INIT"),
        Value("HundredTwo", 102, Strings({"1", "Do"}) + List({"2", "3"}),
              "type 102, number 1, action Do, number 2, number 3"),
        Value("HundredThree", 103, Strings({"1"}), "type 103, number 1"),
        Value("HundredFour", 104, Strings({"VALUE_INIT"}), "type 104, value INIT"),
        Value("HundredFive", 105, "", "type 105"),
        // The marker is a sum: a type of more than 24 bits runs into the class.
        Value("TypeBeyondTheOrdinal", 0x01000005, "", "operator 5"),
        Value("TypeBeyondTheWord", 0xFFFFFFFF, "", "argument 16777215")),
    RowName());

class Operand : public ProcessTest, public testing::WithParamInterface<OperandCase> {};

TEST_P(Operand, CompilesToTheWordOfTheFirstRuleThatTakesIt) {
    FillTables();
    std::string text = GetParam().text;
    EXPECT_EQ(Meaning(GetValueVal(text)), GetParam().word);
    EXPECT_EQ(text, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Text, Operand,
    testing::Values(
        OperandCase{"Number", "0x1F", "number 31"}, OperandCase{"Zero", "0", "number 0"},
        OperandCase{"NumberWithTrailingText", "7G_X", "number 7"}, OperandCase{"PredefinedName", "TWO", "number 2"},
        OperandCase{"PredefinedNameLikeAGlobal", "G_TWO", "number 22"},
        OperandCase{"PredefinedNameLikeANumber", "0x7", "number 7"}, OperandCase{"Value", "VALUE", "value "},
        OperandCase{"NamedValue", "VALUE_INIT", "value INIT"}, OperandCase{"EmptyNamedValue", "VALUE_", "value "},
        OperandCase{"UnknownValue", "VALUE_NONE", "word 0"}, OperandCase{"ValueWithMore", "VALUES", "unresolved"},
        OperandCase{"Global", "G_X", "global X"}, OperandCase{"UnknownGlobal", "G_Y", "word 0"},
        OperandCase{"EmptyGlobal", "G_", "word 0"}, OperandCase{"Argument", "ARG3", "argument 3"},
        OperandCase{"HexadecimalArgument", "ARG0x10", "argument 16"},
        OperandCase{"ArgumentBeyondTheOrdinal", "ARG16777217", "type 1"},
        OperandCase{"ArgumentWithoutANumber", "ARGX", "unresolved"}, OperandCase{"ArgumentAlone", "ARG", "unresolved"},
        OperandCase{"ArgumentByPredefinedName", "ARGTWO", "unresolved"}, OperandCase{"Lowercase", "arg1", "unresolved"},
        OperandCase{"AnythingElse", "abc", "unresolved"}, OperandCase{"Empty", "", "unresolved"},
        OperandCase{"AloneHexadecimalPrefix", "0x", "unresolved"}),
    RowName());

using OperandNames = ProcessTest;

TEST_F(OperandNames, ThatAreUnknownAreAddedUnnumbered) {
    std::string value = "VALUE_v";
    std::string global = "G_g";
    GetValueVal(value);
    GetValueVal(global);
    EXPECT_EQ(g_tblValue, (std::map<std::string, unsigned>{{"v", 0}}));
    EXPECT_EQ(g_tblGlobal, (std::map<std::string, unsigned>{{"g", 0}}));
    EXPECT_EQ(Compiled(0x20000005, ValueData(0x10080000, 3, "T", Strings({"a"}) + List({}))),
              "argument 99, type 3, word 0");
    EXPECT_EQ(Compiled(0x20000005, ValueData(0x10080000, 10, "T", Strings({"t", "1"}))),
              "argument 99, type 10, word 0, number 1");
    EXPECT_EQ(g_tblAction, (std::map<std::string, unsigned>{{"a", 0}}));
    EXPECT_EQ(g_tblTableName, (std::map<std::string, unsigned>{{"t", 0}}));
}

TEST_F(OperandNames, ShareOneIdentifierPerNumber) {
    std::string seven = "7";
    std::string alsoSeven = "0x7";
    std::string eight = "8";
    EXPECT_EQ(GetValueVal(seven), 0x11000000U);
    EXPECT_EQ(GetValueVal(eight), 0x11000001U);
    EXPECT_EQ(GetValueVal(alsoSeven), 0x11000000U);
}

}  // namespace zek::test
