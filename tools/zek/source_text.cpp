#include "source_text.h"

#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <limits>

namespace zek::tool {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
/// An item longer than that is not taken apart, so that many findings about one long item take no time.
constexpr std::size_t kLongestItem = 4096;

bool IsBlank(char byte) { return kBlanks.find(byte) != kBlanks.npos; }

/// The bytes of a file on disk that is no longer than the parser library allows; none of any other.
std::string BytesOf(const std::string& path) {
    struct stat info {};
    if (stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return {};
    if (info.st_size >= std::numeric_limits<std::uint32_t>::max()) return {};
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Where the comment of a line begins. `quoted` tells whether its beginning stands in quotes, then whether its end
/// does.
std::size_t CommentOf(std::string_view line, bool& quoted) {
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"') quoted = !quoted;
        if (quoted || (line[i] != ';' && line[i] != '#')) continue;
        if (i == 0 || IsBlank(line[i - 1])) return i;
    }
    return line.size();
}

/// Where the text without the blanks at its end ends.
std::size_t EndOf(std::string_view text) { return text.find_last_not_of(kBlanks) + 1; }

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

/// The sub-strings of a value from its `begin` on, as the compiler cuts them.
std::vector<Span> SubStringsOf(std::string_view text, std::size_t begin) {
    std::vector<Span> all;
    if (begin >= text.size()) return all;
    while (true) {
        std::size_t comma = std::min(text.find(',', begin), text.size());
        const std::size_t quote = text.find('"', begin);
        Span span = {begin, comma};
        if (quote < comma) {
            span = {quote + 1, std::min(text.find('"', quote + 1), text.size())};
            comma = std::min(text.find(',', span.end), text.size());
        }
        all.push_back(span);
        if (comma == text.size()) return all;
        begin = comma + 1;
    }
}

}  // namespace

const SourceText::WrittenFile& SourceText::File(const std::string& path) {
    std::unique_ptr<WrittenFile>& file = files_[path];
    if (file) return *file;
    file = std::make_unique<WrittenFile>();
    file->bytes = BytesOf(path);
    Split(*file);
    return *file;
}

void SourceText::Split(WrittenFile& file) {
    const std::string_view bytes = file.bytes;
    std::size_t begin = bytes.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    bool quoted = false;
    bool continues = false;
    while (begin < bytes.size()) {
        const std::size_t feed = std::min(bytes.find('\n', begin), bytes.size());
        const std::size_t end = feed > begin && bytes[feed - 1] == '\r' ? feed - 1 : feed;
        const std::string_view text = bytes.substr(begin, end - begin);
        const std::uint32_t line = static_cast<std::uint32_t>(file.lines.size()) + 1;
        const std::uint32_t first = continues ? file.lines.back().first : line;
        if (!continues) quoted = false;
        const std::size_t comment = CommentOf(text, quoted);
        const std::size_t last = EndOf(text.substr(0, comment));
        const bool joined = !quoted && last > 0 && text[last - 1] == '\\';
        file.lines.push_back({static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end),
                              static_cast<std::uint32_t>(begin + comment), joined, first});
        continues = joined;
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
              std::string_view(file.bytes).substr(line.comment, line.end - line.comment), EndOf(before) == 0});
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
    const bool hasKey = equals != item.text.npos && EndOf(std::string_view(item.text).substr(0, equals)) > 0;
    item.value = hasKey ? Trimmed(item.text, {equals + 1, item.text.size()}).begin : item.text.size();
    item.key = hasKey ? EndOf(std::string_view(item.text).substr(0, equals)) : item.text.size();
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
    const Item* const item = ItemAt(path, line);
    if (!item) return {path, line};
    const std::vector<Span> all = SubStringsOf(item->text, item->value);
    if (position >= all.size()) return Head(path, line);
    const Span& span = all[position];
    return span.begin < item->text.size() ? PlaceOf(path, *item, span.begin, span.end) : Head(path, line);
}

Place SourceText::SubString(const std::string& path, unsigned line, const std::string& text) {
    const Item* const item = ItemAt(path, line);
    if (!item) return {path, line};
    const std::string_view written = item->text;
    for (const Span& span : SubStringsOf(written, item->value)) {
        const Span bare = Trimmed(written, span);
        const bool same = written.substr(span.begin, span.end - span.begin) == text ||
                          written.substr(bare.begin, bare.end - bare.begin) == text;
        if (same && span.begin < written.size()) return PlaceOf(path, *item, span.begin, span.end);
    }
    return Head(path, line);
}

}  // namespace zek::tool
