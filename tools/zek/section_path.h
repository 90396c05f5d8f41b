/// Paths to what an image holds, such as SENSOR/CPU0_TEMP/THRESHOLD_FH. Relies on image.h.
///
/// A path is the keyword of a section, its NAME or # and its ID, and a key as in the source; then, where one of several
/// values is meant, its place from 0. Sections of some kinds have no NAME, so there it is left out: GLOBAL/G_Trim. A
/// backslash before a slash, a backslash or a # makes it a part of the name.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "image.h"

namespace zek::tool {

struct SectionPath {
    std::string keyword;
    std::optional<std::string> name;
    std::optional<unsigned> id;
    std::string key;
    std::optional<unsigned> element;
};

/// A number, hexadecimal behind 0x; nothing for any other text.
std::optional<unsigned> NumberIn(std::string_view text);

/// Whether sections of that kind are found by their NAME.
bool HasName(std::string_view keyword);

/// Throws Failure (kUsageOrFiles) for what is no path to an entry.
SectionPath ParsePath(const std::string& text);

/// The path that leads there; a name that is empty for sections of kinds without one, and an empty key for all of a
/// section.
std::string PathTo(std::string_view keyword, std::string_view name, std::string_view key);

/// What ParsePath makes that path of.
std::string TextOf(const SectionPath& path);

/// Whether it is the section that the path means, its key aside.
bool IsMeant(const SectionPath& path, const ShownSection& section);

}  // namespace zek::tool
