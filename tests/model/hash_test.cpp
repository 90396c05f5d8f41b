#include "model/hash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace zek::test {

namespace {

constexpr unsigned kKeys = 100000;
constexpr unsigned kSlots = 1 << 18;

/// The longest run of taken slots after every key has taken the next free slot behind its hash.
template <class KeyAt>
unsigned LongestRun(KeyAt&& keyAt) {
    std::vector<bool> taken(kSlots);
    for (unsigned i = 0; i < kKeys; ++i) {
        unsigned slot = HashOf(keyAt(i)) % kSlots;
        while (taken[slot]) slot = (slot + 1) % kSlots;
        taken[slot] = true;
    }
    unsigned longest = 0;
    unsigned run = 0;
    for (const bool isTaken : taken) {
        run = isTaken ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return longest;
}

/// How many slots are looked at while each number takes the next free slot behind its hash.
template <class Hash>
std::size_t Looks(const std::vector<unsigned>& numbers, Hash&& hash) {
    std::vector<bool> taken(kSlots);
    std::size_t looks = 0;
    for (const unsigned number : numbers) {
        unsigned slot = hash(number) % kSlots;
        for (++looks; taken[slot]; ++looks) slot = (slot + 1) % kSlots;
        taken[slot] = true;
    }
    return looks;
}

constexpr std::uint64_t kSeedElsewhere = 0x123456789ABCDEF;

/// Whoever chooses the identifiers of an image knows all but the seed, and so a hash of another process.
template <class Elsewhere, class Here>
void ExpectFewLooksAtChosen(Elsewhere&& hashElsewhere, Here&& hash) {
    constexpr std::size_t kChosen = 10000;
    for (const unsigned classWord : {0U, 0x03000000U, 0x12000000U}) {
        std::vector<unsigned> chosen;
        for (unsigned number = classWord; chosen.size() < kChosen; ++number) {
            if (hashElsewhere(number) % kSlots < kSlots / 64) chosen.push_back(number);
        }
        EXPECT_GT(Looks(chosen, hashElsewhere), 1000 * kChosen);
        EXPECT_LT(Looks(chosen, hash), 2 * kChosen);
    }
}

}  // namespace

TEST(Same, AreTextsThatDifferNowhere) {
    const std::string text = "a text that is longer than four words of eight";
    for (std::size_t size = 0; size <= text.size(); ++size) {
        const std::string one = text.substr(0, size);
        EXPECT_TRUE(IsSame(one, std::string(one))) << one;
        for (std::size_t i = 0; i < size; ++i) {
            std::string other = one;
            other[i] = '\0';
            EXPECT_FALSE(IsSame(one, other)) << one << " at " << i;
        }
        EXPECT_FALSE(IsSame(one, one + '\0')) << one;
        EXPECT_FALSE(IsSame('x' + one, one)) << one;
    }
}

TEST(Hash, SpreadsNamesWhereverTheyDiffer) {
    const std::string filler = "A_NAME_OF_MANY_CHARACTERS_";
    const std::function<std::string(unsigned)> families[] = {
        [](unsigned i) { return std::to_string(i); },
        [](unsigned i) { return "S" + std::to_string(i); },
        [&filler](unsigned i) { return filler + std::to_string(i); },
        [&filler](unsigned i) { return std::to_string(i) + filler; },
        [&filler](unsigned i) { return filler + std::to_string(i) + filler; },
        [](unsigned i) { return std::string(i / 100, 'A') + std::to_string(i % 100); },
        [](unsigned i) {
            return std::string{static_cast<char>(i), static_cast<char>(i >> 8), static_cast<char>(i >> 16)};
        },
    };
    for (const auto& family : families) {
        SCOPED_TRACE(family(7));
        EXPECT_LT(LongestRun(family), 100U);
    }
}

TEST(Hash, SpreadsNumbersThatRiseByAnyStep) {
    for (unsigned step : {1U, 2U, 3U, 8U, 10U, 64U, 100U, 256U, 1024U, 4096U, 0x10000U}) {
        SCOPED_TRACE(step);
        // Fifty rows of eight numbers side by side; of 20,000 seeds none put more than thirty-five.
        EXPECT_LT(LongestRun([step](unsigned i) { return i * step; }), 400U);
    }
}

TEST(Hash, SpreadsNumbersThatWereChosenToMeet) {
    ExpectFewLooksAtChosen(
        [](unsigned number) {
            return static_cast<unsigned>(MixedProduct((number >> 3) ^ kSeedElsewhere, kGoldenRatio)) << 3 |
                   (number & 7);
        },
        [](unsigned number) { return HashOf(number); });
}

TEST(Hash, SpreadsPairsOfNumbersThatWereChosenToMeet) {
    constexpr unsigned kFirst = 0x30000005;
    ExpectFewLooksAtChosen([](unsigned number) { return HashOf(kFirst, number, kSeedElsewhere); },
                           [](unsigned number) { return HashOf(kFirst, number); });
}

TEST(Hash, SpreadsPairsOfNumbersThatRiseByAnyStepWithAnySeed) {
    constexpr unsigned kRows = 1000;
    constexpr unsigned kPlaces = 2048;
    for (unsigned step : {1U, 4U, 1024U}) {
        std::vector<unsigned> numbers(kRows);
        for (unsigned i = 0; i < kRows; ++i) numbers[i] = 0x03000000 + i * step;
        for (std::uint64_t i = 1; i <= 500; ++i) {
            const std::uint64_t seed = MixedProduct(i * kSeedElsewhere, kGoldenRatio);
            const auto hash = [seed](unsigned number) { return HashOf(0x30000005, number, seed) % kPlaces; };
            ASSERT_LT(Looks(numbers, hash), 3 * kRows) << step << ", seed " << seed;
        }
    }
}

TEST(Hash, OfATextIsThatOfItsCharactersAlone) {
    const std::string text = "xNAME=NAME of some length";
    for (std::size_t size = 0; size <= 20; ++size) {
        const std::string copy = text.substr(1, size);
        EXPECT_EQ(HashOf(std::string_view(text).substr(1, size)), HashOf(std::string_view(copy))) << size;
        EXPECT_NE(HashOf(std::string_view(copy)), HashOf(std::string_view(copy + '\0'))) << size;
    }
}

}  // namespace zek::test
