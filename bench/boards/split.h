/// Boards that are split over included files. Relies on boards.h and zek_text.h.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "boards.h"
#include "zek_text.h"

namespace zek::bench {

/// Includes so many files of a folder, in their order.
void WriteIncludes(ZekText& text, std::string_view folder, unsigned files);

/// The files of a folder that make up a board when they are included in their order, with about as many sections each,
/// but all groups in one of them. There are at most as many files as sensors.
std::vector<IncludedFile> SplitBoard(std::string_view folder, unsigned files, unsigned sensors, std::uint64_t seed);

}  // namespace zek::bench
