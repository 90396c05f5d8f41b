#include "model/section.h"
#include "model/section_text.h"
#include "support/process_test.h"

namespace zek::test {

namespace {

struct ItemsRow {
    const char* name;  ///< the section keyword
    unsigned taken;    ///< what SetEntry answers to an undeclared key
    const char* added;
};

/// Keys that none of the kinds declares, in this order on lines 1, 2, ...
constexpr const char* kUndeclaredKeys[] = {"P_A", "P_", "P", "VALUE_3", "G_X", "7.9", "DEFINEWORD", "name", ""};

constexpr char kAllProperties[] =
    "STRING 10020018 10 P_A 1 [v]\nSTRING 10020018 10 P_ 2 [v]\nSTRING 10020018 10 P 3 [v]\n"
    "STRING 10020018 10 VALUE_3 4 [v]\nSTRING 10020018 10 G_X 5 [v]\nSTRING 10020018 10 7.9 6 [v]\n"
    "STRING 10020018 10 DEFINEWORD 7 [v]\nSTRING 10020018 10 name 8 [v]\nSTRING 10020018 10\n";
constexpr char kValuesButPApart[] =
    "STRING 10020018 10 P_A 1 [v]\nSTRING 10020018 10 P_ 2 [v]\nVALUE 10080008 46 P 3 [v]\n"
    "VALUE 10080008 46 VALUE_3 4 [v]\nVALUE 10080008 46 G_X 5 [v]\nVALUE 10080008 46 7.9 6 [v]\n"
    "VALUE 10080008 46 DEFINEWORD 7 [v]\nVALUE 10080008 46 name 8 [v]\nVALUE 10080008 46\n";

/// Every undeclared key as an entry of the same class, type and notation.
std::string All(const std::string& entry) {
    std::string text;
    unsigned line = 0;
    for (const std::string key : kUndeclaredKeys) {
        ++line;
        text += entry + (key.empty() ? "" : ' ' + key + ' ' + std::to_string(line) + " [v]") + '\n';
    }
    return text;
}

unsigned SetEntry(CZEKSection& section, const std::string& key, const std::string& value, unsigned line) {
    return section.SetEntry("main.zek", key, value, line);
}

}  // namespace

class UndeclaredKey : public ProcessTest, public testing::WithParamInterface<ItemsRow> {};

TEST_P(UndeclaredKey, BecomesWhatItsSectionKindSays) {
    CZEKSection* section = CZEKSection::Create("main.zek", GetParam().name, 1);
    const std::size_t declared = section->m_vpEntry.size();
    const std::string before = EntriesOf(*section);
    unsigned line = 0;
    for (const char* key : kUndeclaredKeys) {
        SCOPED_TRACE(key);
        EXPECT_EQ(SetEntry(*section, key, "v", ++line), GetParam().taken);
    }
    EXPECT_EQ(EntriesOf(*section, declared), GetParam().added);
    EXPECT_EQ(EntriesOf(*section).substr(0, before.size()), before) << "no declared entry is filled";
    EXPECT_EQ(Messages(), "");
}

const std::string kTableRows = All("STRING 10020012 10");
const std::string kActionValues = All("VALUE 10080007 14");
const std::string kProperties = All("STRING 10020017 10");
const std::string kGlobals = All("VALUE 10080001 46");
const std::string kRepeaterItems = All("REPEATER 10100001 10");

INSTANTIATE_TEST_SUITE_P(
    In, UndeclaredKey,
    testing::Values(ItemsRow{"QUORZEK", 0, ""}, ItemsRow{"GROUP", 0, ""}, ItemsRow{"SYSTEM", 1, kAllProperties},
                    ItemsRow{"TAVRGROUP", 1, kAllProperties}, ItemsRow{"TABLE", 1, kTableRows.c_str()},
                    ItemsRow{"ACTION", 1, kActionValues.c_str()}, ItemsRow{"DEVICE", 1, kValuesButPApart},
                    ItemsRow{"SENSOR", 1, kValuesButPApart}, ItemsRow{"PROPERTY", 1, kProperties.c_str()},
                    ItemsRow{"GLOBAL", 1, kGlobals.c_str()}, ItemsRow{"REPEATER", 1, kRepeaterItems.c_str()}),
    RowName());

using Item = ProcessTest;

TEST_F(Item, FillsTheDeclaredEntryOfItsKey) {
    CZEKSection* section = CZEKSection::Create("main.zek", "TAVRGROUP", 1);
    EXPECT_EQ(SetEntry(*section, "SENSORS", "1,2", 5), 1U);
    EXPECT_EQ(section->SetEntry("other.zek", "NAME", "", 6), 1U);
    EXPECT_EQ(EntriesOf(*section),
              "STRING 10020015 1 NAME 6\nSTRING 10028008 1\nSTRING 10028011 1\n"
              "STRINGLIST 10048001 1 SENSORS 5 [1] [2]\n");
    EXPECT_EQ(section->m_vpEntry[0]->GetFile(0), "other.zek");
    EXPECT_EQ(section->m_vpEntry[3]->GetFile(0), "main.zek");
    EXPECT_EQ(section->m_vpEntry[3]->m_ZekEntryData.GetType(), 0x10048001U);
}

TEST_F(Item, OfAKeyGivenAgainIsKeptAsOneMoreEntry) {
    CZEKSection* group = CZEKSection::Create("main.zek", "GROUP", 1);
    for (const char* value : {"first", "second", "third"}) EXPECT_EQ(SetEntry(*group, "NAME", value, 2), 1U);
    for (const char* value : {"A,1", "B,2"}) EXPECT_EQ(SetEntry(*group, "VALUE_INIT", value, 3), 1U);
    EXPECT_EQ(EntriesOf(*group),
              "STRING 10020014 1\nSTRING 10020015 1 NAME 2 [first]\nSTRING 10028007 1\n"
              "VALUE 10080002 6 VALUE_INIT 3 [A] [1]\nVALUE 10080003 6\nVALUE 10080004 6\nVALUE 10080005 6\n"
              "STRING 10020015 2 NAME 2 [second]\nSTRING 10020015 2 NAME 2 [third]\n"
              "VALUE 10080002 2 VALUE_INIT 3 [B] [2]\n");
    CZEKSection* view = CZEKSection::Create("main.zek", "TAVRGROUP", 1);
    SetEntry(*view, "SENSORS", "1", 2);
    SetEntry(*view, "SENSORS", "2", 3);
    EXPECT_EQ(EntriesOf(*view, 4), "STRINGLIST 10048001 2 SENSORS 3 [2]\n");
}

TEST_F(Item, OfAFamilyGivenAgainIsKeptAsOneMoreEntry) {
    CZEKSection* table = CZEKSection::Create("main.zek", "TABLE", 1);
    SetEntry(*table, "7", "1", 2);
    SetEntry(*table, "7", "2", 3);
    EXPECT_EQ(EntriesOf(*table, 2), "STRING 10020012 10 7 2 [1]\nSTRING 10020012 10 7 3 [2]\n");
}

TEST_F(Item, OfAKeyThatOnlyAnotherKindDeclaresCountsAsUndeclared) {
    CZEKSection* group = CZEKSection::Create("main.zek", "GROUP", 1);
    for (const char* key : {"VERSION", "ID", "VALUE", "SENSORS", "FILE"})
        EXPECT_EQ(SetEntry(*group, key, "1", 2), 0U) << key;
    EXPECT_EQ(group->m_vpEntry.size(), 7U);
    CZEKSection* device = CZEKSection::Create("main.zek", "DEVICE", 1);
    EXPECT_EQ(SetEntry(*device, "TYPE", "1", 2), 1U);
    EXPECT_EQ(SetEntry(*device, "VALUE_INIT", "1", 3), 1U);
    EXPECT_EQ(EntriesOf(*device, 4), "VALUE 10080008 46 TYPE 2 [1]\nVALUE 10080008 46 VALUE_INIT 3 [1]\n");
    CZEKSection* property = CZEKSection::Create("main.zek", "PROPERTY", 1);
    EXPECT_EQ(SetEntry(*property, "NAME", "1", 2), 1U);
    EXPECT_EQ(EntriesOf(*property), "STRING 10020017 10 NAME 2 [1]\n");
}

TEST_F(Item, OfTheBaseIsNeverMatchedWithAFamilyEntry) {
    CZEKSection* system = CZEKSection::Create("main.zek", "SYSTEM", 1);
    SetEntry(*system, "P_", "1", 2);
    EXPECT_EQ(system->CZEKSection::SetEntry("main.zek", "P_", "2", 3), 0U);
    EXPECT_EQ(system->CZEKSection::SetEntry("main.zek", "MODEL", "m", 4), 1U);
    EXPECT_EQ(EntriesOf(*system, 6), "STRING 10020018 10 P_ 2 [1]\n");
}

TEST_F(Item, IsMatchedByTheEntriesOfASectionThatTheHostBuilt) {
    CZEKSection section;
    section.m_vpEntry.push_back(new CGESTRING(0x10020015, tagNOTATION{8}));
    EXPECT_EQ(SetEntry(section, "NAME", "a", 1), 0U) << "a family entry is no declared one";
    section.m_vpEntry.push_back(new CGESTRING(0x10020015, tagNOTATION{1}));
    EXPECT_EQ(SetEntry(section, "NAME", "b", 2), 1U);
    EXPECT_EQ(EntriesOf(section), "STRING 10020015 8\nSTRING 10020015 1 NAME 2 [b]\n");
}

}  // namespace zek::test
