#include <algorithm>
#include <array>
#include <set>

#include "printable.h"
#include "renderer.h"

namespace zek::tool {
namespace {

constexpr std::size_t kWidest = 160;  ///< bytes of a source line that are shown
constexpr std::size_t kBefore = 60;   ///< of these, so many before what is underlined, where the line is longer

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

/// Blanks as wide as a text, with its tabs.
std::string BlanksFor(const std::string& shown) {
    std::string blanks;
    for (const char byte : shown) {
        if (byte == '\t') blanks += '\t';
        if (byte != '\t' && !IsContinuation(byte)) blanks += ' ';
    }
    return blanks;
}

/// The part of a source line that is shown, with what is underlined in it.
struct Window {
    std::string before;
    std::string marked;
    std::string after;
};

Window WindowOf(std::string_view line, const Place& place) {
    const std::size_t mark = std::min<std::size_t>(place.column - 1, line.size());
    std::size_t begin = line.size() > kWidest && mark > kBefore ? mark - kBefore : 0;
    while (begin < mark && IsContinuation(line[begin])) ++begin;
    std::size_t end = std::min(line.size(), begin + kWidest);
    while (end < line.size() && IsContinuation(line[end])) ++end;
    const std::size_t markEnd = std::min(end, mark + place.length);
    return {(begin > 0 ? "..." : "") + Printable(line.substr(begin, mark - begin)),
            Printable(line.substr(mark, markEnd - mark)),
            Printable(line.substr(markEnd, end - markEnd)) + (end < line.size() ? "..." : "")};
}

class Text : public Renderer {
public:
    explicit Text(bool colour) : colour_(colour) {}

    std::string Of(const SourceFindings& all, SourceText& text) override {
        std::string shown = all.raw.value_or("");
        std::set<std::string> entered;
        if (!all.raw) {
            for (const Finding& finding : all.findings) shown += OfFinding(finding, text, entered);
        }
        return shown + Summary(all);
    }

private:
    std::string Coloured(const char* colour, const std::string& text) const {
        return colour_ ? colour + text + kPlain : text;
    }

    std::string Head(const Place& place, Severity severity, const std::string& text) const {
        const std::string where = place.path.empty() ? "zek" : Shown(place);
        const Look& look = LookOf(severity);
        return Coloured(kBold, where + ':') + ' ' + Coloured(look.colour, std::string(look.name) + ':') + ' ' + text;
    }

    std::string Excerpt(const Place& place, Severity severity, SourceText& text) const {
        if (place.column == 0) return {};
        const Window window = WindowOf(text.Line(place.path, place.line), place);
        if (window.marked.empty()) return {};
        std::string number = std::to_string(place.line);
        number.insert(0, number.size() < 5 ? 5 - number.size() : 0, ' ');
        const std::size_t width = BlanksFor(window.marked).size();
        return number + " | " + window.before + window.marked + window.after + '\n' + std::string(number.size(), ' ') +
               " | " + BlanksFor(window.before) + Coloured(LookOf(severity).colour, '^' + std::string(width - 1, '~')) +
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
                Head(finding.fix->place, Severity::kNote, "did you mean " + Printable(finding.fix->text) + '?') + '\n';
        }
        if (!finding.way.empty() && entered.insert(finding.place.path).second) {
            for (const Place& item : finding.way) shown += Head(item, Severity::kNote, "included from here") + '\n';
        }
        return shown;
    }

    std::string Summary(const SourceFindings& all) const {
        const std::size_t errors = all.Count(Severity::kError);
        const std::size_t warnings = all.Count(Severity::kWarning);
        std::string counted;
        if (errors) counted = Counted(errors, "error", "errors");
        if (warnings) counted += (errors ? ", " : "") + Counted(warnings, "warning", "warnings");
        return counted.empty() ? counted : Printable(all.source) + ": " + counted + '\n';
    }

    bool colour_;
};

}  // namespace

std::unique_ptr<Renderer> TextRenderer(bool colour) { return std::make_unique<Text>(colour); }

}  // namespace zek::tool
