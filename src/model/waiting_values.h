/// The values that wait to be cut into sub-strings. In a large model an entry's value stays whole until the entry is
/// checked, because most values are one sub-string that then becomes the typed data: a vector for each would take twice
/// the memory of the source. Relies on arena.h.
#pragma once

#include <cstddef>
#include <string_view>

#include "model/arena.h"

namespace zek {

class WaitingValues {
public:
    /// Keeps a copy of a value. Its place, from 1. Throws `std::bad_alloc`.
    unsigned Keep(std::string_view value);
    /// The value in a place, until it is dropped.
    std::string_view At(unsigned place) const;
    /// To be told of every value that no longer waits: with the last one all memory is freed, or, when more values are
    /// about to come, kept for them.
    void Drop(bool moreToCome);

private:
    Arena<kLargePage> texts_;  ///< each behind its size
    std::size_t waiting_ = 0;
};

}  // namespace zek
