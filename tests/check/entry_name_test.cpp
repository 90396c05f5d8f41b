// Which keys are names of an entry.
#include "check/check_test.h"

namespace zek::test {

struct KeyRow {
    const char* name;
    std::string section;
    std::string key;
    bool valid;
};

class EntryKey : public CheckTest, public testing::WithParamInterface<KeyRow> {};

TEST_P(EntryKey, IsAKeywordOrASuffixThatSuitsItsFamily) {
    const auto& [name, keyword, key, valid] = GetParam();
    CZEKSection& section = *CZEKSection::Create("main.zek", keyword, 1);
    if (keyword == "IFDEF") section.SetEntry("main.zek", "DEFINEWORD", "A", 2);
    ASSERT_EQ(section.SetEntry("main.zek", key, "1", 3), 1U);
    CZEKEntry& entry = EntryOf(section, key);
    Messages();
    EXPECT_EQ(entry.ChkEntryName(&section, 0), unsigned{valid});
    EXPECT_EQ(Messages(), valid ? "" : "Error[main.zek:3]: [" + keyword + "]:" + key + ", Entry name is invalid.\n");
}

INSTANTIATE_TEST_SUITE_P(
    FreeName, EntryKey,
    testing::Values(KeyRow{"Property", "PROPERTY", "a1", true}, KeyRow{"EmptyProperty", "PROPERTY", "", false},
                    KeyRow{"EmptyDefine", "DEFINE", "", false}, KeyRow{"EmptyRepeater", "REPEATER", "", false},
                    KeyRow{"PropertyBeginsWithDigit", "PROPERTY", "1a", false},
                    KeyRow{"PropertyBeginsWithMark", "PROPERTY", "_0", true}, KeyRow{"Define", "DEFINE", "A", true},
                    KeyRow{"DefineBeginsWithDigit", "DEFINE", "9", false},
                    KeyRow{"DefineBeginsWithSign", "DEFINE", "+5", true}, KeyRow{"IfdefDefines", "IFDEF", "A", true},
                    KeyRow{"IfdefDefinesDigit", "IFDEF", "0A", false}, KeyRow{"Repeater", "REPEATER", "R", true},
                    KeyRow{"RepeaterBeginsWithDigit", "REPEATER", "0R", false},
                    KeyRow{"PInDevice", "DEVICE", "P_1", true}, KeyRow{"PInSensor", "SENSOR", "P_", true},
                    KeyRow{"PInSystem", "SYSTEM", "P_x", true}, KeyRow{"PInTavrGroup", "TAVRGROUP", "P_9", true},
                    KeyRow{"ShorterThanPInSystem", "SYSTEM", "P", false}, KeyRow{"NoPInSystem", "SYSTEM", "Q_x", false},
                    KeyRow{"SmallPInTavrGroup", "TAVRGROUP", "p_x", false}, KeyRow{"Global", "GLOBAL", "G_x", true},
                    KeyRow{"GlobalKeyword", "GLOBAL", "G_", true}, KeyRow{"NoGlobal", "GLOBAL", "X", false},
                    KeyRow{"SmallGlobal", "GLOBAL", "g_X", false}, KeyRow{"GlobalDigit", "GLOBAL", "G_1", true}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Value, EntryKey,
    testing::Values(
        KeyRow{"NumberInAction", "ACTION", "VALUE_12", true}, KeyRow{"HexInAction", "ACTION", "VALUE_0x1F", true},
        KeyRow{"KeywordInAction", "ACTION", "VALUE_", true}, KeyRow{"TextInAction", "ACTION", "VALUE_A", false},
        KeyRow{"NumberAndTextInAction", "ACTION", "VALUE_1A", true}, KeyRow{"SignInAction", "ACTION", "VALUE_-1", true},
        KeyRow{"InitInAction", "ACTION", "VALUE_INIT", false},
        KeyRow{"TooLongInAction", "ACTION", "VALUE_12345678901", false},
        KeyRow{"SmallInAction", "ACTION", "value_1", false}, KeyRow{"OtherInAction", "ACTION", "FOO", false},
        KeyRow{"TextInDevice", "DEVICE", "VALUE_A", true}, KeyRow{"KeywordInDevice", "DEVICE", "VALUE_", true},
        KeyRow{"InitInDevice", "DEVICE", "VALUE_INIT", true}, KeyRow{"ShortInDevice", "DEVICE", "VALUE", false},
        KeyRow{"OtherInDevice", "DEVICE", "FOO", false}, KeyRow{"TextInSensor", "SENSOR", "VALUE_A", true},
        KeyRow{"ValueInSensor", "SENSOR", "VALUE", true}, KeyRow{"IpmiInSensor", "SENSOR", "VALUE_IPMI", true},
        KeyRow{"ExitInGroup", "GROUP", "VALUE_EXIT", true}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    TableRow, EntryKey,
    testing::Values(KeyRow{"Number", "TABLE", "4", true}, KeyRow{"Range", "TABLE", "3.5", true},
                    KeyRow{"WholeRange", "TABLE", "0.255", true}, KeyRow{"OneNumberRange", "TABLE", "5.5", true},
                    KeyRow{"HexRange", "TABLE", "0x10.0x1F", true}, KeyRow{"SplitAtFirstDot", "TABLE", "1.2.3", true},
                    KeyRow{"Zero", "TABLE", "0", true}, KeyRow{"Highest", "TABLE", "255", true},
                    KeyRow{"TooHigh", "TABLE", "256", false}, KeyRow{"MuchTooHigh", "TABLE", "300", false},
                    KeyRow{"RangeTooHigh", "TABLE", "0.256", false}, KeyRow{"BothTooHigh", "TABLE", "256.256", false},
                    KeyRow{"Falling", "TABLE", "5.3", false}, KeyRow{"FallingToo", "TABLE", "9.3", false},
                    KeyRow{"NoHighEnd", "TABLE", "3.", false}, KeyRow{"NoLowEnd", "TABLE", ".3", false},
                    KeyRow{"Text", "TABLE", "a", false}, KeyRow{"TextEnd", "TABLE", "1.a", false},
                    KeyRow{"Negative", "TABLE", "-1", false}, KeyRow{"TooLong", "TABLE", "00000000001", false}),
    RowName());

// The key of an include item is not of a family, so only the keyword itself will do.
INSTANTIATE_TEST_SUITE_P(Include, EntryKey,
                         testing::Values(KeyRow{"File", "INCLUDE", "FILE", true},
                                         KeyRow{"Longer", "INCLUDE", "FILES", false},
                                         KeyRow{"Other", "INCLUDE", "PATH", false}),
                         RowName());

using EntryName = CheckTest;

TEST_F(EntryName, OfAnUnknownTypeFailsWithoutAMessage) {
    CZEKSection& section = *CZEKSection::Create("main.zek", "PROPERTY", 1);
    CGESTRING entry(0x1002001A, tagNOTATION{kNotationFamily});
    entry.Init("main.zek", "X", "1", 2);
    EXPECT_EQ(entry.ChkEntryName(&section, 0), 0U);
    EXPECT_EQ(entry.IsValid(&section, 0), 0U);
    EXPECT_EQ(Messages(), "");
}

}  // namespace zek::test
