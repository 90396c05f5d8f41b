// Writes a source to measure with, or the same board for another tool: zek_board --sensors 10000 -o board.zek
#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "boards.h"
#include "source_files.h"

namespace zek::bench {
namespace {

enum ExitCode : int { kFine = 0, kUsageOrFiles = 2 };

struct Options {
    unsigned sensors = 0;
    unsigned seed = 1;
    std::string shape;
    std::string format;
    std::string file;
    bool list = false;
};

std::vector<std::string> Texts(const std::vector<std::string_view>& views) { return {views.begin(), views.end()}; }

void AddOptions(CLI::App& app, Options& options) {
    options.shape = ShapeNames().front();
    options.format = FormatNames().front();
    CLI::Option* sensors =
        app.add_option("--sensors", options.sensors, "How many sensors, or what else the shape counts");
    sensors->check(CLI::Range(kSmallestBoard, kLargestBoard));
    app.add_option("--seed", options.seed, "The same seed gives the same bytes")->capture_default_str();
    app.add_option("--shape", options.shape, "What the source has much of; see --list")
        ->check(CLI::IsMember(Texts(ShapeNames())))
        ->capture_default_str();
    app.add_option("--format", options.format, "The format; all but zek are of the shape board only")
        ->check(CLI::IsMember(Texts(FormatNames())))
        ->capture_default_str();
    app.add_option("-o,--output", options.file,
                   "The file to write; default: standard output. What it includes goes beside it")
        ->type_name("FILE");
    app.add_flag("--list", options.list, "Show the shapes and what --sensors counts in them");
    app.callback([&options, sensors] {
        if (!options.list && sensors->empty()) throw CLI::RequiredError("--sensors");
        if (options.format != FormatNames().front() && options.shape != ShapeNames().front()) {
            throw CLI::ValidationError("--format", "there is no " + options.format + " of the shape " + options.shape);
        }
        if (!options.list && options.file.empty() && HasIncludedFiles(options.shape)) {
            throw CLI::ValidationError("--output",
                                       "the shape " + options.shape + " is several files, so one is needed");
        }
    });
}

std::string ShapeList() {
    std::string text;
    for (const std::string_view shape : ShapeNames()) {
        text.append(shape).append(16 - shape.size(), ' ').append(WhatSizeCounts(shape)).append(1, '\n');
    }
    return text;
}

void Print(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fclose(stdout) == 0) return;
    throw std::system_error(errno, std::generic_category(), "cannot write to standard output");
}

void Run(const Options& options) {
    const bool zek = options.format == FormatNames().front();
    const std::string text = options.list ? ShapeList()
                             : zek        ? ZekSource(options.shape, options.sensors, options.seed)
                                          : BoardIn(options.format, options.sensors, options.seed);
    if (options.file.empty()) return Print(text);
    WriteBytes(options.file, text);
    if (options.list || !zek) return;
    const std::filesystem::path file = options.file;
    WriteIncluded(file.parent_path(), options.shape, options.sensors, options.seed);
}

}  // namespace
}  // namespace zek::bench

int main(int argc, char** argv) {
    using namespace zek::bench;
    Options options;
    CLI::App app("Writes a description to measure with, of any size and the same for the same seed.", "zek_board");
    AddOptions(app, options);
    try {
        app.parse(argc, argv);
        Run(options);
        return kFine;
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == kFine) return app.exit(error);
        std::fprintf(stderr, "zek_board: %s\nRun with --help for more information.\n", error.what());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zek_board: %s\n", error.what());
    }
    return kUsageOrFiles;
}
