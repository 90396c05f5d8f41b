#include "memory_file.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <new>
#include <utility>

#include "failure.h"
#include "streams.h"

namespace zek::tool {
namespace {

constexpr std::size_t kChunk = std::size_t{1} << 18;
constexpr std::size_t kMostOfStream = std::size_t{256} << 20;
constexpr std::size_t kMostReserved = std::size_t{4} << 30;
constexpr std::chrono::seconds kLongestSilence{2};
/// How long a silence may be. Standard input may take its time: whoever runs the command writes to it.
enum class Patience { kShort, kEndless };
constexpr char kWhat[] = "cannot hold the image in memory";

/// The size of a regular file; 0 for everything else.
std::size_t SizeOf(int descriptor) {
    struct stat info {};
    return fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode) ? static_cast<std::size_t>(info.st_size) : 0;
}

/// As `read`, but it waits for a pipe or a device; after a silence too long with ETIMEDOUT.
ssize_t ReadSome(int descriptor, char* to, std::size_t room, Patience patience) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point deadline = Clock::now() + kLongestSilence;
    while (true) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (patience == Patience::kShort && left <= 0) break;
        // Before the first read, too: from a FIFO that nobody writes to yet it would get the end of the file.
        pollfd waiting = {descriptor, POLLIN, 0};
        if (poll(&waiting, 1, patience == Patience::kShort ? static_cast<int>(left) : -1) <= 0) continue;
        const ssize_t got = read(descriptor, to, room);
        if (got >= 0 || (errno != EINTR && errno != EAGAIN)) return got;
    }
    errno = ETIMEDOUT;
    return -1;
}

/// 0, or the errno of the call that failed. Throws `std::bad_alloc`.
int AppendAll(int descriptor, std::string& bytes, Patience patience) {
    const std::size_t announced = SizeOf(descriptor);
    const std::size_t most = std::max(announced, kMostOfStream);
    // With the room of the last read, which finds the end. A file of holes may announce anything.
    bytes.reserve(std::min(announced, kMostReserved) + kChunk);
    while (true) {
        const std::size_t size = bytes.size();
        bytes.resize(size + kChunk);
        const ssize_t got = ReadSome(descriptor, bytes.data() + size, kChunk, patience);
        const int error = errno;
        bytes.resize(size + (got > 0 ? static_cast<std::size_t>(got) : 0));
        if (got == 0) return 0;
        if (got < 0) return error;
        if (bytes.size() > most) return EFBIG;
    }
}

/// The same, with too little memory as one more error.
int AppendRest(int descriptor, std::string& bytes, Patience patience = Patience::kShort) {
    try {
        return AppendAll(descriptor, bytes, patience);
    } catch (const std::bad_alloc&) {
        return ENOMEM;
    }
}

std::string WhyUnreadable(int error) {
    if (error == ETIMEDOUT) return "nothing came for two seconds";
    if (error == EFBIG) return "what is no regular file may give 256 MiB";
    return std::strerror(error);
}

}  // namespace

MemoryFile::MemoryFile() : descriptor_(memfd_create("zek", MFD_CLOEXEC)) {
    if (descriptor_ < 0) throw SystemFailure(kWhat);
}

MemoryFile::MemoryFile(std::string_view bytes) : MemoryFile() { Append(bytes); }

MemoryFile::~MemoryFile() { close(descriptor_); }

std::string MemoryFile::Name() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

void MemoryFile::Append(std::string_view bytes) const {
    if (const int error = WriteAll(descriptor_, bytes)) throw SystemFailure(kWhat, error);
}

std::string MemoryFile::Bytes() const {
    if (lseek(descriptor_, 0, SEEK_SET) < 0) throw SystemFailure(kWhat);
    std::string bytes;
    if (const int error = AppendRest(descriptor_, bytes)) throw SystemFailure(kWhat, error);
    return bytes;
}

std::optional<std::string> ReadFile(const std::string& name, std::string& why) {
    const bool standard = name == "-";
    const int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const int descriptor = standard ? STDIN_FILENO : open(name.c_str(), flags);
    std::string bytes;
    const Patience patience = standard ? Patience::kEndless : Patience::kShort;
    const int error = descriptor < 0 ? errno : AppendRest(descriptor, bytes, patience);
    if (!standard && descriptor >= 0) close(descriptor);
    if (!error) return bytes;
    why = WhyUnreadable(error);
    return std::nullopt;
}

std::string ReadFile(const std::string& name) {
    std::string why;
    std::optional<std::string> bytes = ReadFile(name, why);
    if (!bytes) throw Failure(kUsageOrFiles, "cannot read " + name + ": " + why);
    return std::move(*bytes);
}

}  // namespace zek::tool
