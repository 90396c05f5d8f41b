#include "reliability/failing_heap.h"

#include <cstdlib>
#include <new>

namespace zek::test {

namespace {

std::size_t piecesLeft = 0;  ///< until the failure, it included; 0 when there is none to come
bool hasFailed = false;
std::ptrdiff_t livePieces = 0;

bool Fails() {
    if (piecesLeft == 0 || --piecesLeft > 0) return false;
    hasFailed = true;
    return true;
}

}  // namespace

void FailHeapAt(std::size_t pieces) {
    piecesLeft = pieces;
    if (pieces > 0) hasFailed = false;
}

bool HasHeapFailed() { return hasFailed; }

std::ptrdiff_t LivePieces() { return livePieces; }

}  // namespace zek::test

void* operator new(std::size_t size) {
    void* const memory = zek::test::Fails() ? nullptr : std::malloc(size);
    if (!memory) throw std::bad_alloc();
    ++zek::test::livePieces;
    return memory;
}

void operator delete(void* memory) noexcept {
    zek::test::livePieces -= memory != nullptr;
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

// The sanitizer's array forms would pass by those above.
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete[](void* memory) noexcept { operator delete(memory); }
void operator delete[](void* memory, std::size_t) noexcept { operator delete(memory); }

#if !defined(__SANITIZE_ADDRESS__)
// The sanitizer has functions of its own in their place, which must see every piece.
extern "C" {
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* calloc(std::size_t count, std::size_t size) noexcept {
    return zek::test::Fails() ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size) noexcept {
    return zek::test::Fails() ? nullptr : __libc_realloc(memory, size);
}
}
#endif
