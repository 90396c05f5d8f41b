#include "long_description.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "compilation.h"
#include "compile/compile.h"
#include "compile/image_stamp.h"
#include "compile/tables.h"
#include "memory_file.h"
#include "process_state.h"
#include "zekcomp/image.h"
#include "zekcomp/zekcomp.h"

namespace zek::fuzz {
namespace {

TEST(LongDescription, GivesAnImageThatIsLookedUpByItsIndexes) {
    const Compilation compilation = Compile(LongDescription());
    ASSERT_TRUE(compilation.accepted) << compilation.messages;
    MemoryFile file;
    file.Write(compilation.compiled);
    ASSERT_EQ(gcInit(file.Path(), nullptr), 1U);
    unsigned many = 0;
    for (unsigned kind = kImageSectionClass; kind <= kImageRepeater; ++kind)
        many += gcGetSectCount(kind) > kWalkedAtOnce;
    EXPECT_EQ(many, 7U) << "[PROPERTY], [GROUP], [SENSOR], [DEVICE], [ACTION], [TABLE], [TAVRGROUP]";
    std::size_t longSections = 0;
    std::size_t longLists = 0;
    for (const tagGCSECT* section : g_GCHead) {
        longSections += section->vEntries.size() > kWalkedAtOnce;
        for (const tagGCENTRY& entry : section->vEntries) longLists += entry.vdwValues.size() > kWalkedAtOnce;
    }
    EXPECT_EQ(longSections, 7U) << "[SYSTEM], [PROPERTY], [SENSOR], [DEVICE], [ACTION], [GLOBAL], [REPEATER]";
    EXPECT_EQ(longLists, 1U) << "SENSORS";
    for (const IdentifierTable& table : kIdentifierTables) {
        const std::size_t keys = table.names ? table.names->size() : table.numbers ? table.numbers->size() : kMany;
        EXPECT_GT(keys, kWalkedAtOnce) << table.classWord;
    }
    ForgetEverything();
}

TEST(LongListDescription, GivesShortImagesThatAreLookedUpByTheirIndexes) {
    const Compilation compilation = Compile(LongListDescription());
    ASSERT_TRUE(compilation.accepted) << compilation.messages;
    EXPECT_LE(std::max(compilation.compiled.size(), compilation.debug.size()), 16U << 10);
    MemoryFile file;
    file.Write(compilation.compiled);
    ASSERT_EQ(gcInit(file.Path(), nullptr), 1U);
    EXPECT_GT(g_GCHead.size(), kWalkedAtOnce);
    EXPECT_GT(g_GCHead.at(0)->vEntries.size(), kWalkedAtOnce);
    EXPECT_GT(g_tblProperty.size(), kWalkedAtOnce);
    ForgetEverything();
}

}  // namespace
}  // namespace zek::fuzz
