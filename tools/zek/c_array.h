/// A compiled image as a source of C, for firmware that has no files. Relies on the standard library.
#pragma once

#include <string>
#include <string_view>

namespace zek::tool {

/// What the array is called: made of the name of a file, which may be any.
std::string ArrayName(const std::string& file);

/// Defines the bytes as an array of that name and their number as NAME_size, for C11 and C++11. The array is aligned to
/// 16 bytes, so that its words can be read where they stand.
std::string AsCArray(const std::string& name, std::string_view bytes);

}  // namespace zek::tool
