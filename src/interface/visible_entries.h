/// The entries of a section that hold data, by position. Stands beside the section because counting them anew for every
/// position would take the square of a long section's length. Relies on the model.
#pragma once

#include <cstddef>
#include <vector>

#include "model/section.h"

namespace zek {

class VisibleEntries {
public:
    /// The entries with data of the section, in order; good until the next call. Those of the section asked last are
    /// kept until our functions change the model.
    const std::vector<CZEKEntry*>& Of(const CZEKSection& section);

private:
    const CZEKSection* section_ = nullptr;
    unsigned changes_ = 0;
    std::size_t entries_ = 0;  ///< of the section, with and without data
    std::vector<CZEKEntry*> visible_;
};

extern VisibleEntries g_visibleEntries;

}  // namespace zek
