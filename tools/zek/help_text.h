/// What a command says of itself, taken apart for its help and its manual page. Relies on command.h.
#pragma once

#include <string>
#include <vector>

#include "command.h"

namespace zek::tool {

struct HelpText {
    std::vector<std::string> examples;    ///< command lines
    std::vector<std::string> paragraphs;  ///< each one line
};

/// The parts of a text (CommandSpec::example): lines that begin with two blanks are examples.
HelpText PartsOf(const std::string& text);

/// The text with line feeds in the place of blanks, so that no line has more columns than `width` unless it is one
/// word. `indent` stands before each line but the first.
std::string Wrapped(const std::string& text, std::size_t width, const std::string& indent = "");

/// What stands below the options in a help: the examples, what else there is to say, the exit codes.
std::string HelpBelowOptions(const std::string& text, const ExitCodes& exits);

}  // namespace zek::tool
