#include "line_reader.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace zek::parser {
namespace {

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
constexpr std::size_t kByteOrderMarkSize = sizeof kByteOrderMark - 1;

// The characters that mean something within a line; all others are passed over at full speed.
constexpr std::array<bool, 256> kStops = [] {
    std::array<bool, 256> stops{};
    for (const char c : {'\n', '"', ';', '#'}) stops[static_cast<unsigned char>(c)] = true;
    return stops;
}();

char* FindStop(char* p) {
    while (!kStops[static_cast<unsigned char>(*p)]) ++p;
    return p;
}

}  // namespace

LineReader::LineReader(char* text, std::size_t size) : next_(text), end_(text + size) {
    if (size >= kByteOrderMarkSize && std::memcmp(text, kByteOrderMark, kByteOrderMarkSize) == 0) {
        next_ += kByteOrderMarkSize;
    }
    *end_ = '\n';  // so that the last line ends like any other and the scan needs no bound
}

bool LineReader::Next(Line& line) {
    while (next_ != end_) {
        Part part = ReadPart();
        line = {part.begin, part.end, number_};
        while (part.continues && next_ != end_) {
            part = ReadPart();
            const auto size = static_cast<std::size_t>(part.end - part.begin);
            std::memmove(line.end, part.begin, size);
            line.end += size;
        }
        if (line.begin != line.end) return true;
    }
    return false;
}

// Most lines have no character that means something but their end, and that is found faster by itself.
char* LineReader::FirstStop(char* start) {
    auto* stop = static_cast<char*>(std::memchr(start, '\n', static_cast<std::size_t>(end_ - start) + 1));
    for (Upcoming& upcoming : upcoming_) {
        if (upcoming.place < start) upcoming.place = Find(upcoming.character, start);
        stop = std::min(stop, upcoming.place);
    }
    return stop;
}

char* LineReader::Find(char character, char* from) const {
    auto* const place = static_cast<char*>(std::memchr(from, character, static_cast<std::size_t>(end_ - from)));
    return place ? place : end_;
}

// A backslash continues a line only outside quotes, so each part begins outside them.
LineReader::Part LineReader::ReadPart() {
    ++number_;
    char* const start = next_;
    char* comment = nullptr;
    bool quoted = false;
    char* stop = FirstStop(start);
    for (; *stop != '\n'; stop = FindStop(stop + 1)) {
        if (*stop == '"') {
            quoted = !quoted;
        } else if (!quoted && (stop == start || IsBlank(stop[-1]))) {
            comment = stop;
            stop = static_cast<char*>(std::memchr(stop, '\n', static_cast<std::size_t>(end_ - stop) + 1));
            break;
        }
    }
    next_ = stop == end_ ? end_ : stop + 1;

    char* end = comment ? comment : stop;
    if (!comment && end != start && end[-1] == '\r') --end;
    char* const begin = SkipBlanks(start, end);
    end = TrimEnd(begin, end);
    const bool continues = !quoted && end != begin && end[-1] == '\\';
    if (continues) end = TrimEnd(begin, end - 1);
    return {begin, end, continues};
}

}  // namespace zek::parser
