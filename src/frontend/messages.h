/// The texts of the front end. Relies on nothing.
#pragma once

namespace zek {

inline constexpr char kLoadParserFailed[] = "Parse::load rsparsea(%s) failed.\n";  // sic
inline constexpr char kNoMoreSections[] = "Parse::No more sections(total = %u).\n";
inline constexpr char kSectionNameFailed[] = "Parse::Get section(NO. = %u,Index=%u) name failed.\n";  // sic: no blank
inline constexpr char kCreateSectionFailed[] = "Create section(%u, %s) object failed.\n";
inline constexpr char kAddItemFailed[] = "Add Item(NO. = %u) of section(%s) failed.\n";
inline constexpr char kEntryIgnored[] =
    "Warning[%s:%u]: [%s]:%s, This ENTRY is ignored because of invalid entry name.\n";

}  // namespace zek
