#include "definitions.h"

#include <string_view>

#include "failure.h"
#include "zekcomp/predefined.h"

namespace zek::tool {
namespace {

constexpr std::string_view kDecimal = "0123456789";
constexpr std::string_view kHexadecimal = "0123456789abcdefABCDEF";

Failure Wrong(const std::string& definition, const std::string& why) {
    return Failure(kUsageOrFiles, "-D " + definition + ": " + why);
}

/// Whether all of a text is a number; the library's own reading passes over what follows the digits.
bool IsNumberAlone(std::string_view text) {
    std::string_view digits = kDecimal;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
        digits = kHexadecimal;
    } else if (text.starts_with('-') || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    return !text.empty() && text.find_first_not_of(digits) == text.npos;
}

unsigned ValueOf(const std::string& definition, const std::string& text) {
    unsigned value = 0;
    if (text.empty() || GetPreDefinedValue(text, &value)) return value;
    // The number 0 with a sign, or of more than ten digits, is none of the language.
    if (!IsNumberAlone(text) || !StringToLong(text, &value)) {
        throw Wrong(definition, text + " is neither a number nor a word defined before");
    }
    return value;
}

}  // namespace

// A name that could not stand as a key would be found by no value either.
std::string WhyNoWord(const std::string& name) {
    if (name.empty()) return "the name is missing";
    if (kDecimal.find(name[0]) != kDecimal.npos) return "a word must not begin with a digit";
    if (name[0] == '#') return "a word must not begin with #, as a comment does";
    constexpr std::string_view kForbidden(" \t\n\v\f\r,;=\"[]\0", 13);
    if (name.find_first_of(kForbidden) == name.npos) return {};
    return "a word has no blanks and none of , ; = \" [ ]";
}

void Define(const std::vector<std::string>& definitions) {
    for (const std::string& definition : definitions) {
        const std::size_t sign = definition.find('=');
        if (sign == definition.npos) throw Wrong(definition, "is not NAME=VALUE");
        const std::string name = definition.substr(0, sign);
        const std::string why = WhyNoWord(name);
        if (!why.empty()) throw Wrong(definition, why);
        AddPredDefineValue(name, ValueOf(definition, definition.substr(sign + 1)));
    }
}

std::set<std::string> NamesIn(const std::vector<std::string>& definitions) {
    std::set<std::string> names;
    for (const std::string& definition : definitions) names.insert(definition.substr(0, definition.find('=')));
    return names;
}

}  // namespace zek::tool
