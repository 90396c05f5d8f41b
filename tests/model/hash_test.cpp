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

}  // namespace

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
        EXPECT_LT(LongestRun([step](unsigned i) { return i * step; }), 200U);
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
