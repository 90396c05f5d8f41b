#include "compare/targets.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "compare/report.h"

namespace zek::bench {
namespace {

/// The scan of a text of 10,000 sensors, in MB/s, on the machine that the targets in MB/s were set for.
constexpr double kScanOfTheTargets = 860;
constexpr double kMega = 1e6;

/// The largest board that there are targets beside other tools for.
constexpr unsigned kLargestBesideTools = 100'000;

class TargetTable {
public:
    void AtMost(const std::string& what, double value, double must, double goal) {
        Add(what, value, must, goal, std::less_equal<>());
    }
    void AtLeast(const std::string& what, double value, double must, double goal) {
        Add(what, value, must, goal, std::greater_equal<>());
    }
    const Table& Rows() const { return table_; }

private:
    template <class Reaches>
    void Add(const std::string& what, double value, double must, double goal, Reaches reaches) {
        const std::string shown = Number(value);
        // The figure as it is shown decides, so that the row is right for whoever reads it.
        const double figure = std::stod(shown);
        const char* const verdict = reaches(figure, goal)   ? "reached"
                                    : reaches(figure, must) ? "must reached"
                                                            : "**missed**";
        table_.Add({what, shown, Number(must), Number(goal), verdict});
    }

    Table table_{{"What", "measured", "must", "go for", ""}};
};

/// The largest of what a figure is at every size.
double Worst(const FiguresBySize& sizes, const std::function<double(const Figures&)>& figure) {
    double worst = 0;
    for (const auto& [size, figures] : sizes) worst = std::max(worst, figure(figures));
    return worst;
}

void AddTools(TargetTable& table, const FiguresBySize& boards) {
    const auto add = [&](const std::string& tool, double must, double goal) {
        for (const auto& [size, figures] : boards) {
            if (size > kLargestBesideTools) continue;
            table.AtLeast("compile, times as fast as " + tool + ", " + Count(size) + " sensors",
                          figures.Get(tool, "cpu") / figures.Get("zek", "cpu"), must, goal);
        }
    };
    add("flatc", 1.3, 2);
    add("dtc", 8, 12);
}

double SecondsOf(const Figures& figures, const std::vector<std::string>& phases) {
    double seconds = 0;
    for (const std::string& phase : phases) seconds += figures.Get("zek", phase);
    return seconds;
}

/// With the start, in which the parser library reads the text, and without it.
void AddSpeed(TargetTable& table, const FiguresBySize& boards) {
    const auto& [size, figures] = *boards.begin();
    const double scan = figures.Get("scan", "bytes") / figures.Get("scan", "seconds") / kMega;
    const auto add = [&, size = size, &figures = figures](const std::string& phases, double seconds) {
        const double speed = figures.Get("zek", "bytes") / seconds / kMega;
        const std::string what = phases + ", MB/s, " + Count(size) + " sensors";
        table.AtLeast(what, speed, 60, 80);
        table.AtLeast(what + ", as if the scan were " + Number(kScanOfTheTargets), speed * kScanOfTheTargets / scan, 60,
                      80);
    };
    add("start + parse + check + compiled image", SecondsOf(figures, {"start", "parse", "check", "compiled image"}));
    add("parse + check + compiled image, without start", SecondsOf(figures, {"parse", "check", "compiled image"}));
}

void AddGrowth(TargetTable& table, const FiguresBySize& boards) {
    if (boards.size() < 2) return;
    const std::string from = ", exponent from " + Count(boards.begin()->first);
    const std::string sizes = from + " to " + Count(boards.rbegin()->first) + " sensors";
    table.AtMost("growth of the whole process" + sizes, Growth(boards, "zek", "cpu"), 1.07, 1.04);
    for (const PhaseName& phase : kPhases) {
        table.AtMost(std::string("growth of ") + phase.quantity + sizes, Growth(boards, phase.job, phase.quantity),
                     1.12, 1.08);
    }
}

void AddImages(TargetTable& table, const FiguresBySize& boards) {
    table.AtMost(
        "peak memory per byte of source",
        Worst(boards, [](const Figures& figures) { return figures.Get("zek", "peak") / figures.Get("zek", "bytes"); }),
        12, 9);
    const auto addReading = [&](const std::string& phase, double must, double goal) {
        table.AtMost(phase + ", times reading the file into fresh memory",
                     Worst(boards,
                           [&](const Figures& figures) {
                               return figures.Get(phase, phase) / figures.Get("read image", "seconds");
                           }),
                     must, goal);
    };
    addReading("gcInit", 15, 11);
    addReading("ImageView", 8, 4);
    table.AtLeast("gccOutputD, MB/s of its own output",
                  1 / Worst(boards,
                            [](const Figures& figures) {
                                return figures.Get("zek", "debug image") / figures.Get("gdInit", "bytes") * kMega;
                            }),
                  300, 600);
    table.AtMost(
        "gdInit, times start + parse + check + debug image",
        Worst(
            boards,
            [](const Figures& figures) {
                return figures.Get("gdInit", "gdInit") / SecondsOf(figures, {"start", "parse", "check", "debug image"});
            }),
        1, 0.6);
}

void AddCalls(TargetTable& table, const FiguresBySize& calls) {
    const auto add = [&](const std::string& call, double must, double goal) {
        table.AtMost(call + ", ns", Worst(calls, [&](const Figures& figures) { return figures.Get(call, "ns"); }), must,
                     goal);
    };
    const auto addName = [&](const std::string& call, const std::string& yardstick) {
        table.AtMost(
            call + ", hash look-ups",
            Worst(calls,
                  [&](const Figures& figures) { return figures.Get(call, "ns") / figures.Get(yardstick, "ns"); }),
            2, 1.4);
    };
    addName("gcGetSectByName", "hash look-up");
    addName("gcGetSectByName, absent", "hash look-up, absent");
    addName("SectionNamed", "hash look-up");
    addName("SectionNamed, absent", "hash look-up, absent");
    for (const char* order : {"", ", few"}) {
        add(std::string("gcGetSectByID") + order, 40, 20);
        for (const char* call : {"gcGetSectByIndex", "gcGetEntryByType", "gcGetValueByIndex", "gcGetValueByID"}) {
            add(std::string(call) + order, 20, 10);
        }
        for (const char* call : {"gdGetSectByIndex", "gdGetEntryByIndex", "gdGetValue"}) {
            add(std::string(call) + order, 60, 30);
        }
    }
}

}  // namespace

Table TargetsTable(const Measured& measured) {
    TargetTable table;
    if (measured.withTools) AddTools(table, measured.boards);
    AddSpeed(table, measured.boards);
    AddGrowth(table, measured.boards);
    AddImages(table, measured.boards);
    if (measured.calls) AddCalls(table, measured.calls->figures);
    table.AtMost("library load, ms", measured.load.Get("load", "seconds") * 1e3, 1, 0.3);
    return table.Rows();
}

}  // namespace zek::bench
