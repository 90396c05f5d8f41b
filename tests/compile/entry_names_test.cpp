#include "compile/image_bytes.h"

namespace zek::test {

using SectionIdentifier = ProcessTest;
using EntryName = ProcessTest;

namespace {

struct Named {
    unsigned type;
    const char* key;
    unsigned name;
};

void ExpectNames(std::initializer_list<Named> rows) {
    for (const Named& row : rows) {
        char trace[64];
        std::snprintf(trace, sizeof trace, "%08x %s", row.type, row.key);
        SCOPED_TRACE(trace);
        EXPECT_EQ(GetEntryName(row.type, row.key), row.name);
    }
}

}  // namespace

TEST_F(SectionIdentifier, FollowsTheSectionKindUpToRepeater) {
    for (unsigned kind = 1; kind <= 11; ++kind) {
        SCOPED_TRACE(kind);
        tagGCSECT* section = CreateGCSect(0x20000000 + kind);
        ASSERT_NE(section, nullptr);
        EXPECT_EQ(section->dwSect, 0x01000000 + kind);
        EXPECT_TRUE(section->vEntries.empty());
        delete section;
    }
    EXPECT_TRUE(g_GCHead.empty()) << "the caller owns it";
}

TEST_F(SectionIdentifier, IsMissingForEveryOtherKind) {
    for (unsigned kind :
         {0x2000000cU, 0x2000000dU, 0x2000000eU, 0x2000000fU, 0x20000000U, 0U, 5U, 0x10020015U, 0x21000005U}) {
        EXPECT_EQ(CreateGCSect(kind), nullptr) << kind;
    }
}

TEST_F(EntryName, OfAKeywordIsItsOwnNumberWhateverTheKey) {
    ExpectNames({{0x10020001, "VERSION", 0x02000001},      {0x10028002, "TYPE", 0x02000002},
                 {0x10028003, "FLAG", 0x02000003},         {0x10028004, "SOUTHBRIDGE", 0x02000004},
                 {0x10028005, "NORTHBRIDGE", 0x02000005},  {0x10028006, "ZEKLOOP", 0x02000006},
                 {0x10028007, "CHILDGROUP", 0x02000007},   {0x10028008, "ID", 0x02000008},
                 {0x10028009, "INITFLAG", 0x02000009},     {0x1002800a, "CONTROLMASK", 0x0200000a},
                 {0x1002800b, "THEORY", 0x0200000b},       {0x1002800c, "THRESHOLD_FH", 0x0200000c},
                 {0x1002800d, "THRESHOLD_WH", 0x0200000d}, {0x1002800e, "THRESHOLD_FL", 0x0200000e},
                 {0x1002800f, "THRESHOLD_WL", 0x0200000f}, {0x10028010, "ARGNUMBER", 0x02000010},
                 {0x10028011, "PID", 0x02000011},          {0x10020013, "MODEL", 0x02000013},
                 {0x10020014, "PARENT", 0x02000014},       {0x10020015, "anything", 0x02000015},
                 {0x10048001, "SENSORS", 0x02000016}});
}

TEST_F(EntryName, OfAFreeNameIsItsIdentifierInTheTableOfItsKind) {
    InsertTbl(g_tblProperty, g_idxProperty, "P_Maker", 1);
    InsertTbl(g_tblProperty, g_idxProperty, "Maker", 1);
    InsertTbl(g_tblGlobal, g_idxGlobal, "X", 1);
    for (const char* name : {"IPMI", "", "INIT", "DEINIT", "ENTRY", "EXIT", "7", "OWN"}) {
        InsertTbl(g_tblValue, g_idxValue, name, 1);
    }
    InsertTbl(g_tblRepeater, g_idxRepeater, "G_rep", 1);
    ExpectNames({{0x10020017, "P_Maker", 0x03000000},
                 {0x10020017, "Maker", 0x03000001},
                 {0x10020018, "P_Maker", 0x03000001},
                 {0x10080000, "VALUE", 0x05000001},
                 {0x10080001, "G_X", 0x04000000},
                 {0x10080002, "VALUE_INIT", 0x05000002},
                 {0x10080003, "VALUE_DEINIT", 0x05000003},
                 {0x10080004, "VALUE_ENTRY", 0x05000004},
                 {0x10080005, "VALUE_EXIT", 0x05000005},
                 {0x10080006, "VALUE_IPMI", 0x05000000},
                 {0x10080007, "VALUE_7", 0x05000006},
                 {0x10080008, "VALUE_OWN", 0x05000007},
                 {0x10100001, "G_rep", 0x06000000}});
}

TEST_F(EntryName, OfAnUnnumberedNameIsZeroAndTheNameIsAddedUnnumbered) {
    ExpectNames({{0x10020017, "a", 0},
                 {0x10020018, "P_b", 0},
                 {0x10080001, "G_c", 0},
                 {0x10080008, "VALUE_d", 0},
                 {0x10080000, "VALUE", 0},
                 {0x10100001, "e", 0}});
    EXPECT_EQ(g_tblProperty, (std::map<std::string, unsigned>{{"a", 0}, {"b", 0}}));
    EXPECT_EQ(g_tblGlobal, (std::map<std::string, unsigned>{{"c", 0}}));
    EXPECT_EQ(g_tblValue, (std::map<std::string, unsigned>{{"", 0}, {"d", 0}}));
    EXPECT_EQ(g_tblRepeater, (std::map<std::string, unsigned>{{"e", 0}}));
    EXPECT_EQ(g_idxProperty, 0x03000000U);
}

TEST_F(EntryName, OfEveryOtherKindIsZero) {
    ExpectNames({{0x10020016, "DEFINEWORD", 0},
                 {0x10020019, "FILE", 0},
                 {0x10020012, "7", 0},
                 {0x10010001, "CONST", 0},
                 {0, "", 0},
                 {0x1002001a, "NAME", 0},
                 {0x10080009, "VALUE_x", 0},
                 {0x20000004, "GROUP", 0},
                 {0x10200001, "x", 0}});
}

}  // namespace zek::test
