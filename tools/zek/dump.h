/// What an image holds, in full. Relies on image.h.
#pragma once

#include "image.h"
#include "streams.h"

namespace zek::tool {

void DumpAsText(const Image& image, StandardOutput& out);

/// One JSON object. A text is a string where its bytes are UTF-8, and else an object {"bytes": HEX}.
void DumpAsJson(const Image& image, StandardOutput& out);

}  // namespace zek::tool
