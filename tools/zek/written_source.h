/// Sources that are written: items in the words of the language, and files whose lines stand where they should. Relies
/// on source_line.h and, for how the compiler cuts a value, on docs/language.md.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zek::tool {

/// A key and its sub-strings as one line, every sub-string in quotes where that says the same; nothing where the
/// language cannot say it. An empty key is what the compiler makes of one that begins with a NUL.
std::optional<std::string> ItemLine(std::string_view key, const std::vector<std::string_view>& texts);

/// The sub-strings that the compiler cuts a value into.
std::vector<std::string_view> SubStrings(std::string_view value);

/// A file that grows line by line.
class WrittenText {
public:
    /// The number of the line that the next Add writes, from 1.
    std::uint32_t NextLine() const { return next_; }
    void Add(std::string_view line);
    /// Several lines with line feeds between them.
    void AddLines(std::string_view lines);
    /// Adds empty lines up to that one, which must not be behind the next.
    void SkipTo(std::uint32_t line);
    const std::string& Text() const { return text_; }

private:
    std::string text_;
    std::uint32_t next_ = 1;
};

/// A file of a source.
struct WrittenFile {
    std::string path;  ///< relative to the folder of the source, with slashes
    std::string text;
};

}  // namespace zek::tool
