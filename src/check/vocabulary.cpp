#include "check/vocabulary.h"

#include <cstring>

namespace {

constexpr std::size_t kLongestNumber = 10;

// Own loops, since numbers are most of what a description holds and the C library's reading asks the locale.

/// The value of a decimal digit, or a number above 9.
unsigned DigitOf(char character) { return static_cast<unsigned char>(character) - unsigned{'0'}; }

/// The low 32 bits of the number that the digits at the beginning are, behind white space and a sign; 0 without digits.
unsigned Decimal(const char* text) {
    while (*text == ' ' || (*text >= '\t' && *text <= '\r')) ++text;
    const bool negative = *text == '-';
    if (negative || *text == '+') ++text;
    unsigned number = 0;
    for (; DigitOf(*text) <= 9; ++text) number = number * 10 + DigitOf(*text);
    return negative ? 0 - number : number;
}

/// The same for hexadecimal digits, without white space and sign.
unsigned Hexadecimal(const char* text) {
    unsigned number = 0;
    for (;; ++text) {
        const unsigned letter = (static_cast<unsigned char>(*text) | 0x20U) - 'a';
        if (DigitOf(*text) <= 9) {
            number = number * 16 + DigitOf(*text);
        } else if (letter <= 5) {
            number = number * 16 + letter + 10;
        } else {
            return number;
        }
    }
}

}  // namespace

const std::array<tagNTMAP, 17> g_NTMapOper = {{
    {"+", 1},
    {"-", 2},
    {"*", 3},
    {"/", 4},
    {"|", 5},
    {"&", 6},
    {"%", 7},
    {"^", 8},
    {">>", 9},
    {"<<", 10},
    {"pow", 20},
    {"==", zek::kFirstComparison},
    {">", 102},
    {">=", 103},
    {"!=", 104},
    {"<", 105},
    {"<=", 106},
}};

unsigned StringToLong(const std::string& text, unsigned int* value) {
    const char* const begin = text.c_str();
    if (text.size() > kLongestNumber && !std::memchr(begin, 0, kLongestNumber + 1)) return 0;
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    *value = hexadecimal ? Hexadecimal(begin + 2) : Decimal(begin);
    if (*value != 0) return 1;
    // Zero must be written: the first digit is a 0. Behind a bare "0x", as behind the end of any text, stands a NUL.
    return begin[hexadecimal ? 2 : 0] == '0';
}

unsigned GetOperator(const std::string& text) {
    for (const tagNTMAP& row : g_NTMapOper) {
        // The first character tells most of them apart.
        if (*text.c_str() == *row.pszName && text == row.pszName) return row.dwID;
    }
    return 0;
}

namespace zek {

unsigned NumberOr0(const std::string& text) {
    unsigned number = 0;
    StringToLong(text, &number);
    return number;
}

unsigned NumberOrNameOr0(const std::string& text) {
    unsigned number = 0;
    if (!StringToLong(text, &number)) GetPreDefinedValue(text, &number);
    return number;
}

bool IsNumber(const std::string& text) {
    unsigned ignored = 0;
    return StringToLong(text, &ignored);
}

bool IsNumberOrName(const std::string& text) {
    unsigned ignored = 0;
    return StringToLong(text, &ignored) || GetPreDefinedValue(text, &ignored);
}

}  // namespace zek
