/// The texts that stand in C++ code and in pages. Relies on the standard library.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zek::fuzz {

/// The string literals of C++ code, decoded; those that follow each other are one.
std::vector<std::string> LiteralsOf(std::string_view code);

/// The blocks of a page that are fenced and marked as descriptions.
std::vector<std::string> DescriptionsOf(std::string_view page);

}  // namespace zek::fuzz
