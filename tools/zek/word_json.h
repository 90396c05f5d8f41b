/// Words of compiled images in JSON. Relies on image.h.
#pragma once

#include <string>
#include <vector>

#include "image.h"
#include "json_output.h"

namespace zek::tool {

/// A member that is an array with an object for each word: the word, its class, and what it stands for.
void WriteWords(JsonOutput& json, const std::string& name, const std::vector<ShownWord>& words);

}  // namespace zek::tool
