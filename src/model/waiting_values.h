/// The values that wait to be cut into sub-strings. In a large model an entry's value stays whole until the entry is
/// checked, because most values are one sub-string that then becomes the typed data: a vector for each would take twice
/// the memory of the source. Relies on bytes.h.
#pragma once

#include <string_view>

#include "model/bytes.h"

namespace zek {

class WaitingValues {
public:
    /// Keeps a copy of a value without NUL. Its place, from 1; 0 when there is no room for more.
    unsigned Keep(std::string_view value);
    /// The value in a place, until another is kept.
    std::string_view At(unsigned place) const;
    /// To be told of every value that no longer waits: with the last one all memory is freed.
    void Drop();

private:
    ByteBuffer texts_;  ///< each with a NUL behind it
    std::size_t waiting_ = 0;
};

}  // namespace zek
