#include "heap_watch.h"

#include <gtest/gtest.h>

#include <memory>

#include "model/large_pages.h"

namespace zek::fuzz {
namespace {

constexpr std::size_t kPiece = std::size_t{1} << 20;

#if defined(__SANITIZE_ADDRESS__)
// Where nothing tells of pieces, nothing is watched.

TEST(HeapWatch, CountsWhatIsInUseAtOnceAndNotWhatWasGivenBack) {
    const auto before = std::make_unique<char[]>(kPiece);
    const HeapWatch heap;
    for (int i = 0; i < 10; ++i) std::make_unique<char[]>(kPiece);
    EXPECT_EQ(heap.Peak(), kPiece);
    const auto one = std::make_unique<char[]>(kPiece);
    std::make_unique<char[]>(2 * kPiece);
    EXPECT_EQ(heap.Peak(), 3 * kPiece);
    EXPECT_EQ(HeapWatch().Peak(), 0U) << "each counts from its own beginning";
}

TEST(HeapWatch, CountsLargePages) {
    const HeapWatch heap;
    { const LargeVector<char> pages(kLargePage + 1); }
    EXPECT_EQ(heap.Peak(), 2 * kLargePage);
}

TEST(HeapWatchDeathTest, EndsAProcessThatTakesMore) {
    const HeapWatch heap;
    std::make_unique<char[]>(kMemoryBesides + 30);
    heap.HoldTo(3, 10);
    EXPECT_DEATH(heap.HoldTo(2, 10), "10485790 bytes of memory for 10 bytes\nbroken: memory is taken in proportion");
}

#endif

}  // namespace
}  // namespace zek::fuzz
