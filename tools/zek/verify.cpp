#include <algorithm>
#include <memory>

#include "command.h"
#include "image_check.h"
#include "json_output.h"
#include "memory_file.h"
#include "pair_check.h"
#include "printable.h"
#include "streams.h"

namespace zek::tool {
namespace {

constexpr char kVerifyExample[] =
    "Example:\n"
    "  zek verify board.zki board.zkd\n"
    "\n"
    "Reads all of each image, compiled or debug, and says that it is ok, or what is wrong where: section and entry,\n"
    "the reason, a code for scripts, the offset in bytes. The exit code is that of the worst image. Notes count what\n"
    "is odd but valid. An IMAGE of - is standard input.\n"
    "\n"
    "  zek verify --pair board.zki board.zkd\n"
    "\n"
    "says whether the compiled image is what the debug image compiles to, time stamps aside, and ends with 1 where\n"
    "it is not.";

struct VerifyOptions {
    std::vector<std::string> images;
    bool notes = false;  ///< show what is odd, too
    bool json = false;
    bool pair = false;  ///< the images are a compiled and a debug image; compare them
};

/// What there is to say of an image that is valid.
struct Verdict {
    ImageKind kind;
    ImageSize size;
};

Verdict Verify(const std::string& file, const ShowNote& showNote) {
    const std::string bytes = ReadFile(file);
    const ImageKind kind = RequireKind(file, bytes);
    return {kind, CheckImage(kind, file, bytes, showNote)};
}

void WriteVerdict(const std::string& file, bool showNotes, StandardOutput& out) {
    const std::string name = Printable(file) + ": ";
    ShowNote showNote;
    if (showNotes) {
        showNote = [&](const ImageFault& note) { out.Write(name + "note: " + Printable(note.Told()) + '\n'); };
    }
    const auto [kind, size] = Verify(file, showNote);
    out.Write(name + "ok: " + NameOf(kind) + " image, " + Counted(size.sections, "section", "sections") + ", " +
              Counted(size.entries, "entry", "entries") + ", " + Counted(size.notes, "note", "notes") + '\n');
}

Json Fault(const ImageFault& fault) {
    return {{"place", fault.place}, {"text", fault.sentence}, {"code", fault.code}, {"offset", fault.offset}};
}

/// Of a valid image its size, of another one what is wrong; what ends the command is told on standard error too.
void AddVerdict(const std::string& file, bool showNotes, Json& json) {
    Json notes = Json::array();
    ShowNote showNote;
    if (showNotes) showNote = [&](const ImageFault& note) { notes.push_back(Fault(note)); };
    try {
        const auto [kind, size] = Verify(file, showNote);
        json["valid"] = true;
        json["image"] = NameOf(kind);
        json["sections"] = size.sections;
        json["entries"] = size.entries;
        json["noteCount"] = size.notes;
        if (showNotes) json["notes"] = std::move(notes);
    } catch (const NoImage& failure) {
        json["valid"] = false;
        json["fault"] = Fault(failure.Fault());
        throw;
    }
}

int RunVerifyAsText(const VerifyOptions& options) {
    StandardOutput out;
    int worst = kFine;
    for (const std::string& file : options.images) {
        const int code = Guarded([&] {
            WriteVerdict(file, options.notes, out);
            return static_cast<int>(kFine);
        });
        // At once, so that the lines of both streams come in the order of the images.
        out.Finish();
        worst = std::max(worst, code);
    }
    return worst;
}

int RunVerifyAsJson(const VerifyOptions& options) {
    StandardOutput out;
    JsonOutput all(out, "zek-verify/1");
    all.BeginArray("images");
    int worst = kFine;
    for (const std::string& file : options.images) {
        Json json = {{"file", JsonText(file)}};
        const int code = Guarded([&] {
            AddVerdict(file, options.notes, json);
            return static_cast<int>(kFine);
        });
        json["exitCode"] = code;
        all.Element(json);
        worst = std::max(worst, code);
    }
    all.End();
    all.Finish();
    return worst;
}

int RunVerify(const VerifyOptions& options) {
    if (options.pair && (options.json || options.notes)) {
        throw Failure(kUsageOrFiles, "--pair goes neither with --json nor with --notes");
    }
    if (options.pair) return VerifyPair(options.images);
    return options.json ? RunVerifyAsJson(options) : RunVerifyAsText(options);
}

Run PrepareVerify(Words& words) {
    const auto options = std::make_shared<VerifyOptions>();
    words.Files("IMAGE", options->images, "The images");
    words.Flag("--notes", options->notes, "Show each note");
    words.Flag("--json", options->json, "As JSON");
    words.Flag("--pair", options->pair, "Tell whether two images, IMAGE and DEBUG, are of one compilation");
    return [options] { return RunVerify(*options); };
}

}  // namespace

const CommandSpec kVerifyCommand = {"verify", "Tell whether images are valid, and if not, what is wrong where",
                                    kVerifyExample, PrepareVerify};

}  // namespace zek::tool
