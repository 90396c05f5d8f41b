#include "model/files.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <chrono>

#include "model/file_header.h"

namespace zek {

namespace {

constexpr std::size_t kMostOfStream = std::size_t{256} << 20;
constexpr std::size_t kChunk = std::size_t{1} << 16;
/// How long a pipe or a device may keep silent.
constexpr std::chrono::seconds kLongestSilence{2};

/// Closes the file however its reading ends.
class OpenFile {
public:
    /// Does not wait for a writer where the file is a FIFO.
    explicit OpenFile(const std::string& file)
        : fd_(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {}
    ~OpenFile() {
        if (fd_ >= 0) close(fd_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int Descriptor() const { return fd_; }

private:
    int fd_;
};

/// The number of bytes read, 0 at the end of the file and where it cannot be read; nothing when it keeps silent.
std::optional<std::size_t> ReadSome(int fd, unsigned char* to, std::size_t room) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point deadline = Clock::now() + kLongestSilence;
    while (true) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return std::nullopt;
        // Before the first read, too: from a FIFO that nobody writes to yet it would get the end of the file.
        pollfd waiting = {fd, POLLIN, 0};
        if (poll(&waiting, 1, static_cast<int>(left)) <= 0) continue;
        const ssize_t got = read(fd, to, room);
        if (got >= 0) return static_cast<std::size_t>(got);
        if (errno != EINTR && errno != EAGAIN) return 0;
    }
}

/// Reads until the buffer holds `size` bytes or the file ends; false when it keeps silent.
bool Fill(int fd, ByteBuffer& bytes, std::size_t size) {
    if (size <= bytes.Size()) return true;
    std::size_t missing = size - bytes.Size();
    unsigned char* to = bytes.Extend(missing);
    std::optional<std::size_t> got;
    while (missing > 0 && (got = ReadSome(fd, to, missing)) && *got > 0) {
        to += *got;
        missing -= *got;
    }
    bytes.Shrink(missing);
    return missing == 0 || got;
}

/// Reads the rest of what is no regular file, whose size nobody knows; false when it keeps silent or gives too much.
bool FillFromStream(int fd, ByteBuffer& bytes) {
    std::size_t size = bytes.Size();
    while (bytes.Size() == size && size <= kMostOfStream) {
        if (!Fill(fd, bytes, size += kChunk)) return false;
    }
    return bytes.Size() <= kMostOfStream;
}

}  // namespace

std::optional<ByteBuffer> ReadImage(const std::string& file, std::string_view magic) {
    const OpenFile opened(file);
    const int fd = opened.Descriptor();
    if (fd < 0) return std::nullopt;
    ByteBuffer bytes;
    bool isWhole = Fill(fd, bytes, kMagicSize);
    struct stat info = {};
    if (HasMagic(bytes.View(), magic) && fstat(fd, &info) == 0) {
        isWhole =
            S_ISREG(info.st_mode) ? Fill(fd, bytes, static_cast<std::size_t>(info.st_size)) : FillFromStream(fd, bytes);
    }
    if (!isWhole) return std::nullopt;
    return bytes;
}

std::ofstream CreateFile(const std::string& file) { return std::ofstream(file, std::ios::binary | std::ios::trunc); }

void WriteBytes(std::ofstream& out, const ByteBuffer& bytes) {
    const std::string_view all = bytes.View();
    out.write(all.data(), static_cast<std::streamsize>(all.size()));
}

}  // namespace zek
