/// The memory that the libraries take for an input, held against its size. Relies on AddressSanitizer, which tells of
/// every piece; without it nothing is watched.
#pragma once

#include <cstddef>

namespace zek::fuzz {

/// What a call may take beside what grows with its input: blocks of memory are taken whole, and a small model has all
/// entries that its kinds of sections declare.
inline constexpr std::size_t kMemoryBesides = std::size_t{10} << 20;

/// Watches the heap from now on. Only the one that was made last can be asked.
class HeapWatch {
public:
    HeapWatch();

    /// The most bytes that were in use at once since it was made, those not counted that were in use then.
    std::size_t Peak() const;
    /// Ends the process when that was more than so many times `size` bytes and kMemoryBesides.
    void HoldTo(std::size_t times, std::size_t size) const;

private:
    std::ptrdiff_t before_;
};

}  // namespace zek::fuzz
