/// What an image holds, in full. Relies on image.h.
#pragma once

#include "image.h"
#include "streams.h"

namespace zek::tool {

/// A word, its class, and what it stands for, such as `0x18000001 group "Board"`.
std::string ToldWord(const ShownWord& word);

void DumpAsText(const Image& image, StandardOutput& out);

/// One JSON object. A text is a string where its bytes are UTF-8, and else an object {"bytes": HEX}.
void DumpAsJson(const Image& image, StandardOutput& out);

}  // namespace zek::tool
