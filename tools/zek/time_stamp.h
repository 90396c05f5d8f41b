/// The time stamp of an image that is to be the same at every run. Relies on the place of the stamp, which both kinds
/// of images have at the same offset (docs/compiled-image.md, docs/debug-image.md).
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace zek::tool {

/// The stamp that the option or, where there is none, the variable SOURCE_DATE_EPOCH asks for: seconds since 1970, of
/// which an image holds the low 32 bits. None where neither does. Throws Failure for what is no such number.
std::optional<unsigned> WantedTimeStamp(const std::optional<std::string>& option);

/// Replaces the stamp of a whole image.
void SetTimeStamp(std::string& image, unsigned seconds);

/// Where two whole images of a kind differ first, their stamps aside: an offset, that of the end of one where the other
/// goes on. None where they are the same.
std::optional<std::size_t> FirstDifference(std::string image, std::string other);

}  // namespace zek::tool
