#include "written_image.h"

#include "failure.h"
#include "memory_file.h"

namespace zek::tool {

std::string WrittenImage(unsigned (*output)(const std::string&), bool (*isWhole)(std::string_view)) {
    const MemoryFile file;
    const bool written = output(file.Name());
    std::string bytes = file.Bytes();
    if (written && isWhole(bytes)) return bytes;
    throw Failure(kUsageOrFiles,
                  "cannot hold the image in memory: it was cut short after " + std::to_string(bytes.size()) + " bytes");
}

}  // namespace zek::tool
