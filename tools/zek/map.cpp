#include "map.h"

#include <memory>
#include <optional>

#include "command.h"
#include "image_check.h"
#include "json_output.h"
#include "pair_check.h"
#include "printable.h"
#include "progress.h"

namespace zek::tool {
namespace {

constexpr char kMapExample[] =
    "Example:\n"
    "  zek map board.zki board.zkd\n"
    "\n"
    "One line for each range of bytes, in the order of the image: its offset in hexadecimal, its size, and what it "
    "is.\n"
    "Every byte stands in exactly one. With the debug image of the same source, sections and entries of a compiled\n"
    "image have the file and line that they come from.\n"
    "Without it, IMAGE may be a debug image, too.";

struct MapOptions {
    std::string image;
    std::string debug;
    bool json = false;
};

/// Shows ranges as text or as JSON.
class MapWriter {
public:
    MapWriter(const DebugSource& source, bool json, std::string_view image) : source_(source) {
        if (!json) return;
        json_.emplace(out_, "zek-map/1");
        json_->Member("image", NameOf(KindOf(image)));
        json_->Member("size", image.size());
        json_->BeginArray("ranges");
    }

    void Show(const MapRange& range) {
        if (json_) return ShowAsJson(range);
        constexpr std::size_t kSizeWidth = 7;
        const std::string size = std::to_string(range.size);
        const std::string before(size.size() < kSizeWidth ? kSizeWidth - size.size() : 1, ' ');
        out_.Write(Hexadecimal(static_cast<unsigned>(range.offset)).substr(2) + before + size + "  " +
                   std::string(2 * range.depth, ' ') + range.what +
                   (range.spot.line ? "  " + source_.Told(range.spot) : "") + '\n');
    }

    void Finish() {
        if (!json_) return out_.Finish();
        json_->End();
        json_->Finish();
    }

private:
    void ShowAsJson(const MapRange& range) {
        Json json = {{"offset", range.offset}, {"size", range.size}, {"what", range.what}};
        if (range.spot.line) {
            if (range.spot.file < source_.files.size()) {
                json["file"] = JsonText(std::string(source_.files[range.spot.file]));
            }
            json["line"] = range.spot.line;
        }
        json_->Element(json);
    }

    const DebugSource& source_;
    StandardOutput out_;
    std::optional<JsonOutput> json_;
};

int RunMap(const MapOptions& options) {
    const Progress progress(options.image, "reading");
    const std::string bytes = BytesOfImage(options.image);
    const ImageKind kind = RequireKind(options.image, bytes);
    const bool paired = !options.debug.empty();
    if (paired && kind == ImageKind::kDebug) {
        throw Failure(kUsageOrFiles, options.image + " is a debug image, so no other can stand beside it");
    }
    const std::string debug = paired ? BytesOfImage(options.debug) : std::string();
    const DebugSource source = paired ? SourceIn(options.debug, debug) : DebugSource();
    std::optional<ImageView> view;
    if (kind == ImageKind::kCompiled) {
        view = OpenCompiledImage(options.image, bytes);
    } else {
        CheckedDebugImage(options.image, bytes);
    }
    if (paired) RequireBelonging(ComparedPair(options.image, bytes, options.debug, debug));
    ShowPhase("listing", options.image);
    MapWriter writer(source, options.json, bytes);
    const ShowRange show = [&](const MapRange& range) { writer.Show(range); };
    if (view) {
        MapCompiledImage(*view, paired ? &source : nullptr, show);
    } else {
        MapDebugImage(bytes, show);
    }
    writer.Finish();
    return kFine;
}

Run PrepareMap(Words& words) {
    const auto options = std::make_shared<MapOptions>();
    words.File("IMAGE", options->image, "The image");
    words.OptionalFile("DEBUG", options->debug, "The debug image of the same source");
    words.Flag("--json", options->json, "As JSON");
    return [options] { return RunMap(*options); };
}

}  // namespace

const CommandSpec kMapCommand = {"map",
                                 "Show what every byte of an image is",
                                 kMapExample,
                                 PrepareMap,
                                 {kDone, "the images do not belong together", kWrongLineOrFile, kNotValid}};

}  // namespace zek::tool
