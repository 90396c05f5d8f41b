#include "report.h"

#include <algorithm>
#include <set>

#include "known_messages.h"
#include "printable.h"

namespace zek::tool {
namespace {

constexpr std::string_view kErrorAt = "Error[%s:%u]";
constexpr std::string_view kWarningAt = "Warning[%s:%u]";
constexpr std::string_view kEarlierPlace = "Line[%s:%u]";
constexpr std::size_t kEarlierArgument = 4;  ///< the position of its file among the arguments

bool IsChatter(const Message& message) { return message.Is(kLoadParserFailed) || message.Is(kNoMoreSections); }

bool IsLoss(const Message& message) {
    return message.Is(kCreateSectionFailed) || message.Is(kSectionNameFailed) || message.Is(kFileNotLoaded);
}

bool IsError(const Message& message) { return message.format.starts_with(kErrorAt); }

bool PassesTheCheck(const Message& message) {
    return message.Is(kNoSuchSensor) || message.Is(kSmbusAddress) || message.Is(kSmbusType);
}

/// The format behind "Error[%s:%u]" or "Warning[%s:%u]" and the punctuation that follows it there.
std::string_view Rest(std::string_view format, std::string_view prefix) {
    format.remove_prefix(prefix.size());
    return format.substr(std::min(format.find_first_not_of(":, "), format.size()));
}

/// What the message says of its place; which names it has is told by how its format begins.
Wanted WantedBy(const Message& message, std::string_view rest) {
    Wanted wanted = {message.Text(0), message.Number(1), {}, {}, {}};
    if (rest.starts_with("[%s]")) wanted.section = message.Text(2);
    if (rest.starts_with("[%s], Entry %s")) wanted.key = message.Text(3);
    for (const std::string key : {"NAME", "ID"}) {
        if (!rest.starts_with("[%s], " + key + " %s")) continue;
        wanted.key = key;
        wanted.texts = {message.Text(3)};
    }
    if (rest.starts_with("[%s]:%s")) {
        wanted.key = message.Text(3);
        // What else a message says of an item is quoted from its value.
        for (std::size_t i = 4; i < message.arguments.size(); ++i) wanted.texts.push_back(message.Text(i));
    }
    return wanted;
}

/// What stands in Line[%s:%u].
Wanted EarlierWantedBy(const Message& message, const Wanted& wanted) {
    return {message.Text(kEarlierArgument), message.Number(kEarlierArgument + 1), wanted.section, wanted.key,
            wanted.texts};
}

std::string Shown(const Place& place) { return Printable(place.path) + ':' + std::to_string(place.line); }

std::string ShownOrPath(const Place& place) { return place.line ? Shown(place) : Printable(place.path); }

}  // namespace

Report::Report(const ReportOptions& options, std::string source, const std::vector<SourceFile>& files,
               SourceIndex& index)
    : options_(options), source_(std::move(source)), index_(index), places_(files, index) {}

void Report::Add(const std::vector<Message>& reading, const std::vector<Message>& checking) {
    std::set<std::string_view> repeated;
    for (const Message& message : checking) {
        repeated.insert(message.text);
        ++checked_[message.text];
        if (message.Is(kEntryMissing)) ++missing_[{message.Text(2), message.Text(3)}];
    }
    for (const Message& message : reading) AddOne(message, repeated.contains(message.text));
    for (const Message& message : checking) AddOne(message, true);
}

std::string Report::Text() const {
    std::string summary;
    std::string text = text_;
    if (pastMost_ > 1 && !options_.raw) {
        text += Printable(source_) + ": note: " + Counted(pastMost_ - 1, "more include", "more includes") +
                " not read for the same reason\n";
    }
    if (errors_) summary += Counted(errors_, "error", "errors");
    if (warnings_) summary += (errors_ ? ", " : "") + Counted(warnings_, "warning", "warnings");
    return summary.empty() ? text : text + Printable(source_) + ": " + summary + '\n';
}

void Report::AddOne(const Message& message, bool fails) {
    if (IsChatter(message) && !options_.verbose) return;
    if (options_.raw) text_ += message.text;
    // The warning that follows says the same with its place.
    if (message.Is(kAddItemFailed) && !options_.verbose) return;
    if (IsLoss(message)) return AddLoss(message);
    if (IsError(message)) {
        return AddLocated(message, fails && !PassesTheCheck(message) ? Severity::kError : Severity::kWarning);
    }
    if (message.format.starts_with(kWarningAt)) return AddLocated(message, Severity::kWarning);
    if (!options_.raw) text_ += Filled(message, message.format, 0) + '\n';
}

void Report::AddLine(const std::string& place, Severity severity, const std::string& text) {
    const bool error = severity == Severity::kError;
    ++(error ? errors_ : warnings_);
    if (!options_.raw) text_ += place + (error ? ": error: " : ": warning: ") + text + '\n';
}

void Report::AddLoss(const Message& message) {
    ++losses_;
    // The first tells it for all.
    if (message.refusal.isPastMost && ++pastMost_ > 1) return;
    std::string place = message.path;
    // Not known with another maker's parser library.
    if (place.empty()) place = message.Is(kFileNotLoaded) ? message.Text(0) : source_;
    place = Printable(place);
    const std::string text = LossText(message, place);
    AddLine(place, Severity::kError, text);
    if (!options_.raw && !message.refusal.circle.empty()) NoteCircle(message, place);
}

void Report::NoteCircle(const Message& message, const std::string& place) {
    const Refusal& refusal = message.refusal;
    // One file may hold many such items; the way to it is told once.
    if (lastChain_ != refusal.includer) {
        std::vector<Place> way = places_.WayTo(refusal.includer);
        for (std::size_t i = 0; i < way.size(); ++i) {
            const std::string& included = i + 1 < way.size() ? way[i + 1].path : message.path;
            text_ += ShownOrPath(way[i]) + ": note: includes " + Printable(included) + '\n';
        }
    }
    lastChain_ = refusal.includer;
    text_ += place + ": note: includes " + Printable(refusal.circle) + '\n';
}

std::string Report::LossText(const Message& message, std::string& place) {
    if (message.Is(kFileNotLoaded)) {
        place += ':' + std::to_string(message.Number(1));
        const std::string reason = message.refusal.reason.empty() ? "cannot be loaded" : message.refusal.reason;
        const std::string file = message.refusal.name.empty() ? message.Text(4) : message.refusal.name;
        return '[' + Printable(message.Text(2)) + "]:" + Printable(message.Text(3)) + ", " +
               Printable(file + ' ' + reason);
    }
    if (message.Is(kSectionNameFailed)) return "section " + std::to_string(message.Number(0)) + " cannot be read";
    const std::string name = message.Text(1);
    if (const auto line = index_.LineOfSection(message.path, message.Number(0) - 1, name)) {
        place += ':' + std::to_string(*line);
    }
    if (name.empty()) return "items before the first section";
    return '[' + Printable(name) + "] is no section of the language";
}

void Report::AddLocated(const Message& message, Severity severity) {
    const std::string_view rest = Rest(message.format, IsError(message) ? kErrorAt : kWarningAt);
    const Wanted wanted = WantedBy(message, rest);
    std::vector<Place> places = {{message.path, wanted.line}};
    // While a file is being read the message is about that very file.
    if (message.path.empty() || wanted.line == 0) places = PlacesOf(message, wanted, rest);
    AddLine(Shown(places[0]), severity, Filled(message, rest, 2));
    if (options_.raw) return;
    for (std::size_t i = 1; i < places.size(); ++i) {
        text_ += Shown(places[i]) + ": note: or here; both files were included as " + Printable(wanted.name) + '\n';
    }
    if (message.Is(kEntryMissing)) NoteMissing(wanted.section, wanted.key);
}

std::vector<Place> Report::PlacesOf(const Message& message, const Wanted& wanted, std::string_view rest) {
    std::vector<Place> places = places_.Of(wanted);
    if (places.size() == 1) return places;
    const bool hasEarlier = rest.find(kEarlierPlace) != rest.npos;
    if (hasEarlier && message.Text(kEarlierArgument) == wanted.name &&
        message.Number(kEarlierArgument + 1) == wanted.line) {
        const auto earlier = std::find(places.begin(), places.end(), places_.Of(EarlierWantedBy(message, wanted))[0]);
        if (earlier != places.end()) places.erase(earlier);
    }
    // Where as many say the same as there are places, each has its own.
    const std::size_t shown = checkedShown_[message.text]++;
    if (places.size() == checked_[message.text] && shown < places.size()) return {places[shown]};
    std::vector<Place> different;
    for (const Place& place : places) {
        if (std::find(different.begin(), different.end(), place) == different.end()) different.push_back(place);
    }
    return different;
}

void Report::NoteMissing(const std::string& section, const std::string& key) {
    const std::vector<Place>& sections = places_.SectionsWithout(section, key);
    // The library names no place. Where as many sections lack the entry as it complains of, they must be these.
    const std::size_t shown = missingShown_[{section, key}]++;
    if (sections.size() != missing_[{section, key}]) return;
    text_ += Shown(sections[shown]) + ": note: the section without " + Printable(key) + " begins here\n";
}

std::string Report::Filled(const Message& message, std::string_view format, std::size_t argument) {
    if (message.arguments.empty()) return Printable(message.text.substr(0, message.text.find_last_not_of('\n') + 1));
    std::string text;
    while (!format.empty()) {
        if (format.starts_with(kEarlierPlace)) {
            const Wanted wanted = WantedBy(message, Rest(message.format, kErrorAt));
            const Place place = places_.Of(EarlierWantedBy(message, wanted))[0];
            text += "Line[" + place.path + ':' + std::to_string(place.line) + ']';
            format.remove_prefix(kEarlierPlace.size());
            argument += 2;
        } else if (format.starts_with("%s")) {
            text += message.Text(argument++);
            format.remove_prefix(2);
        } else if (format.starts_with("%u")) {
            text += std::to_string(message.Number(argument++));
            format.remove_prefix(2);
        } else {
            text += format.front();
            format.remove_prefix(1);
        }
    }
    return Printable(text.substr(0, text.find_last_not_of('\n') + 1));
}

}  // namespace zek::tool
