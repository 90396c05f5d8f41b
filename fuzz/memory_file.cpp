#include "memory_file.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "harness.h"

namespace zek::fuzz {

MemoryFile::MemoryFile() : fd_(memfd_create("fuzz", MFD_CLOEXEC)), path_("/proc/self/fd/" + std::to_string(fd_)) {
    if (fd_ < 0) Break("the system has a file in memory for the harness");
}

MemoryFile::~MemoryFile() { close(fd_); }

void MemoryFile::Write(std::string_view bytes) {
    const bool written =
        ftruncate(fd_, 0) == 0 && pwrite(fd_, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size());
    if (!written) Break("the system has memory for the file of the harness");
}

std::size_t MemoryFile::Size() const {
    struct stat info = {};
    return fstat(fd_, &info) == 0 ? static_cast<std::size_t>(info.st_size) : 0;
}

std::string MemoryFile::Read() const {
    std::string bytes(Size(), '\0');
    const ssize_t size = pread(fd_, bytes.data(), bytes.size(), 0);
    bytes.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
    return bytes;
}

}  // namespace zek::fuzz
