#include "scan.h"

#include <array>

namespace zek::bench {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

/// The characters that a line is cut at.
constexpr std::array<bool, 256> kCuts = [] {
    std::array<bool, 256> cuts = {};
    for (const unsigned char c : {'\n', '=', ';', '#', '"'}) cuts[c] = true;
    return cuts;
}();

bool IsCut(char c) { return kCuts[static_cast<unsigned char>(c)]; }

/// Reads a text line by line.
class Scanner {
public:
    explicit Scanner(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {}

    Found All() {
        while (at_ != end_) Line();
        return found_;
    }

private:
    void Line() {
        SkipBlanks();
        const char* begin = at_;
        const char* equals = nullptr;
        const char* end = EndOfText(begin, equals);
        SkipLine();
        while (end != begin && (IsBlank(end[-1]) || end[-1] == '\r')) --end;
        if (begin != end) Count(begin, equals ? equals : end, end);
    }

    void SkipBlanks() {
        while (at_ != end_ && IsBlank(*at_)) ++at_;
    }

    /// Goes on to the end of the line or to its comment, and tells the first equals sign of the line.
    const char* EndOfText(const char* begin, const char*& equals) {
        bool quoted = false;
        for (; at_ != end_; ++at_) {
            if (!IsCut(*at_)) continue;
            if (*at_ == '\n') break;
            if (*at_ == '"') {
                quoted = !quoted;
            } else if (*at_ == '=') {
                if (!equals) equals = at_;
            } else if (!quoted && (at_ == begin || IsBlank(at_[-1]))) {
                break;
            }
        }
        return at_;
    }

    void SkipLine() {
        while (at_ != end_ && *at_ != '\n') ++at_;
        if (at_ != end_) ++at_;
    }

    void Count(const char* begin, const char* equals, const char* end) {
        if (*begin == '[') {
            ++found_.sections;
            return;
        }
        ++found_.items;
        const char* value = equals == end ? end : equals + 1;
        while (equals != begin && IsBlank(equals[-1])) --equals;
        while (value != end && IsBlank(*value)) ++value;
        found_.keyBytes += static_cast<std::size_t>(equals - begin);
        found_.valueBytes += static_cast<std::size_t>(end - value);
    }

    const char* at_;
    const char* end_;
    Found found_;
};

}  // namespace

Found Scan(std::string_view text) { return Scanner(text).All(); }

}  // namespace zek::bench
