/// Where things lie in a compiled image, for its writer and its readers. Relies on the standard library.
#pragma once

#include <cstddef>
#include <string_view>

namespace zek {

inline constexpr std::string_view kImageMagic = "QUOR ZEK meta.";
/// The directory: a word for each table, then 0.
inline constexpr std::size_t kImageDirectory = 128;
/// The number of sections, then the sections.
inline constexpr std::size_t kImageBody = 256;
/// Tables begin at multiples of this.
inline constexpr std::size_t kImageAlignment = 16;

/// Where a table begins that follows on something that ends here: at the next boundary strictly behind.
constexpr std::size_t NextTable(std::size_t end) { return (end / kImageAlignment + 1) * kImageAlignment; }

}  // namespace zek
