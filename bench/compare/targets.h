/// What the library is meant to reach, and what it does. Relies on figures.h and table.h.
#pragma once

#include <optional>

#include "compare/calls_run.h"
#include "compare/figures.h"
#include "compare/table.h"

namespace zek::bench {

/// What was measured, and with what.
struct Measured {
    FiguresBySize boards;  ///< at least one
    bool withTools = true;
    std::optional<Calls> calls = {};
    Figures load = {};
};

/// Each target with the figure measured (where it is for several sizes, the worst one), the bound that must hold and
/// the one to go for. They are meant for boards of at least 10,000 sensors, the growth for 10,000 to 1,000,000.
Table TargetsTable(const Measured& measured);

}  // namespace zek::bench
