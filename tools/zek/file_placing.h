/// Where the files of a source go inside a folder, and what they are called there. Relies on debug_lines.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "debug_lines.h"

namespace zek::tool {

/// A file in its place.
struct PlacedFile {
    std::string name;                                    ///< as the source asks for it
    std::string recorded;                                ///< as it was asked for
    std::string path;                                    ///< relative to the folder, with slashes
    std::optional<std::size_t> file = {};                ///< in the list of source files; nothing for an empty file
    std::map<std::uint32_t, std::string> includes = {};  ///< text of a FILE item that had to change, by its line
};

/// The main source and every file that it leads to, main source first. A name that stays inside the folder is kept; an
/// absolute one, and one with "..", gets another, and whoever includes it that. Throws Failure.
std::vector<PlacedFile> PlaceFiles(const DebugSource& source, const std::vector<RecordedFile>& files);

/// The position of the main source in the list.
std::size_t MainFile(const std::vector<RecordedFile>& files);

}  // namespace zek::tool
