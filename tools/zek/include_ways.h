/// Which include items lead to the files of a source. Relies on debug_source.h.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "debug_source.h"

namespace zek::tool {

/// Include items from the innermost one to that of the main source.
using IncludeWay = std::vector<SourceSpot>;

/// The image tells the names that items ask for, not which file they got. Where several items ask for one name, each of
/// them may have led to the file of that name: it was read several times, or there are several files of that name.
class IncludeWays {
public:
    /// As many ways to a file are told.
    static constexpr std::size_t kMost = 10;

    struct Ways {
        std::vector<IncludeWay> told;  ///< in the order of the items; none to the main source
        bool areMore = false;
    };

    /// `source` must outlive this.
    explicit IncludeWays(const DebugSource& source);

    /// Those to a file by its position in the list.
    Ways To(std::uint32_t file) const;

private:
    using Spots = std::vector<SourceSpot>;

    const DebugSource& source_;
    std::map<std::string, Spots, std::less<>> items_;  // by the name that they ask for
};

}  // namespace zek::tool
