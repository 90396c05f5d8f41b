// Checks sources in which zek finds one thing many times, with and without its code; prints what that takes and how it
// grows: zek_lint_growth [-f FOLDER] [-n SIZE] [-r RUNS] [--most EXPONENT] [CODE]...
#include <getopt.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "board_files.h"
#include "compare/table.h"
#include "lint/lint_shapes.h"
#include "measure.h"

namespace {

using namespace zek::bench;

struct Options {
    std::string folder = "bench-files";
    unsigned size = 100'000;                                ///< how much is found; a tenth of it is measured as well
    unsigned runs = 3;                                      ///< of each, of which the median counts
    double most = std::numeric_limits<double>::infinity();  ///< the exponent that nothing may grow above
    std::set<std::string> codes = {};
};

/// The seconds of a check without the code, and what the code adds.
struct Cost {
    double without = 0;
    double code = 0;
    double Whole() const { return without + code; }
};

/// `zek check` with that code alone of those that there are shapes for; with none where the code is empty. Nothing is
/// shown on a terminal.
Command CheckWith(const std::string& file, const std::string& code) {
    std::set<std::string> others;
    for (const LintShape& shape : LintShapes()) others.insert(shape.code);
    others.erase(code);
    Command command = {.words = {Program("zek"), "check", "--format", "json", "--max-files", "1000000", file}};
    for (const std::string& other : others) command.words.insert(command.words.end(), {"--no-warn", other});
    return command;
}

double SecondsOf(const std::vector<Run>& runs) {
    const Run median = Medians(runs);
    // With 1 the source has errors, as items without = are.
    if (median.exitCode > 1) throw std::runtime_error("zek failed with exit code " + std::to_string(median.exitCode));
    return median.cpuSeconds;
}

Cost Measure(const LintShape& shape, unsigned size, const Options& options) {
    const std::string file = WriteLintSource(options.folder, shape, size);
    std::vector<Run> without;
    std::vector<Run> with;
    for (unsigned i = 0; i < options.runs; ++i) {
        without.push_back(RunOnce(CheckWith(file, "")));
        with.push_back(RunOnce(CheckWith(file, shape.code)));
    }
    const double seconds = SecondsOf(without);
    return {seconds, SecondsOf(with) - seconds};
}

/// True where nothing grows more than it may.
bool Compare(const Options& options) {
    std::filesystem::create_directories(options.folder);
    Table table({"Code", "of", "n", "ms at n/10", "at n", "exponent", "the code: ms at n/10", "at n", "exponent"});
    const auto ms = [](double seconds) { return Number(std::max(seconds, 0.0) * 1000); };
    const auto number = [](std::optional<double> exponent) { return exponent ? Number(*exponent) : "-"; };
    std::string above;
    for (const LintShape& shape : LintShapes()) {
        if (!options.codes.empty() && !options.codes.contains(shape.code)) continue;
        const Cost tenth = Measure(shape, options.size / 10, options);
        const Cost all = Measure(shape, options.size, options);
        const std::optional<double> whole = Exponent(tenth.Whole(), all.Whole());
        const std::optional<double> code = Exponent(tenth.code, all.code);
        table.Add({shape.code, shape.each, Count(UnitsIn(shape, options.size)), ms(tenth.Whole()), ms(all.Whole()),
                   number(whole), ms(tenth.code), ms(all.code), number(code)});
        // One that is not known is below any limit.
        if (std::max(whole, code) > options.most)
            above += std::string("above --most: ") + shape.code + ", " + shape.each + '\n';
    }
    std::printf("%s", table.Text().c_str());
    std::fprintf(stderr, "%s", above.c_str());
    return above.empty();
}

/// The codes that there are no shapes for.
std::vector<std::string> Unknown(std::set<std::string> codes) {
    for (const LintShape& shape : LintShapes()) codes.erase(shape.code);
    return {codes.begin(), codes.end()};
}

/// False where the command line is wrong.
bool Read(int count, char** words, Options& options) {
    constexpr option kLong[] = {{"most", required_argument, nullptr, 'm'}, {}};
    for (int option; (option = getopt_long(count, words, "f:n:r:", kLong, nullptr)) != -1;) {
        char* end = nullptr;
        if (option == '?') return false;
        if (option == 'f') options.folder = optarg;
        if (option == 'n') options.size = static_cast<unsigned>(std::max(0, std::atoi(optarg)));
        if (option == 'r') options.runs = static_cast<unsigned>(std::max(0, std::atoi(optarg)));
        if (option == 'm') options.most = std::strtod(optarg, &end);
        if (option == 'm' && (end == optarg || *end)) return false;
    }
    options.codes = {words + optind, words + count};
    return options.size >= 10 && options.runs > 0;
}

}  // namespace

int main(int count, char** words) {
    Options options;
    if (!Read(count, words, options)) {
        std::fprintf(
            stderr,
            "usage: zek_lint_growth [-f FOLDER] [-n SIZE, 10 and more] [-r RUNS] [--most EXPONENT] [CODE]...\n");
        return 2;
    }
    const std::vector<std::string> unknown = Unknown(options.codes);
    for (const std::string& code : unknown)
        std::fprintf(stderr, "zek_lint_growth: no source is made for %s\n", code.c_str());
    if (!unknown.empty()) return 2;
    try {
        return Compare(options) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zek_lint_growth: %s\n", error.what());
        return 1;
    }
}
