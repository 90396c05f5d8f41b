#include <memory>
#include <optional>

#include "command.h"
#include "diff.h"
#include "failure.h"
#include "json_output.h"
#include "printable.h"
#include "progress.h"
#include "section_path.h"

namespace zek::tool {
namespace {

constexpr char kDiffExample[] =
    "Example:\n"
    "  zek diff old.zki new.zki\n"
    "\n"
    "Both images are compiled ones, or both debug images. Sections are told by their names, so identifiers that were\n"
    "given out anew make no difference. A section with the same content under another name was renamed. With "
    "--breaking\n"
    "only what breaks a host is shown: a name that was removed or renamed, a value or section of another type, an ID\n"
    "that changed. Rows of a [TABLE] are compared as they were written in debug images, as bytes in compiled ones.";

struct DiffOptions {
    std::string before;
    std::string after;
    bool breaking = false;
    bool json = false;
};

const char* NameOf(Change change) {
    constexpr const char* kNames[] = {"added", "removed", "changed", "renamed"};
    return kNames[static_cast<std::size_t>(change)];
}

std::string Told(const Difference& difference) {
    const std::string path = Printable(PathTo(difference.keyword, difference.name, difference.key));
    const std::string text = std::string(NameOf(difference.change)) + ' ' + path;
    const std::string before = Quoted(difference.before);
    const std::string after = Quoted(difference.after);
    if (difference.change == Change::kRenamed) {
        return text + " to " + Printable(PathTo(difference.keyword, difference.after, ""));
    }
    if (difference.key.empty()) return text;
    if (difference.change == Change::kChanged) return text + ": " + before + " to " + after;
    return text + ": " + (difference.change == Change::kAdded ? after : before);
}

Json JsonOf(const Difference& difference) {
    Json json = {{"change", NameOf(difference.change)},
                 {"path", JsonText(PathTo(difference.keyword, difference.name, difference.key))},
                 {"section", difference.keyword}};
    if (HasName(difference.keyword)) json["name"] = JsonText(difference.name);
    if (!difference.key.empty()) {
        json["key"] = JsonText(difference.key);
        if (difference.change != Change::kAdded) json["old"] = JsonText(difference.before);
        if (difference.change != Change::kRemoved) json["new"] = JsonText(difference.after);
    }
    if (difference.change == Change::kRenamed) json["newName"] = JsonText(difference.after);
    json["breaking"] = difference.breaks;
    return json;
}

int RunDiff(const DiffOptions& options) {
    const Progress progress(options.before, "reading");
    const DescribedImage before = Describe(options.before);
    const DescribedImage after = Describe(options.after);
    if (before.kind != after.kind) throw Failure(kUsageOrFiles, "one image is compiled, the other a debug image");
    ShowPhase("comparing");
    StandardOutput out;
    std::optional<JsonOutput> json;
    if (options.json) {
        json.emplace(out, "zek-diff/1");
        json->BeginArray("differences");
    }
    bool differ = false;
    Compare(before, after, [&](const Difference& difference) {
        if (options.breaking && !difference.breaks) return;
        differ = true;
        if (json) {
            json->Element(JsonOf(difference));
        } else {
            out.Write(Told(difference) + '\n');
        }
    });
    if (json) {
        json->End();
        json->Finish();
    }
    out.Finish();
    return differ ? kSourceHasErrors : kFine;
}

Run PrepareDiff(Words& words) {
    const auto options = std::make_shared<DiffOptions>();
    words.File("OLD", options->before, "The image as it was");
    words.File("NEW", options->after, "The image as it is");
    words.Flag("--breaking", options->breaking, "Show only what breaks a host");
    words.Flag("--json", options->json, "As JSON");
    return [options] { return RunDiff(*options); };
}

}  // namespace

const CommandSpec kDiffCommand = {"diff",
                                  "Show by name what differs between two images",
                                  kDiffExample,
                                  PrepareDiff,
                                  {"nothing is shown", "a difference is shown", kWrongLineOrFile, kNotValid}};

}  // namespace zek::tool
