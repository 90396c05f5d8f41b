/// One line of a section file as the parser library takes it: its comment, whether the next one joins it, its key and
/// value. Relies on the rules in docs/language.md alone, for commands that write sources.
#pragma once

#include <string>
#include <string_view>

namespace zek::tool {

/// The bytes that a file may begin with and that are skipped there.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// White space is the space and the tab.
constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }
std::string_view TrimmedFront(std::string_view text);
std::string_view TrimmedBack(std::string_view text);
std::string_view Trimmed(std::string_view text);

/// The parts of a line without its line feed and without the carriage return before that; each lies in the line.
struct LineParts {
    std::string_view text;     ///< without white space at either end; empty where nothing is left
    std::string_view comment;  ///< from its first character to the end of the line
    bool continues = false;    ///< ends in a backslash that joins the next line to it; that is no part of the text

    bool IsHeader() const { return text.starts_with('['); }
    /// Where the key ends: at the first '=', if there is something before it; npos where the whole text is the key.
    std::size_t KeyEnd() const;
    std::string_view Key() const;
    std::string_view Value() const;
};

LineParts PartsOf(std::string_view line);

}  // namespace zek::tool
