/// What stands at a path of an image. Relies on section_path.h and values.h.
#pragma once

#include <optional>
#include <vector>

#include "section_path.h"
#include "values.h"

namespace zek::tool {

/// Nothing where the image has no such value.
using FoundValues = std::optional<std::vector<ShownValue>>;

/// The values of the first entry that the path leads to, or the one of them that it picks. A key of a [TABLE] that is
/// the number of a byte leads to that byte, of a debug image by the rows that set it; a word of [DEFINE] and [IFDEF] to
/// the value that counts, and [DEFINE] has the words that the compiler was given, too. INCLUDE/FILE leads to the files
/// of all items.
FoundValues ValuesAt(const Image& image, const SectionPath& path);

}  // namespace zek::tool
