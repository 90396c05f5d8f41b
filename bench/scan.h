/// The least that any reader of a source does: finds its sections and the spans of its keys and values, and builds
/// nothing. The floor that the parser library is held against. Relies on nothing of the project.
#pragma once

#include <cstddef>
#include <string_view>

namespace zek::bench {

/// What a source has.
struct Found {
    std::size_t sections = 0;
    std::size_t items = 0;
    std::size_t keyBytes = 0;    ///< of all keys, without the blanks around them
    std::size_t valueBytes = 0;  ///< of all values, without the blanks around them and without comments
};

/// Scans a text. A line that ends in a backslash is not joined with the next one: plain boards have none.
Found Scan(std::string_view text);

}  // namespace zek::bench
