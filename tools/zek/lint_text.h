/// The sub-strings and numbers of a value as the compiler takes them, with what it loses on the way. Relies on the
/// rules in docs/language.md alone.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zek::tool {

/// A sub-string; everything lies in the value that it was cut from.
struct CutText {
    std::string_view text;
    std::string_view before = {};  ///< what stands between the comma and the opening quote, blanks included
    std::string_view after = {};   ///< what stands between the closing quote and the next comma, blanks included
    bool open = false;             ///< in quotes that are not closed
};

std::vector<CutText> CutValue(std::string_view value);
/// The first of them; empty where there is none.
std::string FirstSubString(std::string_view value);

/// As a finding quotes it: an empty text as two quotes, of a long one the beginning and its length.
std::string ShownText(std::string_view text);

/// A text that the compiler takes for a number.
struct WrittenNumber {
    unsigned value = 0;
    bool hexadecimal = false;
    bool negative = false;
    bool wrapped = false;        ///< it has more than 32 bits
    bool hasTextBehind = false;  ///< other than white space
};

/// Nothing where the compiler does not take the text for a number.
std::optional<WrittenNumber> WrittenNumberIn(std::string_view text);

}  // namespace zek::tool
