/// The kinds of sections that images hold, in the order of their numbers. Relies on nothing.
#pragma once

namespace zek::tool {

/// A debug image counts its kinds from 1, a compiled image from kImageQuorzek and has no kind behind REPEATER. INCLUDE
/// sections are not read back.
inline constexpr const char* kSectionKeywords[] = {"QUORZEK",  "PROPERTY", "SYSTEM", "GROUP",     "SENSOR",
                                                   "DEVICE",   "ACTION",   "TABLE",  "TAVRGROUP", "GLOBAL",
                                                   "REPEATER", "DEFINE",   "IFDEF"};

}  // namespace zek::tool
