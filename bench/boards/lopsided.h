/// Sources that have one thing many times and little else. Relies on zek_text.h.
#pragma once

#include <cstdint>

#include "zek_text.h"

namespace zek::bench {

/// One [PROPERTY] with `size` keys.
void WriteProperties(ZekText& text, unsigned size, std::uint64_t seed);
/// Ten [PROPERTY] sections that have `size` keys together.
void WriteLongSections(ZekText& text, unsigned size, std::uint64_t seed);
/// One [ACTION] with `size` working values, each of which uses one before it.
void WriteAction(ZekText& text, unsigned size, std::uint64_t seed);
/// `size` sensors and one list of them all, in another order.
void WriteSensorsList(ZekText& text, unsigned size, std::uint64_t seed);
/// `size` sections whose names are long, of one length, and differ in their last characters only.
void WriteTails(ZekText& text, unsigned size, std::uint64_t seed);
/// `size` globals, each of which uses two before it.
void WriteGlobals(ZekText& text, unsigned size, std::uint64_t seed);
/// `size` tables, and as many globals that use them.
void WriteTables(ZekText& text, unsigned size, std::uint64_t seed);
/// `size` actions, each of which calls one before it.
void WriteActions(ZekText& text, unsigned size, std::uint64_t seed);
/// `size` repeaters of as many actions.
void WriteRepeaters(ZekText& text, unsigned size, std::uint64_t seed);
/// `size` words, some of them defined by one before them, and as many globals that use them.
void WriteDefines(ZekText& text, unsigned size, std::uint64_t seed);
/// `size` groups: half of them one below the other, the others below any.
void WriteGroups(ZekText& text, unsigned size, std::uint64_t seed);
/// `size` views, each below any of them: the first half of them of no sensor, the others of two.
void WriteViews(ZekText& text, unsigned size, std::uint64_t seed);
/// One [TABLE] with `size` rows.
void WriteRows(ZekText& text, unsigned size, std::uint64_t seed);

}  // namespace zek::bench
