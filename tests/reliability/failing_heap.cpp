#include "reliability/failing_heap.h"

#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <new>

#if !defined(__SANITIZE_ADDRESS__)
// What the functions below stand before.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
}
#endif

namespace zek::test {

namespace {

// Until the failure, it included; 0 when there is none to come.
std::size_t piecesLeft = 0;
std::size_t mappingsLeft = 0;
bool hasFailed = false;
std::ptrdiff_t livePieces = 0;
std::size_t takenBytes = 0;

bool FailsAt(std::size_t& left) {
    if (left == 0 || --left > 0) return false;
    hasFailed = true;
    return true;
}

bool Fails() { return FailsAt(piecesLeft); }

/// Memory for new, which counts as one piece.
void* Allocated(std::size_t size) {
#if defined(__SANITIZE_ADDRESS__)
    return std::malloc(size);
#else
    return __libc_malloc(size);
#endif
}

[[maybe_unused]] std::ptrdiff_t PagesOf(std::size_t size) { return static_cast<std::ptrdiff_t>(size >> 12); }

}  // namespace

void FailHeapAt(std::size_t pieces) {
    piecesLeft = pieces;
    if (pieces > 0) hasFailed = false;
}

void FailMappingAt(std::size_t mappings) {
    mappingsLeft = mappings;
    if (mappings > 0) hasFailed = false;
}

bool HasHeapFailed() { return hasFailed; }

std::ptrdiff_t LivePieces() { return livePieces; }

std::size_t TakenBytes() { return takenBytes; }

}  // namespace zek::test

void* operator new(std::size_t size) {
    void* const memory = zek::test::Fails() ? nullptr : zek::test::Allocated(size);
    if (!memory) throw std::bad_alloc();
    ++zek::test::livePieces;
    zek::test::takenBytes += size;
    return memory;
}

void operator delete(void* memory) noexcept {
    zek::test::livePieces -= memory != nullptr;
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

// The sanitizer's other forms would pass by those above.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete[](void* memory) noexcept { operator delete(memory); }
void operator delete[](void* memory, std::size_t) noexcept { operator delete(memory); }

#if !defined(__SANITIZE_ADDRESS__)
// The sanitizer has functions of its own in their place, which must see every piece.
#pragma GCC visibility push(default)
extern "C" {
void* malloc(std::size_t size) noexcept { return zek::test::Fails() ? nullptr : __libc_malloc(size); }
void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return zek::test::Fails() ? nullptr : __libc_memalign(alignment, size);
}
void* calloc(std::size_t count, std::size_t size) noexcept {
    return zek::test::Fails() ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size) noexcept {
    return zek::test::Fails() ? nullptr : __libc_realloc(memory, size);
}

void* mmap(void* address, std::size_t size, int protection, int flags, int file, off_t offset) noexcept {
    if (zek::test::Fails() || zek::test::FailsAt(zek::test::mappingsLeft)) {
        errno = ENOMEM;
        return MAP_FAILED;
    }
    zek::test::livePieces += zek::test::PagesOf(size);
    return reinterpret_cast<void*>(syscall(SYS_mmap, address, size, protection, flags, file, offset));
}
int munmap(void* address, std::size_t size) noexcept {
    zek::test::livePieces -= zek::test::PagesOf(size);
    return static_cast<int>(syscall(SYS_munmap, address, size));
}
}
#pragma GCC visibility pop
#endif
