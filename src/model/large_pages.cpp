#include "model/large_pages.h"

#include <sys/mman.h>
#include <cstdint>

namespace zek {

void* MapLargePages(std::size_t size) {
    void* const mapped = mmap(nullptr, size + kLargePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) throw std::bad_alloc();
    char* const first = static_cast<char*>(mapped);
    const std::size_t before = kLargePage - reinterpret_cast<std::uintptr_t>(first) % kLargePage;
    munmap(first, before);
    if (before < kLargePage) munmap(first + before + size, kLargePage - before);
    if (size <= kMostInLargePages) madvise(first + before, size, MADV_HUGEPAGE);
    return first + before;
}

void MakePages(void* memory, std::size_t size) { madvise(memory, size, MADV_POPULATE_WRITE); }

void UnmapLargePages(void* memory, std::size_t size) { munmap(memory, size); }

}  // namespace zek
