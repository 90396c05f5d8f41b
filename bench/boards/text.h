/// Text put together piece by piece at the end of a string. Relies on nothing.
#pragma once

#include <charconv>
#include <string>
#include <string_view>
#include <vector>

namespace zek::bench {

/// Appends texts and characters in their order.
template <class... Parts>
void Append(std::string& out, const Parts&... parts) {
    ((out += parts), ...);
}

/// Appends a number with at least `digits` digits.
inline void AppendNumber(std::string& out, unsigned number, int base = 10, std::size_t digits = 1) {
    char text[32];
    const char* end = std::to_chars(text, text + sizeof text, number, base).ptr;
    const std::size_t length = static_cast<std::size_t>(end - text);
    if (length < digits) out.append(digits - length, '0');
    out.append(text, length);
}

inline void AppendHex(std::string& out, unsigned number) {
    out += "0x";
    AppendNumber(out, number, 16, 2);
}

/// Text and a number after it.
inline std::string Numbered(std::string_view text, unsigned number) {
    std::string result(text);
    AppendNumber(result, number);
    return result;
}

inline void AppendNumbers(std::string& out, const std::vector<unsigned>& numbers, std::string_view separator) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0) out += separator;
        AppendNumber(out, numbers[i]);
    }
}

inline void AppendQuoted(std::string& out, std::string_view text) { Append(out, '"', text, '"'); }

/// Appends texts that are joined by commas, each in quotes.
inline void AppendQuotedTexts(std::string& out, std::string_view joined) {
    out += '"';
    for (const char character : joined) {
        character == ',' ? Append(out, "\",\"") : Append(out, character);
    }
    out += '"';
}

}  // namespace zek::bench
