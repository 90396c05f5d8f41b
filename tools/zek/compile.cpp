#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <sstream>

#include "c_array.h"
#include "child.h"
#include "command.h"
#include "definitions.h"
#include "dependency_file.h"
#include "failure.h"
#include "findings_output.h"
#include "image_bytes.h"
#include "lint.h"
#include "memory_file.h"
#include "output_file.h"
#include "parser_library.h"
#include "paths.h"
#include "printable.h"
#include "progress.h"
#include "renderer.h"
#include "report.h"
#include "shared_allows.h"
#include "source_index.h"
#include "source_reading.h"
#include "streams.h"
#include "time_stamp.h"
#include "written_image.h"
#include "zekcomp/compiler.h"

namespace zek::tool {
namespace {

constexpr char kCompileExample[] =
    "Example:\n"
    "  zek compile board.zek -o out/board.zki -g out/board.zkd -I common\n"
    "\n"
    "Both images are written whole or not at all; where something is wrong, those that are there stay as they are.\n"
    "A SOURCE of - is standard input, an IMAGE of - standard output. With the variable SOURCE_DATE_EPOCH, or with\n"
    "--timestamp, which comes first, the same source always gives the same bytes.\n";
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
constexpr char kIncludeSearch[] =
    "\n"
    "An include is looked for beside the file that includes it, in the current folder, in the folders of -I in their "
    "order, then among the files that come with zek (zek/words.zek).";

constexpr char kEmitImage[] = "image";
constexpr char kEmitC[] = "c";

/// What both commands take.
struct SourceOptions {
    std::vector<std::string> includes;
    std::vector<std::string> definitions;
    std::size_t mostFiles = kMostFilesOfASource;  ///< how many files one compilation may read
    ReportOptions report;
    bool lint = false;         ///< the rules of lint are run, too
    bool amongOthers = false;  ///< other sources are checked in the same run
    FindingsOptions findings;
    Progress::Clock::time_point begun = Progress::Clock::now();
};

struct CompileOptions : SourceOptions {
    std::string source;
    std::string image;         ///< where the compiled image goes; empty for the default
    std::string debugImage;    ///< where the debug image goes; empty for the default
    std::string dependencies;  ///< where the dependency file goes; empty for nowhere
    std::string emit = kEmitImage;
    std::optional<std::string> timeStamp;  ///< seconds; none for the environment's or the library's
};

struct CheckOptions : SourceOptions {
    std::vector<std::string> sources;
};

constexpr char kAnotherParser[] =
    " is another maker's parser library, without search folders and hook: includes are found in its own way, -I, "
    "--max-files and the built-in folder do not count, and file names in messages are those of the source\n";

/// Throws Failure with the system's reason for a main source that is not there or cannot be read.
void RequireReadable(const std::string& source) {
    const std::string path = MainSource(source);
    struct stat info {};
    if (stat(path.c_str(), &info) != 0) throw SystemFailure("cannot read " + source);
    if (S_ISDIR(info.st_mode)) throw SystemFailure("cannot read " + source, EISDIR);
    if (access(path.c_str(), R_OK) != 0) throw SystemFailure("cannot read " + source);
}

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
    Report report(wanted, source, files, index, text);
    report.Add(whileReading, TakeMessages());
    ReviewScope scope = {{}, {Origin::kLibrary, Origin::kCommand}};
    // Where there are errors most rules are not run, so that nothing is known of what they would find.
    const bool sound = passed && report.Losses() == 0;
    if (options.lint && sound) scope.origins.insert(Origin::kLint);
    for (const SourceFile& file : files) scope.paths.push_back(file.path);
    Levels levels = options.findings.levels;
    if (options.report.verbose) levels.ShowHidden();
    if (options.lint) report.Add(Lint(files, index, text, levels, {sound, options.amongOthers, wanted.words}));
    Said said = {{source}, sound};
    std::vector<SharedAllow>* const shared = options.amongOthers ? &said.shared : nullptr;
    said.findings.findings = Reviewed(report.Findings(), levels, scope, text, shared);
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

/// Ends the compilation, however it goes.
struct Compilation {
    Compilation() = default;
    ~Compilation() { gccCompEnd(); }
    Compilation(const Compilation&) = delete;
    Compilation& operator=(const Compilation&) = delete;
};

struct CheckedSource {
    std::vector<SourceFile> files;
    bool valid = false;
    std::vector<SharedAllow> shared = {};
};

/// Reads and checks a source and shows what there is to tell. The model stays for the outputs.
CheckedSource Check(const std::string& source, const SourceOptions& options, FindingsOutput& output) {
    RequireReadable(source);
    const ParserLibrary parser = RequireParser(source, options, output);
    Define(options.definitions);
    Progress progress(source, "reading", options.begun);
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
    progress.SetPhase("checking");
    const bool passed = gccCheck();
    progress.SetPhase("preparing what was found");
    SourceText text(&reading.Copies());
    SourceIndex index(parser, &reading.Copies());
    Said said = WhatWasSaid(source, options, checked.files, index, whileReading, passed, text);
    const std::string piece = output.Piece(said.findings, text);
    progress.Stop();
    output.Show(piece);
    checked.valid = said.sound && said.findings.Count(Severity::kError) == 0;
    checked.shared = std::move(said.shared);
    return checked;
}

/// A source of - is standard input.
std::string PathOfSource(const std::string& source) { return source == "-" ? kStandardInput : source; }

/// Where an image goes that was not given a name.
std::string WithExtension(const std::string& source, const std::string& extension) {
    if (source == "-") throw Failure(kUsageOrFiles, "standard input has no name for its images: give -o and -g");
    return std::filesystem::path(MainSource(source)).replace_extension(extension).string();
}

/// Where the outputs of one compilation go.
struct Targets {
    explicit Targets(const CompileOptions& options)
        : image(
              TargetOf(options.image.empty() ? WithExtension(options.source, ImageExtension(options)) : options.image)),
          debug(TargetOf(options.debugImage.empty() ? WithExtension(options.source, ".zkd") : options.debugImage)) {
        if (!options.dependencies.empty()) dependencies = TargetOf(options.dependencies);
    }

