/// What each text of an entry stands for, and the numbers behind texts, as the compiler takes them. Relies on
/// debug_source.h and on the library's reading of numbers.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "debug_source.h"

namespace zek::tool {

enum class Role {
    kText,         ///< itself
    kWord,         ///< a predefined name, else a number
    kValueType,    ///< the word of a value type
    kPlainNumber,  ///< a number; predefined names are none
    kOperator,
    kReference,  ///< a number, else a predefined name, else a value, global or argument
    kAction,     ///< the NAME of such a section; and so on
    kTable,
    kGroup,
};

/// Of a text by its place among those of the entry.
Role RoleOf(const DebugEntry& entry, std::size_t at);

// What an entry is.
bool IsValue(const DebugEntry& entry);
bool IsTableRow(const DebugEntry& entry);
bool IsList(const DebugEntry& entry);

/// The number that a text of the source is in a role, by the predefined names; nothing where it is none.
std::optional<unsigned> NumberOf(Role role, std::string_view text, const std::map<std::string, unsigned>& names);

/// The number that a text is by itself.
std::optional<unsigned> PlainNumber(std::string_view text);

/// The number of the section's ID as in the compiled image, where 0xFFFFFFFF is none.
std::optional<unsigned> IdOf(const DebugSection& section, const std::map<std::string, unsigned>& names);

}  // namespace zek::tool
