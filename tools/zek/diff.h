/// What differs between two images, told by names, so that identifiers that were given out anew make no difference.
/// Relies on image.h.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "image.h"

namespace zek::tool {

/// What a section holds: its keys as in the source and their values, in the order of the image.
struct DescribedSection {
    std::string keyword;
    std::string name;
    std::vector<std::pair<std::string, std::string>> values;

    /// The value of the first entry of that key, or null.
    const std::string* Value(const std::string& key) const;
};

/// The sections of an image, kind by kind. Those without a NAME are told by their keys alone, so that all of a kind are
/// one; where a key stands in several of them, #2 and so on follow it.
struct DescribedImage {
    ImageKind kind = ImageKind::kNone;
    std::vector<DescribedSection> sections;
};

DescribedImage Describe(const std::string& file);

enum class Change { kAdded, kRemoved, kChanged, kRenamed };

struct Difference {
    Change change = Change::kChanged;
    std::string keyword;
    std::string name;
    std::string key;      ///< empty: all of the section
    std::string before;   ///< the value
    std::string after;    ///< the value; of a section that was renamed its new name
    bool breaks = false;  ///< a host that asks for the name, the type or the ID no longer finds what it knew
};

/// Shows every difference. Sections of one kind with the same name are told apart by their order.
void Compare(const DescribedImage& before, const DescribedImage& after,
             const std::function<void(const Difference&)>& show);

}  // namespace zek::tool
