// Cuts a text into its lines: comments removed, continued lines joined, white space trimmed, empty ones skipped.
// Works in place, since a line is never longer than the text that it comes from; relies on nothing else.
#pragma once

#include <array>
#include <cstddef>

namespace zek::parser {

// White space is the space and the tab; the carriage return is none.
constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// The first character from `begin` on that is not white space, or `end`.
inline char* SkipBlanks(char* begin, char* end) {
    while (begin != end && IsBlank(*begin)) ++begin;
    return begin;
}

// The end of the text once the white space before `end` is taken away; `begin` when nothing else is there.
inline char* TrimEnd(char* begin, char* end) {
    while (end != begin && IsBlank(end[-1])) --end;
    return end;
}

// One line, never empty, without white space at either end. `*end` may be written to.
struct Line {
    char* begin = nullptr;
    char* end = nullptr;
    unsigned number = 0;  // of the first of the lines that were joined, from 1
};

class LineReader {
public:
    // Reads `size` bytes at `text`, which stay the caller's and are rewritten while they are read. One byte more must
    // be writable behind them.
    LineReader(char* text, std::size_t size);

    // Stores the next line and returns true, or returns false at the end of the text.
    bool Next(Line& line);

private:
    struct Part {
        char* begin;
        char* end;
        bool continues;  // it ended in a backslash, which is no longer in it
    };

    // Where a character stands next, searched for only once the reading is past it.
    struct Upcoming {
        char character;
        char* place = nullptr;
    };

    Part ReadPart();
    char* FirstStop(char* start);
    char* Find(char character, char* from) const;

    char* next_;
    char* end_;
    unsigned number_ = 0;  // of the part read last
    std::array<Upcoming, 3> upcoming_{Upcoming{'"'}, Upcoming{';'}, Upcoming{'#'}};
};

}  // namespace zek::parser
