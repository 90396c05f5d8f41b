/// Memory in large pages, for blocks that are made at once and for arrays that are looked into in no order: with small
/// pages each look takes a second one, into the page tables. Relies on the system.
#pragma once

#include <cstddef>
#include <new>
#include <vector>

namespace zek {

inline constexpr std::size_t kLargePage = std::size_t{1} << 21;

/// The system has few large pages at hand. More than these it must make or fetch first, which takes longer than small
/// ones do.
inline constexpr std::size_t kMostInLargePages = 8 * kLargePage;

constexpr std::size_t InLargePages(std::size_t size) { return (size + kLargePage - 1) / kLargePage * kLargePage; }

/// Maps `size` bytes, whole large pages. Where the system grants none, or for a great many, they are small ones.
/// Throws `std::bad_alloc`.
void* MapLargePages(std::size_t size);
void UnmapLargePages(void* memory, std::size_t size);

/// Has the system make the small pages of mapped memory that is about to be written, which takes less time than making
/// each when it is first written. Where the system does not, they are made then all the same.
void MakePages(void* memory, std::size_t size);

/// An allocator that takes arrays of a large page and more in large pages.
template <class T>
struct LargePageAllocator {
    using value_type = T;

    LargePageAllocator() = default;
    template <class Other>
    LargePageAllocator(const LargePageAllocator<Other>&) {}

    T* allocate(std::size_t count) {
        const std::size_t size = count * sizeof(T);
        return static_cast<T*>(size < kLargePage ? ::operator new(size) : MapLargePages(InLargePages(size)));
    }
    void deallocate(T* memory, std::size_t count) {
        const std::size_t size = count * sizeof(T);
        if (size < kLargePage) return ::operator delete(memory);
        UnmapLargePages(memory, InLargePages(size));
    }
    bool operator==(const LargePageAllocator&) const = default;
};

template <class T>
using LargeVector = std::vector<T, LargePageAllocator<T>>;

}  // namespace zek
