#include "decompile.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>

#include "command.h"
#include "debug_source.h"
#include "failure.h"
#include "image_check.h"
#include "memory_file.h"
#include "paths.h"
#include "printable.h"
#include "progress.h"
#include "recompile.h"
#include "source_folder.h"
#include "streams.h"
#include "time_stamp.h"

namespace zek::tool {
namespace {

constexpr char kDecompileExample[] =
    "Example:\n"
    "  zek decompile board.zkd -o board\n"
    "\n"
    "Of a debug image, the files of its source: each header and item stands on its line of its file; comments and "
    "what\n"
    "the compiler ignored are lost. Of a compiled image, a source with made-up words that compiles to the same bytes.\n"
    "A file that would stand outside of DIR goes to another place inside it, and no file that stands is replaced. The\n"
    "source is compiled, inside DIR, and compared, time stamps aside, before anything is said; where it differs, or "
    "the\n"
    "language cannot express the image, nothing is kept. Words that no item defines are told as what to give -D of\n"
    "'zek compile', and given to the compilation here.\n"
    "With -o, standard output has the path of the main source; without it, a source of one file. An IMAGE of - is\n"
    "standard input.";

struct DecompileOptions {
    std::string image;
    std::string folder;  ///< where the files go; empty for standard output
};

/// What the source of a compiled image is called: a name that may stand in any source.
std::string NameOfSource(const std::string& image) {
    std::string stem = image == "-" ? "main" : std::filesystem::path(image).stem().string();
    const auto isOdd = [](unsigned char c) { return !std::isalnum(c) && c != '-' && c != '_' && c != '.'; };
    std::replace_if(stem.begin(), stem.end(), isOdd, '_');
    return (stem.empty() ? "main" : stem) + ".zek";
}

/// An image, and the source that was made of it.
struct Work {
    std::string bytes;
    ImageKind kind;
    Decompiled made;
};

Decompiled DecompileKnown(const std::string& file, const std::string& bytes, ImageKind kind) {
    if (kind == ImageKind::kCompiled) {
        const ImageView view = OpenCompiledImage(file, bytes);
        ShowPhase("making the source");
        return DecompileCompiled(view, NameOfSource(file));
    }
    const DebugCheck check = CheckedDebugImage(file, bytes);
    ShowPhase("making the source");
    if (check.lacksFileList) throw CannotExpress("the image has no list of source files");
    return DecompileDebug(bytes);
}

/// Compiles what was made, by that name in that folder, and throws where it differs from what it was made of.
void RequireSame(const Work& work, const std::string& folder, const std::string& main) {
    ShowPhase("compiling the source");
    const Recompiled again = Recompile(folder, main, work.made.definitions);
    if (!again.valid) {
        Tell(again.messages);
        throw Failure(kSourceHasErrors, "the source that was made does not compile");
    }
    ShowPhase("comparing");
    const bool compiled = work.kind == ImageKind::kCompiled;
    const auto where = FirstDifference(compiled ? work.bytes : ImageBehind(work.bytes), again.image);
    if (where) {
        throw CannotExpress("the compiled image of the source that was made differs at byte " + std::to_string(*where));
    }
    const std::string debugWhere = work.made.debugDifference ? work.made.debugDifference(again.debug, main) : "";
    if (!debugWhere.empty()) {
        throw CannotExpress("the debug image of the source that was made differs: " + debugWhere);
    }
    for (const std::string& definition : work.made.definitions) {
        Tell("zek: note: no item of the source defines this word: compile it with -D " + Printable(definition) + '\n');
    }
}

void ToFolder(const Work& work, const std::string& folder, StandardOutput& out) {
    SourceFolder written(folder, work.made.files);
    RequireSame(work, folder, work.made.main);
    // The very name that was compiled, where it is a path.
    const bool isPath = work.made.main.find('\\') == std::string::npos;
    out.Write(InFolder(folder, isPath ? work.made.main : work.made.files.front().path) + '\n');
    // Nothing stays where nobody is told of it.
    out.Finish();
    written.Keep();
}

void ToStandardOutput(const Work& work, StandardOutput& out) {
    if (work.made.files.size() > 1) {
        throw Failure(kUsageOrFiles, "the source has " + std::to_string(work.made.files.size()) +
                                         " files and needs a folder for them: -o DIR");
    }
    const MemoryFile source(work.made.files.front().text);
    RequireSame(work, {}, source.Name());
    out.Write(work.made.files.front().text);
}

int RunDecompile(const DecompileOptions& options) {
    const Progress progress(options.image, "reading");
    Work work = {BytesOfImage(options.image), ImageKind::kNone, {}};
    work.kind = RequireKind(options.image, work.bytes);
    work.made = DecompileKnown(options.image, work.bytes, work.kind);
    StandardOutput out;
    const bool toFolder = !options.folder.empty() && options.folder != "-";
    toFolder ? ToFolder(work, options.folder, out) : ToStandardOutput(work, out);
    out.Finish();
    return kFine;
}

Run PrepareDecompile(Words& words) {
    const auto options = std::make_shared<DecompileOptions>();
    words.File("IMAGE", options->image, "The image, compiled or debug");
    words.FileOption("-o,--output", "DIR", options->folder,
                     "Write the files to this folder; default, and -: standard output");
    return [options] { return RunDecompile(*options); };
}

}  // namespace

Failure CannotExpress(const std::string& what) { return Failure(kSourceHasErrors, what); }

const CommandSpec kDecompileCommand = {
    "decompile",
    "Make a source of an image that compiles to the same image",
    kDecompileExample,
    PrepareDecompile,
    {"the source is written, and compiles to the same image",
     "the language cannot express the image, or the source compiles to another", kWrongLineOrFile, kNotValid}};

}  // namespace zek::tool
