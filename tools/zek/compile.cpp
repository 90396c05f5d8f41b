#include <sys/stat.h>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>

#include "c_array.h"
#include "command.h"
#include "dependency_file.h"
#include "failure.h"
#include "image_bytes.h"
#include "output_file.h"
#include "parser_library.h"
#include "paths.h"
#include "progress.h"
#include "source_check.h"
#include "terminal_line.h"
#include "time_stamp.h"
#include "written_image.h"

namespace zek::tool {
namespace {

constexpr char kCompileExample[] =
    "Example:\n"
    "  zek compile board.zek -o out/board.zki -g out/board.zkd -I common\n"
    "\n"
    "Both images are written whole or not at all; where something is wrong, those that are there stay as they are.\n"
    "A SOURCE of - is standard input, an IMAGE of - standard output. With the variable SOURCE_DATE_EPOCH, or with\n"
    "--timestamp, which comes first, the same source always gives the same bytes.\n";

constexpr char kEmitImage[] = "image";
constexpr char kEmitC[] = "c";

struct CompileOptions : SourceOptions {
    std::string source;
    std::string image;         ///< where the compiled image goes; empty for the default
    std::string debugImage;    ///< where the debug image goes; empty for the default
    std::string dependencies;  ///< where the dependency file goes; empty for nowhere
    std::string emit = kEmitImage;
    std::optional<std::string> timeStamp;  ///< seconds; none for the environment's or the library's
};

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
    const Progress progress(source, "writing the images");
    const Images images = ImagesOf(options, timeStamp);
    std::vector<OutputFile> files = {{targets.image, images.image}, {targets.debug, images.debug}};
    std::string dependencies;
    if (targets.dependencies) {
        dependencies = Dependencies(targets, checked.files);
        files.push_back({*targets.dependencies, dependencies});
    }
    // The bytes may go to the same terminal.
    if (std::any_of(files.begin(), files.end(), [](const OutputFile& file) { return file.target.direct; }))
        EndTerminalLine();
    WriteTogether(files);
    return kFine;
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

}  // namespace

const CommandSpec kCompileCommand = {
    "compile",
    "Check a source and write its compiled and its debug image",
    kCompileExample + std::string(kIncludeSearch),
    PrepareCompile,
    {"both images are written", "the source has errors", kWrongLineOrFile, nullptr},
    FindingsEnvironment({{"SOURCE_DATE_EPOCH",
                          "The time stamp of both images, in seconds since 1970, where --timestamp gives none."}})};

}  // namespace zek::tool
