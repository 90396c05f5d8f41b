/// The layout of sources: white space, and nothing that a compilation would tell from what was there. Relies on
/// source_line.h.
#pragma once

#include <string>
#include <string_view>

namespace zek::tool {

/// The text with the white space at both ends of its lines taken away and the first '=' of the items aligned within
/// each section, but for keys of more than 64 characters. Every line stays on its line, comments and blank lines too.
/// Formatting twice changes nothing more.
///
/// Lines stay as they are where they are joined, where they have a NUL or a carriage return inside, and where other
/// white space would change what they mean: a ';' or '#' behind the '=' that it would make a comment, a byte order mark
/// that would come to stand at the beginning of the file.
std::string Formatted(std::string_view text);

}  // namespace zek::tool