    Target image;
    Target debug;
    std::optional<Target> dependencies;

private:
    static const char* ImageExtension(const CompileOptions& options) { return options.emit == kEmitC ? ".c" : ".zki"; }
};

/// Throws Failure where both are one file. A character device such as /dev/null may be both.
void RequireDistinct(const char* both, const Target& first, const Target& second) {
    if (!IsSameFile(first, second) || (first.stands && S_ISCHR(first.info.st_mode))) return;
    throw Failure(kUsageOrFiles,
                  std::string(both) + " would go to the same file: " + first.name + " and " + second.name);
}

/// Throws Failure where a dependency file would have no target: a later run cannot compare a pipe or a device.
void RequireOneToCompare(const Targets& targets) {
    if (!targets.dependencies || !targets.image.direct || !targets.debug.direct) return;
    throw Failure(kUsageOrFiles,
                  "--depfile: neither image is a file: " + targets.image.name + " and " + targets.debug.name);
}

void RequireDistinct(const Targets& targets) {
    RequireDistinct("both images", targets.image, targets.debug);
    if (!targets.dependencies) return;
    for (const Target* image : {&targets.image, &targets.debug}) {
        RequireDistinct("an image and the dependency file", *image, *targets.dependencies);
    }
}

/// Throws Failure where a target is a source.
void RequireNoSource(const char* what, const Target& target, const std::vector<SourceFile>& files) {
    for (const SourceFile& file : files) {
        if (!target.stands || target.info.st_dev != file.device || target.info.st_ino != file.inode) continue;
        throw Failure(kUsageOrFiles, std::string(what) + " would replace a source: " + target.name);
    }
}

void RequireNoSource(const Targets& targets, const std::vector<SourceFile>& files) {
    RequireNoSource("the image", targets.image, files);
    RequireNoSource("the image", targets.debug, files);
    if (targets.dependencies) RequireNoSource("the dependency file", *targets.dependencies, files);
}

void AddMainSource(const std::string& source, std::vector<SourceFile>& files) {
    struct stat info {};
    const std::string path = MainSource(source);
    // Not known from the hook with another maker's parser library.
    if (files.empty() && stat(path.c_str(), &info) == 0) files.push_back({source, path, info.st_dev, info.st_ino, 0});
}

/// Stands between what a child has to say: its piece of the document, why it ended early, and what it says of comments
/// in included files. None of these has such a byte.
constexpr char kBetween = '\0';

/// What `run` gives; stores why it failed.
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
int ShowUnused(const SharedAllows& allows, FindingsOutput& output) {
    int code = kFine;
    for (const SourceFindings& unused : allows.Unused()) {
        SourceText text;
        output.Show(output.Piece(unused, text));
        if (unused.Count(Severity::kError) > 0) code = kSourceHasErrors;
    }
    return code;
}

/// What the dependency file says. Standard input, a pipe or a device is nothing that a later run could compare.
std::string Dependencies(const Targets& targets, const std::vector<SourceFile>& files) {
    if (!ServingParser().HasHook()) {
        throw Failure(kUsageOrFiles, "--depfile: another maker's parser library does not tell which files it reads");
    }
    std::vector<std::string> outputs;
    for (const Target* target : {&targets.image, &targets.debug}) {
        if (!target->direct) outputs.push_back(target->name);
    }
    std::vector<std::string> inputs;
    for (const SourceFile& file : files) {
        struct stat info {};
        const bool regular = stat(file.path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
        if (file.path == kStandardInput) continue;
        if (regular && std::find(inputs.begin(), inputs.end(), file.path) == inputs.end()) inputs.push_back(file.path);
    }
    return DependencyRules(outputs, inputs);
}

/// Both images as they are to be written.
struct Images {
    std::string image;
    std::string debug;
};

Images ImagesOf(const CompileOptions& options, std::optional<unsigned> timeStamp) {
    Images images;
    images.debug = WrittenImage(gccOutputD, IsWholeDebugImage);
    images.image = WrittenImage(gccOutput, IsWholeCompiledImage);
    if (timeStamp) {
        for (std::string* bytes : {&images.debug, &images.image}) SetTimeStamp(*bytes, *timeStamp);
    }
    if (options.emit == kEmitC) {
        const bool named = !options.image.empty() && options.image != "-";
        images.image = AsCArray(ArrayName(named ? options.image : PathOfSource(options.source)), images.image);
    }
    return images;
}

int Compile(const CompileOptions& options, FindingsOutput& output) {
    const std::string source = PathOfSource(options.source);
    const std::optional<unsigned> timeStamp = WantedTimeStamp(options.timeStamp);
    RequireReadable(source);
    const Targets targets(options);
    RequireDistinct(targets);
    RequireOneToCompare(targets);
    const Compilation compilation;
    CheckedSource checked = Check(source, options, output);
    AddMainSource(source, checked.files);
    RequireNoSource(targets, checked.files);
    if (!checked.valid) return kSourceHasErrors;
    Progress progress(source, "writing the images", options.begun);
    const Images images = ImagesOf(options, timeStamp);
    std::vector<OutputFile> files = {{targets.image, images.image}, {targets.debug, images.debug}};
    std::string dependencies;
    if (targets.dependencies) {
        dependencies = Dependencies(targets, checked.files);
        files.push_back({*targets.dependencies, dependencies});
    }
    // The bytes may go to the same terminal.
    if (std::any_of(files.begin(), files.end(), [](const OutputFile& file) { return file.target.direct; }))
        progress.Stop();
    WriteTogether(files);
    return kFine;
}

void RequireTextForRaw(const SourceOptions& options) {
    if (!options.report.raw || options.findings.format == "text") return;
    throw Failure(kUsageOrFiles, "--raw shows text, not " + options.findings.format);
}

void RequireNoLint(const Levels& levels) {
    const std::optional<std::string> code = levels.Shown(Origin::kLint);
    if (code) throw Failure(kUsageOrFiles, *code + " is a finding of 'zek check'; 'zek compile' does not look for it");
}

int RunCompile(const CompileOptions& options) {
    RequireTextForRaw(options);
    RequireNoLint(options.findings.levels);
    FindingsOutput output(options.findings);
    for (const std::string& file : {options.image, options.debugImage, options.dependencies}) {
        if (!output.IsDocument() || file != "-") continue;
        throw Failure(kUsageOrFiles, "the findings and a file would both go to standard output");
    }
    std::string why;
    const int code = GuardedWithReason(why, [&] { return Compile(options, output); });
    if (!why.empty()) output.ShowFailure(PathOfSource(options.source), why);
    output.Finish(code);
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
    worst = std::max(worst, ShowUnused(allows, output));
    output.Finish(worst);
    return worst;
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

Run PrepareCompile(Words& words) {
    const auto options = std::make_shared<CompileOptions>();
    words.File("SOURCE", options->source, "The source");
    words.FileOption("-o,--output", "IMAGE", options->image,
                     "The compiled image; default: SOURCE with .zki for its extension");
    words.FileOption("-g,--debug-image", "DEBUG", options->debugImage,
                     "The debug image; default: SOURCE with .zkd for its extension");
    words.Choice(
        "--emit", "FORM", {kEmitImage, kEmitC}, options->emit,
        "The compiled image as it is (image), or as an array in a source of C (c), then by default with .c for "
        "its extension; default: image");
    words.FileOption("--depfile", "FILE", options->dependencies,
                     "Also write which files were read, for Make and Ninja; only where the images are written");
    words.OptionalText("--timestamp", "SECONDS", options->timeStamp,
                       "The time stamp of both images, in seconds since 1970; default: SOURCE_DATE_EPOCH, else now");
    AddSourceOptions(words, *options);
    return [options] { return RunCompile(*options); };
}

Run PrepareCheck(Words& words) {
    const auto options = std::make_shared<CheckOptions>();
    options->lint = true;
    words.Files("SOURCE", options->sources, "The sources");
    AddSourceOptions(words, *options);
    return [options] { return RunCheck(*options); };
}

}  // namespace

const CommandSpec kCompileCommand = {
    "compile",
    "Check a source and write its compiled and its debug image",
    kCompileExample + std::string(kIncludeSearch),
    PrepareCompile,
    {"both images are written", "the source has errors", kWrongLineOrFile, nullptr},
    FindingsEnvironment({{"SOURCE_DATE_EPOCH",
                          "The time stamp of both images, in seconds since 1970, where --timestamp gives none."}})};
const CommandSpec kCheckCommand = {"check",
                                   "Check sources and write nothing",
                                   kCheckExample + std::string(kIncludeSearch),
                                   PrepareCheck,
                                   {"no source has errors", "a source has errors", kWrongLineOrFile, nullptr},
                                   FindingsEnvironment()};

}  // namespace zek::tool
