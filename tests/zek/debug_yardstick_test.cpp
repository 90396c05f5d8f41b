// The verification of debug images, on those of generated sources.
#include "debug_check.h"
#include "yardstick/generated_source.h"

namespace zek::test {

namespace {

using DebugImageOfGeneratedSource = GeneratedSource;

/// An image says what a source says, be it sound or not.
TEST_P(DebugImageOfGeneratedSource, IsVerified) {
    unsigned passed = 0;
    std::size_t entries = 0;
    ForEachSeed([&](unsigned seed) {
        ASSERT_TRUE(Parse());
        passed += gccCheck();
        ASSERT_EQ(gccOutputD("debug"), 1U);
        gccCompEnd();
        const std::string image = Read("debug");
        const tool::DebugCheck check = tool::CheckDebugImage(image);
        EXPECT_FALSE(check.failure) << check.failure->Place() << ": " << check.failure->Sentence();
        // The first image of the process alone has the list of source files.
        EXPECT_EQ(check.notes, seed % kSeedsInShard == 0 ? 0U : 1U);
        entries += check.entries;
    });
    EXPECT_GT(passed, 0U) << "some sources are sound";
    EXPECT_LT(passed, kSeedsInShard) << "some are not";
    EXPECT_GT(entries, 10 * kSeedsInShard);
}

INSTANTIATE_TEST_SUITE_P(Shard, DebugImageOfGeneratedSource, testing::Range(0U, 8U));

}  // namespace

}  // namespace zek::test
