/// Having the processor fetch memory that is about to be read. Relies on the standard library.
#pragma once

#include <cstddef>

namespace zek {

/// Only a hint, of which any address is good. To GCC a function that does nothing but give hints does nothing, and its
/// calls are dropped; the empty statement of assembler keeps them.
inline void Fetch(const void* address) {
    __builtin_prefetch(address);
    asm volatile("");
}

/// The same for each line of the cache that so many bytes begin in.
inline void FetchAll(const void* begin, std::size_t size) {
    for (std::size_t line = 0; line < size; line += 64) Fetch(static_cast<const char*>(begin) + line);
}

}  // namespace zek
