// What docs/performance.md says of the boards that are measured is what the generator has.
#include "boards/boards.h"
#include "docs/page.h"

#include <gtest/gtest.h>

namespace zek::test {
namespace {

/// The table of a page that begins with this line, without its first two lines.
std::string TableOf(const std::string& page, const std::string& head) {
    const std::string text = SourceFile(page);
    const std::size_t begin = text.find('\n' + head + "\n|---|---|\n");
    EXPECT_NE(begin, std::string::npos) << page << " has no table " << head;
    if (begin == std::string::npos) return {};
    const std::size_t rows = text.find('\n', text.find('\n', begin + 1) + 1) + 1;
    return text.substr(rows, text.find("\n\n", rows) + 1 - rows);
}

TEST(PerformancePage, ListsEveryShapeWithWhatItsSizeCounts) {
    std::string expected;
    for (const std::string_view shape : bench::ShapeNames()) {
        if (shape == "board") continue;
        expected += "| " + std::string(shape) + " | " + std::string(bench::WhatSizeCounts(shape)) + " |\n";
    }
    EXPECT_EQ(TableOf("docs/performance.md", "| Shape | Its size counts |"), expected);
}

TEST(PerformancePage, ShowsAFigureForEveryShape) {
    const std::string page = SourceFile("docs/performance.md");
    const std::string figures = page.substr(page.find("\n## Shapes\n"));
    for (const std::string_view shape : bench::ShapeNames()) {
        if (shape == "board") continue;
        EXPECT_NE(figures.find("\n| " + std::string(shape) + ' '), std::string::npos) << shape;
    }
}

}  // namespace
}  // namespace zek::test
