/// The formats of those messages of the library that the command does not show as they come. Relies on nothing.
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

// Called errors, although the check passes with them.
inline constexpr char kNoSuchSensor[] = "Error[%s:%u]: [%s]:%s, The SENSOR with ID %s does not exist.\n";
inline constexpr char kSmbusAddress[] = "Error[%s:%u]:SMBUS address field is wrong!\n";
inline constexpr char kSmbusType[] = "Error[%s:%u]: SMBUS type is wrong!\n";

// Has no place of its own: line 0 of the main source.
inline constexpr char kEntryMissing[] = "Error[%s:%u]: [%s]:%s, This ENTRY does not exist.\n";

}  // namespace zek::tool
