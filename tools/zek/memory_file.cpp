#include "memory_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <new>

#include "failure.h"
#include "streams.h"

namespace zek::tool {
namespace {

constexpr std::size_t kChunk = std::size_t{1} << 18;
constexpr std::size_t kMostOfStream = std::size_t{256} << 20;
constexpr std::size_t kMostReserved = std::size_t{4} << 30;
constexpr char kWhat[] = "cannot hold the image in memory";

/// The size of a regular file; 0 for everything else.
std::size_t SizeOf(int descriptor) {
    struct stat info {};
    return fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode) ? static_cast<std::size_t>(info.st_size) : 0;
}

/// 0, or the errno of the call that failed. Throws `std::bad_alloc`.
int AppendAll(int descriptor, std::string& bytes) {
    const std::size_t announced = SizeOf(descriptor);
    const std::size_t most = std::max(announced, kMostOfStream);
    // With the room of the last read, which finds the end. A file of holes may announce anything.
    bytes.reserve(std::min(announced, kMostReserved) + kChunk);
    while (true) {
        const std::size_t size = bytes.size();
        bytes.resize(size + kChunk);
        const ssize_t got = read(descriptor, bytes.data() + size, kChunk);
        const int error = errno;
        bytes.resize(size + (got > 0 ? static_cast<std::size_t>(got) : 0));
        if (got == 0) return 0;
        if (got < 0 && error != EINTR) return error;
        if (bytes.size() > most) return EFBIG;
    }
}

/// The same, with too little memory as one more error.
int AppendRest(int descriptor, std::string& bytes) {
    try {
        return AppendAll(descriptor, bytes);
    } catch (const std::bad_alloc&) {
        return ENOMEM;
    }
}

}  // namespace

MemoryFile::MemoryFile() : descriptor_(memfd_create("zek", MFD_CLOEXEC)) {
    if (descriptor_ < 0) throw SystemFailure(kWhat);
}

MemoryFile::MemoryFile(std::string_view bytes) : MemoryFile() {
    Append(bytes);
}

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

std::string ReadFile(const std::string& name) {
    const bool standard = name == "-";
    const int descriptor = standard ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) throw SystemFailure("cannot read " + name);
    std::string bytes;
    const int error = AppendRest(descriptor, bytes);
    if (!standard) close(descriptor);
    if (error) throw SystemFailure("cannot read " + name, error);
    return bytes;
}

}  // namespace zek::tool
