/// Having the processor fetch memory that is about to be read. Relies on nothing.
#pragma once

namespace zek {

/// Only a hint, of which any address is good. To GCC a function that does nothing but give hints does nothing, and its
/// calls are dropped; the empty statement of assembler keeps them.
inline void Fetch(const void* address) {
    __builtin_prefetch(address);
    asm volatile("");
}

}  // namespace zek
