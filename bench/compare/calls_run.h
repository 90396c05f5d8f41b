/// Runs zek_calls and reads what it measured. Relies on figures.h.
#pragma once

#include <string>
#include <vector>

#include "compare/figures.h"

namespace zek::bench {

/// How zek_calls is run.
struct CallsEffort {
    std::vector<unsigned> sizes;  ///< of the boards, in sensors
    unsigned repetitions = 3;     ///< of which the median counts
    std::string seconds = "0.1";  ///< that each repetition takes at least
};

/// What zek_calls measured.
struct Calls {
    std::vector<std::string> names;  ///< of the calls that it lists, in their order
    FiguresBySize figures;           ///< by these names as "ns" of processor time, for boards of each size
};

/// Throws std::runtime_error when it fails, lists no calls or prints no results.
Calls MeasureCalls(const std::string& folder, const CallsEffort& effort);

}  // namespace zek::bench
