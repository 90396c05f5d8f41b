/// Which word of a value entry a field code selects. Relies on nothing.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
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

/// The value types that have fields are below this.
inline constexpr unsigned kTypesWithFields = 128;

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

/// Rows as a look-up needs them, which must not branch on what it reads: by the upper half of the field. A list takes
/// all fields behind its own, however long it is.
struct FieldWords {
    unsigned field = 0;
    unsigned last = 0;
    unsigned char word = 0;
    unsigned char counts = 0;  ///< a bit for each number of words; that of kManyWords for any above, too
};
using TypeFields = std::array<FieldWords, 32>;

inline constexpr unsigned kFieldShift = 16;
inline constexpr std::size_t kManyWords = 7;

/// The rows of one type.
constexpr TypeFields FieldsOf(unsigned type) {
    TypeFields fields{};
    for (const ValueField& row : kValueFields) {
        if (row.type != type) continue;
        unsigned counts = 0;
        for (std::size_t count = row.fewest; count <= std::min(row.most, kManyWords); ++count) counts |= 1U << count;
        const std::size_t first = row.field >> kFieldShift;
        const std::size_t end = row.last == kNoMost ? fields.size() : first + 1;
        for (std::size_t i = first; i < end; ++i) {
            fields[i] = {row.field, static_cast<unsigned>(row.last), static_cast<unsigned char>(row.word),
                         static_cast<unsigned char>(fields[i].counts | counts)};
        }
    }
    return fields;
}

/// The fields of all value types: those of type t are `fields[place[t]]`, the first ones are empty.
struct FieldsByType {
    std::array<TypeFields, 13> fields{};
    std::array<unsigned char, kTypesWithFields> place{};
};

inline constexpr FieldsByType kFieldsByType = [] {
    FieldsByType all;
    unsigned char last = 0;
    for (const ValueField& row : kValueFields) {
        if (row.type == kRepeaterFields || all.place[row.type] != 0) continue;
        all.place[row.type] = ++last;
        all.fields[last] = FieldsOf(row.type);
    }
    for (unsigned type = 0; type < kTypesWithFields; ++type) all.place[type] = all.place[FieldsLike(type)];
    return all;
}();

inline constexpr TypeFields kFieldsOfRepeater = FieldsOf(kRepeaterFields);

constexpr const TypeFields& FieldsOfType(std::uint64_t type) {
    return kFieldsByType.fields[type < kTypesWithFields ? kFieldsByType.place[type] : 0];
}

/// No word.
inline constexpr std::size_t kNoWord = static_cast<std::size_t>(-1);

/// The word that a field selects in an entry of `count` words, or kNoWord.
constexpr std::size_t WordOfField(const TypeFields& fields, unsigned field, std::size_t count) {
    const FieldWords& row = fields[std::min<std::size_t>(field >> kFieldShift, fields.size() - 1)];
    const unsigned behind = field - row.field;
    const std::size_t word = row.word + std::size_t{behind};
    const bool fits = row.counts >> std::min(count, kManyWords) & 1;
    return fits && behind <= row.last && word < count ? word : kNoWord;
}

}  // namespace zek
