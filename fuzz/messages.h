/// The `Output` of the harnesses: formats every message, so that a wrong argument is seen. Relies on the standard
/// library.
#pragma once

#include <string>

namespace zek::fuzz {

/// The messages since the last call, one behind the other; of many, the first ones.
std::string TakeMessages();

}  // namespace zek::fuzz
