#include "compare/report.h"

#include <algorithm>

#include "compare/jobs.h"

namespace zek::bench {

const std::vector<PhaseName> kPhases = {
    {"zek", "start"},       {"zek", "parse"},           {"zek", "check"},
    {"zek", "debug image"}, {"zek", "compiled image"},  {"zek", "end"},
    {"gcInit", "gcInit"},   {"ImageView", "ImageView"}, {"gdInit", "gdInit"},
};

namespace {

constexpr double kMicro = 1e6;
constexpr double kMega = 1e6;

void AddTool(Table& table, unsigned size, const std::string& tool, const Figures& figures) {
    const double seconds = figures.Get(tool, "cpu");
    const double bytes = figures.Get(tool, "bytes");
    const double peak = figures.Get(tool, "peak");
    table.Add({Count(size) + ", " + tool, Number(figures.Get(tool, "wall") * 1e3), Number(seconds * 1e3),
               Number(seconds * kMicro / size), Number(bytes / seconds / kMega),
               Number(seconds / figures.Get("zek", "cpu")), Number(peak / kMega), Number(peak / bytes),
               Count(static_cast<unsigned long>(figures.Get(tool, "faults")))});
}

/// The head of a table that has a column for each size, with something before and behind these.
std::vector<std::string> Head(const std::string& first, const FiguresBySize& sizes, const std::string& last) {
    std::vector<std::string> head = {first};
    for (const auto& [size, figures] : sizes) head.push_back(Count(size));
    if (!last.empty()) head.push_back(last);
    return head;
}

void AddFloor(Table& table, const FiguresBySize& boards, const std::string& job, const std::string& what) {
    std::vector<std::string> row = {what};
    for (const auto& [size, figures] : boards) {
        row.push_back(Number(figures.Get(job, "bytes") / figures.Get(job, "seconds") / kMega));
    }
    table.Add(row);
}

/// The phase that grows most, of those that the compilations had and that take a twentieth of the largest one.
std::string SteepestPhase(const FiguresBySize& sizes) {
    const Figures& last = sizes.rbegin()->second;
    std::string steepest;
    double most = 0;
    for (const PhaseName& phase : kPhases) {
        if (!last.Has("zek", phase.quantity)) continue;
        if (last.Get("zek", phase.quantity) < last.Get("zek", "work") / 20) continue;
        const double growth = Growth(sizes, "zek", phase.quantity);
        if (growth > most) steepest = std::string(phase.quantity) + ' ' + Number(growth);
        most = std::max(most, growth);
    }
    return steepest;
}

void AddShape(Table& table, const std::string& shape, const FiguresBySize& sizes) {
    const auto& [large, last] = *sizes.rbegin();
    const double bytes = last.Get("zek", "bytes");
    std::vector<std::string> row = {shape, Count(large)};
    for (const auto& [size, figures] : sizes) row.push_back(Number(figures.Get("zek", "work") * 1e3));
    row.push_back(Number(Growth(sizes, "zek", "work")));
    row.push_back(SteepestPhase(sizes));
    row.push_back(Number(bytes / last.Get("zek", "work") / kMega));
    row.push_back(Number(last.Get("zek", "peak") / bytes));
    table.Add(row);
}

}  // namespace

Table ToolsTable(const FiguresBySize& boards, bool withTools) {
    Table table({"Sensors, tool", "wall ms", "processor ms", "µs per sensor", "MB/s", "times zek", "peak MB",
                 "peak per byte", "page faults"});
    for (const auto& [size, figures] : boards) {
        AddTool(table, size, "zek", figures);
        if (!withTools) continue;
        for (const std::string& tool : ToolNames(size)) AddTool(table, size, tool, figures);
    }
    return table;
}

Table PhasesTable(const FiguresBySize& boards) {
    Table table(Head("µs per sensor", boards, "exponent"));
    const auto add = [&](const std::string& name, const std::string& job, const std::string& quantity) {
        std::vector<std::string> row = {name};
        for (const auto& [size, figures] : boards) {
            row.push_back(Number(figures.Get(job, quantity) * kMicro / size));
        }
        row.push_back(boards.size() > 1 ? Number(Growth(boards, job, quantity)) : "");
        table.Add(row);
    };
    for (const PhaseName& phase : kPhases) add(phase.quantity, phase.job, phase.quantity);
    add("whole process of the compile", "zek", "cpu");
    return table;
}

Table FloorTable(const FiguresBySize& boards) {
    Table table(Head("MB/s", boards, ""));
    AddFloor(table, boards, "read", "read into fresh memory");
    AddFloor(table, boards, "copy", "copy in memory");
    AddFloor(table, boards, "scan", "scan into sections and items");
    AddFloor(table, boards, "enumerate", "parse and enumerate, by the parser library");
    AddFloor(table, boards, "touch", "write to each page of fresh memory");
    AddFloor(table, boards, "chase", "read lines of the cache, each telling the next");
    return table;
}

Table CallsTable(const Calls& calls) {
    Table table(Head("ns", calls.figures, ""));
    for (const std::string& name : calls.names) {
        std::vector<std::string> row = {name};
        for (const auto& [size, figures] : calls.figures) row.push_back(Number(figures.Get(name, "ns")));
        table.Add(row);
    }
    return table;
}

Table ShapesTable(const FiguresByShape& shapes) {
    Table table({"Shape", "size n", "ms at n/4", "ms at n/2", "ms at n", "exponent", "steepest phase", "MB/s",
                 "peak per byte"});
    for (const auto& [shape, sizes] : shapes) AddShape(table, shape, sizes);
    return table;
}

}  // namespace zek::bench
