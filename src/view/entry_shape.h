/// What the words of a compiled entry are, by its section and its name. Relies on value_shapes.h.
#pragma once

#include <cstddef>
#include <string_view>

#include "zekcomp/identifiers.h"
#include "zekcomp/value_shapes.h"

namespace zek {

/// What a word can be besides an operand of a value; a letter as there.
enum WordRole : char {
    kNoRole = '\0',
    kTextWord = 's',
    kGroupWord = 'g',
    kValueTypeWord = 'y',
};

/// The roles of an entry's words in their order: a value type, fixed ones, then those of a list.
struct EntryShape {
    std::string_view fixed;  ///< a letter for each
    bool typed = false;      ///< whether a value type stands before the fixed ones
    char list = kNoRole;     ///< of each word behind the fixed ones
    std::size_t fewest = 1;  ///< words
    std::size_t most = 1;

    char RoleOf(std::size_t index) const {
        if (typed && index-- == 0) return kValueTypeWord;
        return index < fixed.size() ? fixed[index] : list;
    }
};

/// The keywords have ordinals below this.
inline constexpr unsigned kKeywords = 0x17;

/// The kinds of sections, a bit for each by its ordinal, that have entries of this name: by its keyword, or by the
/// class of its table. 0 for what names no entry.
unsigned KindsWith(unsigned name);

/// Whether sections of a kind that has values have one of this name: the NAME of VALUE_NAME. Those of groups and
/// actions do not have any name.
bool IsNameOfValue(unsigned kind, std::string_view name);

/// The shape of an entry that is no value or global.
EntryShape ShapeOfKey(unsigned kind, unsigned name);

/// The shape of a value by its type; with `comparison` that of an operation with two operands more.
EntryShape ShapeOfValue(unsigned type, bool comparison);

/// Whether the name is that of a value or global.
bool IsValueKey(unsigned name);

/// Whether there is an operator with this code, and whether it is a comparison.
bool IsOperatorCode(unsigned code);
bool IsComparison(unsigned code);

/// Whether a word of this class can stand in this role.
bool MayStand(char role, unsigned word);

}  // namespace zek
