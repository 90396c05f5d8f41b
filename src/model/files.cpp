#include "model/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zek {

namespace {

constexpr std::size_t kMostOfStream = std::size_t{256} << 20;
constexpr std::size_t kChunk = std::size_t{1} << 16;

/// Reads until `room` bytes are there or the file ends, beginning at `size`.
void Fill(int fd, Bytes& bytes, std::size_t room) {
    std::size_t size = bytes.size();
    bytes.resize(room);
    while (size < room) {
        const ssize_t got = read(fd, bytes.data() + size, room - size);
        if (got <= 0) break;
        size += static_cast<std::size_t>(got);
    }
    bytes.resize(size);
}

}  // namespace

std::optional<Bytes> ReadFile(const std::string& file) {
    const int fd = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return std::nullopt;
    Bytes bytes;
    struct stat info = {};
    if (fstat(fd, &info) == 0 && S_ISREG(info.st_mode)) {
        Fill(fd, bytes, static_cast<std::size_t>(info.st_size));
    } else {
        for (std::size_t before = 0; bytes.size() < kMostOfStream; before = bytes.size()) {
            Fill(fd, bytes, before + kChunk);
            if (bytes.size() < before + kChunk) break;
        }
    }
    close(fd);
    return bytes;
}

std::ofstream CreateFile(const std::string& file) { return std::ofstream(file, std::ios::binary | std::ios::trunc); }

void WriteBytes(std::ofstream& out, const Bytes& bytes) {
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace zek
