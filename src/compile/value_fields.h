/// Which word of a value entry a field code selects. Relies on nothing.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

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

inline constexpr std::size_t kNoWord = static_cast<std::size_t>(-1);

/// The word that a field selects in an entry of `count` words, or kNoWord, by the rows.
constexpr std::size_t WordByRows(unsigned type, unsigned field, std::size_t count) {
    type = FieldsLike(type);
    for (const ValueField& row : kValueFields) {
        if (row.type != type || count < row.fewest || count > row.most) continue;
        if (field < row.field || field - row.field > row.last) continue;
        const std::size_t word = row.word + (field - row.field);
        if (word < count) return word;
    }
    return kNoWord;
}

/// A row as most look-ups need it, which should do little with what they read and not branch on it.
struct ReadyField {
    unsigned short last;  ///< as in the row, as far as it goes
    unsigned char word;
    unsigned char counts;  ///< a bit for each number of words; that of kManyWords for any above, too
};

inline constexpr unsigned kFieldShift = 16;
inline constexpr std::size_t kManyWords = 7;

/// The value types that have fields are below this, which stands for repeater items.
inline constexpr unsigned kReadyRepeater = 127;

/// By the upper half of the field, then by type.
using ReadyFields = std::array<std::array<ReadyField, kReadyRepeater + 1>, 32>;

inline constexpr ReadyFields kReadyFields = [] {
    ReadyFields fields{};
    const auto add = [&fields](const ValueField& row, unsigned type) {
        ReadyField& field = fields[row.field >> kFieldShift][type];
        unsigned counts = field.counts;
        for (std::size_t count = row.fewest; count <= std::min(row.most, kManyWords); ++count) counts |= 1U << count;
        field = {static_cast<unsigned short>(row.last), static_cast<unsigned char>(row.word),
                 static_cast<unsigned char>(counts)};
    };
    for (const ValueField& row : kValueFields) {
        if (row.type == kRepeaterFields) add(row, kReadyRepeater);
        for (unsigned type = 0; type < kReadyRepeater; ++type) {
            if (row.type == FieldsLike(type)) add(row, type);
        }
    }
    return fields;
}();

/// As WordByRows, for a type up to kReadyRepeater. Finds no word behind the 65,536th of a list.
constexpr std::size_t ReadyWord(unsigned type, unsigned field, std::size_t count) {
    const ReadyField& ready = kReadyFields[std::min<std::size_t>(field >> kFieldShift, kReadyFields.size() - 1)][type];
    const unsigned behind = field & 0xFFFF;
    const std::size_t word = std::size_t{ready.word} + behind;
    const bool fits = ready.counts >> std::min(count, kManyWords) & 1;
    return fits && behind <= ready.last && word < count ? word : kNoWord;
}

/// The word that a field selects in an entry of `count` words, or kNoWord; of a repeater item for kRepeaterFields.
constexpr std::size_t WordOfField(unsigned type, unsigned field, std::size_t count) {
    const bool repeater = type == kRepeaterFields;
    const bool isReady = repeater || type < kReadyRepeater;
    const std::size_t word = isReady ? ReadyWord(repeater ? kReadyRepeater : type, field, count) : kNoWord;
    return word == kNoWord ? WordByRows(type, field, count) : word;
}

}  // namespace zek
