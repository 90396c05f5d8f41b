// Checks sources in which a rule of lint has much to find, with and without the rule; prints what that takes and how it
// grows: zek_lint_growth [-f FOLDER] [-n SIZE] [-r RUNS] [CODE]...
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>
#include <string>

#include "board_files.h"
#include "compare/table.h"
#include "lint/lint_shapes.h"
#include "measure.h"

namespace {

using namespace zek::bench;

struct Options {
    std::string folder = "bench-files";
    unsigned size = 100'000;  ///< how much a rule finds; a tenth of it is measured as well
    unsigned runs = 3;        ///< of each, of which the median counts
    std::set<std::string> codes = {};
};

/// The seconds of a check without the rule, and what the rule adds.
struct Cost {
    double without = 0;
    double rule = 0;
    double Whole() const { return without + rule; }
};

/// `zek check` with the rule of that code alone; with none where the code is empty. Nothing is shown on a terminal.
Command CheckWith(const std::string& file, const std::string& code) {
    std::set<std::string> others;
    for (const LintShape& shape : LintShapes()) others.insert(shape.code);
    others.erase(code);
    Command command = {.words = {Program("zek"), "check", "--format", "json", file}};
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
    const std::string file = options.folder + "/lint.zek";
    if (!(std::ofstream(file) << LintSource(shape, size)).flush()) throw std::runtime_error("cannot write " + file);
    std::vector<Run> without;
    std::vector<Run> with;
    for (unsigned i = 0; i < options.runs; ++i) {
        without.push_back(RunOnce(CheckWith(file, "")));
        with.push_back(RunOnce(CheckWith(file, shape.code)));
    }
    const double seconds = SecondsOf(without);
    return {seconds, SecondsOf(with) - seconds};
}

/// How it grows from a tenth of the size to all of it.
std::string Exponent(double tenth, double all) {
    constexpr double kTooShort = 0.003;  // seconds that say nothing
    return tenth < kTooShort || all < kTooShort ? "-" : Number(std::log10(all / tenth));
}

void Compare(const Options& options) {
    std::filesystem::create_directories(options.folder);
    Table table({"Rule", "of", "n", "ms at n/10", "at n", "exponent", "the rule: ms at n/10", "at n", "exponent"});
    const auto ms = [](double seconds) { return Number(std::max(seconds, 0.0) * 1000); };
    for (const LintShape& shape : LintShapes()) {
        if (!options.codes.empty() && !options.codes.contains(shape.code)) continue;
        const Cost tenth = Measure(shape, options.size / 10, options);
        const Cost all = Measure(shape, options.size, options);
        table.Add({shape.code, shape.each, Count(options.size), ms(tenth.Whole()), ms(all.Whole()),
                   Exponent(tenth.Whole(), all.Whole()), ms(tenth.rule), ms(all.rule), Exponent(tenth.rule, all.rule)});
    }
    std::printf("%s", table.Text().c_str());
}

/// False where the command line is wrong.
bool Read(int count, char** words, Options& options) {
    for (int option; (option = getopt(count, words, "f:n:r:")) != -1;) {
        if (option == '?') return false;
        if (option == 'f') options.folder = optarg;
        if (option == 'n') options.size = static_cast<unsigned>(std::max(0, std::atoi(optarg)));
        if (option == 'r') options.runs = static_cast<unsigned>(std::max(0, std::atoi(optarg)));
    }
    options.codes = {words + optind, words + count};
    return options.size >= 10 && options.runs > 0;
}

}  // namespace

int main(int count, char** words) {
    Options options;
    if (!Read(count, words, options)) {
        std::fprintf(stderr, "usage: zek_lint_growth [-f FOLDER] [-n SIZE, 10 and more] [-r RUNS] [CODE]...\n");
        return 2;
    }
    try {
        Compare(options);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zek_lint_growth: %s\n", error.what());
        return 1;
    }
}
