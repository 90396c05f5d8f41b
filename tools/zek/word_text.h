/// Words of compiled images as text. Relies on image.h.
#pragma once

#include <string>

#include "image.h"

namespace zek::tool {

/// A number in both bases, such as "17 (0x11)".
std::string ToldNumber(unsigned number);

/// A word, its class, and what it stands for, such as `0x18000001 group "Board"`.
std::string ToldWord(const ShownWord& word);

}  // namespace zek::tool
