#include <algorithm>
#include <memory>

#include "command.h"
#include "failure.h"
#include "format.h"
#include "memory_file.h"
#include "output_file.h"
#include "printable.h"
#include "progress.h"
#include "streams.h"

namespace zek::tool {
namespace {

constexpr char kFmtExample[] =
    "Example:\n"
    "  zek fmt boards/*.zek\n"
    "\n"
    "Takes away the white space at both ends of each line, and aligns the first '=' of the items of a section, but\n"
    "for keys of more than 64 characters. Every line stays on its line, and the images and all messages stay what\n"
    "they were. Lines stay as they are where they are joined by a backslash, have a NUL or a carriage return inside,\n"
    "or would change their meaning.\n"
    "Without a FILE, and where it is -, standard input goes to standard output. With --check, nothing is written, and\n"
    "standard output has the names of the files that would change.";

struct FmtOptions {
    std::vector<std::string> files;
    bool check = false;  ///< write nothing, tell what would change
};

/// The name of standard input and output.
constexpr char kStandard[] = "-";

int Check(const std::string& file, bool changes, StandardOutput& out) {
    if (changes) out.Write(Printable(file) + '\n');
    return changes ? kSourceHasErrors : kFine;
}

int Format(const std::string& file, const FmtOptions& options, StandardOutput& out) {
    const Progress progress(file, "laying out");
    const std::string text = ReadSource(file);
    const std::string formatted = Formatted(text);
    if (options.check) return Check(file, formatted != text, out);
    if (file == kStandard) {
        out.Write(formatted);
    } else if (formatted != text) {
        WriteTogether({{TargetOf(file), formatted}});
    }
    return kFine;
}

int RunFmt(const FmtOptions& options) {
    StandardOutput out;
    int worst = kFine;
    for (const std::string& file : options.files.empty() ? std::vector<std::string>{kStandard} : options.files) {
        worst = std::max(worst, Guarded([&] { return Format(file, options, out); }));
    }
    out.Finish();
    return worst;
}

Run PrepareFmt(Words& words) {
    const auto options = std::make_shared<FmtOptions>();
    words.AnyFiles("FILE", options->files, "The sources; default: standard input");
    words.Flag("--check", options->check, "Write nothing, tell which files would change");
    return [options] { return RunFmt(*options); };
}

}  // namespace

const CommandSpec kFmtCommand = {"fmt",
                                 "Lay out sources without changing what they mean",
                                 kFmtExample,
                                 PrepareFmt,
                                 {kDone, "with --check: a file would change", kWrongLineOrFile, nullptr}};

}  // namespace zek::tool
