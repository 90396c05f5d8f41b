#include "model/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>

#include "model/file_header.h"

namespace zek {

namespace {

constexpr std::size_t kMostOfStream = std::size_t{256} << 20;
constexpr std::size_t kChunk = std::size_t{1} << 16;

/// Reads until `room` bytes are there or the file ends.
void Fill(int fd, Bytes& bytes, std::size_t room) {
    std::size_t size = bytes.size();
    if (room <= size) return;
    bytes.resize(room);
    while (size < room) {
        const ssize_t got = read(fd, bytes.data() + size, room - size);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        size += static_cast<std::size_t>(got);
    }
    bytes.resize(size);
}

/// Reads the rest of what is no regular file, whose size nobody knows.
void FillFromStream(int fd, Bytes& bytes) {
    std::size_t room = bytes.size();
    while (bytes.size() == room && room < kMostOfStream) Fill(fd, bytes, room += kChunk);
}

}  // namespace

std::optional<Bytes> ReadImage(const std::string& file, std::string_view magic) {
    const int fd = open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return std::nullopt;
    Bytes bytes;
    Fill(fd, bytes, kMagicSize);
    struct stat info = {};
    if (HasMagic(bytes, magic) && fstat(fd, &info) == 0) {
        if (S_ISREG(info.st_mode)) {
            Fill(fd, bytes, static_cast<std::size_t>(info.st_size));
        } else {
            FillFromStream(fd, bytes);
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
