/// What an image holds, in full. Relies on image.h.
#pragma once

#include <optional>

#include "image.h"
#include "streams.h"

namespace zek::tool {

/// Of an item that defines a word the number that the word has in the end, where another item or value gave it that.
std::optional<unsigned> OtherFinalNumber(const Image& image, const ShownEntry& entry);

void DumpAsText(const Image& image, StandardOutput& out);

/// One JSON object. A text is a string where its bytes are UTF-8, and else an object {"bytes": HEX}.
void DumpAsJson(const Image& image, StandardOutput& out);

}  // namespace zek::tool
