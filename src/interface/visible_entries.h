/// The entries of a section that hold data, by position. Stands beside the section because counting them anew for every
/// position would take the square of a long section's length. Relies on the model.
#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

#include "model/section.h"

namespace zek {

class VisibleEntries {
public:
    /// The entries with data of the section, in order; good until the next call. Those of long sections are kept until
    /// our functions change the model, which clears all of them: so together they are never more pointers than the
    /// sections that were asked have entries.
    const std::vector<CZEKEntry*>& Of(const CZEKSection& section);

private:
    struct Kept {
        std::size_t entries = 0;  ///< of the section when it was read, with and without data
        std::vector<CZEKEntry*> visible;
    };

    const std::vector<CZEKEntry*>& OfLong(const CZEKSection& section);

    std::vector<CZEKEntry*> short_;  ///< of the short section that was asked last
    std::unordered_map<const CZEKSection*, Kept> long_;
    unsigned changes_ = 0;  ///< g_modelChanges when the first of them was read
};

extern VisibleEntries g_visibleEntries;

}  // namespace zek
