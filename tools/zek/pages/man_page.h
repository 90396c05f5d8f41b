/// Manual pages in the language of man(7). Relies on noted_words.h.
#pragma once

#include <string>

#include "../command.h"

namespace zek::tool {

/// zek(1), with the list of commands.
std::string ManPage();
/// zek-COMMAND(1).
std::string ManPage(const CommandSpec& command);

}  // namespace zek::tool
