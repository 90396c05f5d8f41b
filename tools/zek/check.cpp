#include <algorithm>
#include <cstddef>
#include <memory>
#include <sstream>

#include "child.h"
#include "command.h"
#include "failure.h"
#include "memory_file.h"
#include "source_check.h"

namespace zek::tool {
namespace {

constexpr char kCheckExample[] =
    "Example:\n"
    "  zek check boards/*.zek\n"
    "\n"
    "Each source is checked by itself, with the rules of 'zek lint --list'. The exit code is that of the worst one. A "
    "SOURCE of - is standard input.\n"
    "\n"
    "'zek explain CODE' tells what a finding means and what to do. A comment '; zek: allow CODE' on a line, or alone "
    "on "
    "the line above, allows what is found there.\n";

struct CheckOptions : SourceOptions {
    std::vector<std::string> sources;
};

/// Stands between what a child has to say: its piece of the document, why it ended early, and what it says of comments
/// in included files. None of these has such a byte.
constexpr char kBetween = '\0';

/// In a process of its own: its piece of the document goes into a file that it shares.
int CheckHere(const std::string& source, const SourceOptions& options, const MemoryFile& shared) {
    FindingsOutput output(options.findings);
    const Compilation compilation;
    std::string why;
    std::string allows;
    const int code = GuardedWithReason(why, [&] {
        const CheckedSource checked = Check(source, options, output);
        allows = WrittenShared(checked.shared);
        return checked.valid ? kFine : kSourceHasErrors;
    });
    shared.Append(output.Pieces() + kBetween + why + kBetween + allows);
    return code;
}

/// The library's order of kinds and its list of files outlive a compilation, so each source gets a process as fresh as
/// this one still is.
int CheckInChild(const std::string& source, const SourceOptions& options, FindingsOutput& output,
                 SharedAllows& allows) {
    const MemoryFile shared;
    const int code = RunInChild("the check of " + source, [&] { return CheckHere(source, options, shared); });
    std::istringstream bytes(shared.Bytes());
    std::string piece, why, written;
    if (!std::getline(bytes, piece, kBetween) || !std::getline(bytes, why, kBetween)) {
        allows.AddUnknown();
        output.ShowFailure(source, "the check was ended");
        return std::max<int>(code, kUsageOrFiles);
    }
    std::getline(bytes, written, kBetween);
    output.Show(piece);
    if (!why.empty()) output.ShowFailure(source, why);
    written.empty() ? allows.AddUnknown() : allows.Add(written);
    return code;
}

/// Comments that serve none of the sources; gives the exit code.
int ShowUnused(const SharedAllows& allows, std::size_t most, FindingsOutput& output) {
    int code = kFine;
    for (const SourceFindings& unused : allows.Unused(most)) {
        SourceText text;
        output.Show(output.Piece(unused, text));
        if (unused.Count(Severity::kError) > 0) code = kSourceHasErrors;
    }
    return code;
}

int RunCheck(const CheckOptions& options) {
    RequireTextForRaw(options);
    FindingsOutput output(options.findings);
    int worst = kFine;
    SourceOptions each = options;
    each.amongOthers = options.sources.size() > 1;
    SharedAllows allows;
    for (const std::string& source : options.sources) {
        worst = std::max(worst, CheckInChild(PathOfSource(source), each, output, allows));
    }
    worst = std::max(worst, ShowUnused(allows, options.findings.most, output));
    output.Finish(worst);
    return worst;
}

Run PrepareCheck(Words& words) {
    const auto options = std::make_shared<CheckOptions>();
    options->lint = true;
    words.Files("SOURCE", options->sources, "The sources");
    AddSourceOptions(words, *options);
    return [options] { return RunCheck(*options); };
}

}  // namespace

const CommandSpec kCheckCommand = {"check",
                                   "Check sources and write nothing",
                                   kCheckExample + std::string(kIncludeSearch),
                                   PrepareCheck,
                                   {"no source has errors", "a source has errors", kWrongLineOrFile, nullptr},
                                   FindingsEnvironment()};

}  // namespace zek::tool
