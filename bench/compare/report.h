/// The tables of a comparison, as parts of a page in Markdown. Relies on figures.h.
#pragma once

#include <string>
#include <vector>

#include "compare/calls_run.h"
#include "compare/figures.h"
#include "compare/shapes.h"

namespace zek::bench {

/// The phases of a compilation and the loading of both images: what they are called in figures and tables.
struct PhaseName {
    const char* job;
    const char* quantity;
};
extern const std::vector<PhaseName> kPhases;

/// The whole processes: this library beside the other tools, at each size. What is worked out of times is so of the
/// processor's: all of them have one thread and read what was just written, so that the wall clock only adds what else
/// the machine does.
std::string ToolsTable(const FiguresBySize& boards);

/// Each phase at each size, and how it grows from the smallest to the largest.
std::string PhasesTable(const FiguresBySize& boards);

/// What the machine takes for the least that there is to do.
std::string FloorTable(const FiguresBySize& boards);

/// The queries, in nanoseconds, at each size.
std::string CallsTable(const Calls& calls);

/// The lopsided shapes.
std::string ShapesTable(const FiguresByShape& shapes);

}  // namespace zek::bench
