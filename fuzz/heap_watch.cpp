#include "heap_watch.h"

#include <algorithm>

#include "harness.h"

// GCC and Clang tell in different ways that AddressSanitizer is on.
#if defined(__has_feature)
#define ZEK_HEAP_IS_WATCHED __has_feature(address_sanitizer)
#elif defined(__SANITIZE_ADDRESS__)
#define ZEK_HEAP_IS_WATCHED 1
#else
#define ZEK_HEAP_IS_WATCHED 0
#endif

namespace zek::fuzz {

namespace {

std::ptrdiff_t inUse = 0;
std::ptrdiff_t most = 0;

}  // namespace

#if ZEK_HEAP_IS_WATCHED

// Of the sanitizer's run-time library, whose header is not installed everywhere.
extern "C" {
using MallocHook = void (*)(const volatile void*, std::size_t);
using FreeHook = void (*)(const volatile void*);
int __sanitizer_install_malloc_and_free_hooks(MallocHook onMalloc, FreeHook onFree);
std::size_t __sanitizer_get_allocated_size(const volatile void* memory);
}

namespace {

void Take(const volatile void*, std::size_t size) {
    inUse += static_cast<std::ptrdiff_t>(size);
    most = std::max(most, inUse);
}

void Give(const volatile void* memory) {
    if (memory) inUse -= static_cast<std::ptrdiff_t>(__sanitizer_get_allocated_size(memory));
}

void WatchFromNowOn() {
    static const bool watched = __sanitizer_install_malloc_and_free_hooks(Take, Give) != 0;
    Require(watched, "the sanitizer tells of every piece of memory");
}

}  // namespace

#else

namespace {

void WatchFromNowOn() {}

}  // namespace

#endif

HeapWatch::HeapWatch() {
    WatchFromNowOn();
    before_ = most = inUse;
}

std::size_t HeapWatch::Peak() const { return static_cast<std::size_t>(most - before_); }

void HeapWatch::HoldTo(std::size_t times, std::size_t size) const {
    if (Peak() <= times * size + kMemoryBesides) return;
    std::fprintf(stderr, "%zu bytes of memory for %zu bytes\n", Peak(), size);
    Break("memory is taken in proportion to the input");
}

}  // namespace zek::fuzz
