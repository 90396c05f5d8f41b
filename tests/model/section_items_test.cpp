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

/// Adds an entry to a section as a host may, at a position.
template <class Kind>
void Insert(CZEKSection& section, unsigned type, unsigned notation, std::ptrdiff_t position) {
    section.m_vpEntry.insert(section.m_vpEntry.begin() + position, new Kind(type, static_cast<tagNOTATION>(notation)));
}

TEST_F(Item, IsMatchedByAnEntryThatTheHostAdded) {
    CZEKSection* group = CZEKSection::Create("main.zek", "GROUP", 1);
    Insert<CGESTRING>(*group, 0x10020013, 2, 7);
    EXPECT_EQ(SetEntry(*group, "MODEL", "x", 2), 1U);
    EXPECT_EQ(SetEntry(*group, "MODEL", "y", 3), 1U);
    EXPECT_EQ(EntriesOf(*group, 7), "STRING 10020013 2 MODEL 2 [x]\nSTRING 10020013 2 MODEL 3 [y]\n");
}

TEST_F(Item, IsMatchedByADeclaredEntryWhereverTheHostHasMovedIt) {
    CZEKSection* group = CZEKSection::Create("main.zek", "GROUP", 1);
    Insert<CGESTRING>(*group, 0x10020013, 2, 0);
    EXPECT_EQ(SetEntry(*group, "VALUE_EXIT", "x", 2), 1U);
    EXPECT_EQ(EntriesOf(*group, 7), "VALUE 10080005 6 VALUE_EXIT 2 [x]\n");
    CZEKSection* sensor = CZEKSection::Create("main.zek", "SENSOR", 1);
    sensor->m_dwType = kTableSection;
    EXPECT_EQ(SetEntry(*sensor, "ID", "1", 3), 1U);
    EXPECT_EQ(sensor->m_vpEntry[2]->m_strName, "ID");
    EXPECT_EQ(sensor->m_vpEntry.size(), 17U);
}

TEST_F(Item, IsMatchedByTheEntryThatIsNoFamilyWhereTheDeclaredOneHasBecomeOne) {
    CZEKSection* group = CZEKSection::Create("main.zek", "GROUP", 1);
    group->m_vpEntry[1]->m_eNotation = static_cast<tagNOTATION>(9);
    Insert<CGESTRING>(*group, kName, 1, 7);
    EXPECT_EQ(SetEntry(*group, "NAME", "x", 2), 1U);
    EXPECT_EQ(EntriesOf(*group, 7), "STRING 10020015 1 NAME 2 [x]\n");
}

TEST_F(Item, IsMatchedByTheSecondRowOfItsKeywordToo) {
    CZEKSection* action = CZEKSection::Create("main.zek", "ACTION", 1);
    Insert<CGEVALUE>(*action, kOwnValue, 6, 4);
    EXPECT_EQ(SetEntry(*action, "VALUE_", "x", 2), 1U);
    EXPECT_EQ(EntriesOf(*action, 4), "VALUE 10080008 6 VALUE_ 2 [x]\n");
    Insert<CGEVALUE>(*action, kActionValue, 6, 5);
    EXPECT_EQ(SetEntry(*action, "VALUE_", "y", 3), 1U);
    EXPECT_EQ(EntriesOf(*action, 4), "VALUE 10080008 6 VALUE_ 2 [x]\nVALUE 10080007 6 VALUE_ 3 [y]\n")
        << "the first row comes first";
}

TEST_F(Item, OfAnIncludedFileIsMatchedByTheBaseToo) {
    CZEKSection* include = CZEKSection::Create("main.zek", "INCLUDE", 1);
    SetEntry(*include, "FILE", "none.zek", 2);
    EXPECT_EQ(include->CZEKSection::SetEntry("main.zek", "FILE", "z", 3), 1U);
    EXPECT_EQ(EntriesOf(*include), "STRING 10020019 2 FILE 2 [none.zek]\nSTRING 10020019 2 FILE 3 [z]\n");
}

TEST_F(Item, OfAKindWithoutDeclaredKeysIsMatchedByNothing) {
    for (const char* kind : {"PROPERTY", "GLOBAL", "REPEATER"}) {
        SCOPED_TRACE(kind);
        CZEKSection* section = CZEKSection::Create("main.zek", kind, 1);
        Insert<CGESTRING>(*section, kName, 1, 0);
        EXPECT_EQ(SetEntry(*section, "NAME", "x", 2), 1U);
        EXPECT_EQ(section->m_vpEntry[0]->m_strName, "");
        EXPECT_EQ(section->m_vpEntry.size(), 2U);
    }
}

TEST_F(Item, OfAnEmptyKeyIsMatchedByNoKeyword) {
    CZEKSection section;
    Insert<CGESTRING>(section, kTableRow, 1, 0);
    EXPECT_EQ(SetEntry(section, "", "x", 1), 0U);
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
