#include <memory>

#include "command.h"
#include "dump.h"
#include "failure.h"
#include "hardware.h"
#include "image.h"
#include "progress.h"
#include "streams.h"
#include "tree.h"

namespace zek::tool {
namespace {

constexpr char kDumpExample[] =
    "Example:\n"
    "  zek dump --json board.zki\n"
    "\n"
    "The image is verified first. Its kind is told from its first bytes. In JSON a text is a string where its bytes "
    "are UTF-8, and else\n"
    "an object {\"bytes\": \"HEX\"} with two hexadecimal digits for each byte. Sections come kind by kind, in file\n"
    "order. A word of a debug image that another item gives another value in the end is shown with both.";
constexpr char kTreeExample[] =
    "Example:\n"
    "  zek tree board.zki\n"
    "\n"
    "Groups stand under their parents with their sensors, TAVRGROUPs with the sensors that they list. A debug image\n"
    "shows numbers as they were written in the source, a compiled image their values. In JSON groups and TAVRGROUPs\n"
    "come in the same order, each with its depth.";

struct ShowOptions {
    std::string image;
    bool json = false;
};

int RunDump(const ShowOptions& options) {
    const Progress progress(options.image, "reading");
    const Image image(options.image);
    ShowPhase("listing");
    StandardOutput out;
    if (options.json) {
        DumpAsJson(image, out);
    } else {
        DumpAsText(image, out);
    }
    out.Finish();
    return kFine;
}

int RunTree(const ShowOptions& options) {
    const Progress progress(options.image, "reading");
    const Image image(options.image);
    ShowPhase("listing");
    StandardOutput out;
    if (options.json) {
        WriteTreeAsJson(image.Kind(), HardwareOf(image), out);
    } else {
        WriteTree(HardwareOf(image), out);
    }
    out.Finish();
    return kFine;
}

Run Prepare(Words& words, int (*run)(const ShowOptions&)) {
    const auto options = std::make_shared<ShowOptions>();
    words.File("IMAGE", options->image, "The image");
    words.Flag("--json", options->json, "As JSON");
    return [options, run] { return run(*options); };
}

Run PrepareDump(Words& words) { return Prepare(words, RunDump); }

Run PrepareTree(Words& words) { return Prepare(words, RunTree); }

}  // namespace

const CommandSpec kDumpCommand = {"dump",
                                  "Show what a compiled or a debug image holds",
                                  kDumpExample,
                                  PrepareDump,
                                  {kDone, nullptr, kWrongLineOrFile, kNotValid}};
const CommandSpec kTreeCommand = {"tree",
                                  "Show groups, sensors and TAVRGROUPs of an image as a tree",
                                  kTreeExample,
                                  PrepareTree,
                                  {kDone, nullptr, kWrongLineOrFile, kNotValid}};

}  // namespace zek::tool
