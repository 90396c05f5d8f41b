#include "plain_sections.h"

#include <cstddef>

namespace zek::fuzz {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string Trimmed(std::string text) {
    while (!text.empty() && IsBlank(text.back())) text.pop_back();
    while (!text.empty() && IsBlank(text.front())) text.erase(0, 1);
    return text;
}

/// Up to its first NUL.
std::string Given(const std::string& text) { return text.c_str(); }

/// Cuts the comment off a line; `quoted` tells whether a double quote is open, before the line and then behind it.
std::string WithoutComment(const std::string& line, bool& quoted) {
    std::string kept;
    bool afterBlank = true;
    for (const char c : line) {
        if (!quoted && afterBlank && (c == ';' || c == '#')) break;
        if (c == '"') quoted = !quoted;
        afterBlank = IsBlank(c);
        kept += c;
    }
    while (!kept.empty() && IsBlank(kept.back())) kept.pop_back();
    return kept;
}

class Lines {
public:
    explicit Lines(std::string_view text) : text_(text.substr(text.starts_with("\xEF\xBB\xBF") ? 3 : 0)) {}

    /// The next joined line, trimmed, and its number; false at the end.
    bool Next(std::string& joined, unsigned& number) {
        if (text_.empty()) return false;
        joined.clear();
        number = line_ + 1;
        bool quoted = false;
        bool goesOn = true;
        for (bool first = true; goesOn && !text_.empty(); first = false) {
            std::string line = WithoutComment(TakeLine(), quoted);
            goesOn = line.ends_with('\\') && !quoted;
            if (goesOn) line.pop_back();
            while (goesOn && !line.empty() && IsBlank(line.back())) line.pop_back();
            while (!first && !line.empty() && IsBlank(line.front())) line.erase(0, 1);
            joined += line;
        }
        joined = Trimmed(joined);
        return true;
    }

private:
    std::string TakeLine() {
        const std::size_t end = text_.find('\n');
        std::string line(text_.substr(0, end));
        text_.remove_prefix(end == std::string_view::npos ? text_.size() : end + 1);
        if (line.ends_with('\r')) line.pop_back();
        ++line_;
        return line;
    }

    std::string_view text_;
    unsigned line_ = 0;
};

std::string SectionName(const std::string& line) {
    const bool closed = line.find(']') == line.size() - 1;
    return Given(closed ? Trimmed(line.substr(1, line.size() - 2)) : line);
}

PlainItem Item(const std::string& line, unsigned number) {
    const std::size_t equals = line.find('=');
    const std::string key = equals == std::string::npos ? "" : Trimmed(line.substr(0, equals));
    if (key.empty()) return {Given(line), "", number};
    return {Given(key), Given(Trimmed(line.substr(equals + 1))), number};
}

}  // namespace

std::vector<PlainSection> PlainSections(std::string_view text) {
    std::vector<PlainSection> sections;
    Lines lines(text);
    std::string line;
    for (unsigned number = 0; lines.Next(line, number);) {
        if (line.empty()) continue;
        if (line.front() == '[') {
            sections.push_back({SectionName(line), number, {}});
            continue;
        }
        if (sections.empty()) sections.push_back({"", number, {}});
        sections.back().items.push_back(Item(line, number));
    }
    return sections;
}

}  // namespace zek::fuzz
