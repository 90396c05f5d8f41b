/// Tables as text that reads well as it is and in a page. Relies on nothing of the project.
#pragma once

#include <string>
#include <vector>

namespace zek::bench {

/// A table: a head and rows with as many cells.
class Table {
public:
    explicit Table(std::vector<std::string> head) : rows_{std::move(head)} {}

    void Add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }

    /// The table in Markdown, its columns in line: the first one to the left, the others to the right. Throws
    /// std::logic_error for one without rows.
    std::string Text() const;

private:
    std::vector<std::vector<std::string>> rows_;
};

/// A number with so many significant digits; the digits before the point are shown in any case.
std::string Number(double value, int digits = 3);

/// A whole number with its thousands apart: "1,000,000".
std::string Count(unsigned long value);

}  // namespace zek::bench
