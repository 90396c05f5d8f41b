#include "written_source.h"

#include <algorithm>

#include "source_line.h"

namespace zek::tool {
namespace {

constexpr char kNul[] = {'\0'};

enum class Quotes { kAlways, kWhereNeeded };

/// Whether a sub-string stays as it is without quotes, wherever it stands in the value.
bool IsPlain(std::string_view text) {
    return !text.empty() && !IsBlank(text.front()) && !IsBlank(text.back()) && text.find(',') == std::string_view::npos;
}

std::string Line(std::string_view key, const std::vector<std::string_view>& texts, Quotes quotes) {
    std::string line(key.empty() ? std::string_view(kNul, 1) : key);
    // Such a key is the whole line.
    if (!key.starts_with('=')) line += " =";
    char before = ' ';
    for (const std::string_view text : texts) {
        const bool bare = quotes == Quotes::kWhereNeeded && IsPlain(text);
        line += before;
        line += bare ? std::string(text) : '"' + std::string(text) + '"';
        before = ',';
    }
    return line;
}

/// Whether the compiler takes that key and these sub-strings from a line.
bool Says(const std::string& line, std::string_view key, const std::vector<std::string_view>& texts) {
    if (line.find('\n') != std::string::npos || line.ends_with('\r')) return false;
    const LineParts parts = PartsOf(line);
    // A NUL ends the text that it stands in.
    const std::string_view found = parts.Key().substr(0, parts.Key().find('\0'));
    return !parts.IsHeader() && !parts.continues && parts.comment.empty() && !parts.text.empty() && found == key &&
           parts.Value().find('\0') == std::string_view::npos && SubStrings(parts.Value()) == texts;
}

}  // namespace

std::vector<std::string_view> SubStrings(std::string_view value) {
    std::vector<std::string_view> texts;
    if (value.empty()) return texts;
    for (std::size_t at = 0;;) {
        std::size_t comma = value.find(',', at);
        const std::size_t quote = value.find('"', at);
        if (quote == std::string_view::npos || comma < quote) {
            texts.push_back(value.substr(at, std::min(comma, value.size()) - at));
        } else {
            const std::size_t end = std::min(value.find('"', quote + 1), value.size());
            texts.push_back(value.substr(quote + 1, end - quote - 1));
            comma = value.find(',', end);
        }
        if (comma == std::string_view::npos) return texts;
        at = comma + 1;
    }
}

std::optional<std::string> ItemLine(std::string_view key, const std::vector<std::string_view>& texts) {
    // A key with a quote in it turns what is quoted to the parser library, so a ';' may be safe only without quotes.
    for (const Quotes quotes : {Quotes::kAlways, Quotes::kWhereNeeded}) {
        std::string line = Line(key, texts, quotes);
        if (Says(line, key, texts)) return line;
    }
    return std::nullopt;
}

void WrittenText::Add(std::string_view line) {
    text_ += line;
    text_ += '\n';
    ++next_;
}

void WrittenText::AddLines(std::string_view lines) {
    for (std::size_t end = 0; (end = lines.find('\n')) != std::string_view::npos; lines.remove_prefix(end + 1)) {
        Add(lines.substr(0, end));
    }
    Add(lines);
}

void WrittenText::SkipTo(std::uint32_t line) {
    text_.append(line - next_, '\n');
    next_ = line;
}

}  // namespace zek::tool
