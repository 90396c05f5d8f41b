#include "command_line.h"
#include "failure.h"
#include "streams.h"
#include "temporary_files.h"

namespace {

using namespace zek::tool;

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
        return line.run ? line.run() : Say(line);
    });
}
