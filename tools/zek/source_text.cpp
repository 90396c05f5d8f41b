#include "source_text.h"

#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <limits>

#include "source_line.h"

namespace zek::tool {
namespace {

/// An item longer than that is not taken apart, so that many findings about one long item take no time.
constexpr std::size_t kLongestItem = 4096;

/// The bytes of a regular file that is no longer than the parser library allows; none of any other.
std::string BytesOf(const std::string& path) {
    struct stat info {};
    if (stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return {};
    if (info.st_size >= std::numeric_limits<std::uint32_t>::max()) return {};
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Begin and end of a part of a text.
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;
};

Span Trimmed(std::string_view text, Span span) {
    while (span.begin < span.end && IsBlank(text[span.begin])) ++span.begin;
    while (span.begin < span.end && IsBlank(text[span.end - 1])) --span.end;
    return span;
}

/// Where a part of a text stands in it.
Span SpanOf(std::string_view part, std::string_view text) {
    const std::size_t begin = static_cast<std::size_t>(part.data() - text.data());
    return {begin, begin + part.size()};
}

}  // namespace

const SourceText::WrittenFile& SourceText::File(const std::string& path) {
    std::unique_ptr<WrittenFile>& file = files_[path];
    if (file) return *file;
    file = std::make_unique<WrittenFile>();
    file->bytes = BytesOf(copies_ ? copies_->NameOf(path) : path);
    Split(*file);
    return *file;
}

void SourceText::Split(WrittenFile& file) {
    const std::string_view bytes = file.bytes;
    std::size_t begin = bytes.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    bool continues = false;
    while (begin < bytes.size()) {
        const std::size_t feed = std::min(bytes.find('\n', begin), bytes.size());
        const std::size_t end = feed > begin && bytes[feed - 1] == '\r' ? feed - 1 : feed;
        const std::string_view text = bytes.substr(begin, end - begin);
        const std::uint32_t line = static_cast<std::uint32_t>(file.lines.size()) + 1;
        const std::uint32_t first = continues ? file.lines.back().first : line;
        const LineParts parts = PartsOf(text);
        file.lines.push_back({static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end),
                              static_cast<std::uint32_t>(end - parts.comment.size()), parts.continues, first});
        continues = parts.continues;
        begin = feed + 1;
    }
}

unsigned SourceText::CountLines(const std::string& path) { return static_cast<unsigned>(File(path).lines.size()); }

std::string_view SourceText::Line(const std::string& path, unsigned line) {
    const WrittenFile& file = File(path);
    if (line == 0 || line > file.lines.size()) return {};
    const WrittenLine& written = file.lines[line - 1];
    return std::string_view(file.bytes).substr(written.begin, written.end - written.begin);
}

void SourceText::ForEachComment(const std::string& path, const std::function<void(const Comment&)>& show) {
    const WrittenFile& file = File(path);
    for (std::size_t i = 0; i < file.lines.size(); ++i) {
        const WrittenLine& line = file.lines[i];
        if (line.comment == line.end) continue;
        const std::string_view before = std::string_view(file.bytes).substr(line.begin, line.comment - line.begin);
        show({static_cast<unsigned>(i + 1), line.comment - line.begin + 1,
              std::string_view(file.bytes).substr(line.comment, line.end - line.comment), Trimmed(before).empty()});
    }
}

unsigned SourceText::FirstOfJoined(const std::string& path, unsigned line) {
    const WrittenFile& file = File(path);
    return line > 0 && line <= file.lines.size() ? file.lines[line - 1].first : line;
}

const SourceText::Item* SourceText::ItemAt(const std::string& path, unsigned line) {
    if (itemLine_ == line && itemPath_ == path) return item_ ? &*item_ : nullptr;
    itemPath_ = path;
    itemLine_ = line;
    item_.reset();
    const WrittenFile& file = File(path);
    if (line == 0 || line > file.lines.size()) return nullptr;
    Item item;
    for (std::size_t i = line - 1; i < file.lines.size(); ++i) {
        const WrittenLine& written = file.lines[i];
        const std::string_view text = std::string_view(file.bytes).substr(written.begin, written.end - written.begin);
        Span span = Trimmed(text, {0, written.comment - written.begin});
        if (written.joined) span = Trimmed(text, {span.begin, span.end - 1});
        if (item.text.size() + (span.end - span.begin) > kLongestItem) return nullptr;
        item.text += text.substr(span.begin, span.end - span.begin);
        for (std::size_t at = span.begin; at < span.end; ++at) {
            item.places.emplace_back(static_cast<unsigned>(i + 1), static_cast<unsigned>(at + 1));
        }
        if (!written.joined) break;
    }
    // What follows a NUL byte is not read.
    if (item.text.find('\0') != item.text.npos) return nullptr;
    const std::size_t equals = item.text.starts_with('[') ? item.text.npos : item.text.find('=');
    const std::size_t key = TrimmedBack(std::string_view(item.text).substr(0, equals)).size();
    const bool hasKey = equals != item.text.npos && key > 0;
    item.value = hasKey ? Trimmed(item.text, {equals + 1, item.text.size()}).begin : item.text.size();
    item.key = hasKey ? key : item.text.size();
    item_ = std::move(item);
    return &*item_;
}

Place SourceText::PlaceOf(const std::string& path, const Item& item, std::size_t begin, std::size_t end) {
    if (begin >= item.places.size()) return {path};
    const auto [line, column] = item.places[begin];
    std::size_t last = begin;
    while (last + 1 < end && item.places[last + 1].first == line) ++last;
    return {path, line, column, end > begin ? item.places[last].second - column + 1 : 1};
}

Place SourceText::Head(const std::string& path, unsigned line) {
    const Item* const item = ItemAt(path, line);
    return item && item->key > 0 ? PlaceOf(path, *item, 0, item->key) : Place{path, line};
}

Place SourceText::Value(const std::string& path, unsigned line) {
    const Item* const item = ItemAt(path, line);
    if (!item || item->value >= item->text.size()) return Head(path, line);
    return PlaceOf(path, *item, item->value, item->text.size());
}

Place SourceText::SubString(const std::string& path, unsigned line, std::size_t position) {
    return PlaceOfPart(path, line, position, [](const CutText& cut) { return cut.text; });
}

Place SourceText::OutsideQuotes(const std::string& path, unsigned line, std::size_t position, bool behind) {
    return PlaceOfPart(path, line, position,
                       [&](const CutText& cut) { return tool::Trimmed(behind ? cut.after : cut.before); });
}

Place SourceText::PlaceOfPart(const std::string& path, unsigned line, std::size_t position,
                              const std::function<std::string_view(const CutText&)>& part) {
    const Item* const item = ItemAt(path, line);
    if (!item) return {path, line};
    const std::vector<CutText> all = CutValue(std::string_view(item->text).substr(item->value));
    if (position >= all.size()) return Head(path, line);
    const Span span = SpanOf(part(all[position]), item->text);
    return span.begin < item->text.size() ? PlaceOf(path, *item, span.begin, span.end) : Head(path, line);
}

Place SourceText::SubString(const std::string& path, unsigned line, const std::string& text) {
    const Item* const item = ItemAt(path, line);
    if (!item) return {path, line};
    for (const CutText& part : CutValue(std::string_view(item->text).substr(item->value))) {
        const Span span = SpanOf(part.text, item->text);
        const bool same = part.text == text || Trimmed(part.text) == text;
        if (same && span.begin < item->text.size()) return PlaceOf(path, *item, span.begin, span.end);
    }
    return Head(path, line);
}

}  // namespace zek::tool
