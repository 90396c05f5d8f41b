#include "written_image.h"

#include "debug_view.h"
#include "failure.h"
#include "image_bytes.h"
#include "memory_file.h"
#include "messages.h"
#include "zekcomp/compiler.h"

namespace zek::tool {
namespace {

/// The debug image as long as it is loaded.
struct Loaded {
    Loaded(std::string_view debug, bool lacksFileList) { LoadDebugImage(debug, lacksFileList); }
    ~Loaded() { UnloadDebugImage(); }
    Loaded(const Loaded&) = delete;
    Loaded& operator=(const Loaded&) = delete;
};

}  // namespace

std::string WrittenImage(unsigned (*output)(const std::string&), bool (*isWhole)(std::string_view)) {
    const MemoryFile file;
    const bool written = output(file.Name());
    std::string bytes = file.Bytes();
    if (written && isWhole(bytes)) return bytes;
    throw Failure(kUsageOrFiles,
                  "cannot hold the image in memory: it was cut short after " + std::to_string(bytes.size()) + " bytes");
}

std::string CompiledDebugImage(std::string_view debugImage, bool lacksFileList) {
    const Loaded loaded(debugImage, lacksFileList);
    std::string compiled = WrittenImage(gccOutput, IsWholeCompiledImage);
    // It has nothing to say that the image does not show.
    TakeMessages();
    return compiled;
}

}  // namespace zek::tool
