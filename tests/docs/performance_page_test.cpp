// What docs/performance.md says of the boards that are measured is what the generator has, and what it says of the
// figures is what they show.
#include "boards/boards.h"
#include "docs/page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <vector>

namespace zek::test {
namespace {

constexpr char kPage[] = "docs/performance.md";

using Strings = std::vector<std::string>;

/// The cells of a line "| a | b |", without the blanks around them; none for any other line.
Strings CellsOf(const std::string& line) {
    Strings cells;
    if (!line.starts_with("| ") || !line.ends_with("|")) return cells;
    std::istringstream rest(line.substr(1));
    for (std::string cell; std::getline(rest, cell, '|');) {
        const std::size_t begin = cell.find_first_not_of(' ');
        cells.push_back(begin == std::string::npos ? "" : cell.substr(begin, cell.find_last_not_of(' ') + 1 - begin));
    }
    return cells;
}

std::string Section(const std::string& title) {
    const std::string page = SourceFile(kPage);
    const std::size_t begin = page.find("\n## " + title + '\n');
    EXPECT_NE(begin, std::string::npos) << title;
    return begin == std::string::npos ? "" : page.substr(begin + 1, page.find("\n## ", begin + 1) - begin);
}

/// The rows of the table of a section whose head begins with this cell, by their first cells; the head, too.
std::map<std::string, Strings> TableOf(const std::string& title, const std::string& head) {
    std::map<std::string, Strings> rows;
    std::istringstream lines(Section(title));
    for (std::string line; std::getline(lines, line);) {
        const Strings cells = CellsOf(line);
        if (cells.empty() && !rows.empty() && !line.starts_with("|--")) break;
        if (cells.empty() || (rows.empty() && cells.front() != head)) continue;
        EXPECT_TRUE(rows.emplace(cells.front(), cells).second) << cells.front() << " stands twice";
    }
    EXPECT_GT(rows.size(), 1U) << title << " has no table " << head;
    return rows;
}

TEST(PerformancePage, ListsEveryShapeWithWhatItsSizeCounts) {
    std::map<std::string, Strings> expected = {{"Shape", {"Shape", "Its size counts"}}};
    for (const std::string& shape : bench::LopsidedShapes()) {
        expected[shape] = {shape, std::string(bench::WhatSizeCounts(shape))};
    }
    EXPECT_EQ(TableOf("What is measured", "Shape"), expected);
}

TEST(PerformancePage, ShowsFiguresOfEveryShape) {
    Strings shown;
    for (const auto& [shape, row] : TableOf("Shapes", "Shape")) {
        if (shape != "Shape") shown.push_back(shape);
    }
    Strings expected = bench::LopsidedShapes();
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(shown, expected);
}

double NumberIn(std::string cell) {
    std::erase(cell, ',');
    std::size_t end = 0;
    const double number = std::stod(cell, &end);
    EXPECT_EQ(end, cell.size()) << cell;
    return number;
}

/// What a figure reaches of a target. The one to go for is the harder one, so it tells whether more or less is better.
std::string VerdictOf(double figure, double must, double goal) {
    const auto reaches = [figure, more = goal > must](double bound) {
        return more ? figure >= bound : figure <= bound;
    };
    return reaches(goal) ? "reached" : reaches(must) ? "must reached" : "**missed**";
}

TEST(Verdict, IsWhatAFigureReaches) {
    EXPECT_EQ(VerdictOf(80, 60, 80), "reached");
    EXPECT_EQ(VerdictOf(79.9, 60, 80), "must reached");
    EXPECT_EQ(VerdictOf(60, 60, 80), "must reached");
    EXPECT_EQ(VerdictOf(59.9, 60, 80), "**missed**");
    EXPECT_EQ(VerdictOf(10, 20, 10), "reached");
    EXPECT_EQ(VerdictOf(20, 20, 10), "must reached");
    EXPECT_EQ(VerdictOf(20.1, 20, 10), "**missed**");
}

/// The rows of the targets without their head.
std::map<std::string, Strings> Targets() {
    std::map<std::string, Strings> targets = TableOf("Targets", "What");
    targets.erase("What");
    for (const auto& [what, row] : targets) EXPECT_EQ(row.size(), 5U) << what;
    return targets;
}

TEST(PerformancePage, GivesEachTargetTheVerdictOfItsFigures) {
    for (const auto& [what, row] : Targets()) {
        SCOPED_TRACE(what);
        ASSERT_NE(NumberIn(row[2]), NumberIn(row[3]));
        EXPECT_EQ(row[4], VerdictOf(NumberIn(row[1]), NumberIn(row[2]), NumberIn(row[3])));
    }
}

/// The largest of some cells, as it stands there.
std::string Largest(const Strings& cells) {
    return *std::max_element(cells.begin(), cells.end(),
                             [](const std::string& a, const std::string& b) { return NumberIn(a) < NumberIn(b); });
}

/// What each target measures where that stands in another table as well.
std::map<std::string, std::string> FiguresOfOtherTables() {
    std::map<std::string, std::string> figures;
    for (const auto& [call, row] : TableOf("Calls", "ns")) {
        if (call != "ns") figures[call + ", ns"] = Largest({row.begin() + 1, row.end()});
    }
    const auto phases = TableOf("Phases", "µs per sensor");
    const Strings sizes = phases.at("µs per sensor");
    const std::string from = ", exponent from " + sizes[1] + " to " + sizes[sizes.size() - 2] + " sensors";
    for (const auto& [phase, row] : phases) {
        const bool whole = phase == "whole process of the compile";
        figures["growth of " + (whole ? "the whole process" : phase) + from] = row.back();
    }
    Strings peaks;
    for (const auto& [job, row] : TableOf("Whole processes", "Sensors, tool")) {
        const std::size_t comma = job.rfind(", ");
        const std::string tool = job.substr(comma + 2);
        if (tool == "zek") peaks.push_back(row[7]);
        figures["compile, times as fast as " + tool + ", " + job.substr(0, comma) + " sensors"] = row[5];
    }
    figures["peak memory per byte of source"] = Largest(peaks);
    return figures;
}

TEST(PerformancePage, MeasuresItsTargetsAsItsOtherTablesDo) {
    const std::map<std::string, std::string> figures = FiguresOfOtherTables();
    unsigned compared = 0;
    for (const auto& [what, row] : Targets()) {
        const auto figure = figures.find(what);
        if (figure == figures.end()) continue;
        ++compared;
        EXPECT_EQ(row[1], figure->second) << what;
    }
    EXPECT_EQ(compared, 4 + 10 + 1 + 16U) << "tools, growth, memory and calls";
}

TEST(PerformancePage, HasACommandBesideEveryTableOfFigures) {
    for (const char* title : {"Whole processes", "Phases", "The machine", "Calls", "Shapes", "Targets"}) {
        const std::string section = Section(title);
        const std::size_t command = section.find("`scripts/bench");
        const std::size_t part = section.find("`build-bench/bin/zek_");
        EXPECT_LT(std::min(command, part), section.find("\n| ")) << title;
    }
}

}  // namespace
}  // namespace zek::test
