#include "c_array.h"

#include <filesystem>

namespace zek::tool {
namespace {

constexpr std::size_t kBytesInLine = 16;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
/// Of an identifier in every C.
bool IsPlain(char c) { return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

void AppendByte(std::string& text, unsigned char byte) {
    constexpr char kDigits[] = "0123456789abcdef";
    text += "0x";
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
    text += ',';
}

}  // namespace

std::string ArrayName(const std::string& file) {
    std::string name = std::filesystem::path(file).stem().string();
    for (char& c : name) c = IsPlain(c) ? c : '_';
    // An identifier begins with a letter, and those with an underscore are the compiler's.
    if (name.empty() || !IsPlain(name[0]) || IsDigit(name[0])) name = "zek_" + name;
    return name + "_image";
}

std::string AsCArray(const std::string& name, std::string_view bytes) {
    const std::string size = std::to_string(bytes.size());
    std::string text = "/* A compiled image of " + size +
                       " bytes, written by zek compile. */\n"
                       "#include <stddef.h>\n\n"
                       "#ifdef __cplusplus\n"
                       "extern \"C\" {\n"
                       "#else\n"
                       "#include <stdalign.h>\n"
                       "#endif\n\n"
                       "extern const unsigned char " +
                       name + '[' + size + "];\nextern const size_t " + name +
                       "_size;\n\n"
                       "alignas(16) const unsigned char " +
                       name + '[' + size + "] = {";
    text.reserve(text.size() + bytes.size() * 6);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        text += i % kBytesInLine == 0 ? "\n    " : " ";
        AppendByte(text, static_cast<unsigned char>(bytes[i]));
    }
    return text + "\n};\nconst size_t " + name + "_size = sizeof " + name +
           ";\n\n"
           "#ifdef __cplusplus\n"
           "}\n"
           "#endif\n";
}

}  // namespace zek::tool
