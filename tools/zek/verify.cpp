#include "verify.h"

#include <algorithm>

#include "image_check.h"
#include "memory_file.h"
#include "printable.h"
#include "streams.h"

namespace zek::tool {
namespace {

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

}  // namespace

int RunVerify(const Options& options) {
    StandardOutput out;
    int worst = kFine;
    for (const std::string& file : options.files) {
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

}  // namespace zek::tool
