#include "model/large_pages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <numeric>
#include <vector>

namespace zek::test {

namespace {

/// Numbers that fill so many bytes.
constexpr std::size_t NumbersIn(std::size_t bytes) { return bytes / sizeof(unsigned); }

}  // namespace

TEST(LargeVector, KeepsItsContentWhileItGrowsIntoLargePages) {
    std::vector<unsigned> expected(NumbersIn(5 * kLargePage) + 1);
    std::iota(expected.begin(), expected.end(), 1U);
    LargeVector<unsigned> numbers;
    for (const unsigned number : expected) numbers.push_back(number);
    EXPECT_TRUE(std::equal(numbers.begin(), numbers.end(), expected.begin(), expected.end()));
    const LargeVector<unsigned> copy = numbers;
    numbers = {};
    EXPECT_TRUE(std::equal(copy.begin(), copy.end(), expected.begin(), expected.end())) << "its memory is its own";
}

TEST(LargeVector, LiesInPagesOfItsOwnFromALargePageOn) {
    for (const std::size_t bytes : {kLargePage, kLargePage + 4, 3 * kLargePage - 4}) {
        SCOPED_TRACE(bytes);
        const LargeVector<unsigned> numbers(NumbersIn(bytes), 7U);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(numbers.data()) % kLargePage, 0U);
        EXPECT_EQ(numbers.back(), 7U);
    }
}

TEST(LargeVector, MayBeShorterThanALargePage) {
    LargeVector<unsigned> numbers(NumbersIn(kLargePage) - 1, 7U);
    EXPECT_EQ(numbers.back(), 7U);
    numbers.resize(NumbersIn(kLargePage), 8U);
    EXPECT_EQ(numbers.front(), 7U);
    EXPECT_EQ(numbers.back(), 8U);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(numbers.data()) % kLargePage, 0U);
}

TEST(LargePages, AreUsableWhetherTheirSmallPagesAreMadeOrNot) {
    constexpr std::size_t kSize = kMostInLargePages + kLargePage;
    auto* const memory = static_cast<unsigned char*>(MapLargePages(kSize));
    memory[0] = 1;
    MakePages(memory, kLargePage);
    EXPECT_EQ(memory[0], 1) << "what is there stays";
    EXPECT_EQ(std::count(memory + 1, memory + kSize, 0), kSize - 1);
    UnmapLargePages(memory, kSize);
}

TEST(LargePages, ThatCannotBeHadThrow) { EXPECT_THROW(MapLargePages(std::size_t{1} << 60), std::bad_alloc); }

}  // namespace zek::test
