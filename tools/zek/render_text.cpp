#include <algorithm>
#include <array>
#include <cstring>
#include <set>
#include <sstream>

#include "columns.h"
#include "printable.h"
#include "renderer.h"

namespace zek::tool {
namespace {

constexpr std::size_t kWidest = 166;       ///< columns of a source line that are shown where no terminal is
constexpr std::size_t kNarrowest = 40;     ///< columns of a terminal at least
constexpr std::size_t kBytesInColumn = 8;  ///< no part of a line has more, however many of its characters combine
constexpr char kCut[] = "...";             ///< stands for what is left out

struct Look {
    const char* name;
    const char* colour;
};
constexpr std::array<Look, 3> kLooks = {{{"note", "\x1b[1;36m"}, {"warning", "\x1b[1;35m"}, {"error", "\x1b[1;31m"}}};
constexpr char kBold[] = "\x1b[1m";
constexpr char kPlain[] = "\x1b[0m";

const Look& LookOf(Severity severity) { return kLooks[static_cast<std::size_t>(severity)]; }

std::string Shown(const Place& place) {
    std::string text = Printable(place.path);
    if (place.line) text += ':' + std::to_string(place.line);
    if (place.line && place.column) text += ':' + std::to_string(place.column);
    return text;
}

bool IsContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

/// The part of a source line that is shown, with what is underlined in it.
struct Window {
    std::string before;
    std::string marked;
    std::string after;
};

/// How many columns the first character of a text takes; a tab as many as it can.
std::size_t WidthOfFirst(std::string_view text, const Character& first) {
    return ColumnsOf(Printable(text.substr(0, first.length)));
}

/// The begin of the part that ends at `mark` and has at most so many columns.
std::size_t BeginBefore(std::string_view line, std::size_t mark, std::size_t columns) {
    const std::size_t most = columns * kBytesInColumn;
    std::size_t begin = mark > most ? mark - most : 0;
    while (begin > 0 && begin < mark && IsContinuation(line[begin])) ++begin;
    std::size_t taken = 0;
    for (std::size_t at = begin; at < mark;) {
        const Character added = FirstCharacter(line.substr(at));
        taken += WidthOfFirst(line.substr(at), added);
        at += added.length;
        while (taken > columns) {
            const Character dropped = FirstCharacter(line.substr(begin));
            taken -= WidthOfFirst(line.substr(begin), dropped);
            begin += dropped.length;
        }
    }
    return std::min(begin, mark);
}

/// The end of the part from `begin` on that starts in a column and ends before another.
std::size_t EndWithin(std::string_view line, std::size_t begin, std::size_t column, std::size_t last) {
    const std::size_t most = begin + (last - column) * kBytesInColumn;
    std::size_t end = begin;
    while (end < line.size() && end < most) {
        const std::size_t next = end + FirstCharacter(line.substr(end)).length;
        column += ColumnsOf(Printable(line.substr(end, next - end)), column);
        if (column > last) break;
        end = next;
    }
    return end;
}

/// What is shown from column `first` on and ends before column `last`.
Window WindowOf(std::string_view line, const Place& place, std::size_t first, std::size_t last) {
    const std::size_t mark = std::min<std::size_t>(place.column - 1, line.size());
    std::size_t begin = 0;
    std::size_t end = EndWithin(line, 0, first, last);
    if (end < line.size()) {
        const std::size_t columns = last - first - 2 * std::strlen(kCut);
        begin = BeginBefore(line, mark, columns * 3 / 8);
        end = EndWithin(line, begin, first + (begin > 0 ? std::strlen(kCut) : 0), last - std::strlen(kCut));
    }
    const std::size_t markEnd = std::clamp<std::size_t>(mark + place.length, mark, std::max(mark, end));
    return {(begin > 0 ? kCut : "") + Printable(line.substr(begin, mark - begin)),
            Printable(line.substr(mark, markEnd - mark)),
            Printable(line.substr(markEnd, end - markEnd)) + (end < line.size() ? kCut : "")};
}

class Text : public Renderer {
public:
    explicit Text(const Screen& screen) : screen_(screen) {}

