/// Words of compiled images in JSON. Relies on image.h.
#pragma once

#include <vector>

#include "image.h"
#include "json_output.h"

namespace zek::tool {

/// An array with an object for each word: the word, its class, and what it stands for.
Json JsonOfWords(const std::vector<ShownWord>& words);

}  // namespace zek::tool
