#include <memory>

#include "command.h"
#include "debug_lines.h"
#include "failure.h"
#include "joined_text.h"
#include "json_output.h"
#include "near_path.h"
#include "printable.h"
#include "progress.h"
#include "values_at.h"

namespace zek::tool {
namespace {

constexpr char kGetExample[] =
    "Example:\n"
    "  zek get board.zki SENSOR/CPU0_TEMP/THRESHOLD_FH --default 100\n"
    "\n"
    "PATH is the keyword of a section, its NAME or # and its ID, and a key as in the source: SENSOR/#7/TYPE.\n"
    "[QUORZEK], [PROPERTY], [SYSTEM], [GLOBAL], [REPEATER], [DEFINE], [IFDEF] and [INCLUDE] are named by the key\n"
    "alone: GLOBAL/G_Trim. One of several values is picked by its place, from 0: TAVRGROUP/All/SENSORS/2.\n"
    "TABLE/Curve/7 is the byte 7 of a table. A backslash makes a slash a part of a name.\n"
    "Values are shown as the compiler takes them, of a debug image, too: predefined names as their numbers, numbers\n"
    "in decimal and without a sign, several values with commas between them, \"unresolved\" for what stands for\n"
    "nothing. The first section that has the key counts; of a word that is defined twice, the value in the end.\n"
    "INCLUDE/FILE is all files that a source includes.";

struct GetOptions {
    std::string image;
    std::string path;
    std::optional<std::string> otherwise;
    bool json = false;
};

Json ValueOf(const ShownValue& value) { return value.number ? Json(*value.number) : JsonText(value.text); }

void WriteAsJson(const GetOptions& options, const FoundValues& found, StandardOutput& out) {
    JsonOutput json(out, "zek-get/1");
    json.Member("path", JsonText(options.path));
    json.Member("found", found.has_value());
    json.BeginArray("values");
    if (!found) json.Element(JsonText(*options.otherwise));
    for (const ShownValue& value : found.value_or(std::vector<ShownValue>())) json.Element(ValueOf(value));
    json.End();
    json.Finish();
}

int RunGet(const GetOptions& options) {
    const SectionPath path = ParsePath(options.path);
    const Progress progress(options.image, "reading");
    const Image image(options.image);
    ShowPhase("looking for the value");
    const FoundValues found = ValuesAt(image, path);
    if (!found && !options.otherwise) {
        NearPath near(path);
        image.ForEachSectionOf(path.keyword, [&](const ShownSection& section) { near.Add(section); });
        if (path.keyword == "DEFINE" && image.Kind() == ImageKind::kDebug) {
            for (const auto& [word, number] : GivenWords(image.Source(), image.Names())) near.AddKey(word);
        }
        throw Failure(kSourceHasErrors, options.image + " has no value " + Printable(options.path) + near.Told());
    }
    StandardOutput out;
    if (options.json) {
        WriteAsJson(options, found, out);
    } else {
        out.Write((found ? Printable(Joined(*found, ",", &ShownValue::text)) : *options.otherwise) + '\n');
        out.Finish();
    }
    return kFine;
}

Run PrepareGet(Words& words) {
    const auto options = std::make_shared<GetOptions>();
    words.File("IMAGE", options->image, "The image");
    words.Argument("PATH", options->path, "What to show, such as SENSOR/CPU0_TEMP/ID");
    words.OptionalText("--default", "TEXT", options->otherwise, "Print this where the image has no such value");
    words.Flag("--json", options->json, "As JSON");
    return [options] { return RunGet(*options); };
}

}  // namespace

const CommandSpec kGetCommand = {
    "get",
    "Show one value of an image, for scripts",
    kGetExample,
    PrepareGet,
    {"the value is there, or --default was given", "the image has no such value", kWrongLineOrFile, kNotValid}};

}  // namespace zek::tool
