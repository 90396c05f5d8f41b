// What a process takes from the system: memory and open files. Relies on the process's own files in /proc, and on
// nothing of the project, so that the section-file parser's tests can use it too.
#pragma once

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>

#if defined(__SANITIZE_ADDRESS__)
// Of the sanitizer's run-time library, whose header is not installed everywhere.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace zek::test {

// While it lives, the address space is limited to what was in use and `spare` bytes more, so that taking more throws
// `std::bad_alloc`. The address sanitizer needs the address space for itself: under it nothing is limited.
class ScarceMemory {
public:
    explicit ScarceMemory([[maybe_unused]] rlim_t spare) {
        getrlimit(RLIMIT_AS, &before_);
#if !defined(__SANITIZE_ADDRESS__)
        std::size_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        rlimit scarce = before_;
        scarce.rlim_cur = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + spare;
        setrlimit(RLIMIT_AS, &scarce);
#endif
    }
    ~ScarceMemory() { setrlimit(RLIMIT_AS, &before_); }
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;

private:
    rlimit before_{};
};

// How many files the process has open, the folder that is read for it included.
inline std::ptrdiff_t OpenFiles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
}

// Bytes of the process that are in memory now.
inline std::size_t ResidentMemory() {
    std::size_t all = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// Bytes that the heap has given out and not taken back.
inline std::size_t HeapInUse() {
#if defined(__SANITIZE_ADDRESS__)
    return __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
#endif
}

}  // namespace zek::test
