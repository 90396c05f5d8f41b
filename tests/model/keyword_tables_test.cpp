#include "model/keyword_table.h"

#include "model/section_kinds.h"
#include "support/process_test.h"

namespace zek::test {

namespace {

struct Keyword {
    const char* keyword;
    unsigned type;
};

constexpr Keyword kEntryKeywords[] = {
    {"VERSION", 0x10020001},
    {"TYPE", 0x10028002},
    {"FLAG", 0x10028003},
    {"SOUTHBRIDGE", 0x10028004},
    {"NORTHBRIDGE", 0x10028005},
    {"ZEKLOOP", 0x10028006},
    {"CHILDGROUP", 0x10028007},
    {"ID", 0x10028008},
    {"INITFLAG", 0x10028009},
    {"CONTROLMASK", 0x1002800a},
    {"THEORY", 0x1002800b},
    {"THRESHOLD_FH", 0x1002800c},
    {"THRESHOLD_WH", 0x1002800d},
    {"THRESHOLD_FL", 0x1002800e},
    {"THRESHOLD_WL", 0x1002800f},
    {"ARGNUMBER", 0x10028010},
    {"PID", 0x10028011},
    {"", 0x10020012},
    {"", 0x10010001},
    {"MODEL", 0x10020013},
    {"PARENT", 0x10020014},
    {"NAME", 0x10020015},
    {"DEFINEWORD", 0x10020016},
    {"", 0x10020017},
    {"P_", 0x10020018},
    {"FILE", 0x10020019},
    {"VALUE", 0x10080000},
    {"G_", 0x10080001},
    {"VALUE_INIT", 0x10080002},
    {"VALUE_DEINIT", 0x10080003},
    {"VALUE_ENTRY", 0x10080004},
    {"VALUE_EXIT", 0x10080005},
    {"VALUE_IPMI", 0x10080006},
    {"VALUE_", 0x10080007},
    {"VALUE_", 0x10080008},
    {"SENSORS", 0x10048001},
    {"", 0x10100001},
};

constexpr Keyword kSectionKeywords[] = {
    {"QUORZEK", 0x20000001},   {"PROPERTY", 0x20000002}, {"SYSTEM", 0x20000003},   {"GROUP", 0x20000004},
    {"SENSOR", 0x20000005},    {"DEVICE", 0x20000006},   {"ACTION", 0x20000007},   {"TABLE", 0x20000008},
    {"TAVRGROUP", 0x20000009}, {"GLOBAL", 0x2000000a},   {"REPEATER", 0x2000000b}, {"DEFINE", 0x2000000c},
    {"IFDEF", 0x2000000d},     {"INCLUDE", 0x2000000e},
};

/// The table as a host reads it: rows of a pointer and a word, from its first byte on.
template <std::size_t Size>
void ExpectTable(const void* published, unsigned count, const Keyword (&expected)[Size]) {
    ASSERT_EQ(count, Size);
    const auto* rows = static_cast<const tagNTMAP*>(published);
    for (std::size_t i = 0; i < Size; ++i) {
        SCOPED_TRACE(i);
        EXPECT_STREQ(rows[i].pszName, expected[i].keyword);
        EXPECT_EQ(rows[i].dwID, expected[i].type);
    }
}

}  // namespace

TEST(EntryKeywordTable, Has37Rows) { ExpectTable(&g_NTMapEntry, g_dwNTMEntry, kEntryKeywords); }

TEST(SectionKeywordTable, Has14Rows) { ExpectTable(&g_NTMapSect, g_dwNTMSect, kSectionKeywords); }

}  // namespace zek::test