    std::string Of(const SourceFindings& all, SourceText& text) override {
        std::string shown = Raw(all.raw.value_or(""));
        std::set<std::string> entered;
        if (!all.raw) {
            for (const Finding& finding : all.findings) shown += OfFinding(finding, text, entered);
        }
        return shown + Summary(all);
    }

private:
    std::string Coloured(const char* colour, const std::string& text) const {
        return screen_.colour ? colour + text + kPlain : text;
    }

    /// A terminal gets nothing that it would obey; elsewhere each byte is as the library sent it.
    std::string Raw(const std::string& raw) const {
        if (screen_.columns == 0) return raw;
        std::string shown;
        std::istringstream lines(raw);
        for (std::string line; std::getline(lines, line);) shown += Printable(line) + '\n';
        return shown;
    }

    std::string Head(const Place& place, Severity severity, const std::string& text) const {
        const std::string where = place.path.empty() ? "zek" : Shown(place);
        const Look& look = LookOf(severity);
        return Coloured(kBold, where + ':') + ' ' + Coloured(look.colour, std::string(look.name) + ':') + ' ' + text;
    }

    std::string Excerpt(const Place& place, Severity severity, SourceText& text) const {
        if (place.column == 0) return {};
        std::string number = std::to_string(place.line);
        number.insert(0, number.size() < 5 ? 5 - number.size() : 0, ' ');
        const std::string bar = " | ";
        const std::size_t first = number.size() + bar.size();
        const std::size_t last = screen_.columns ? std::max(screen_.columns, kNarrowest) : first + kWidest;
        const Window window = WindowOf(text.Line(place.path, place.line), place, first, last);
        if (window.marked.empty()) return {};
        const std::size_t begin = first + ColumnsOf(window.before, first);
        const std::size_t width = std::max<std::size_t>(ColumnsOf(window.marked, begin), 1);
        return number + bar + window.before + window.marked + window.after + '\n' + std::string(number.size(), ' ') +
               bar + BlanksFor(window.before) + Coloured(LookOf(severity).colour, '^' + std::string(width - 1, '~')) +
               '\n';
    }

    std::string OfFinding(const Finding& finding, SourceText& text, std::set<std::string>& entered) const {
        const std::string code = finding.code.empty() ? "" : " [" + finding.code + ']';
        std::string shown = Head(finding.place, finding.severity, Printable(finding.message) + code) + '\n' +
                            Excerpt(finding.place, finding.severity, text);
        for (const Note& note : finding.notes) {
            const Place& place = note.place.path.empty() ? finding.place : note.place;
            shown += Head(place, Severity::kNote, Printable(note.text)) + '\n';
            if (!(place == finding.place)) shown += Excerpt(place, Severity::kNote, text);
        }
        if (finding.fix) {
            shown +=
                Head(finding.fix->place, Severity::kNote, Filled(NoteText::kMeant, {Printable(finding.fix->text)})) +
                '\n';
        }
        if (!finding.way.empty() && entered.insert(finding.place.path).second) {
            for (const Place& item : finding.way)
                shown += Head(item, Severity::kNote, Filled(NoteText::kIncludedFrom)) + '\n';
        }
        return shown;
    }

    std::string Summary(const SourceFindings& all) const {
        std::string counted = CountedBySeverity({0, all.Count(Severity::kWarning), all.Count(Severity::kError)});
        const std::string left = all.raw ? "" : all.TellLeft();
        if (!left.empty()) counted += (counted.empty() ? "" : "; ") + left;
        return counted.empty() ? counted : Printable(all.source) + ": " + counted + '\n';
    }

    Screen screen_;
};

}  // namespace

std::unique_ptr<Renderer> TextRenderer(const Screen& screen) { return std::make_unique<Text>(screen); }

}  // namespace zek::tool
