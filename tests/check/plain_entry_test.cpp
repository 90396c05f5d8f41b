// The first pass of numbers, texts, lists and repeater items.
#include "check/check_test.h"
#include "check/vocabulary.h"

namespace zek::test {

/// An entry of its own in a section: what its first pass gives, says, stores and keeps.
class FirstPass : public CheckTest {
protected:
    /// Checks a new entry of the kind `Entry`, on line 3 of main.zek, with the value. The data is read through `entry`.
    template <class Entry>
    void Ask(Entry& entry, const std::string& keyword, const std::string& key, const std::string& value,
             unsigned flag = 0) {
        section_ = CZEKSection::Create("main.zek", keyword, 1);
        entry.Init("main.zek", key, value, 3);
        result_ = entry.IsValid(section_, flag);
        messages_ = Messages();
        kept_ = entry.m_vstrSubStr;
    }
    void ExpectNumber(const std::string& value, unsigned result, const std::string& messages, unsigned number) {
        SCOPED_TRACE("value '" + value + "'");
        CGEDWORD entry(kDefinition, tagNOTATION{kNotationFamily});
        Ask(entry, "DEFINE", "X", value);
        Expect(result, messages);
        EXPECT_EQ(*static_cast<unsigned*>(entry.m_ZekEntryData.GetData()), number);
    }
    void ExpectText(unsigned type, const std::string& keyword, const std::string& key, const std::string& value,
                    unsigned result, const std::string& messages, const std::string& text) {
        SCOPED_TRACE(key + " '" + value + "'");
        CGESTRING entry(type, tagNOTATION{kRequired});
        Ask(entry, keyword, key, value);
        Expect(result, messages);
        EXPECT_EQ(*static_cast<std::string*>(entry.m_ZekEntryData.GetData()), text);
    }
    void Expect(unsigned result, const std::string& messages) {
        EXPECT_EQ(result_, result);
        EXPECT_EQ(messages_, messages);
        EXPECT_EQ(kept_, std::vector<std::string>{}) << "the sub-strings are let go of";
    }
    CZEKSection* section_ = nullptr;
    unsigned result_ = 9;
    std::string messages_;
    std::vector<std::string> kept_;
};

using NumberEntry = FirstPass;

TEST_F(NumberEntry, StoresItsNumber) {
    AddPredDefineValue("SEVEN", 7);
    ExpectNumber("5", 1, "", 5);
    ExpectNumber("0x1F", 1, "", 31);
    ExpectNumber("0", 1, "", 0);
    ExpectNumber("SEVEN", 1, "", 7);
    ExpectNumber("\"\"", 1, "", 0);
}

TEST_F(NumberEntry, TakesAPredefinedNameBeforeANumber) {
    AddPredDefineValue("+5", 9);
    AddPredDefineValue("", 3);
    ExpectNumber("+5", 1, "", 9);
    ExpectNumber("\"\"", 1, "", 3);
}

TEST_F(NumberEntry, WarnsOfFurtherSubStrings) {
    const std::string more =
        "Warning[main.zek:3]: [DEFINE]:X, More than one sub-string and get the first one as sub-string.\n";
    ExpectNumber("1,2", 1, more, 1);
    ExpectNumber("1,", 1, more, 1);
    ExpectNumber("abc,1", 0,
                 more + "Error[main.zek:3]: [DEFINE]:X, abc has not been defined and is not a valid number.\n", 0);
}

TEST_F(NumberEntry, FailsWithoutANumber) {
    ExpectNumber("", 0, "Error[main.zek:3]: [DEFINE]:X, No sub-string.\n", 0);
    for (const std::string text : {"abc", "4294967296", "12345678901", " "}) {
        ExpectNumber(text, 0,
                     "Error[main.zek:3]: [DEFINE]:X, " + text + " has not been defined and is not a valid number.\n",
                     0);
    }
}

using TextEntry = FirstPass;

TEST_F(TextEntry, StoresItsText) {
    ExpectText(kName, "DEVICE", "NAME", "a b", 1, "", "a b");
    ExpectText(kName, "DEVICE", "NAME", "\"a,b\"", 1, "", "a,b");
    ExpectText(kName, "DEVICE", "NAME", "a,b", 1,
               "Warning[main.zek:3]: [DEVICE]:NAME, More than one sub-string and get the first one as sub-string.\n",
               "a");
}

TEST_F(TextEntry, FailsWhenEmpty) {
    const std::string none = "Error[main.zek:3]: [DEVICE]:NAME, No sub-string.\n";
    ExpectText(kName, "DEVICE", "NAME", "", 0, none, "");
    ExpectText(kName, "DEVICE", "NAME", "\"\"", 0, none, "");
    ExpectText(
        kName, "DEVICE", "NAME", ",x", 0,
        "Warning[main.zek:3]: [DEVICE]:NAME, More than one sub-string and get the first one as sub-string.\n" + none,
        "");
}

TEST_F(TextEntry, MayBeEmptyAsTheModelOfASystem) {
    ExpectText(kModel, "SYSTEM", "MODEL", "\"\"", 1, "", "");
    ExpectText(kModel, "SYSTEM", "MODEL", "", 0, "Error[main.zek:3]: [SYSTEM]:MODEL, No sub-string.\n", "");
    ExpectText(kModel, "DEVICE", "MODEL", "\"\"", 0, "Error[main.zek:3]: [DEVICE]:MODEL, No sub-string.\n", "");
}

TEST_F(TextEntry, KeepsTheTextOfANumber) {
    AddPredDefineValue("SEVEN", 7);
    const std::vector<std::pair<unsigned, std::string>> keys = {
        {kType, "TYPE"},
        {kFlag, "FLAG"},
        {kSouthbridge, "SOUTHBRIDGE"},
        {kNorthbridge, "NORTHBRIDGE"},
        {kZekLoop, "ZEKLOOP"},
        {kChildGroup, "CHILDGROUP"},
        {kID, "ID"},
        {kInitFlag, "INITFLAG"},
        {kControlMask, "CONTROLMASK"},
        {kTheory, "THEORY"},
        {kThresholdFH, "THRESHOLD_FH"},
        {kThresholdWH, "THRESHOLD_WH"},
        {kThresholdFL, "THRESHOLD_FL"},
        {kThresholdWL, "THRESHOLD_WL"},
        {kArgNumber, "ARGNUMBER"},
        {kPID, "PID"},
    };
    for (const auto& [type, key] : keys) {
        ExpectText(type, "SENSOR", key, "0x10", 1, "", "0x10");
        ExpectText(type, "SENSOR", key, "SEVEN", 1, "", "SEVEN");
        ExpectText(type, "SENSOR", key, "abc", 0,
                   "Error[main.zek:3]: [SENSOR]:" + key + ", abc has not been defined and is not a valid number.\n",
                   "abc");
        ExpectText(type, "SENSOR", key, "\"\"", 0, "Error[main.zek:3]: [SENSOR]:" + key + ", No sub-string.\n", "");
    }
}

TEST_F(TextEntry, MayBeAnyTextWhereItIsNoNumber) {
    ExpectText(kVersion, "QUORZEK", "VERSION", "one", 1, "", "one");
    ExpectText(kParent, "GROUP", "PARENT", "nobody", 1, "", "nobody");
    ExpectText(kFile, "INCLUDE", "FILE", "nowhere", 1, "", "nowhere");
    ExpectText(kDefineWord, "IFDEF", "DEFINEWORD", "unknown", 1, "", "unknown");
}

using SensorList = FirstPass;

TEST_F(SensorList, StoresEverySubStringAsItStands) {
    for (const auto& [value, list] : std::vector<std::pair<std::string, std::vector<std::string>>>{
             {"1, junk,\"a,b\",", {"1", " junk", "a,b", ""}}, {"7", {"7"}}, {"", {}}}) {
        SCOPED_TRACE(value);
        CGESTRINGLIST entry(kSensors, tagNOTATION{kRequired});
        Ask(entry, "TAVRGROUP", "SENSORS", value);
        Expect(1, "");
        EXPECT_EQ(*static_cast<std::vector<std::string>*>(entry.m_ZekEntryData.GetData()), list);
    }
}

/// A repeater item as the debug image shows it.
std::string Shown(CGEREPEATER& entry) {
    char text[256] = "";
    EXPECT_EQ(gdGetValue(&entry, text), 1U);
    return text;
}

using RepeaterItem = FirstPass;

TEST_F(RepeaterItem, StoresCountActionAndParameters) {
    for (const std::string value : {"3,A", "junk,,x,y", ",,,"}) {
        SCOPED_TRACE(value);
        CGEREPEATER entry(kRepeaterItem, tagNOTATION{kNotationFamily});
        Ask(entry, "REPEATER", "R", value);
        Expect(1, "");
        EXPECT_EQ(Shown(entry), value);
    }
}

TEST_F(RepeaterItem, GetsItsParametersAgainWhenAskedAgain) {
    CGEREPEATER entry(kRepeaterItem, tagNOTATION{kNotationFamily});
    Ask(entry, "REPEATER", "R", "3,A,x,y", kWhileReading);
    EXPECT_EQ(Shown(entry), "3,A,x,y");
    EXPECT_EQ(entry.IsValid(section_, kWhileReading), 1U);
    EXPECT_EQ(Shown(entry), "3,A,x,y,x,y");
    entry.m_vstrSubStr = {"4", "B", "z"};
    EXPECT_EQ(entry.IsValid(section_, 0), 1U);
    EXPECT_EQ(Shown(entry), "4,B,x,y,x,y,z");
    EXPECT_TRUE(entry.m_vstrSubStr.empty());
}

TEST_F(RepeaterItem, NeedsTwoSubStrings) {
    CGEREPEATER none(kRepeaterItem, tagNOTATION{kNotationFamily});
    Ask(none, "REPEATER", "R", "");
    Expect(0, "Error[main.zek:3]: [REPEATER]:R, No sub-string.\n");
    CGEREPEATER one(kRepeaterItem, tagNOTATION{kNotationFamily});
    Ask(one, "REPEATER", "R", "3");
    EXPECT_EQ(result_, 0U);
    EXPECT_EQ(messages_, "Error[main.zek:3]: [REPEATER]:R, not enough sub-strings.\n");
    EXPECT_EQ(kept_, std::vector<std::string>{"3"}) << "nothing was converted";
    EXPECT_EQ(Shown(one), ",");
}

using Conversion = FirstPass;

TEST_F(Conversion, KeepsTheSubStringsWhileTheSourceIsRead) {
    const std::vector<std::string> two = {"1", "A"};
    const auto expectKept = [&](auto entry, const std::string& keyword, const std::string& key) {
        SCOPED_TRACE(key);
        Ask(*entry, keyword, key, "1,A", kWhileReading);
        EXPECT_EQ(result_, 1U);
        EXPECT_EQ(kept_, two);
        EXPECT_EQ(entry->IsValid(section_, 1), 1U);
        EXPECT_EQ(entry->m_vstrSubStr, two) << "with any flag but 0";
        EXPECT_EQ(entry->IsValid(section_, 0), 1U);
        EXPECT_TRUE(entry->m_vstrSubStr.empty());
    };
    expectKept(std::make_unique<CGEDWORD>(kDefinition, tagNOTATION{kNotationFamily}), "DEFINE", "X");
    expectKept(std::make_unique<CGESTRING>(kName, tagNOTATION{kRequired}), "DEVICE", "NAME");
    expectKept(std::make_unique<CGESTRINGLIST>(kSensors, tagNOTATION{kRequired}), "TAVRGROUP", "SENSORS");
    expectKept(std::make_unique<CGEREPEATER>(kRepeaterItem, tagNOTATION{kNotationFamily}), "REPEATER", "R");
    AddPredDefineValue("1", 1);
    expectKept(std::make_unique<CGEVALUE>(kOwnValue, tagNOTATION{kNotationFamilyValue}), "DEVICE", "VALUE_X");
}

TEST_F(Conversion, FindsNoSubStringsWhenAskedAgain) {
    EXPECT_EQ(Check("[QUORZEK]\nVERSION=1\n"), 1U);
    Messages();
    EXPECT_EQ(gccCheck(), 0U);
    EXPECT_EQ(Messages(), "Error[main.zek:2]: [QUORZEK]:VERSION, No sub-string.\n");
}

/// An entry whose type id is of another class than its kind.
template <class Entry>
void ExpectWrongClass(CZEKObj& section, unsigned type, const std::string& key) {
    Entry entry(type, tagNOTATION{kNotationFamily});
    entry.Init("main.zek", key, "1,2", 3);
    EXPECT_EQ(entry.IsValid(&section, 0), 0U);
    EXPECT_EQ(TakeMessages(), "Error[main.zek:3]: [DEVICE]:" + key + ", Entry value type is invalid.\n");
    EXPECT_EQ(entry.m_vstrSubStr.size(), 2U);
}

TEST_F(Conversion, RefusesATypeOfAnotherClass) {
    CZEKSection& section = *CZEKSection::Create("main.zek", "DEVICE", 1);
    ExpectWrongClass<CGEDWORD>(section, kName, "NAME");
    ExpectWrongClass<CGESTRING>(section, kSensors, "SENSORS");
    ExpectWrongClass<CGESTRINGLIST>(section, kRepeaterItem, "R");
    ExpectWrongClass<CGEREPEATER>(section, kValue, "VALUE");
    ExpectWrongClass<CGEVALUE>(section, kDefinition, "X");
    // A bad name is told before a bad class.
    CGEDWORD entry(kName, tagNOTATION{kRequired});
    entry.Init("main.zek", "NAMES", "1", 3);
    EXPECT_EQ(entry.IsValid(&section, 0), 0U);
    EXPECT_EQ(Messages(), "Error[main.zek:3]: [DEVICE]:NAMES, Entry name is invalid.\n");
}

}  // namespace zek::test
