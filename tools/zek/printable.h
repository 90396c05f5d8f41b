/// Text from sources and images made safe for a terminal and for JSON, which both want UTF-8. Relies on the standard
/// library.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zek::tool {

struct Character {
    std::uint32_t code = 0;
    std::size_t length = 1;  ///< in bytes
    bool sound = false;      ///< else it is one byte that is no UTF-8
};

/// The first character of a text that is not empty.
Character FirstCharacter(std::string_view text);

/// Whether the bytes are well-formed UTF-8 (no overlong form, no surrogate, nothing above U+10FFFF).
bool IsUtf8(std::string_view bytes);

/// The text with every control character, every character that turns the direction of writing, and every byte that is
/// no UTF-8 written as \xNN for each of its bytes. A tab stays.
std::string Printable(std::string_view text);

/// The same in double quotes, with backslashes, quotes and tabs escaped too, so that every text is told from every
/// other.
std::string Quoted(std::string_view text);

/// How many characters a text has; a byte that is no UTF-8 counts as one.
std::size_t CountCharacters(std::string_view text);

/// A number as 0x and at least so many hexadecimal digits.
std::string Hexadecimal(unsigned number, int digits = 8);

/// A number and what is counted, such as "1 section" or "2 sections".
std::string Counted(std::size_t count, const char* one, const char* more);

/// Two hexadecimal digits for each byte.
std::string Hex(std::string_view bytes);

}  // namespace zek::tool
