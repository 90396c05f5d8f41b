#include "pair_check.h"

#include <string_view>
#include <utility>

#include "failure.h"
#include "image_check.h"
#include "memory_file.h"
#include "progress.h"
#include "time_stamp.h"
#include "written_image.h"

namespace zek::tool {
namespace {

std::optional<PairDifference> DifferenceOf(std::string_view image, std::string_view debug, bool lacksFileList) {
    ShowPhase("compiling");
    const std::string compiled = CompiledDebugImage(debug, lacksFileList);
    const std::optional<std::size_t> offset = FirstDifference(std::string(image), compiled);
    if (!offset) return {};
    return PairDifference{image.size(), compiled.size(), *offset};
}

struct NamedImage {
    std::string file;
    std::string bytes;
    ImageKind kind;
};

NamedImage ReadImage(const std::string& file) {
    NamedImage image = {file, BytesOfImage(file), ImageKind::kNone};
    image.kind = RequireKind(file, image.bytes);
    return image;
}

}  // namespace

std::string PairDifference::Told() const {
    return "the debug image compiles to " + std::to_string(compiledSize) + " bytes, the compiled image has " +
           std::to_string(imageSize) + ", and they differ from byte " + std::to_string(offset) + " on";
}

void RequireBelonging(const VerifiedPair& pair) {
    if (!pair.difference) return;
    throw Failure(kSourceHasErrors,
                  pair.image + " and " + pair.debug + " do not belong together: " + pair.difference->Told());
}

VerifiedPair ComparedPair(const std::string& image, std::string_view imageBytes, const std::string& debug,
                          std::string_view debugBytes) {
    const bool lacksFileList = CheckedDebugImage(debug, debugBytes).lacksFileList;
    return {image, debug, DifferenceOf(imageBytes, debugBytes, lacksFileList)};
}

VerifiedPair VerifyPair(const std::string& file, const std::string& other) {
    NamedImage image = ReadImage(file);
    NamedImage debug = ReadImage(other);
    if (image.kind == debug.kind) {
        throw Failure(kUsageOrFiles, "--pair takes a compiled and a debug image, and both are of one kind: " +
                                         image.file + " and " + debug.file);
    }
    if (image.kind == ImageKind::kDebug) std::swap(image, debug);
    OpenCompiledImage(image.file, image.bytes);
    return ComparedPair(image.file, image.bytes, debug.file, debug.bytes);
}

}  // namespace zek::tool
