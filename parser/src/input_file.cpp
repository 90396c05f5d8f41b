#include "input_file.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <new>

namespace zek::parser {
namespace {

constexpr std::size_t kFirstRoom = 64 << 10;
constexpr std::size_t kLargePage = 2 << 20;
// The system has few large pages at hand; to make more takes longer than small ones do.
constexpr std::size_t kMostInLargePages = 8 * kLargePage;

std::unique_ptr<char[], FreeBytes> NewBytes(std::size_t size) {
    const bool large = size >= kLargePage && size <= kMostInLargePages;
    const std::size_t whole = (size + kLargePage - 1) / kLargePage * kLargePage;
    void* const bytes = large ? std::aligned_alloc(kLargePage, whole) : std::malloc(size);
    if (!bytes) throw std::bad_alloc();
    // Only a wish: without large pages reading takes a little longer.
    if (large) madvise(bytes, size / kLargePage * kLargePage, MADV_HUGEPAGE);
    return std::unique_ptr<char[], FreeBytes>(static_cast<char*>(bytes));
}

Text Enlarged(const Text& text, std::size_t room) {
    Text larger{NewBytes(room + 1), text.size};
    std::memcpy(larger.bytes.get(), text.bytes.get(), text.size);
    return larger;
}

}  // namespace

InputFile::InputFile(const std::string& path)
    : descriptor_(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {
    readable_ = descriptor_ >= 0 && fstat(descriptor_, &info_) == 0 && !S_ISDIR(info_.st_mode);
}

InputFile::~InputFile() {
    if (descriptor_ >= 0) close(descriptor_);
}

std::optional<Text> InputFile::ReadWhole() {
    const auto expected = S_ISREG(info_.st_mode) ? static_cast<std::size_t>(info_.st_size) : 0;
    const std::size_t limit = Limit();
    if (expected > limit) return std::nullopt;

    // One byte more than expected, so that the end of an ordinary file shows without enlarging the room.
    std::size_t room = expected ? expected + 1 : kFirstRoom;
    Text text{NewBytes(room + 1), 0};
    for (;;) {
        const long count = ReadSome(text.bytes.get() + text.size, room - text.size);
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        text.size += static_cast<std::size_t>(count);
        if (text.size > limit) return std::nullopt;
        if (text.size == room) {
            room = std::min(2 * room, limit + 1);
            text = Enlarged(text, room);
        }
    }
    // A FIFO that nobody writes to looks like one that has ended: it is taken as unreadable, not as an empty file.
    if (S_ISFIFO(info_.st_mode) && text.size == 0) return std::nullopt;
    return text;
}

// Some files of the system say 0 or too little for their length, so the length is not the limit.
std::size_t InputFile::Limit() const {
    if (!S_ISREG(info_.st_mode)) return kLongestStream;
    return std::clamp(static_cast<std::size_t>(info_.st_size), kLongestStream, kLongestFile);
}

// The deadline holds for all the waits of one call together: a device may call itself ready and then give nothing.
long InputFile::ReadSome(char* to, std::size_t room) {
    const Clock::time_point deadline = std::min(Clock::now() + kLongestSilence, lastWait_);
    for (;;) {
        const ssize_t count = read(descriptor_, to, room);
        if (count >= 0) return count;
        if (errno != EINTR && (errno != EAGAIN || !WaitUntil(deadline))) return -1;
    }
}

bool InputFile::WaitUntil(Clock::time_point deadline) const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    if (left <= 0) return false;
    pollfd wait{descriptor_, POLLIN, 0};
    const int ready = poll(&wait, 1, static_cast<int>(left));
    return ready > 0 || (ready < 0 && errno == EINTR);
}

}  // namespace zek::parser
