#include "source_files.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "boards.h"

namespace zek::bench {

void WriteBytes(const std::filesystem::path& file, std::string_view bytes) {
    std::FILE* const out = std::fopen(file.c_str(), "wb");
    const bool written = out && std::fwrite(bytes.data(), 1, bytes.size(), out) == bytes.size();
    if ((out && std::fclose(out) != 0) || !written) {
        throw std::system_error(errno, std::generic_category(), "cannot write " + file.string());
    }
}

void WriteIncluded(const std::filesystem::path& folder, std::string_view shape, unsigned size, std::uint64_t seed) {
    for (const IncludedFile& included : IncludedFiles(shape, size, seed)) {
        const std::filesystem::path file = folder / included.path;
        std::filesystem::create_directories(file.parent_path());
        WriteBytes(file, included.text);
    }
}

}  // namespace zek::bench
