/// The lines of the source files behind a debug image: each header and item on the line of the file where it stood.
/// Relies on debug_source.h.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "debug_source.h"

namespace zek::tool {

/// What stands on a line.
struct RecordedLine {
    const DebugSection* section = nullptr;
    const DebugEntry* entry = nullptr;  ///< null for the header of the section
    std::size_t times = 0;              ///< how often it was read
};

/// What shows that two files of one name were read.
inline constexpr char kTwoFiles[] = ": two files were read under this name, and the image does not tell them apart";

/// A source file, its lines by their numbers.
using RecordedFile = std::map<std::uint32_t, RecordedLine>;

/// Every file of the list, in its order. A file that was read several times has each line once. Throws Failure where
/// two things that are not the same stand on a line, or an item does not stand below the header of its section.
std::vector<RecordedFile> RecordedFiles(const DebugSource& source);

/// The sub-strings of an entry, as far as the compiler kept them.
std::vector<std::string_view> TextsOf(const DebugEntry& entry);

/// The name that an [INCLUDE] item asks for in a file of that name: the backslash folder of that, then the item's text.
std::string AskedName(std::string_view includer, const DebugEntry& file);

/// Whether it is an item of an [INCLUDE] that names a file.
bool IsInclude(const RecordedLine& line);
bool IsDefinition(const DebugEntry& entry);

/// The items of [INCLUDE] in the order of the image, each once, however often its file was read.
std::vector<RecordedLine> IncludeItems(const DebugSource& source);

/// Of the predefined names of the image those that no item of the source defines: the compiler was given them, as by
/// -D.
std::map<std::string, unsigned> GivenWords(const DebugSource& source, std::map<std::string, unsigned> names);

}  // namespace zek::tool
