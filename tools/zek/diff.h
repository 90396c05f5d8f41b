/// What differs between two images, told by names, so that identifiers that were given out anew make no difference.
/// Relies on described_image.h.
#pragma once

#include <functional>
#include <string>

#include "described_image.h"

namespace zek::tool {

enum class Change { kAdded, kRemoved, kChanged, kRenamed };

struct Difference {
    Change change = Change::kChanged;
    std::string keyword;
    std::string name;
    std::string key = {};     ///< empty: all of the section
    std::string before = {};  ///< the value
    std::string after = {};   ///< the value; of a section that was renamed its new name
    bool breaks = false;      ///< a host that asks for the name, the type or the ID no longer finds what it knew
};

/// Shows every difference. Sections of one kind with the same name are told apart by their order.
void Compare(const DescribedImage& before, const DescribedImage& after,
             const std::function<void(const Difference&)>& show);

}  // namespace zek::tool
