/// Completions for shells. Relies on noted_words.h.
#pragma once

#include <string>

namespace zek::tool {

std::string BashCompletion();
std::string ZshCompletion();
std::string FishCompletion();

}  // namespace zek::tool
