/// Which word of a value entry a field code selects. Relies on nothing.
#pragma once

#include <array>
#include <cstddef>
#include <iterator>
#include <optional>

namespace zek {

inline constexpr std::size_t kNoMost = static_cast<std::size_t>(-1);

/// One field of a value type: codes `field` to `field` + `last` select the words from `word` on, for entries that have
/// from `fewest` to `most` words, the type word included.
struct ValueField {
    unsigned type;
    std::size_t fewest;
    std::size_t most;
    unsigned field;
    std::size_t last;  ///< 0 for a single word, kNoMost for a list that runs to the last word
    std::size_t word;
};

/// The field that every value entry has: its value type.
inline constexpr unsigned kTypeField = 0x10000;

/// The pseudo type of repeater items, whose words have no type word before them.
inline constexpr unsigned kRepeaterFields = 0xFFFFFFFF;

// Code base + 0 of a list selects the word before the list's first item: hosts rely on it.
inline constexpr ValueField kValueFields[] = {
    // type fewest most field last word
    {1, 2, 2, 0x20000, 0, 1},
    {2, 4, 4, 0x30000, 0, 1},
    {2, 6, 6, 0x30000, 0, 1},
    {2, 4, 4, 0x40000, 2, 1},
    {2, 6, 6, 0x40000, 2, 1},
    {2, 6, 6, 0x50000, 2, 3},
    {3, 2, kNoMost, 0x60000, 0, 1},
    {3, 2, kNoMost, 0x70000, kNoMost, 1},
    {4, 5, kNoMost, 0x80000, 0, 1},
    {4, 5, kNoMost, 0x90000, 0, 2},
    {4, 5, kNoMost, 0xa0000, 0, 3},
    {4, 5, kNoMost, 0xb0000, 0, 4},
    {5, 6, kNoMost, 0x80000, 0, 1},
    {5, 6, kNoMost, 0x90000, 0, 2},
    {5, 6, kNoMost, 0xa0000, 0, 3},
    {5, 6, kNoMost, 0xb0000, 0, 4},
    {5, 6, kNoMost, 0xc0000, kNoMost, 4},
    {6, 3, kNoMost, 0xd0000, 0, 1},
    {6, 3, kNoMost, 0xe0000, 0, 2},
    {6, 3, kNoMost, 0xf0000, kNoMost, 2},
    {7, 1, 5, 0x100000, kNoMost, 0},
    {10, 3, 3, 0x120000, 0, 1},
    {10, 3, 3, 0x130000, 0, 2},
    {101, 2, 2, 0x140000, 0, 1},
    {102, 3, kNoMost, 0x150000, 0, 1},
    {102, 3, kNoMost, 0x170000, 0, 2},
    {102, 3, kNoMost, 0x180000, kNoMost, 2},
    {103, 2, 2, 0x190000, 0, 1},
    {104, 2, 2, 0x1a0000, 0, 1},
    {kRepeaterFields, 2, kNoMost, 0x160000, 0, 0},
    {kRepeaterFields, 2, kNoMost, 0x170000, 0, 1},
    {kRepeaterFields, 2, kNoMost, 0x180000, kNoMost, 1},
};
static_assert(std::size(kValueFields) == 32, "29 rows of values, 3 of repeater items");

/// Types whose fields are those of another.
constexpr unsigned FieldsLike(unsigned type) {
    switch (type) {
        case 8:
        case 12: return 4;
        case 9:
        case 11: return 5;
        default: return type;
    }
}

/// Where the rows of each type begin, by the low bits of the type; no row's number where there are none. The rows of a
/// type stand together.
inline constexpr auto kFirstFields = [] {
    std::array<unsigned char, 128> first{};
    first.fill(std::size(kValueFields));
    for (std::size_t row = std::size(kValueFields); row-- > 0;) {
        first[kValueFields[row].type % first.size()] = static_cast<unsigned char>(row);
    }
    return first;
}();

/// The word that a field selects in an entry of `count` words, or nothing.
constexpr std::optional<std::size_t> WordOfField(unsigned type, unsigned field, std::size_t count) {
    type = FieldsLike(type);
    for (std::size_t i = kFirstFields[type % kFirstFields.size()]; i < std::size(kValueFields); ++i) {
        const ValueField& row = kValueFields[i];
        if (row.type != type) break;
        if (count < row.fewest || count > row.most) continue;
        if (field < row.field || field - row.field > row.last) continue;
        const std::size_t word = row.word + (field - row.field);
        if (word < count) return word;
    }
    return {};
}

}  // namespace zek
