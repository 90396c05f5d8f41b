#include "check/vocabulary.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr std::size_t kLongestNumber = 10;

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
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (std::strlen(text.c_str()) > kLongestNumber) return 0;
    *value = static_cast<unsigned>(std::strtoul(text.c_str(), nullptr, hexadecimal ? 16 : 10));
    if (*value != 0) return 1;
    // Zero must be written: the first digit is a 0. Behind a bare "0x", as behind the end of any text, stands a NUL.
    return text.c_str()[hexadecimal ? 2 : 0] == '0';
}

unsigned GetOperator(const std::string& text) {
    for (const tagNTMAP& row : g_NTMapOper) {
        if (text == row.pszName) return row.dwID;
    }
    return 0;
}

void AddPredDefineValue(const std::string& name, unsigned int value) { g_tblPreDefine[name] = value; }

unsigned GetPreDefinedValue(const std::string& name, unsigned int* value) {
    const auto place = g_tblPreDefine.find(name);
    if (place == g_tblPreDefine.end()) return 0;
    *value = place->second;
    return 1;
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

bool IsPredefined(const std::string& text) {
    unsigned ignored = 0;
    return GetPreDefinedValue(text, &ignored);
}

}  // namespace zek
