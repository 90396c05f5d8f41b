#include "printable.h"

#include <cstdio>

namespace zek::tool {
namespace {

constexpr char kDigits[] = "0123456789abcdef";

/// The form of a character by its first byte: how many bytes it has, and the least code that needs so many.
struct Form {
    unsigned char mask;
    unsigned char lead;
    std::size_t length;
    std::uint32_t least;
};
constexpr Form kForms[] = {{0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

bool IsShown(const Character& character) {
    const std::uint32_t code = character.code;
    if (!character.sound || code < 0x20 || (code >= 0x7F && code < 0xA0)) return false;
    // Line and paragraph separators, and what turns the direction of writing.
    return !(code >= 0x2028 && code <= 0x202E) && !(code >= 0x2066 && code <= 0x2069) && code != 0x200E &&
           code != 0x200F;
}

std::string Escaped(std::string_view text, std::string_view kept, std::string_view slashed) {
    std::string result;
    while (!text.empty()) {
        const Character first = FirstCharacter(text);
        const std::string_view bytes = text.substr(0, first.length);
        text.remove_prefix(first.length);
        if (slashed.find(bytes[0]) != slashed.npos) {
            result += '\\';
            result += bytes;
        } else if (IsShown(first) || kept.find(bytes[0]) != kept.npos) {
            result += bytes;
        } else {
            for (const char byte : bytes) result += "\\x" + Hex({&byte, 1});
        }
    }
    return result;
}

}  // namespace

Character FirstCharacter(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    for (const Form& form : kForms) {
        if ((byte(0) & form.mask) != form.lead) continue;
        if (text.size() < form.length) return {};
        std::uint32_t code = byte(0) & static_cast<unsigned char>(~form.mask);
        for (std::size_t i = 1; i < form.length; ++i) {
            if ((byte(i) & 0xC0) != 0x80) return {};
            code = code << 6 | (byte(i) & 0x3Fu);
        }
        const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
        if (code < form.least || code > 0x10FFFF || surrogate) return {};
        return {code, form.length, true};
    }
    return {};
}

bool IsUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const Character first = FirstCharacter(bytes);
        if (!first.sound) return false;
        bytes.remove_prefix(first.length);
    }
    return true;
}

std::size_t CountCharacters(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); ++count) text.remove_prefix(FirstCharacter(text).length);
    return count;
}

std::string Printable(std::string_view text) { return Escaped(text, "\t", ""); }

std::string Quoted(std::string_view text) { return '"' + Escaped(text, "", "\\\"") + '"'; }

std::string Hexadecimal(unsigned number, int digits) {
    char text[sizeof "0x00000000"];
    std::snprintf(text, sizeof text, "0x%0*x", digits, number);
    return text;
}

std::string Counted(std::size_t count, const char* one, const char* more) {
    return std::to_string(count) + ' ' + (count == 1 ? one : more);
}

std::string Hex(std::string_view bytes) {
    std::string digits;
    for (const char byte : bytes) {
        digits += kDigits[static_cast<unsigned char>(byte) >> 4];
        digits += kDigits[static_cast<unsigned char>(byte) & 15];
    }
    return digits;
}

}  // namespace zek::tool
