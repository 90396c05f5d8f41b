/// The kinds of sections that images hold, in the order of their numbers. Relies on debug_layout.h.
#pragma once

#include <array>
#include <cstddef>

#include "debug_layout.h"

namespace zek::tool {

/// A debug image counts its kinds from 1, a compiled image from kImageQuorzek and has no kind behind REPEATER.
inline constexpr auto kSectionKeywords = [] {
    std::array<const char*, std::size(kDebugKinds) - 1> keywords{};
    for (std::size_t i = 0; i < keywords.size(); ++i) keywords[i] = kDebugKinds[i].keyword;
    return keywords;
}();

/// The last kind of debug images, where the library does not read it back.
inline constexpr const char* kIncludeKeyword = std::end(kDebugKinds)[-1].keyword;

}  // namespace zek::tool
