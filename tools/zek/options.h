/// The command line. Relies on the command-line library, of which nothing is seen here.
#pragma once

#include <string>
#include <vector>

#include "report.h"

namespace zek::tool {

enum class Command { kNone, kCompile, kCheck, kVerify, kDump, kTree };

struct Options {
    Command command = Command::kNone;
    std::vector<std::string> files;  ///< the sources or images
    std::string image;               ///< compile: where the compiled image goes; empty for the default
    std::string debugImage;          ///< compile: where the debug image goes; empty for the default
    std::vector<std::string> includes;
    std::size_t mostFiles = 10000;  ///< how many files one compilation may read
    ReportOptions report;
    bool json = false;
    bool notes = false;  ///< verify: show what is odd, too
};

/// What the arguments say. Where they ask for help or the version, or are wrong, `command` is kNone, `text` is what to
/// say and `code` the exit code.
struct CommandLine {
    Options options;
    std::string text;
    int code = 0;
};

CommandLine ReadCommandLine(int argc, char** argv);

}  // namespace zek::tool
