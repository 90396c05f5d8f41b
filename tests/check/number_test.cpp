// The one number syntax of the language.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

#include "check/vocabulary.h"
#include "yardstick/random.h"

namespace zek::test {

namespace {

using namespace std::string_literals;

struct NumberRow {
    std::string text;
    unsigned result;
    std::optional<unsigned> stored;  ///< nothing when the value is left untouched
};

void ExpectRows(std::initializer_list<NumberRow> rows) {
    constexpr unsigned kUntouched = 0xDEADBEEF;
    for (const NumberRow& row : rows) {
        SCOPED_TRACE("text '" + row.text + "'");
        unsigned value = kUntouched;
        EXPECT_EQ(StringToLong(row.text, &value), row.result);
        EXPECT_EQ(value, row.stored.value_or(kUntouched));
    }
}

/// The number syntax as the C library reads it; a text that is too long leaves the value as it was.
unsigned PlainNumber(const std::string& text, unsigned& value) {
    const char* const begin = text.c_str();
    const bool hexadecimal = std::strncmp(begin, "0x", 2) == 0 || std::strncmp(begin, "0X", 2) == 0;
    if (std::strlen(begin) > 10) return 0;
    value = static_cast<unsigned>(std::strtoul(begin, nullptr, hexadecimal ? 16 : 10));
    return value != 0 || begin[hexadecimal ? 2 : 0] == '0';
}

/// Whether the library and the plain reading agree on the result and on what is stored.
bool IsReadAsPlainly(const std::string& text) {
    unsigned plain = 0xDEADBEEF;
    unsigned value = plain;
    return StringToLong(text, &value) == PlainNumber(text, plain) && value == plain;
}

}  // namespace

TEST(Number, IsDecimalOrHexadecimal) {
    ExpectRows({{"7", 1, 7},
                {"010", 1, 10},
                {"0x10", 1, 16},
                {"0XfF", 1, 255},
                {"0Xff", 1, 255},
                {"0xAbCdEf", 1, 0xABCDEF},
                {"4294967295", 1, 0xFFFFFFFF},
                {"0xFFFFFFFF", 1, 0xFFFFFFFF},
                {"0x00000001", 1, 1},
                {"0000000009", 1, 9}});
}

TEST(Number, IsZeroOnlyWhenWritten) {
    ExpectRows({{"0", 1, 0},
                {"00", 1, 0},
                {"0000000000", 1, 0},
                {"0x0", 1, 0},
                {"0X0", 1, 0},
                {"0x00000000", 1, 0},
                {"0.5", 1, 0},
                {"0b1", 1, 0},
                {"0 ", 1, 0},
                {"0x0g", 1, 0}});
    ExpectRows({{"", 0, 0},
                {"0x", 0, 0},
                {"0X", 0, 0},
                {"abc", 0, 0},
                {"x0", 0, 0},
                {" ", 0, 0},
                {" 0", 0, 0},
                {"-0", 0, 0},
                {"+0", 0, 0},
                {".5", 0, 0},
                {"0xG", 0, 0},
                {"0x-1", 0, 0},
                {"0x 1", 0, 0},
                {"0x 0", 0, 0},
                {"G_1", 0, 0}});
}

TEST(Number, IgnoresWhatFollowsTheDigits) {
    ExpectRows(
        {{"12abc", 1, 12}, {"0x1G", 1, 1}, {"1.9", 1, 1}, {"1e3", 1, 1}, {"7 8", 1, 7}, {"9-1", 1, 9}, {"1x0", 1, 1}});
}

TEST(Number, MayBeginWithWhiteSpaceAndASign) {
    ExpectRows({{" 7", 1, 7},
                {"\t\n\v\f\r 7", 1, 7},
                {"+5", 1, 5},
                {" +5", 1, 5},
                {"-1", 1, 0xFFFFFFFF},
                {" -2", 1, 0xFFFFFFFE},
                {"-999999999", 1, 3294967297U}});
    ExpectRows({{"- 1", 0, 0}, {"--1", 0, 0}, {"+-1", 0, 0}, {"-", 0, 0}, {"+", 0, 0}});
}

TEST(Number, IsDecimalWhereThePrefixIsNotTheFirstTwoCharacters) {
    ExpectRows({{" 0x1", 0, 0}, {"-0x1", 0, 0}, {"+0x1", 0, 0}, {"00x1", 1, 0}});
}

TEST(Number, KeepsTheLow32Bits) {
    ExpectRows({{"8589934593", 1, 1}, {"4294967297", 1, 1}, {"9999999999", 1, 1410065407}});
    ExpectRows({{"4294967296", 0, 0}, {"8589934592", 0, 0}});
}

TEST(Number, HasTenCharactersAtMost) {
    ExpectRows({{"         7", 1, 7}, {"+123456789", 1, 123456789}, {"12 4567890", 1, 12}});
    ExpectRows({{"          7", 0, {}},
                {"00000000001", 0, {}},
                {"12345678901", 0, {}},
                {"0x0000000001", 0, {}},
                {"0x123456789", 0, {}},
                {"-4294967295", 0, {}},
                {"7 trailing text", 0, {}},
                {"abcdefghijk", 0, {}}});
}

TEST(Number, EndsAtItsFirstNul) {
    ExpectRows(
        {{"7\0and much more behind"s, 1, 7}, {"1234567890\0"s, 1, 1234567890}, {"0\0x1"s, 1, 0}, {"0x1\0F"s, 1, 1}});
    ExpectRows({{"\0"s, 0, 0}, {"\0007"s, 0, 0}, {"0x\0000"s, 0, 0}, {"12345678901\0"s, 0, {}}});
}

TEST(Number, IsReadAsTheCLibraryReadsEveryShortText) {
    const std::string alphabet = "019aFgxX+- \r.\0"s;
    std::size_t texts = 1;
    for (std::size_t length = 1; length <= 5; ++length) {
        texts *= alphabet.size();
        for (std::size_t i = 0; i < texts; ++i) {
            std::string text;
            for (std::size_t rest = i; text.size() < length; rest /= alphabet.size())
                text += alphabet[rest % alphabet.size()];
            ASSERT_TRUE(IsReadAsPlainly(text)) << "text '" << text << "'";
        }
    }
}

TEST(Number, IsReadAsTheCLibraryReadsLongerTexts) {
    const std::string digits = "00112345678999abcdefABCDEF"s;
    const std::string others = "+-xX \t\n\v\f\r\x08\x0E/:@G`g\x80\xFF\0"s;
    Random random(1);
    for (unsigned i = 0; i < 300000; ++i) {
        std::string text = random.Chance(30) ? "0x" : random.Chance(10) ? "-" : "";
        for (unsigned length = random.Below(13); text.size() < length;) {
            const std::string& from = random.Chance(5) ? others : digits;
            text += from[random.Below(static_cast<unsigned>(from.size()))];
        }
        ASSERT_TRUE(IsReadAsPlainly(text)) << "text '" << text << "'";
    }
}

}  // namespace zek::test
