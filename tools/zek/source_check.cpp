#include "source_check.h"

#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <exception>
#include <set>
#include <utility>

#include "definitions.h"
#include "failure.h"
#include "include_search.h"
#include "lint.h"
#include "messages.h"
#include "parser_library.h"
#include "paths.h"
#include "progress.h"
#include "source_index.h"
#include "source_text.h"
#include "streams.h"

namespace zek::tool {

namespace {

constexpr char kAnotherParser[] =
    " is another maker's parser library, without search folders and hook: includes are found in its own way, -I, "
    "--max-files and the built-in folder do not count, and file names in messages are those of the source\n";

/// What the library has said of a source, ready to be shown.
struct Said {
    SourceFindings findings;
    bool sound = false;                    ///< the check passed, and nothing of the source is missing in the model
    std::vector<SharedAllow> shared = {};  ///< of the included files, where other sources are checked in the same run
};

Said WhatWasSaid(const std::string& source, const SourceOptions& options, const std::vector<SourceFile>& files,
                 SourceIndex& index, const std::vector<Message>& whileReading, bool passed, SourceText& text) {
    ReportOptions wanted = options.report;
    wanted.words = NamesIn(options.definitions);
    Levels levels = options.findings.levels;
    if (options.report.verbose) levels.ShowHidden();
    std::vector<std::string> paths;
    for (const SourceFile& file : files) paths.push_back(file.path);
    Review review(levels, paths, text, options.findings.most);
    Report report(wanted, source, files, index, text, review);
    report.Add(whileReading, TakeMessages());
    const bool sound = passed && report.Losses() == 0;
    if (options.lint) {
        ShowPhase("running the rules of lint");
        Lint(files, index, text, levels, {sound, options.amongOthers, wanted.words}, review);
    }
    Said said = {{source}, sound};
    std::set<Origin> origins = {Origin::kLibrary, Origin::kCommand};
    // Where there are errors most rules are not run, so that nothing is known of what they would find.
    if (options.lint && sound) origins.insert(Origin::kLint);
    review.AddComments(origins, options.amongOthers ? &said.shared : nullptr);
    for (Finding& finding : review.Kept()) report.AddWay(finding);
    // One way for each file: there may be very many comments behind a long one.
    std::set<std::string> led;
    for (SharedAllow& allow : said.shared) {
        if (allow.idle && led.insert(allow.unused.place.path).second) report.AddWay(allow.unused);
    }
    said.findings.findings = std::move(review.Kept());
    said.findings.left = review.CountLeft();
    if (options.report.raw) said.findings.raw = report.Raw();
    return said;
}

/// Tells what the library has said so far, which is all that it will say, and ends the command.
[[noreturn]] void GiveUp(const std::string& source, const SourceOptions& options, FindingsOutput& output,
                         const std::string& why) {
    SourceText text;
    SourceIndex index{ParserLibrary()};
    output.Show(output.Piece(WhatWasSaid(source, options, {}, index, {}, false, text).findings, text));
    throw Failure(kUsageOrFiles, why);
}

ParserLibrary RequireParser(const std::string& source, const SourceOptions& options, FindingsOutput& output) {
    ParserLibrary parser = ServingParser();
    if (parser.path.empty()) {
        GiveUp(source, options, output, "there is no section-file parser library to read sources with");
    }
    if (!parser.Serves()) {
        GiveUp(source, options, output, parser.path + " lacks functions of a section-file parser library");
    }
    if (!parser.HasHook()) Tell("zek: note: " + parser.path + kAnotherParser);
    return parser;
}

}  // namespace

void RequireReadable(const std::string& source) {
    const std::string path = MainSource(source);
    struct stat info {};
    if (stat(path.c_str(), &info) != 0) throw SystemFailure("cannot read " + source);
    if (S_ISDIR(info.st_mode)) throw SystemFailure("cannot read " + source, EISDIR);
    if (access(path.c_str(), R_OK) != 0) throw SystemFailure("cannot read " + source);
}

CheckedSource Check(const std::string& source, const SourceOptions& options, FindingsOutput& output) {
    RequireReadable(source);
    const ParserLibrary parser = RequireParser(source, options, output);
    Define(options.definitions);
    Progress progress(source, "reading");
    SourceReading reading(parser, IncludeSearch(options.includes, BuiltInFolder()), options.mostFiles);
    reading.ShowIn(progress);
    if (!gccCompStart(source)) {
        std::string why = parser.HasHook() ? reading.WhyMainRefused() : "the parser library refuses it";
        if (why.empty()) why = WhyRefused(MainSource(source));
        GiveUp(source, options, output, "cannot read " + source + ": " + why);
    }
    gccParse();
    reading.Stop();
    const std::vector<Message> whileReading = TakeMessages();
    CheckedSource checked;
    checked.files = reading.Files();
    ShowPhase("checking");
    const bool passed = gccCheck();
    ShowPhase("preparing what was found");
    SourceText text(&reading.Copies());
    SourceIndex index(parser, &reading.Copies());
    Said said = WhatWasSaid(source, options, checked.files, index, whileReading, passed, text);
    const std::string piece = output.Piece(said.findings, text);
    output.Show(piece);
    checked.valid = said.sound && said.findings.Count(Severity::kError) == 0;
    checked.shared = std::move(said.shared);
    return checked;
}

std::string PathOfSource(const std::string& source) { return source == "-" ? kStandardInput : source; }

int GuardedWithReason(std::string& why, const std::function<int()>& run) {
    return Guarded([&]() -> int {
        try {
            return run();
        } catch (const std::exception& error) {
            why = WhyEnded(error);
            throw;
        }
    });
}

void RequireTextForRaw(const SourceOptions& options) {
    if (!options.report.raw || options.findings.format == "text") return;
    throw Failure(kUsageOrFiles, "--raw shows text, not " + options.findings.format);
}

void AddSourceOptions(Words& words, SourceOptions& options) {
    words.FolderOptions("-I,--include", "DIR", options.includes,
                        "Look for includes in this folder too; may be given several times");
    words.Texts("-D,--define", "NAME=VALUE", options.definitions,
                "Define a word before the source is read; a definition in the source overrides it; may be given "
                "several times");
    words.Count("--max-files", "N", options.mostFiles,
                "Read so many files at most for one source, each as often as it is included; default: " +
                    std::to_string(options.mostFiles));
    AddFindingsOptions(words, options.findings);
    words.Flag("--raw", options.report.raw, "Show messages as the library sends them");
    words.Flag("--verbose", options.report.verbose, "Show also what the library says of the reading itself");
}

}  // namespace zek::tool
