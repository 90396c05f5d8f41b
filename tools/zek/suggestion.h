/// What somebody who wrote a name probably meant. Relies on the standard library.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace zek::tool {

/// How many letters have to be put in, taken away or replaced to make one name the other; `most` + 1 where it is more
/// than `most`.
std::size_t EditDistance(std::string_view a, std::string_view b, std::size_t most);

/// The name nearest to what was written, at most two letters away and with at least one letter in common; the first of
/// several. Nothing where none is so near, or what was written is one of them.
std::optional<std::string> NearestName(std::string_view written, const std::set<std::string>& names);

}  // namespace zek::tool
