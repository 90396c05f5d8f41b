#include "lint_text.h"

#include <algorithm>
#include <cstdlib>

#include "source_line.h"

namespace zek::tool {
namespace {

constexpr std::size_t kLongestNumber = 10;
constexpr std::size_t kLongestShown = 300;  ///< bytes
constexpr std::size_t kShownOfLonger = 100;

/// The sub-string from `begin`, and where the next comma is. `quote` is the first quote from some place before `begin`
/// on, so that a long list without one is gone through once.
CutText CutAt(std::string_view value, std::size_t begin, std::size_t& quote, std::size_t& comma) {
    if (quote != value.npos && quote < begin) quote = value.find('"', begin);
    comma = value.find(',', begin);
    if (quote == value.npos || comma < quote) return {value.substr(begin, std::min(comma, value.size()) - begin)};
    CutText cut;
    cut.before = value.substr(begin, quote - begin);
    const std::size_t closing = value.find('"', quote + 1);
    cut.open = closing == value.npos;
    const std::size_t end = std::min(closing, value.size());
    cut.text = value.substr(quote + 1, end - quote - 1);
    comma = value.find(',', end);
    if (!cut.open) cut.after = value.substr(end + 1, std::min(comma, value.size()) - end - 1);
    return cut;
}

}  // namespace

std::vector<CutText> CutValue(std::string_view value) {
    std::vector<CutText> all;
    if (value.empty()) return all;
    std::size_t quote = value.find('"');
    for (std::size_t begin = 0, comma = 0; comma != value.npos; begin = comma + 1) {
        all.push_back(CutAt(value, begin, quote, comma));
    }
    return all;
}

std::string FirstSubString(std::string_view value) {
    std::size_t comma = 0;
    std::size_t quote = value.find('"');
    return std::string(CutAt(value, 0, quote, comma).text);
}

std::string ShownText(std::string_view text) {
    if (text.empty()) return "''";
    if (text.size() <= kLongestShown) return std::string(text);
    std::size_t end = kShownOfLonger;
    // Not within a character of UTF-8.
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    return std::string(text.substr(0, end)) + "... (" + std::to_string(text.size()) + " bytes)";
}

std::optional<WrittenNumber> WrittenNumberIn(std::string_view text) {
    if (text.empty() || text.size() > kLongestNumber) return std::nullopt;
    WrittenNumber number;
    number.hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const std::string written(text);
    char* end = nullptr;
    const unsigned long long wide = std::strtoull(written.c_str(), &end, number.hexadecimal ? 16 : 10);
    number.value = static_cast<unsigned>(wide);
    const std::size_t first = number.hexadecimal ? 2 : 0;
    if (number.value == 0 && (text.size() <= first || text[first] != '0')) return std::nullopt;
    const std::size_t sign = text.find_first_not_of(" \t\n\v\f\r");
    number.negative = text[sign] == '-';
    number.wrapped = (number.negative ? 0ULL - wide : wide) > 0xFFFFFFFFULL;
    number.hasTextBehind = !Trimmed(text.substr(static_cast<std::size_t>(end - written.c_str()))).empty();
    return number;
}

}  // namespace zek::tool
