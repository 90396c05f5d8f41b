/// What a command takes from the command line, noted down for manual pages and completions. Relies on command.h.
#pragma once

#include <string>
#include <vector>

#include "../command.h"

namespace zek::tool {

/// One thing that a command takes.
struct NotedWord {
    enum class Value { kNone, kFile, kText, kChoice };

    std::vector<std::string> names;  ///< of an option, such as "-o"; none where it stands without
    std::string type;                ///< what its value is called
    std::string help;
    Value value = Value::kNone;
    std::vector<std::string> choices = {};
    bool repeats = false;
    bool required = false;
};

/// In the order in which the command names them, --help last.
std::vector<NotedWord> WordsOf(const CommandSpec& command);

/// Those with a name.
std::vector<NotedWord> OptionsOf(const CommandSpec& command);

}  // namespace zek::tool
