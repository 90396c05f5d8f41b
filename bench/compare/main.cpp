// Compares this library with other tools on the same boards, and its phases and calls with the least that there is to
// do; prints tables. zek_compare --help tells the options. Exit code 1, with the reason, when something fails or a
// table would lack a row or a figure.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <string>

#include "boards/boards.h"
#include "compare/calls_run.h"
#include "compare/jobs.h"
#include "compare/report.h"
#include "compare/shapes.h"
#include "compare/targets.h"

namespace {

using namespace zek::bench;

struct Options {
    std::string folder = "bench-files";
    std::vector<unsigned> sizes = {10'000, 100'000};
    bool million = false;
    bool boards = true;
    bool tools = true;
    bool calls = true;
    unsigned shapes = 100'000;
    std::vector<std::string> shapeNames = LopsidedShapes();
    Effort effort;
    CallsEffort callsEffort = {.sizes = {1'000, 10'000, 100'000}};
};

void Print(const std::string& title, const Table& table) {
    std::printf("\n## %s\n\n%s", title.c_str(), table.Text().c_str());
    std::fflush(stdout);
}

FiguresBySize MeasureBoards(const Options& options) {
    FiguresBySize figures;
    std::vector<Job> jobs;
    const auto add = [&jobs](std::vector<Job> more) { std::move(more.begin(), more.end(), std::back_inserter(jobs)); };
    for (const unsigned size : options.sizes) {
        const BoardFiles files = MakeBoard(options.folder, "board", size);
        add(JobsOfBoard(files, size, options.effort, figures[size]));
        if (options.tools) add(JobsOfTools(options.folder, size, options.effort, figures[size]));
    }
    RunInTurn(jobs);
    return figures;
}

void CompareBoards(const Options& options, Measured& measured) {
    measured.withTools = options.tools;
    measured.boards = MeasureBoards(options);
    Print("Whole processes", ToolsTable(measured.boards, options.tools));
    Print("Phases", PhasesTable(measured.boards));
    Print("The machine", FloorTable(measured.boards));
    RunInTurn({LoadJob(options.folder, options.effort.runs, measured.load)});
}

void Compare(const Options& options) {
    std::filesystem::create_directories(options.folder);
    Measured measured;
    if (options.boards) CompareBoards(options, measured);
    if (options.calls) {
        measured.calls = MeasureCalls(options.folder, options.callsEffort);
        Print("Calls", CallsTable(*measured.calls));
    }
    if (options.shapes) {
        const unsigned runs = std::min(options.effort.runs, 3U);
        Print("Shapes", ShapesTable(MeasureShapes(options.folder, options.shapeNames, options.shapes, runs)));
    }
    if (!options.boards) return;
    Print("Targets", TargetsTable(measured));
    if (options.sizes.front() < 10'000) std::printf("\nThe targets are meant for boards of 10,000 sensors and more.\n");
}

/// As little of everything as still runs through all of it.
void MakeShort(Options& options) {
    options.sizes = {500, 1'000};
    options.shapes = 400;
    options.effort = {.runs = 1, .toolRuns = 1};
    options.callsEffort = {.sizes = {100, 200}, .repetitions = 1, .seconds = "0.001"};
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    CLI::App app("Measures compiling, loading and asking, beside other tools, and prints tables.", "zek_compare");
    app.add_option("--folder", options.folder, "Where generated boards and images go")->capture_default_str();
    app.add_option("--sizes", options.sizes, "Sensors of the boards, smallest first")->delimiter(',');
    app.add_flag("--million", options.million, "Also a board of 1,000,000 sensors");
    app.add_option("--runs", options.effort.runs, "Runs at up to 10,000 sensors; larger boards have fewer")
        ->capture_default_str()
        ->check(CLI::PositiveNumber);
    app.add_option("--shapes", options.shapes, "Size of the lopsided shapes; 0 for none")->capture_default_str();
    app.add_option("--shape", options.shapeNames, "Only these of the lopsided shapes")
        ->delimiter(',')
        ->check(CLI::IsMember(LopsidedShapes()));
    app.add_flag("!--no-boards", options.boards, "Without the boards, and so without the targets");
    app.add_flag("!--no-tools", options.tools, "Without flatc, protoc and dtc");
    app.add_flag("!--no-calls", options.calls, "Without the calls");
    bool isShort = false;
    app.add_flag("--short", isShort, "Everything once and small, to see that it works");
    CLI11_PARSE(app, argc, argv);
    if (isShort) MakeShort(options);
    if (options.million) options.sizes.push_back(1'000'000);
    options.effort.toolRuns = options.effort.runs;
    try {
        options.folder = std::filesystem::absolute(options.folder);
        Compare(options);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zek_compare: %s\n", error.what());
        return 1;
    }
}
