#include "compare/table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace zek::bench {
namespace {

/// How many characters a text in UTF-8 has.
std::size_t Width(const std::string& text) {
    const auto begins = [](char c) { return (static_cast<unsigned char>(c) & 0xc0) != 0x80; };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins));
}

std::string Line(const std::vector<std::string>& cells, const std::vector<std::size_t>& widths) {
    std::string line = "|";
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::size_t blanks = widths[i] - Width(cells[i]);
        line.append(1 + (i == 0 ? 0 : blanks), ' ').append(cells[i]).append((i == 0 ? blanks : 0) + 1, ' ') += '|';
    }
    return line + '\n';
}

}  // namespace

std::string Table::Text() const {
    if (rows_.size() < 2) throw std::logic_error("no rows below " + rows_.front().front());
    std::vector<std::size_t> widths(rows_.front().size());
    for (const std::vector<std::string>& row : rows_) {
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], Width(row[i]));
    }
    std::string text = Line(rows_.front(), widths) + '|';
    for (std::size_t i = 0; i < widths.size(); ++i)
        text += std::string(widths[i] + (i ? 1 : 2), '-') + (i ? ":|" : "|");
    text += '\n';
    for (std::size_t i = 1; i < rows_.size(); ++i) text += Line(rows_[i], widths);
    return text;
}

std::string Number(double value, int digits) {
    const int before = value == 0 ? 1 : static_cast<int>(std::floor(std::log10(std::fabs(value)))) + 1;
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", std::max(0, digits - before), value);
    return text;
}

std::string Count(unsigned long value) {
    const std::string digits = std::to_string(value);
    std::string text;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i != 0 && (digits.size() - i) % 3 == 0) text += ',';
        text += digits[i];
    }
    return text;
}

}  // namespace zek::bench
