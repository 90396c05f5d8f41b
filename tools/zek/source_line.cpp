#include "source_line.h"

namespace zek::tool {
namespace {

/// Where the comment of a line begins, or its end: outside double quotes, where only white space stands before it or
/// right before it.
std::size_t CommentStart(std::string_view line) {
    bool quoted = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char c = line[at];
        if (c == '"') quoted = !quoted;
        if ((c == ';' || c == '#') && !quoted && (at == 0 || IsBlank(line[at - 1]))) return at;
    }
    return line.size();
}

/// Whether a double quote is left open.
bool IsOpen(std::string_view text) {
    bool quoted = false;
    for (const char c : text) quoted ^= c == '"';
    return quoted;
}

}  // namespace

std::string_view TrimmedFront(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    return text;
}

std::string_view TrimmedBack(std::string_view text) {
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::string_view Trimmed(std::string_view text) { return TrimmedBack(TrimmedFront(text)); }

std::size_t LineParts::KeyEnd() const {
    const std::size_t equals = text.find('=');
    // Nothing before it: the text begins with it, since it is trimmed.
    return equals == 0 ? std::string_view::npos : equals;
}

std::string_view LineParts::Key() const {
    return IsHeader() ? std::string_view() : TrimmedBack(text.substr(0, KeyEnd()));
}

std::string_view LineParts::Value() const {
    const std::size_t end = KeyEnd();
    return IsHeader() || end == std::string_view::npos ? std::string_view() : TrimmedFront(text.substr(end + 1));
}

LineParts PartsOf(std::string_view line) {
    LineParts parts;
    const std::size_t comment = CommentStart(line);
    parts.comment = line.substr(comment);
    parts.text = Trimmed(line.substr(0, comment));
    parts.continues = parts.text.ends_with('\\') && !IsOpen(parts.text);
    if (parts.continues) parts.text = TrimmedBack(parts.text.substr(0, parts.text.size() - 1));
    return parts;
}

}  // namespace zek::tool
