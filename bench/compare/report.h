/// The tables of a comparison. Each has all of its rows: std::out_of_range tells a figure that was not measured. Relies
/// on figures.h and table.h.
#pragma once

#include <string>
#include <vector>

#include "compare/calls_run.h"
#include "compare/figures.h"
#include "compare/shapes.h"
#include "compare/table.h"

namespace zek::bench {

/// The phases of a compilation and the loading of both images: what they are called in figures and tables.
struct PhaseName {
    const char* job;
    const char* quantity;
};
extern const std::vector<PhaseName> kPhases;

/// The whole processes: this library, beside the other tools where these were measured, at each size. What is worked
/// out of times is so of the processor's: all of them have one thread and read what was just written, so that the wall
/// clock only adds what else the machine does.
Table ToolsTable(const FiguresBySize& boards, bool withTools);

/// Each phase at each size, and how it grows from the smallest to the largest.
Table PhasesTable(const FiguresBySize& boards);

/// What the machine takes for the least that there is to do.
Table FloorTable(const FiguresBySize& boards);

/// The queries, in nanoseconds, at each size.
Table CallsTable(const Calls& calls);

/// The lopsided shapes.
Table ShapesTable(const FiguresByShape& shapes);

}  // namespace zek::bench
