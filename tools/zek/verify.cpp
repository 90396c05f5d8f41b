#include <algorithm>
#include <memory>

#include "command.h"
#include "image_check.h"
#include "memory_file.h"
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
    "is odd but valid. An IMAGE of - is standard input.";

struct VerifyOptions {
    std::vector<std::string> images;
    bool notes = false;  ///< show what is odd, too
};

void Verify(const std::string& file, bool showNotes, StandardOutput& out) {
    const std::string bytes = ReadFile(file);
    const ImageKind kind = RequireKind(file, bytes);
    const std::string name = Printable(file) + ": ";
    ShowNote showNote;
    if (showNotes) showNote = [&](const std::string& note) { out.Write(name + "note: " + Printable(note) + '\n'); };
    const ImageSize size = CheckImage(kind, file, bytes, showNote);
    out.Write(name + "ok: " + (kind == ImageKind::kCompiled ? "compiled" : "debug") + " image, " +
              Counted(size.sections, "section", "sections") + ", " + Counted(size.entries, "entry", "entries") + ", " +
              Counted(size.notes, "note", "notes") + '\n');
}

int RunVerify(const VerifyOptions& options) {
    StandardOutput out;
    int worst = kFine;
    for (const std::string& file : options.images) {
        const int code = Guarded([&] {
            Verify(file, options.notes, out);
            return static_cast<int>(kFine);
        });
        // At once, so that the lines of both streams come in the order of the images.
        out.Finish();
        worst = std::max(worst, code);
    }
    return worst;
}

Run PrepareVerify(Words& words) {
    const auto options = std::make_shared<VerifyOptions>();
    words.Files("IMAGE", options->images, "The images");
    words.Flag("--notes", options->notes, "Show each note");
    return [options] { return RunVerify(*options); };
}

}  // namespace

const CommandSpec kVerifyCommand = {"verify", "Tell whether images are valid, and if not, what is wrong where",
                                    kVerifyExample, PrepareVerify};

}  // namespace zek::tool
