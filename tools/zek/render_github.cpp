#include <algorithm>
#include <array>

#include "printable.h"
#include "renderer.h"

namespace zek::tool {
namespace {

constexpr std::array<const char*, 3> kCommands = {"::notice", "::warning", "::error"};

struct Escape {
    char byte;
    const char* written;  ///< the runner knows no other spelling
};
constexpr std::array<Escape, 5> kEscapes = {{{'%', "%25"}, {'\n', "%0A"}, {'\r', "%0D"}, {':', "%3A"}, {',', "%2C"}}};
constexpr std::size_t kInMessages = 3;  ///< the first of them; the others have a meaning in a property only

/// With what has a meaning in a workflow command written otherwise: the first `count` of the rows.
std::string Escaped(const std::string& text, std::size_t count) {
    std::string escaped;
    for (const char byte : text) {
        const auto* const end = kEscapes.begin() + count;
        const auto* const row = std::find_if(kEscapes.begin(), end, [&](const Escape& a) { return a.byte == byte; });
        escaped += row == end ? std::string(1, byte) : row->written;
    }
    return escaped;
}

std::string Property(const std::string& text) { return Escaped(Printable(text), kEscapes.size()); }

class Github : public Renderer {
public:
    std::string Of(const SourceFindings& all, SourceText& text) override {
        std::string shown;
        for (const Finding& finding : all.findings) shown += OfFinding(finding, text);
        const std::string left = all.TellLeft();
        if (left.empty()) return shown;
        return shown + "::notice title=zek::" + Escaped(Printable(all.source) + ": " + left, kInMessages) + '\n';
    }

    std::string OfFailure(const std::string&, const std::string& why) override {
        return "::error title=zek::" + Escaped(Printable(why), kInMessages) + '\n';
    }

private:
    static std::string PlaceOf(const Place& place, SourceText& text) {
        if (place.path.empty()) return {};
        std::string shown = "file=" + Property(place.path) + ',';
        if (place.line) shown += "line=" + std::to_string(place.line) + ',';
        if (place.column == 0) return shown;
        const std::string_view line = text.Line(place.path, place.line);
        const std::string_view left = line.substr(0, place.column - 1);
        const std::size_t before = CountCharacters(left);
        const std::size_t marked = CountCharacters(line.substr(left.size(), place.length));
        return shown + "col=" + std::to_string(before + 1) + ",endColumn=" + std::to_string(before + marked) + ',';
    }

    static std::string OfFinding(const Finding& finding, SourceText& text) {
        std::string message = Printable(finding.message);
        for (const Note& note : finding.notes) message += "\nnote: " + Printable(note.text) + Where(note.place);
        if (finding.fix) message += '\n' + Filled(NoteText::kMeant, {Printable(finding.fix->text)});
        for (const Place& item : finding.way) message += "\nincluded from" + Where(item);
        return std::string(kCommands[static_cast<std::size_t>(finding.severity)]) + ' ' + PlaceOf(finding.place, text) +
               "title=" + Property(finding.code) + "::" + Escaped(message, kInMessages) + '\n';
    }

    static std::string Where(const Place& place) {
        if (place.path.empty()) return {};
        return ' ' + Printable(place.path) + (place.line ? ':' + std::to_string(place.line) : "");
    }
};

}  // namespace

std::unique_ptr<Renderer> GithubRenderer() { return std::make_unique<Github>(); }

}  // namespace zek::tool
