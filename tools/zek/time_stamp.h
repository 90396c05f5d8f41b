/// The time stamp of an image that is to be the same at every run. Relies on the place of the stamp, which both kinds
/// of images have at the same offset (docs/compiled-image.md, docs/debug-image.md).
#pragma once

#include <optional>
#include <string>

namespace zek::tool {

/// The stamp that the option or, where that is empty, the variable SOURCE_DATE_EPOCH asks for: seconds since 1970, of
/// which an image holds the low 32 bits. None where neither does. Throws Failure for what is no such number.
std::optional<unsigned> WantedTimeStamp(const std::string& option);

/// Replaces the stamp of a whole image.
void SetTimeStamp(std::string& image, unsigned seconds);

}  // namespace zek::tool
