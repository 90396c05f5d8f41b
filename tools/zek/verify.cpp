#include <algorithm>
#include <functional>
#include <memory>
#include <optional>

#include "command.h"
#include "image_check.h"
#include "json_output.h"
#include "pair_check.h"
#include "printable.h"
#include "progress.h"
#include "streams.h"

namespace zek::tool {
namespace {

constexpr char kVerifyExample[] =
    "Example:\n"
    "  zek verify board.zki board.zkd\n"
    "  zek verify --pair board.zki board.zkd\n"
    "\n"
    "Reads all of each image, compiled or debug, and says that it is ok, or what is wrong where: section and entry,\n"
    "the reason, a code for scripts, the offset in bytes. The exit code is that of the worst image. Notes count what\n"
    "is odd but valid. An IMAGE of - is standard input.\n"
    "\n"
    "With --pair, it says whether the compiled image is what the debug image compiles to, time stamps aside.";

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
    const Progress progress(file, "reading");
    const std::string bytes = BytesOfImage(file);
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

/// How the verification of an image or of a pair ended.
struct Ending {
    int code = kFine;
    std::optional<NoImage> fault;  ///< what is wrong where an image is not valid
    std::string reason;            ///< what else ended it, such as a file that is missing
};

Ending GuardedVerify(const std::function<void()>& verify) {
    Ending ending;
    ending.code = GuardedEach([&]() -> int {
        try {
            verify();
        } catch (const NoImage& failure) {
            ending.fault = failure;
            throw;
        } catch (const std::exception& error) {
            ending.reason = WhyEnded(error);
            throw;
        }
        return kFine;
    });
    return ending;
}

void WriteEnding(const Ending& ending, JsonOutput& json) {
    if (ending.fault) json.Member("fault", Fault(ending.fault->Fault()));
    if (!ending.reason.empty()) json.Member("reason", JsonText(ending.reason));
    json.Member("exitCode", ending.code);
}

/// Of a valid image its size, of another one what is wrong; what ends the verification is told on standard error too.
/// Notes come first, each when it is found: an image may have as many as it has words.
int WriteVerdictAsJson(const std::string& file, bool showNotes, JsonOutput& json) {
    json.BeginObject();
    json.Member("file", JsonText(file));
    ShowNote showNote;
    if (showNotes) {
        json.BeginArray("notes");
        showNote = [&](const ImageFault& note) { json.Element(Fault(note)); };
    }
    std::optional<Verdict> verdict;
    const Ending ending = GuardedVerify([&] { verdict = Verify(file, showNote); });
    if (showNotes) json.End();
    if (verdict || ending.fault) json.Member("valid", verdict.has_value());
    if (verdict) {
        json.Member("image", NameOf(verdict->kind));
        json.Member("sections", verdict->size.sections);
        json.Member("entries", verdict->size.entries);
        json.Member("noteCount", verdict->size.notes);
    }
    WriteEnding(ending, json);
    json.End();
    return ending.code;
}

int RunVerifyAsText(const VerifyOptions& options) {
    StandardOutput out;
    int worst = kFine;
    for (const std::string& file : options.images) {
        const int code = GuardedEach([&]() -> int {
            WriteVerdict(file, options.notes, out);
            return kFine;
        });
        // At once, so that the lines of both streams come in the order of the images.
        out.Finish();
        worst = std::max(worst, code);
    }
    return worst;
}

int RunVerifyAsJson(const VerifyOptions& options) {
    StandardOutput out;
    JsonOutput json(out, "zek-verify/2");
    json.BeginArray("images");
    int worst = kFine;
    for (const std::string& file : options.images) {
        worst = std::max(worst, WriteVerdictAsJson(file, options.notes, json));
    }
    json.End();
    json.Finish();
    return worst;
}

/// Verifies a pair, and throws where the images do not belong together.
void RequirePair(const std::vector<std::string>& images, std::optional<VerifiedPair>& pair) {
    const Progress progress(images[0], "reading");
    pair = VerifyPair(images[0], images[1]);
    RequireBelonging(*pair);
}

int RunPairAsText(const std::vector<std::string>& images) {
    std::optional<VerifiedPair> pair;
    RequirePair(images, pair);
    StandardOutput out;
    out.Write(Printable(pair->image) + " and " + Printable(pair->debug) + ": ok: they belong together\n");
    out.Finish();
    return kFine;
}

int RunPairAsJson(const std::vector<std::string>& images) {
    std::optional<VerifiedPair> pair;
    const Ending ending = GuardedVerify([&] { RequirePair(images, pair); });
    StandardOutput out;
    JsonOutput json(out, "zek-verify-pair/2");
    json.BeginArray("files");
    for (const std::string& file : images) json.Element(JsonText(file));
    json.End();
    if (pair) {
        json.Member("image", JsonText(pair->image));
        json.Member("debug", JsonText(pair->debug));
        json.Member("pair", !pair->difference);
    }
    if (pair && pair->difference) {
        const auto& [imageSize, compiledSize, offset] = *pair->difference;
        json.Member("difference", {{"imageSize", imageSize}, {"compiledSize", compiledSize}, {"offset", offset}});
    }
    if (ending.fault) json.Member("faultyFile", JsonText(ending.fault->File()));
    WriteEnding(ending, json);
    json.Finish();
    return ending.code;
}

int RunPair(const VerifyOptions& options) {
    if (options.notes) throw Failure(kUsageOrFiles, "--pair does not go with --notes");
    if (options.images.size() != 2) throw Failure(kUsageOrFiles, "--pair takes two images, IMAGE and DEBUG");
    return options.json ? RunPairAsJson(options.images) : RunPairAsText(options.images);
}

int RunVerify(const VerifyOptions& options) {
    if (options.pair) return RunPair(options);
    return options.json ? RunVerifyAsJson(options) : RunVerifyAsText(options);
}

Run PrepareVerify(Words& words) {
    const auto options = std::make_shared<VerifyOptions>();
    words.Files("IMAGE", options->images, "The images");
    words.Flag("--notes", options->notes, "Show each note");
    words.Flag("--json", options->json, "As JSON; with --pair, too");
    words.Flag("--pair", options->pair, "Tell whether two images, IMAGE and DEBUG, are of one compilation");
    return [options] { return RunVerify(*options); };
}

}  // namespace

const CommandSpec kVerifyCommand = {"verify",
                                    "Tell whether images are valid, and if not, what is wrong where",
                                    kVerifyExample,
                                    PrepareVerify,
                                    {"all images are valid; with --pair they belong together",
                                     "with --pair: the images do not belong together", kWrongLineOrFile, kNotValid}};

}  // namespace zek::tool
