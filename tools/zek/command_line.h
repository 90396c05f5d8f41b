/// The command line. Relies on the command-line library, of which nothing is seen here.
#pragma once

#include <string>

#include "command.h"

namespace zek::tool {

/// What the arguments say. Where they ask for help or the version, or are wrong, `run` is empty, `text` is what to say
/// and `code` the exit code.
struct CommandLine {
    Run run;
    std::string text;
    int code = 0;
};

CommandLine ReadCommandLine(int argc, char** argv);

}  // namespace zek::tool
