/// The formats of those messages of the library that the command does more with than to show them. Relies on nothing.
#pragma once

namespace zek::tool {

// What the reading says of itself.
inline constexpr char kLoadParserFailed[] = "Parse::load rsparsea(%s) failed.\n";
inline constexpr char kNoMoreSections[] = "Parse::No more sections(total = %u).\n";

// Says the same as the warning that follows it.
inline constexpr char kAddItemFailed[] = "Add Item(NO. = %u) of section(%s) failed.\n";

// What the library passes over, and the command does not.
inline constexpr char kSectionNameFailed[] = "Parse::Get section(NO. = %u,Index=%u) name failed.\n";
inline constexpr char kCreateSectionFailed[] = "Create section(%u, %s) object failed.\n";
inline constexpr char kFileNotLoaded[] = "Warning[%s:%u], [%s]:%s FILE %s cannot be loaded.\n";

// Does not fail where it comes of the reading alone.
inline constexpr char kNotANumber[] = "Error[%s:%u]: [%s]:%s, %s has not been defined and is not a valid number.\n";

// Has no place of its own: line 0 of the main source.
inline constexpr char kEntryMissing[] = "Error[%s:%u]: [%s]:%s, This ENTRY does not exist.\n";

}  // namespace zek::tool
