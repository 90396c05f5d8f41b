#include "model/section_kinds.h"

#include "model/section_text.h"
#include "support/process_test.h"

namespace zek::test {

namespace {

template <class Kind>
CZEKSection* Make() {
    return new Kind;
}

struct KindRow {
    const char* name;  ///< the keyword
    unsigned type;
    unsigned notation;
    const std::type_info& kind;
    const SectionList& list;
    CZEKSection* (*make)();
    const char* declared;
};

template <class Kind>
KindRow Row(const char* keyword, unsigned type, unsigned notation, const char* declared) {
    return {keyword, type, notation, typeid(Kind), Kind::m_sHeader, Make<Kind>, declared};
}

constexpr char kSystemEntries[] =
    "STRING 10028002 1\nSTRING 10020013 1\nSTRING 10028003 1\nSTRING 10028004 2\nSTRING 10028005 2\nSTRING 10028006 "
    "1\n";
constexpr char kGroupEntries[] =
    "STRING 10020014 1\nSTRING 10020015 1\nSTRING 10028007 1\n"
    "VALUE 10080002 6\nVALUE 10080003 6\nVALUE 10080004 6\nVALUE 10080005 6\n";
constexpr char kSensorEntries[] =
    "STRING 10020014 1\nSTRING 10020015 1\nSTRING 10028008 1\nSTRING 10028002 1\nSTRING 10028009 1\nSTRING 1002800a 1\n"
    "STRING 1002800b 2\nSTRING 1002800c 2\nSTRING 1002800d 2\nSTRING 1002800e 2\nSTRING 1002800f 2\n"
    "VALUE 10080002 6\nVALUE 10080003 6\nVALUE 10080004 6\nVALUE 10080005 6\nVALUE 10080000 37\nVALUE 10080006 38\n";
constexpr char kDeviceEntries[] = "STRING 10020015 1\nSTRING 10028008 1\nSTRING 10028009 1\nSTRING 1002800a 1\n";
constexpr char kActionEntries[] = "STRING 10020015 1\nSTRING 10028010 2\nVALUE 10080006 38\nVALUE 10080000 38\n";
constexpr char kTableEntries[] = "STRING 10020015 1\nSTRING 10028002 1\n";
constexpr char kTavrGroupEntries[] = "STRING 10020015 1\nSTRING 10028008 1\nSTRING 10028011 1\nSTRINGLIST 10048001 1\n";

}  // namespace

class EachSectionKind : public ProcessTest, public testing::WithParamInterface<KindRow> {};

TEST_P(EachSectionKind, IsMadeFromItsKeywordWithItsDeclaredEntries) {
    CZEKObj other;
    other.SetFile("first.zek");
    CZEKSection* section = CZEKSection::Create("dir\\main.zek", GetParam().name, 12);
    ASSERT_NE(section, nullptr);
    EXPECT_TRUE(typeid(*section) == GetParam().kind);
    EXPECT_EQ(section->m_dwType, GetParam().type);
    EXPECT_EQ(section->m_eNotation, GetParam().notation);
    EXPECT_EQ(section->m_strName, GetParam().name);
    EXPECT_EQ(section->m_dwLine, 12U);
    EXPECT_EQ(section->m_dwFile, 1U);
    EXPECT_EQ(section->GetFile(1), "dir\\");
    EXPECT_EQ(EntriesOf(*section), GetParam().declared);
    for (const CZEKEntry* entry : section->m_vpEntry) EXPECT_EQ(entry->m_ZekEntryData.GetData(), nullptr);
    EXPECT_EQ(Messages(), "");
}

TEST_P(EachSectionKind, IsListedInOrderAndItsListOnce) {
    CZEKSection* first = CZEKSection::Create("main.zek", GetParam().name, 1);
    CZEKSection* second = GetParam().make();
    CZEKSection* third = CZEKSection::Create("main.zek", GetParam().name, 9);
    EXPECT_EQ(GetParam().list, SectionList({first, second, third}));
    ASSERT_EQ(CZEKSection::m_svpHSection.size(), 1U);
    EXPECT_EQ(CZEKSection::m_svpHSection[0], &GetParam().list);
    EXPECT_EQ(FindSectHead(GetParam().type), &GetParam().list);
    CZEKSection::Destory();
    EXPECT_EQ(GetParam().list, SectionList());
    ASSERT_EQ(CZEKSection::m_svpHSection.size(), 1U) << "the kind stays registered";
    EXPECT_EQ(FindSectHead(GetParam().type), nullptr);
}

TEST_P(EachSectionKind, DeclaresItsEntriesAlsoWhenMadeToBeRestored) {
    const CZEKSection* section = GetParam().make();
    EXPECT_TRUE(typeid(*section) == GetParam().kind);
    EXPECT_EQ(section->m_strName, "");
    EXPECT_EQ(section->m_dwFile, 0U);
    EXPECT_EQ(EntriesOf(*section), GetParam().declared);
}

INSTANTIATE_TEST_SUITE_P(
    Kind, EachSectionKind,
    testing::Values(
        Row<CGSQUORZEK>("QUORZEK", 0x20000001, 1, "STRING 10020001 1\n"),
        Row<CGSPROPERTY>("PROPERTY", 0x20000002, 2, ""), Row<CGSSYSTEM>("SYSTEM", 0x20000003, 1, kSystemEntries),
        Row<CGSGROUP>("GROUP", 0x20000004, 2, kGroupEntries), Row<CGSSENSOR>("SENSOR", 0x20000005, 2, kSensorEntries),
        Row<CGSDEVICE>("DEVICE", 0x20000006, 2, kDeviceEntries),
        Row<CGSACTION>("ACTION", 0x20000007, 2, kActionEntries), Row<CGSTABLE>("TABLE", 0x20000008, 2, kTableEntries),
        Row<CGSTAVRGROUP>("TAVRGROUP", 0x20000009, 1, kTavrGroupEntries), Row<CGSGLOBAL>("GLOBAL", 0x2000000a, 2, ""),
        Row<CGSREPEATER>("REPEATER", 0x2000000b, 2, ""), Row<CGSDEFINE>("DEFINE", 0x2000000c, 2, ""),
        Row<CGSIFDEF>("IFDEF", 0x2000000d, 2, "STRING 10020016 1\n"), Row<CGSINCLUDE>("INCLUDE", 0x2000000e, 2, "")),
    RowName());

using SectionKeyword = ProcessTest;

TEST_F(SectionKeyword, IsMatchedExactly) {
    for (const char* name : {"", "group", "Group", "GROUP ", " GROUP", "[GROUP]", "GROUPS", "GROU", "FOO"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(CZEKSection::Create("main.zek", name, 1), nullptr);
    }
    EXPECT_EQ(CZEKSection::m_svpHSection, std::vector<SectionList*>());
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, std::vector<std::string>()) << "no file is recorded for an unknown keyword";
    EXPECT_EQ(Messages(), "");
}

using SectionConstructor = ProcessTest;

TEST_F(SectionConstructor, KeepsTheTypeIdAndNotationThatItIsGiven) {
    const auto* group = new CGSGROUP(0x20000099, static_cast<tagNOTATION>(37));
    EXPECT_EQ(group->m_dwType, 0x20000099U);
    EXPECT_EQ(group->m_eNotation, 37U);
    EXPECT_EQ(EntriesOf(*group), kGroupEntries);
    EXPECT_EQ(FindSectHead(0x20000099), &CGSGROUP::m_sHeader) << "a list is known by its first section";
    EXPECT_EQ(FindSectHead(0x20000004), nullptr);
}

}  // namespace zek::test
