// The kinds of sections that the command knows, against those of the library.
#include "debug_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "model/keyword_table.h"
#include "model/section.h"
#include "model/section_kinds.h"
#include "zekcomp/zekcomp.h"

namespace zek::tool {

namespace {

TEST(ZekDebugLayout, KindsAreTheLibrarysOwn) {
    for (const DebugKind& kind : kDebugKinds) {
        SCOPED_TRACE(kind.keyword);
        CZEKSection* section = CZEKSection::Create("a.zek", kind.keyword, 1);
        ASSERT_NE(section, nullptr);
        EXPECT_EQ(DebugKindOf(section->m_dwType), &kind);
        EXPECT_EQ(section->m_eNotation, kind.notation);
        ASSERT_EQ(section->m_vpEntry.size(), kind.declared.size());
        for (std::size_t i = 0; i < kind.declared.size(); ++i) {
            const DebugKey& key = kind.declared[i];
            const CZEKEntry& entry = *section->m_vpEntry[i];
            EXPECT_EQ(entry.m_dwType, key.type);
            EXPECT_EQ(entry.m_eNotation, key.notation);
            const auto row = std::find_if(g_NTMapEntry.begin(), g_NTMapEntry.end(),
                                          [&](const tagNTMAP& keyword) { return keyword.dwID == key.type; });
            ASSERT_NE(row, g_NTMapEntry.end());
            EXPECT_STREQ(row->pszName, key.name);
            // Given twice. The first item of an [IFDEF] is its word, the second a definition.
            section->SetEntry("a.zek", key.name, "1", 2);
            section->SetEntry("a.zek", key.name, "1", 2);
            const CZEKEntry& repeated = *section->m_vpEntry.back();
            EXPECT_EQ(repeated.m_dwType, kind.Defines() ? kDefinitionKey : key.type);
            EXPECT_EQ(repeated.m_eNotation, kind.Defines() ? AddedNotation(kDefinitionKey) : kRepeatedNotation);
        }
        std::vector<unsigned> added;
        for (const char* key : {"P_x", "1"}) {
            const std::size_t before = section->m_vpEntry.size();
            section->SetEntry("a.zek", key, "missing", 3);
            if (section->m_vpEntry.size() == before) continue;
            added.push_back(section->m_vpEntry.back()->m_dwType);
            EXPECT_EQ(section->m_vpEntry.back()->m_eNotation, AddedNotation(added.back()));
        }
        std::vector<unsigned> known;
        if (kind.added || kind.addsProperties) known = {kind.addsProperties ? kPropertyKey : kind.added};
        if (kind.added) known.push_back(kind.added);
        if (kind.addsProperties && !kind.added) known.push_back(kPropertyKey);
        EXPECT_EQ(added, known);
    }
    gccCompEnd();
    EXPECT_EQ(DebugKindOf(0x2000000f), nullptr);
    EXPECT_EQ(DebugKindOf(0x20000000), nullptr);
}

}  // namespace

}  // namespace zek::tool
