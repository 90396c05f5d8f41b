#include <memory>

#include "command.h"
#include "failure.h"
#include "json_output.h"
#include "printable.h"
#include "section_path.h"
#include "values.h"

namespace zek::tool {
namespace {

constexpr char kGetExample[] =
    "Example:\n"
    "  zek get board.zki SENSOR/CPU0_TEMP/THRESHOLD_FH --default 100\n"
    "\n"
    "PATH is the keyword of a section, its NAME or # and its ID, and a key as in the source: SENSOR/#7/TYPE.\n"
    "[QUORZEK], [PROPERTY], [SYSTEM], [GLOBAL], [REPEATER], [DEFINE] and [IFDEF] are named by the key alone:\n"
    "GLOBAL/G_Trim. One of several values is picked by its place, from 0: TAVRGROUP/All/SENSORS/2. In a compiled\n"
    "image TABLE/Curve/7 is the byte 7 of a table. A backslash makes a slash a part of a name. Predefined names are\n"
    "shown as their numbers, numbers in decimal, several values with commas between them. The first section that has\n"
    "the key counts.";

struct GetOptions {
    std::string image;
    std::string path;
    std::optional<std::string> otherwise;
    bool json = false;
};

using Found = std::optional<std::vector<ShownValue>>;

/// The byte of a table; nothing where the key is no number of one.
Found ByteOfTable(const Image& image, const SectionPath& path, const std::string& table) {
    Found found;
    image.ForEachBlock([&](const ShownBlock& block) {
        if (found || block.name != table) return;
        for (unsigned row = 0; row < block.bytes.size(); ++row) {
            if (std::to_string(row) != path.key) continue;
            const auto byte = static_cast<unsigned char>(block.bytes[row]);
            found = {{std::to_string(byte), byte}};
        }
    });
    return found;
}

Found Find(const Image& image, const SectionPath& path) {
    Found found;
    std::optional<std::string> table;
    const Values values(image);
    image.ForEachSectionOf(path.keyword, [&](const ShownSection& section) {
        if (found || !IsMeant(path, section)) return;
        if (path.keyword == "TABLE" && !table) table = section.name;
        if (const ShownEntry* entry = section.Entry(path.key)) found = values.Resolved(section, *entry);
    });
    if (!found && table) found = ByteOfTable(image, path, *table);
    if (!found || !path.element) return found;
    if (*path.element >= found->size()) return {};
    return {{(*found)[*path.element]}};
}

Json ValueOf(const ShownValue& value) { return value.number ? Json(*value.number) : JsonText(value.text); }

void WriteAsJson(const GetOptions& options, const Found& found, StandardOutput& out) {
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
    const Image image(options.image);
    const Found found = Find(image, path);
    if (!found && !options.otherwise) {
        throw Failure(kSourceHasErrors, options.image + " has no value " + Printable(options.path));
    }
    StandardOutput out;
    if (options.json) {
        WriteAsJson(options, found, out);
    } else {
        out.Write((found ? Printable(Joined(*found)) : *options.otherwise) + '\n');
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
