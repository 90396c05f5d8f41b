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

/// Closes the file however its reading ends.
class OpenFile {
public:
    explicit OpenFile(const std::string& file) : fd_(open(file.c_str(), O_RDONLY | O_CLOEXEC)) {}
    ~OpenFile() {
        if (fd_ >= 0) close(fd_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int Descriptor() const { return fd_; }

private:
    int fd_;
};

/// Reads until the buffer holds `size` bytes or the file ends.
void Fill(int fd, ByteBuffer& bytes, std::size_t size) {
    if (size <= bytes.Size()) return;
    std::size_t missing = size - bytes.Size();
    unsigned char* to = bytes.Extend(missing);
    while (missing > 0) {
        const ssize_t got = read(fd, to, missing);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        to += got;
        missing -= static_cast<std::size_t>(got);
    }
    bytes.Shrink(missing);
}

/// Reads the rest of what is no regular file, whose size nobody knows.
void FillFromStream(int fd, ByteBuffer& bytes) {
    std::size_t size = bytes.Size();
    while (bytes.Size() == size && size < kMostOfStream) Fill(fd, bytes, size += kChunk);
}

}  // namespace

std::optional<ByteBuffer> ReadImage(const std::string& file, std::string_view magic) {
    const OpenFile opened(file);
    const int fd = opened.Descriptor();
    if (fd < 0) return std::nullopt;
    ByteBuffer bytes;
    Fill(fd, bytes, kMagicSize);
    struct stat info = {};
    if (HasMagic(bytes.View(), magic) && fstat(fd, &info) == 0) {
        if (S_ISREG(info.st_mode)) {
            Fill(fd, bytes, static_cast<std::size_t>(info.st_size));
        } else {
            FillFromStream(fd, bytes);
        }
    }
    return bytes;
}

std::ofstream CreateFile(const std::string& file) { return std::ofstream(file, std::ios::binary | std::ios::trunc); }

void WriteBytes(std::ofstream& out, const ByteBuffer& bytes) {
    const std::string_view all = bytes.View();
    out.write(all.data(), static_cast<std::streamsize>(all.size()));
}

}  // namespace zek
