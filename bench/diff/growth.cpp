// Compares images in which many sections have one name, as only a host can build them; prints what that takes and how
// it grows: zek_diff_growth [-f FOLDER] [-n SIZE] [-r RUNS] [--most EXPONENT]
#include <getopt.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "board_files.h"
#include "compare/table.h"
#include "measure.h"

namespace {

using namespace zek::bench;

struct Options {
    std::string folder = "bench-files";
    unsigned size = 100'000;                                ///< sections of one name; a tenth is measured as well
    unsigned runs = 3;                                      ///< of each, of which the median counts
    double most = std::numeric_limits<double>::infinity();  ///< the exponent that nothing may grow above
};

/// The digits that tell the names of the source apart. In the image there are none, so that these names are one.
constexpr std::size_t kDigits = 7;
constexpr char kMark[] = "NumberedHere";

std::string Name(char letter, unsigned number) {
    const std::string digits = std::to_string(number);
    return letter + std::string(kMark) + std::string(kDigits - digits.size(), '0') + digits;
}

std::string Action(const std::string& name, const std::string& key, const std::string& value) {
    return "[ACTION]\nNAME = " + name + "\nARGNUMBER = 0\n" + key + " = " + value + '\n';
}

/// The letters of the names before and after.
struct Letters {
    char first, second, third;
};

struct Shape {
    const char* each;  ///< what there is so many of, in words
    std::string (*source)(unsigned size, const Letters& letters);
};

std::string CallingEachOther(unsigned size, const Letters& letters) {
    std::string text;
    for (unsigned i = 0; i < size; ++i) {
        text += Action(Name(letters.first, i), "VALUE", "C," + Name(letters.second, i));
        text += Action(Name(letters.second, i), "VALUE_1", "C," + Name(letters.first, i));
    }
    return text;
}

/// Half of the first ones have the one name after and half the other.
std::string OfManyCallers(unsigned size, const Letters& letters) {
    std::string text;
    for (unsigned i = 0; i < size; ++i) {
        text += Action(Name(i % 2 && letters.first != 'A' ? letters.second : letters.first, i), "VALUE",
                       "V," + std::to_string(i));
    }
    for (unsigned i = 0; i < size; ++i) {
        text += Action(letters.third + std::to_string(i), "VALUE_7", "C," + Name(letters.first, 0));
    }
    return text;
}

constexpr Shape kShapes[] = {{"pairs that call each other", CallingEachOther},
                             {"sections and as many that call the first", OfManyCallers}};

void Require(bool isDone, const std::string& what) {
    if (!isDone) throw std::runtime_error("cannot " + what);
}

/// Gives the path of a debug image.
std::string WriteImage(const std::string& folder, const std::string& name, const std::string& source) {
    const std::string path = folder + '/' + name;
    std::ofstream(path + ".zek", std::ios::binary) << "[DEFINE]\nV = 1\nC = 3\n" << source;
    const Run run = RunOnce({.words = {Program("zek"), "compile", path + ".zek", "-g", path + ".zkd"}});
    Require(run.exitCode == 0, "compile " + path + ".zek");
    std::ifstream in(path + ".zkd", std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), {}};
    for (std::size_t at = 0; (at = bytes.find(kMark, at)) != bytes.npos; at += kDigits) {
        at += std::size(kMark) - 1;
        bytes.replace(at, kDigits, kDigits, '0');
    }
    Require(static_cast<bool>(std::ofstream(path + ".zkd", std::ios::binary) << bytes), "write " + path + ".zkd");
    return path + ".zkd";
}

double Measure(const Shape& shape, unsigned size, const Options& options) {
    const std::string before = WriteImage(options.folder, "before", shape.source(size, {'A', 'B', 'S'}));
    const std::string after = WriteImage(options.folder, "after", shape.source(size, {'D', 'E', 'T'}));
    std::vector<Run> runs;
    for (unsigned i = 0; i < options.runs; ++i)
        runs.push_back(RunOnce({.words = {Program("zek"), "diff", before, after}}));
    const Run median = Medians(runs);
    // All are renamed, so they differ.
    Require(median.exitCode == 1, "compare " + before + " and " + after);
    return median.cpuSeconds;
}

/// True where nothing grows more than it may.
bool Compare(const Options& options) {
    std::filesystem::create_directories(options.folder);
    Table table({"Of one name", "n", "ms at n/10", "at n", "exponent"});
    bool isBelow = true;
    for (const Shape& shape : kShapes) {
        const double tenth = Measure(shape, options.size / 10, options);
        const double all = Measure(shape, options.size, options);
        const auto exponent = Exponent(tenth, all);
        table.Add({shape.each, Count(options.size), Number(tenth * 1000), Number(all * 1000),
                   exponent ? Number(*exponent) : "-"});
        if (!exponent || *exponent <= options.most) continue;
        std::fprintf(stderr, "above --most: %s\n", shape.each);
        isBelow = false;
    }
    std::printf("%s", table.Text().c_str());
    return isBelow;
}

/// False where the command line is wrong.
bool Read(int count, char** words, Options& options) {
    constexpr option kLong[] = {{"most", required_argument, nullptr, 'm'}, {}};
    char* end = nullptr;
    for (int option; (option = getopt_long(count, words, "f:n:r:", kLong, nullptr)) != -1;) {
        if (option == 'f') options.folder = optarg;
        if (option == 'n') options.size = static_cast<unsigned>(std::strtoul(optarg, &end, 10));
        if (option == 'r') options.runs = static_cast<unsigned>(std::strtoul(optarg, &end, 10));
        if (option == 'm') options.most = std::strtod(optarg, &end);
        if (option == '?' || (end && (*end || end == optarg))) return false;
    }
    constexpr unsigned kMost = 5'000'000;  // whose numbers have kDigits
    return optind == count && options.size >= 10 && options.size <= kMost && options.runs > 0;
}

}  // namespace

int main(int count, char** words) {
    Options options;
    if (!Read(count, words, options)) {
        std::fprintf(stderr, "usage: zek_diff_growth [-f FOLDER] [-n SIZE, 10 and more] [-r RUNS] [--most EXPONENT]\n");
        return 2;
    }
    try {
        return Compare(options) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zek_diff_growth: %s\n", error.what());
        return 1;
    }
}
