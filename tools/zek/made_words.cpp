#include "made_words.h"

#include <algorithm>
#include <iterator>

namespace zek::tool {
namespace {

struct TypeName {
    std::uint32_t type;
    const char* word;
};

/// As in zek/words.zek.
constexpr TypeName kTypeNames[] = {
    {0, "VT_NONE"},   {1, "VT_VALUE"},       {2, "VT_CALC"},           {3, "VT_CALL"},      {4, "VT_READ"},
    {5, "VT_WRITE"},  {6, "VT_IPMI"},        {7, "VT_PACK"},           {8, "VT_READ_BITS"}, {9, "VT_WRITE_BITS"},
    {10, "VT_TABLE"}, {11, "VT_SMBUS_SEND"}, {12, "VT_SMBUS_RECEIVE"}, {101, "VT_WAIT"},    {102, "VT_IF"},
    {103, "VT_SKIP"}, {104, "VT_JUMP"}};

constexpr std::size_t kLongestNumber = 10;  // characters that the language takes for a number

/// A number that begins with a sign, since no word begins with a digit; empty where it would be too long.
std::string Signed(std::uint32_t number) {
    const std::string plus = '+' + std::to_string(number);
    const std::string minus = '-' + std::to_string(0U - number);
    if (number == 0) return {};  // not taken for a written zero behind a sign
    if (plus.size() <= kLongestNumber) return plus;
    return minus.size() <= kLongestNumber ? minus : "";
}

}  // namespace

std::string MadeWords::Type(std::uint32_t type) {
    const auto* known = std::find_if(std::begin(kTypeNames), std::end(kTypeNames),
                                     [&](const TypeName& name) { return name.type == type; });
    std::string word = known == std::end(kTypeNames) ? "VT_" + std::to_string(type) : known->word;
    Take(word, type);
    return word;
}

std::optional<std::string> MadeWords::SmBus(std::uint32_t number) {
    constexpr char kWord[] = "BUSTYPE_SMBUS";
    return Take(kWord, number) ? std::optional<std::string>(kWord) : std::nullopt;
}

std::string MadeWords::Number(std::uint32_t number) {
    std::string word = "NUMBER_" + std::to_string(number);
    Take(word, number);
    return word;
}

std::optional<std::string> MadeWords::Number(std::uint32_t number, std::uint32_t compared) {
    if (compared == 0) return Number(number);
    const std::string text = Signed(compared);
    // What follows the digits is not looked at.
    for (const char* tail : {"", "a", "b", "c", "d", "e", "f", "g"}) {
        std::string word = text + tail;
        if (text.empty() || word.size() > kLongestNumber) break;
        if (Take(word, number)) return word;
    }
    return std::nullopt;
}

}  // namespace zek::tool
