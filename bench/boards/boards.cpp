#include "boards.h"

#include <algorithm>
#include <stdexcept>

#include "board.h"
#include "formats.h"
#include "lopsided.h"
#include "mistakes.h"
#include "split.h"
#include "text.h"
#include "zek_text.h"

namespace zek::bench {
namespace {

constexpr unsigned kEvery = 10;  ///< so many sections of a board with mistakes have one of them

void WriteBoard(ZekText& text, unsigned size, std::uint64_t seed) {
    Board(size, seed).ForEach([&text](const Section& section) { text.Write(section); });
}

void WriteErrors(ZekText& text, unsigned size, std::uint64_t seed) {
    unsigned number = 0;
    Board(size, seed).ForEach([&](Section& section) {
        if (++number % kEvery == 0) AddMistake(section, number / kEvery);
        text.Write(section);
    });
}

struct Shape {
    std::string_view name;
    std::string_view counts;
    void (*write)(ZekText& text, unsigned size, std::uint64_t seed);  ///< null for a board split over included files
    unsigned mostFiles = 0;                                           ///< of those
};

constexpr Shape kShapes[] = {
    {"board", "sensors of a board that has everything in proportion", WriteBoard},
    {"parts", "sensors of a board that is split over 1,000 included files", nullptr, 1'000},
    {"includes", "included files, each with about one sensor of a board", nullptr, kLargestBoard},
    {"errors", "sensors of a board with a mistake in every tenth section", WriteErrors},
    {"properties", "keys of one [PROPERTY]", WriteProperties},
    {"long-sections", "keys of ten [PROPERTY] sections", WriteLongSections},
    {"action", "working values of one [ACTION], each using one before it", WriteAction},
    {"sensors-list", "sensors in one SENSORS list", WriteSensorsList},
    {"tails", "sections whose long names differ in their last characters only", WriteTails},
    {"globals", "globals, each using two before it", WriteGlobals},
    {"tables", "tables, and as many globals that use them", WriteTables},
    {"actions", "actions, each calling one before it", WriteActions},
    {"repeaters", "repeaters of as many actions", WriteRepeaters},
    {"defines", "words, and as many globals that use them", WriteDefines},
    {"groups", "groups, half of them one below the other", WriteGroups},
    {"views", "views one below the other, half of them empty, then those of two sensors", WriteViews},
    {"rows", "rows of one [TABLE]", WriteRows},
};

struct Format {
    std::string_view name;
    std::string (*board)(unsigned size, std::uint64_t seed);
};

constexpr Format kFormats[] = {
    {"zek", [](unsigned size, std::uint64_t seed) { return ZekSource("board", size, seed); }},
    {"json", [](unsigned size, std::uint64_t seed) { return BoardAsJson(Board(size, seed)); }},
    {"proto", [](unsigned size, std::uint64_t seed) { return BoardAsProtoText(Board(size, seed)); }},
    {"dts", [](unsigned size, std::uint64_t seed) { return BoardAsDts(Board(size, seed)); }},
};

template <class Row, std::size_t count>
const Row& Find(const Row (&rows)[count], const char* what, std::string_view name) {
    for (const Row& row : rows) {
        if (row.name == name) return row;
    }
    throw std::invalid_argument(std::string("there is no ") + what + " " + std::string(name));
}

template <class Row, std::size_t count>
std::vector<std::string_view> NamesOf(const Row (&rows)[count]) {
    std::vector<std::string_view> names;
    for (const Row& row : rows) names.push_back(row.name);
    return names;
}

unsigned FilesOf(const Shape& shape, unsigned size) { return std::min(shape.mostFiles, size); }

/// The folder of the included files, which no other shape or size has.
std::string FolderOf(const Shape& shape, unsigned size) { return Numbered(std::string(shape.name) + '-', size); }

void CheckSize(unsigned size) {
    if (size < kSmallestBoard || size > kLargestBoard) throw std::invalid_argument("the size is out of bounds");
}

}  // namespace

std::string ZekSource(std::string_view shape, unsigned size, std::uint64_t seed) {
    const Shape& found = Find(kShapes, "shape", shape);
    CheckSize(size);
    std::string out;
    ZekText text(out, seed);
    if (found.write) {
        found.write(text, size, seed);
    } else {
        WriteIncludes(text, FolderOf(found, size), FilesOf(found, size));
    }
    return out;
}

std::vector<IncludedFile> IncludedFiles(std::string_view shape, unsigned size, std::uint64_t seed) {
    const Shape& found = Find(kShapes, "shape", shape);
    CheckSize(size);
    if (found.write) return {};
    return SplitBoard(FolderOf(found, size), FilesOf(found, size), size, seed);
}

std::string BoardIn(std::string_view format, unsigned sensors, std::uint64_t seed) {
    const Format& found = Find(kFormats, "format", format);
    CheckSize(sensors);
    return found.board(sensors, seed);
}

std::vector<std::string_view> ShapeNames() { return NamesOf(kShapes); }

std::vector<std::string> LopsidedShapes() {
    std::vector<std::string> shapes;
    for (const std::string_view shape : ShapeNames()) {
        if (shape != "board") shapes.emplace_back(shape);
    }
    return shapes;
}

std::vector<std::string_view> FormatNames() { return NamesOf(kFormats); }
bool HasIncludedFiles(std::string_view shape) { return !Find(kShapes, "shape", shape).write; }
std::string_view WhatSizeCounts(std::string_view shape) { return Find(kShapes, "shape", shape).counts; }

}  // namespace zek::bench
