/// What an index over the loaded image was made of, to tell whether it is still good. Relies on the published records.
#pragma once

#include <cstddef>

#include "zekcomp/records.h"

namespace zek {

extern unsigned g_changes;
extern unsigned g_sectionsMade;

/// Differs as soon as one of our functions has replaced a table or the list of sections or made a section, or a host
/// has changed the list's size, or its first or last section.
struct SectionsStamp {
    unsigned changes = 0;
    unsigned made = 0;
    std::size_t sections = 0;
    const tagGCSECT* first = nullptr;
    const tagGCSECT* last = nullptr;

    static SectionsStamp Now();
    bool operator==(const SectionsStamp&) const = default;
};

/// A table, list or section of no more than this many is walked at every look-up: that is quick, and whatever a host
/// changes in it is seen.
inline constexpr std::size_t kWalkedAtOnce = 64;

}  // namespace zek
