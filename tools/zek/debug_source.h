/// What a debug image says of its source: every section and entry with the file and line where it stood, [INCLUDE]
/// sections too, which the library does not restore. Relies on debug_fields.h.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zek::tool {

/// Where something stood. Line 0: it was not given.
struct SourceSpot {
    std::uint32_t file = 0;  ///< position in the list of source files
    std::uint32_t line = 0;  ///< from 1

    auto operator<=>(const SourceSpot&) const = default;
};

struct DebugEntry {
    std::string_view key;  ///< as it was written; empty for a declared key that was not given
    SourceSpot spot;
    std::uint32_t type = 0;  ///< its type id
    bool given = false;      ///< it has data
    /// The data as the source wrote it: of a value first the word of its type, then the operands; none of a definition.
    std::vector<std::string_view> texts;
    std::uint32_t number = 0;  ///< of a definition, and of a value its type
};

struct DebugSection {
    std::string_view keyword;
    SourceSpot spot;
    std::uint32_t kind = 0;  ///< number of the kind, from 1
    std::vector<DebugEntry> entries;

    /// The first entry of that key that was given, or null.
    const DebugEntry* Entry(std::string_view key) const;
};

struct DebugSource {
    std::vector<std::string_view> files;  ///< empty where the image has no list
    std::vector<DebugSection> sections;   ///< in the order of the image: kind by kind

    /// "FILE:LINE", made safe for a terminal; "file N" for one that the image has no name of.
    std::string Told(const SourceSpot& spot) const;
};

/// Of an image that was verified; its bytes must outlive what is given.
DebugSource ReadDebugSource(std::string_view image);

}  // namespace zek::tool
