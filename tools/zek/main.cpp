#include "compile.h"
#include "failure.h"
#include "options.h"
#include "show.h"
#include "streams.h"
#include "temporary_files.h"
#include "verify.h"

namespace {

using namespace zek::tool;

int Run(const Options& options) {
    switch (options.command) {
        case Command::kCompile: return RunCompile(options);
        case Command::kCheck: return RunCheck(options);
        case Command::kVerify: return RunVerify(options);
        case Command::kDump: return RunDump(options);
        case Command::kTree: return RunTree(options);
        case Command::kNone: break;
    }
    return kUsageOrFiles;
}

/// What the command line itself has to say: help and version on standard output, what is wrong with it on standard
/// error.
int Say(const CommandLine& line) {
    if (line.code != kFine) {
        Tell(line.text);
        return line.code;
    }
    StandardOutput out;
    out.Write(line.text);
    out.Finish();
    return kFine;
}

}  // namespace

int main(int argc, char** argv) {
    OccupyStandardStreams();
    HandleSignals();
    return Guarded([&] {
        const CommandLine line = ReadCommandLine(argc, argv);
        return line.options.command == Command::kNone ? Say(line) : Run(line.options);
    });
}
