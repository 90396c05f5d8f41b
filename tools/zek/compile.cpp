#include "compile.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "failure.h"
#include "image_bytes.h"
#include "memory_file.h"
#include "output_file.h"
#include "parser_library.h"
#include "paths.h"
#include "printable.h"
#include "source_index.h"
#include "source_reading.h"
#include "streams.h"
#include "zekcomp/compiler.h"

namespace zek::tool {
namespace {

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

/// Tells what the library has said so far, which is all that it will say, and ends the command.
[[noreturn]] void GiveUp(const std::string& source, const Options& options, const std::string& why) {
    const std::vector<SourceFile> none;
    SourceIndex index{ParserLibrary()};
    Report report(options.report, source, none, index);
    report.Add(TakeMessages(), {});
    Tell(report.Text());
    throw Failure(kUsageOrFiles, why);
}

ParserLibrary RequireParser(const std::string& source, const Options& options) {
    ParserLibrary parser = ServingParser();
    if (parser.path.empty()) {
        GiveUp(source, options, "there is no section-file parser library to read sources with");
    }
    if (!parser.Serves()) {
        GiveUp(source, options, parser.path + " lacks functions of a section-file parser library");
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
};

/// Reads and checks a source and tells what there is to tell. The model stays for the outputs.
CheckedSource Check(const std::string& source, const Options& options) {
    RequireReadable(source);
    const ParserLibrary parser = RequireParser(source, options);
    SourceReading reading(parser, IncludeSearch(options.includes, BuiltInFolder()), options.mostFiles);
    if (!gccCompStart(source)) {
        const std::string why = parser.HasHook() ? WhyRefused(MainSource(source)) : "the parser library refuses it";
        GiveUp(source, options, "cannot read " + source + ": " + why);
    }
    gccParse();
    reading.Stop();
    const std::vector<Message> whileReading = TakeMessages();
    CheckedSource checked;
    checked.files = reading.Files();
    const bool passed = gccCheck();
    SourceIndex index(parser);
    Report report(options.report, source, checked.files, index);
    report.Add(whileReading, TakeMessages());
    Tell(report.Text());
    checked.valid = passed && report.Losses() == 0;
    return checked;
}

std::string WithExtension(const std::string& source, const std::string& extension) {
    return std::filesystem::path(MainSource(source)).replace_extension(extension).string();
}

/// Throws Failure where a target is a source or both are one file. A character device such as /dev/null may be both.
void RequireDistinct(const Target& image, const Target& debug, const std::vector<SourceFile>& files) {
    const bool device = image.stands && S_ISCHR(image.info.st_mode);
    if (IsSameFile(image, debug) && !device) {
        throw Failure(kUsageOrFiles, "both images would go to the same file: " + image.name + " and " + debug.name);
    }
    for (const Target* target : {&image, &debug}) {
        for (const SourceFile& file : files) {
            if (!target->stands || target->info.st_dev != file.device || target->info.st_ino != file.inode) continue;
            throw Failure(kUsageOrFiles, "the image would replace a source: " + target->name);
        }
    }
}

/// What an output call of the library writes. It does not examine its own write errors, so the bytes are examined here.
std::string Written(unsigned (*output)(const std::string&), bool (*isWhole)(std::string_view)) {
    const MemoryFile file;
    const bool written = output(file.Name());
    std::string bytes = file.Bytes();
    if (written && isWhole(bytes)) return bytes;
    throw Failure(kUsageOrFiles,
                  "cannot hold the image in memory: it was cut short after " + std::to_string(bytes.size()) + " bytes");
}

void AddMainSource(const std::string& source, std::vector<SourceFile>& files) {
    struct stat info {};
    const std::string path = MainSource(source);
    // Not known from the hook with another maker's parser library.
    if (files.empty() && stat(path.c_str(), &info) == 0) files.push_back({source, path, info.st_dev, info.st_ino, 0});
}

int CheckInThisProcess(const std::string& source, const Options& options) {
    const Compilation compilation;
    return Check(source, options).valid ? kFine : kSourceHasErrors;
}

/// The exit code of a child; a signal that ended it is told.
int CodeOf(int status, const std::string& source) {
    if (WIFEXITED(status)) return WEXITSTATUS(status);
    Tell("zek: the check of " + Printable(source) + " was ended by a signal: " + strsignal(WTERMSIG(status)) + '\n');
    return kUsageOrFiles;
}

/// The library's order of kinds and its list of files outlive a compilation, so each source gets a process as fresh as
/// this one still is.
int CheckInChild(const std::string& source, const Options& options) {
    const pid_t child = fork();
    if (child < 0) throw SystemFailure("cannot start a process");
    if (child == 0) _exit(Guarded([&] { return CheckInThisProcess(source, options); }));
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) throw SystemFailure("cannot wait for a process");
    }
    return CodeOf(status, source);
}

}  // namespace

int RunCompile(const Options& options) {
    const std::string& source = options.files.front();
    RequireReadable(source);
    const Target image = TargetOf(options.image.empty() ? WithExtension(source, ".zki") : options.image);
    const Target debug = TargetOf(options.debugImage.empty() ? WithExtension(source, ".zkd") : options.debugImage);
    RequireDistinct(image, debug, {});
    const Compilation compilation;
    CheckedSource checked = Check(source, options);
    AddMainSource(source, checked.files);
    RequireDistinct(image, debug, checked.files);
    if (!checked.valid) return kSourceHasErrors;
    const std::string debugBytes = Written(gccOutputD, IsWholeDebugImage);
    const std::string imageBytes = Written(gccOutput, IsWholeCompiledImage);
    WriteTogether({{image, imageBytes}, {debug, debugBytes}});
    return kFine;
}

int RunCheck(const Options& options) {
    int worst = kFine;
    for (const std::string& source : options.files) worst = std::max(worst, CheckInChild(source, options));
    return worst;
}

}  // namespace zek::tool
