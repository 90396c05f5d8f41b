/// What the library is meant to reach, and what it does. Relies on figures.h.
#pragma once

#include <string>

#include "compare/calls_run.h"
#include "compare/figures.h"

namespace zek::bench {

/// What was measured.
struct Measured {
    FiguresBySize boards;  ///< at least one, and with or without the other tools
    Calls calls;           ///< empty where they were left out
    Figures load;
};

/// Each target with the figure measured (where it is for several sizes, the worst one), the bound that must hold and
/// the one to go for. They are meant for boards of at least 10,000 sensors, the growth for 10,000 to 1,000,000.
std::string TargetsTable(const Measured& measured);

}  // namespace zek::bench
