/// What somebody who wrote a name probably meant. Relies on the standard library.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace zek::tool {

/// How much may still be compared, so that many misspelt names among many names take no more than a second or so.
struct ComparisonsLeft {
    std::size_t letters = 20'000'000;
};

/// Names of one kind among which to look for near ones. Names that begin alike are compared as far as that only once,
/// and passed over together where the beginning is too far off.
class NearNames {
public:
    explicit NearNames(std::vector<std::string> names);

    /// The name that is what was written but for capitals, blanks around it, and _ for a blank; else the one nearest to
    /// it, at most two letters put in, taken away or replaced, and with at least one letter in common; the first of
    /// several. Nothing where none is so near, what was written is one of them, or too little is left to compare.
    std::optional<std::string> Nearest(std::string_view written, ComparisonsLeft& left) const;

private:
    std::size_t Behind(std::size_t at, std::string_view beginning) const;
    std::optional<std::string> Alike(std::string_view written) const;
    std::optional<std::string> Near(std::string_view written, ComparisonsLeft& left) const;

    std::vector<std::string> names_;  // sorted, each once
    std::vector<std::size_t> alike_;  // their positions, those of names that are alike side by side
};

/// The same among a few names.
std::optional<std::string> NearestName(std::string_view written, const std::set<std::string>& names);

}  // namespace zek::tool
