#include "format.h"

#include <algorithm>
#include <vector>

#include "source_line.h"

namespace zek::tool {
namespace {

/// What a line that is laid out does not have inside.
constexpr std::string_view kUntouched("\0\r", 2);

/// Keys that are wider stand on their own, or a few of them would make a long file of a section of many items.
constexpr std::size_t kMostColumns = 64;

/// A physical line: what is skipped at its beginning, its text, and its end as it stands.
struct PhysicalLine {
    std::string_view mark;
    std::string_view text;
    std::string_view end;
    bool isFirst = false;
    bool stays = false;
    LineParts parts = {};  ///< but for whether it continues, nothing where it is joined to the line before
};

/// Whether the line is an item that has a '=' to be aligned.
bool HasEquals(const PhysicalLine& line) {
    return !line.stays && !line.parts.IsHeader() && line.parts.KeyEnd() != std::string_view::npos;
}

/// How many columns a text takes: its characters in UTF-8.
std::size_t Width(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

/// A line without white space at its ends, its key filled up to so many columns.
std::string Laid(const PhysicalLine& line, std::size_t columns) {
    if (!HasEquals(line)) return std::string(Trimmed(line.text));
    const std::string_view key = line.parts.Key();
    const std::size_t width = Width(key);
    std::string laid(key);
    laid.append(columns > width ? columns - width : 0, ' ');
    laid += " =";
    const auto equals = static_cast<std::size_t>(line.parts.text.data() - line.text.data()) + line.parts.KeyEnd();
    const std::string_view rest = Trimmed(line.text.substr(equals + 1));
    return rest.empty() ? laid : laid + ' ' + std::string(rest);
}

/// Whether both mean the same to the parser library.
bool MeansTheSame(const PhysicalLine& line, const std::string& laid) {
    // The mark of a file is no part of its first line's text, so this one would become it.
    if (line.isFirst && line.mark.empty() && laid.starts_with(kByteOrderMark)) return false;
    const LineParts parts = PartsOf(laid);
    const bool sameText = parts.IsHeader() || line.parts.IsHeader()
                              ? parts.text == line.parts.text
                              : parts.Key() == line.parts.Key() && parts.Value() == line.parts.Value();
    return sameText && parts.continues == line.parts.continues &&
           TrimmedBack(parts.comment) == TrimmedBack(line.parts.comment);
}

PhysicalLine CutLine(std::string_view& rest, bool isFirst) {
    PhysicalLine line;
    line.isFirst = isFirst;
    if (isFirst && rest.starts_with(kByteOrderMark)) {
        line.mark = rest.substr(0, kByteOrderMark.size());
        rest.remove_prefix(kByteOrderMark.size());
    }
    const std::size_t feed = std::min(rest.find('\n'), rest.size());
    const bool hasReturn = feed > 0 && rest[feed - 1] == '\r';
    const std::size_t length = feed - (hasReturn ? 1 : 0);
    line.text = rest.substr(0, length);
    line.end = rest.substr(length, feed + 1 - length);
    rest.remove_prefix(std::min(feed + 1, rest.size()));
    return line;
}

std::vector<PhysicalLine> Cut(std::string_view text) {
    std::vector<PhysicalLine> lines;
    bool joined = false;  // to the line before
    while (!text.empty()) {
        PhysicalLine line = CutLine(text, lines.empty());
        line.parts = PartsOf(line.text);
        line.stays = joined || line.parts.continues || line.text.find_first_of(kUntouched) != std::string_view::npos;
        if (joined) line.parts = {{}, {}, line.parts.continues};
        joined = line.parts.continues;
        // Whether it means the same hangs on white space being there, not on how much.
        line.stays = line.stays || !MeansTheSame(line, Laid(line, 0));
        lines.push_back(line);
    }
    return lines;
}

/// Behind the last line of the section that `first` stands in.
std::vector<PhysicalLine>::const_iterator SectionEnd(std::vector<PhysicalLine>::const_iterator first,
                                                     std::vector<PhysicalLine>::const_iterator end) {
    return std::find_if(first + 1, end, [](const PhysicalLine& line) { return line.parts.IsHeader(); });
}

}  // namespace

std::string Formatted(std::string_view text) {
    const std::vector<PhysicalLine> lines = Cut(text);
    std::string formatted;
    formatted.reserve(text.size());
    for (auto line = lines.begin(); line != lines.end();) {
        const auto end = SectionEnd(line, lines.end());
        std::size_t columns = 0;
        for (auto item = line; item != end; ++item) {
            const std::size_t width = HasEquals(*item) ? Width(item->parts.Key()) : 0;
            if (width <= kMostColumns) columns = std::max(columns, width);
        }
        for (; line != end; ++line) {
            formatted += line->mark;
            formatted += line->stays ? std::string(line->text) : Laid(*line, columns);
            formatted += line->end;
        }
    }
    return formatted;
}

}  // namespace zek::tool
