/// Boards of one sided shapes, each at three sizes: a walk that is left in shows as an exponent near 2. Relies on
/// jobs.h.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "compare/figures.h"

namespace zek::bench {

/// What compiling the boards of each shape took, by their sizes.
using FiguresByShape = std::map<std::string, FiguresBySize>;

/// Compiles boards of these shapes, of a quarter and half of `largest` and of `largest` itself; a shape of which the
/// language or the time does not allow so many is made smaller.
FiguresByShape MeasureShapes(const std::string& folder, const std::vector<std::string>& shapes, unsigned largest,
                             unsigned runs);

}  // namespace zek::bench
