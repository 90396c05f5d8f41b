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
using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kLongestSilence{2};
/// How long a pipe or a device is waited for at all. What it has ready is read even then.
constexpr std::chrono::seconds kLongestWait{60};
constexpr int kPauseMilliseconds = 10;

/// How long a pipe or a device is waited for.
enum class Patience {
    kShort,         ///< for a silence, and a while in all, as the library waits for an image
    kWhileWritten,  ///< until it ends, but for a silence where nobody is there to write: a source may come slowly
    kEndless        ///< until it ends: whoever runs the command writes to its standard input
};

constexpr char kWhat[] = "cannot hold the image in memory";

/// The size of a regular file; 0 for everything else.
std::size_t SizeOf(int descriptor) {
    struct stat info {};
    return fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode) ? static_cast<std::size_t>(info.st_size) : 0;
}

/// Reads a file from its place on.
class Reading {
public:
    Reading(int descriptor, Patience patience)
        : descriptor_(descriptor), patience_(patience), isAwaited_(patience == Patience::kEndless) {}

    /// As `read`, but it waits for a pipe or a device; after a silence too long with ETIMEDOUT, after too long a wait
    /// in all with ETIME.
    ssize_t Some(char* to, std::size_t room);

private:
    /// The milliseconds that are left to wait; -1 for as long as it takes.
    int Left(Clock::time_point deadline) const {
        if (isAwaited_) return -1;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        return static_cast<int>(std::max<decltype(left)>(left, 0));
    }
    ssize_t GiveUp() const {
        errno = patience_ == Patience::kShort && Clock::now() >= lastWait_ ? ETIME : ETIMEDOUT;
        return -1;
    }

    int descriptor_;
    Patience patience_;
    bool isAwaited_;  ///< somebody is there to write, however long that takes
    Clock::time_point lastWait_ = Clock::now() + kLongestWait;
};

ssize_t Reading::Some(char* to, std::size_t room) {
    const Clock::time_point silence = Clock::now() + kLongestSilence;
    const Clock::time_point deadline = patience_ == Patience::kShort ? std::min(silence, lastWait_) : silence;
    while (true) {
        const int left = Left(deadline);
        // Before the first read, too: from a FIFO that nobody writes to yet it would get the end of the file.
        pollfd waiting = {descriptor_, POLLIN, 0};
        const int ready = poll(&waiting, 1, left);
        if (ready < 0 && errno == EINTR) continue;
        if (ready < 0) return -1;
        if (ready == 0 && patience_ == Patience::kShort) return GiveUp();
        const ssize_t got = read(descriptor_, to, room);
        // Behind a silence the end means that nobody is there.
        if (got == 0 && ready == 0) return GiveUp();
        if (got >= 0 || (errno != EINTR && errno != EAGAIN)) return got;
        if (ready == 0 && errno == EAGAIN) isAwaited_ = true;
        // A device may call itself ready and then give nothing, again and again.
        if (ready > 0 && left == 0) return GiveUp();
        if (ready > 0 && errno == EAGAIN) poll(nullptr, 0, kPauseMilliseconds);
    }
}

/// 0, or the errno of the call that failed. Throws `std::bad_alloc`.
int AppendAll(int descriptor, std::string& bytes, Patience patience) {
    Reading reading(descriptor, patience);
    const std::size_t announced = SizeOf(descriptor);
    const std::size_t most = std::max(announced, kMostOfStream);
    // With the room of the last read, which finds the end. A file of holes may announce anything.
    bytes.reserve(std::min(announced, kMostReserved) + kChunk);
    while (true) {
        const std::size_t size = bytes.size();
        bytes.resize(size + kChunk);
        const ssize_t got = reading.Some(bytes.data() + size, kChunk);
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
    if (error == ETIME) return "it has not ended after a minute";
    if (error == EFBIG) return "what is no regular file may give 256 MiB";
    return std::strerror(error);
}

/// The bytes; nothing, and why, when they cannot be read.
std::optional<std::string> Read(const std::string& name, std::string& why, Patience patience) {
    const bool standard = name == "-";
    const int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const int descriptor = standard ? STDIN_FILENO : open(name.c_str(), flags);
    std::string bytes;
    const int error = descriptor < 0 ? errno : AppendRest(descriptor, bytes, standard ? Patience::kEndless : patience);
    if (!standard && descriptor >= 0) close(descriptor);
    if (!error) return bytes;
    why = WhyUnreadable(error);
    return std::nullopt;
}

std::string ReadOrThrow(const std::string& name, Patience patience) {
    std::string why;
    std::optional<std::string> bytes = Read(name, why, patience);
    if (!bytes) throw Failure(kUsageOrFiles, "cannot read " + name + ": " + why);
    return std::move(*bytes);
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

std::string ReadFile(const std::string& name) { return ReadOrThrow(name, Patience::kShort); }

std::string ReadSource(const std::string& name) { return ReadOrThrow(name, Patience::kWhileWritten); }

std::optional<std::string> ReadSource(const std::string& name, std::string& why) {
    return Read(name, why, Patience::kWhileWritten);
}

}  // namespace zek::tool
