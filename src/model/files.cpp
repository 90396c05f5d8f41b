#include "model/files.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <chrono>

#include "model/file_header.h"

namespace zek {

namespace {

constexpr std::size_t kMostOfStream = std::size_t{256} << 20;
constexpr std::size_t kChunk = std::size_t{1} << 16;

using Clock = std::chrono::steady_clock;
/// How long a pipe or a device may keep silent.
constexpr std::chrono::seconds kLongestSilence{2};
/// How long it is waited for at all, so that one that drips holds nobody for ever. What it has ready is read even then.
constexpr std::chrono::seconds kLongestWait{60};

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

    /// The number of bytes read, 0 at the end of the file; nothing when it cannot be read, is silent for too long, or
    /// cannot be waited for.
    std::optional<std::size_t> Read(unsigned char* to, std::size_t room) const;

private:
    int fd_;
    Clock::time_point lastWait_ = Clock::now() + kLongestWait;
};

std::optional<std::size_t> OpenFile::Read(unsigned char* to, std::size_t room) const {
    const Clock::time_point deadline = std::min(Clock::now() + kLongestSilence, lastWait_);
    while (true) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        // Before the first read, too: from a FIFO that nobody writes to yet it would get the end of the file.
        pollfd waiting = {fd_, POLLIN, 0};
        const int ready = poll(&waiting, 1, static_cast<int>(std::max<decltype(left)>(left, 0)));
        if (ready < 0 && errno == EINTR) continue;
        if (ready <= 0) return std::nullopt;
        const ssize_t got = read(fd_, to, room);
        if (got >= 0) return static_cast<std::size_t>(got);
        if (errno != EINTR && errno != EAGAIN) return std::nullopt;
        // A device may call itself ready and then give nothing.
        if (left <= 0) return std::nullopt;
    }
}

/// Reads until the buffer holds `size` bytes or the file ends; false when no end comes.
bool Fill(const OpenFile& file, ByteBuffer& bytes, std::size_t size) {
    if (size <= bytes.Size()) return true;
    std::size_t missing = size - bytes.Size();
    unsigned char* to = bytes.Extend(missing);
    std::optional<std::size_t> got;
    while (missing > 0 && (got = file.Read(to, missing)) && *got > 0) {
        to += *got;
        missing -= *got;
    }
    bytes.Shrink(missing);
    return missing == 0 || got;
}

/// Reads the rest of what is no regular file, whose size nobody knows; false when no end comes or it gives too much.
bool FillFromStream(const OpenFile& file, ByteBuffer& bytes) {
    std::size_t size = bytes.Size();
    while (bytes.Size() == size && size <= kMostOfStream) {
        if (!Fill(file, bytes, size += kChunk)) return false;
    }
    return bytes.Size() <= kMostOfStream;
}

}  // namespace

std::optional<ByteBuffer> ReadImage(const std::string& file, std::string_view magic) {
    const OpenFile opened(file);
    if (opened.Descriptor() < 0) return std::nullopt;
    ByteBuffer bytes;
    bool isWhole = Fill(opened, bytes, kMagicSize);
    struct stat info = {};
    if (HasMagic(bytes.View(), magic) && fstat(opened.Descriptor(), &info) == 0) {
        isWhole = S_ISREG(info.st_mode) ? Fill(opened, bytes, static_cast<std::size_t>(info.st_size))
                                        : FillFromStream(opened, bytes);
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
