#include "report.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <utility>

#include "image_bytes.h"
#include "known_messages.h"
#include "printable.h"

namespace zek::tool {
namespace {

constexpr std::string_view kEarlierPlace = "Line[%s:%u]";
constexpr std::size_t kEarlierArgument = 4;  ///< the position of its file among the arguments

bool IsChatter(const Message& message) { return message.Is(kLoadParserFailed) || message.Is(kNoMoreSections); }

bool IsPastMost(const Message& message) { return message.refusal && message.refusal->why == NoteText::kPastMost; }

bool HasPlace(const Message& message) { return WithoutPlace(message.format).size() < message.format.size(); }

/// The message without its line feed and without the place that it begins with, which the finding has.
std::string TextOf(const Message& message) {
    const std::string whole = message.Whole();
    std::string_view text = whole;
    if (text.ends_with('\n')) text.remove_suffix(1);
    if (!HasPlace(message)) return std::string(text);
    const std::string_view format = message.format;
    const std::size_t behind = format.find(']') + 1;
    const std::size_t punctuation = format.size() - WithoutPlace(format).size() - behind;
    const std::size_t begin =
        format.find('[') + 1 + message.Text(0).size() + 1 + std::to_string(message.Number(1)).size() + 1 + punctuation;
    return std::string(text.substr(std::min(begin, text.size())));
}

/// What the message says of its place; which names it has is told by how its format begins.
Wanted WantedBy(const Message& message) {
    const std::string_view rest = WithoutPlace(message.format);
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
        for (std::size_t i = 4; i < message.CountArguments(); ++i) wanted.texts.push_back(message.Text(i));
    }
    return wanted;
}

bool HasEarlier(const Message& message) { return message.format.find(kEarlierPlace) != message.format.npos; }

/// What stands in Line[%s:%u].
Wanted EarlierWantedBy(const Message& message, const Wanted& wanted) {
    return {message.Text(kEarlierArgument), message.Number(kEarlierArgument + 1), wanted.section, wanted.key,
            wanted.texts};
}

/// Messages that are about a sub-string which they do not quote: its position.
struct MarkedPosition {
    std::string_view code;
    std::size_t position;
};
constexpr std::array<MarkedPosition, 3> kMarkedPositions = {{{"W101", 1}, {"W302", 4}, {"W303", 3}}};

}  // namespace

/// How many messages of a list are equal, and which of them this is.
class EqualMessages {
public:
    explicit EqualMessages(const std::vector<Message>& messages) {
        sorted_.reserve(messages.size());
        for (const Message& message : messages) sorted_.push_back(&message);
        std::sort(sorted_.begin(), sorted_.end(), IsBefore);
        told_.resize(sorted_.size());
        shown_.resize(sorted_.size());
    }

    std::size_t Count(const Message& message) const {
        const auto [first, last] = std::equal_range(sorted_.begin(), sorted_.end(), &message, IsBefore);
        return static_cast<std::size_t>(last - first);
    }
    // Of a message that is among them: how many were told before the check said them, and how many have been shown.
    std::uint32_t& Told(const Message& message) { return told_[First(message)]; }
    std::uint32_t& Shown(const Message& message) { return shown_[First(message)]; }

private:
    /// Any order: equal texts of messages have one address.
    static bool IsBefore(const Message* a, const Message* b) {
        const auto isBefore = [](std::string_view x, std::string_view y) { return std::less<>()(x.data(), y.data()); };
        if (a->format.data() != b->format.data()) return isBefore(a->format, b->format);
        return std::lexicographical_compare(a->arguments.begin(), a->arguments.end(), b->arguments.begin(),
                                            b->arguments.end(), isBefore);
    }
    std::size_t First(const Message& message) const {
        const auto first = std::lower_bound(sorted_.begin(), sorted_.end(), &message, IsBefore);
        return static_cast<std::size_t>(first - sorted_.begin());
    }

    std::vector<const Message*> sorted_;
    std::vector<std::uint32_t> told_;  // each for the first of equal ones
    std::vector<std::uint32_t> shown_;
};

Report::Report(const ReportOptions& options, std::string source, const std::vector<SourceFile>& files,
               SourceIndex& index, SourceText& text, Review& review)
    : options_(options),
      source_(std::move(source)),
      files_(files),
      index_(index),
      text_(text),
      review_(review),
      places_(files, index),
      names_(places_, options_.words),
      related_(places_, index, text) {
    for (std::size_t i = 0; i < files.size(); ++i) openings_.try_emplace(files[i].path, i);
}

void Report::Add(const std::vector<Message>& reading, const std::vector<Message>& checking) {
    EqualMessages checked(checking);
    checked_ = &checked;
    for (const Message& message : checking) {
        if (message.Is(kEntryMissing)) ++missing_[{message.Text(2), message.Text(3)}];
    }
    for (const Message& message : reading) pastMost_ += IsPastMost(message);
    AddAll(reading, checking);
    checked_ = nullptr;
}

void Report::AddAll(const std::vector<Message>& reading, const std::vector<Message>& checking) {
    for (const Message& message : reading) {
        AddRaw(message);
        const bool repeated = checked_->Count(message) > 0;
        if (repeated) ++checked_->Told(message);
        AddOne(message, repeated);
    }
    for (const Message& message : checking) {
        AddRaw(message);
        std::uint32_t& told = checked_->Told(message);
        if (told == 0) {
            AddOne(message, true);
        } else {
            --told;
        }
    }
}

void Report::AddRaw(const Message& message) {
    if (options_.raw && (options_.verbose || !IsChatter(message))) raw_ += message.Whole();
}

void Report::AddOne(const Message& message, bool fails) {
    const CodeRow* const row = RowOfFormat(message.format);
    Finding finding;
    finding.code = row ? row->code : "";
    if (message.Is(kCreateSectionFailed) || message.Is(kSectionNameFailed) || message.Is(kFileNotLoaded)) {
        return AddLoss(std::move(finding), message);
    }
    // A word that stands below: the check, where all words are known, finds nothing wrong.
    if (message.Is(kNotANumber) && !fails) finding.code = "W005";
    if (review_.CountOnly(finding.code)) return;
    finding.message = TextOf(message);
    if (HasPlace(message)) return AddLocated(std::move(finding), message);
    finding.place.path = message.path;
    review_.Add(std::move(finding));
}

Place Report::PlaceOfFile(const Message& message) {
    // Not known with another maker's parser library.
    const std::string path = message.path.empty() ? message.Text(0) : std::string(message.path);
    return text_.SubString(path, message.Number(1), 0);
}

Place Report::PlaceOfSection(const Message& message) {
    if (message.path.empty()) return {source_};
    const std::string path(message.path);
    const auto line = index_.LineOfSection(path, message.Number(0) - 1, message.Text(1));
    return line ? text_.Head(path, *line) : Place{path};
}

/// `loaded` is what the library calls the file.
void Report::AddWhy(Finding& finding, const Refusal& refusal, const std::string& loaded) {
    std::vector<std::string> texts = {refusal.name.empty() ? loaded : refusal.name};
    texts.insert(texts.end(), refusal.details.begin(), refusal.details.end());
    finding.notes.push_back({Filled(refusal.why, texts)});
    if (!refusal.meant.empty()) finding.fix = NameFix(finding.place, refusal.meant, text_);
}

/// What the file is instead of a source, where its first line tells.
void Report::AddKindOfFile(Finding& finding, std::string_view line) {
    const ImageKind kind = KindOf(line);
    if (kind != ImageKind::kNone) finding.notes.push_back({Filled(NoteText::kIsImage, {NameOf(kind)})});
    const bool isUtf16 = line.starts_with("\xff\xfe") || line.starts_with("\xfe\xff");
    if (isUtf16) finding.notes.push_back({Filled(NoteText::kIsUtf16)});
}

void Report::AddLoss(Finding finding, const Message& message) {
    ++losses_;
    const std::size_t pastMost = IsPastMost(message) ? std::exchange(pastMost_, 0) : 0;
    // The first tells it for all.
    if (IsPastMost(message) && pastMost == 0) return;
    if (review_.CountOnly(finding.code)) return;
    finding.message = TextOf(message);
    if (message.Is(kFileNotLoaded)) {
        finding.place = PlaceOfFile(message);
        if (message.refusal) AddWhy(finding, *message.refusal, message.Text(4));
    } else if (message.Is(kSectionNameFailed)) {
        finding.place = {message.path.empty() ? source_ : std::string(message.path)};
        finding.message = "section " + std::to_string(message.Number(0)) + " cannot be read: " + finding.message;
    } else {
        const std::string name = message.Text(1);
        finding.place = PlaceOfSection(message);
        finding.message =
            (name.empty() ? "items before the first section" : '[' + name + "] is no section of the language") + ": " +
            finding.message;
        finding.fix = names_.Meant(finding.code, {}, name, finding.place, text_);
        if (name.empty()) AddKindOfFile(finding, text_.Line(finding.place.path, 1));
    }
    if (pastMost > 1) finding.notes.push_back({Filled(NoteText::kMorePastMost, {std::to_string(pastMost - 1)})});
    review_.Add(std::move(finding));
}

Place Report::Marked(const Place& place, const Wanted& wanted, const std::string& code) {
    for (const MarkedPosition& marked : kMarkedPositions) {
        if (marked.code == code) return text_.SubString(place.path, place.line, marked.position);
    }
    for (const std::string& text : wanted.texts) {
        if (!text.empty()) return text_.SubString(place.path, place.line, text);
    }
    return text_.Head(place.path, place.line);
}

void Report::AddLocated(Finding finding, const Message& message) {
    const Wanted wanted = WantedBy(message);
    PossiblePlaces places = {{{std::string(message.path), wanted.line}}};
    // While a file is being read the message is about that very file.
    if (message.path.empty() || wanted.line == 0) places = PlacesOf(message, wanted);
    if (message.Is(kEntryMissing)) {
        if (const auto header = SectionWithout(wanted.section, wanted.key)) places = {{*header}};
    }
    finding.place = Marked(places.all[0], wanted, finding.code);
    const std::string orHere = Filled(NoteText::kOrHere, {std::to_string(places.different), wanted.name});
    const auto note = [&](std::size_t i) { return Note{orHere, Marked(places.all[i + 1], wanted, finding.code)}; };
    AddNotes(finding, places.different - 1, note, NoteText::kOrInMore);
    if (HasEarlier(message)) {
        const Wanted earlier = EarlierWantedBy(message, wanted);
        finding.notes.push_back(
            {Filled(NoteText::kDefinedBefore), Marked(places_.Of(earlier)->all[0], earlier, finding.code)});
    }
    related_.AddTo(finding, message);
    const std::string written = wanted.texts.empty() ? wanted.key : wanted.texts[0];
    finding.fix =
        names_.Meant(finding.code, {wanted.section, wanted.key, places.all[0]}, written, finding.place, text_);
    review_.Add(std::move(finding));
}

PossiblePlaces Report::PlacesOf(const Message& message, const Wanted& wanted) {
    const std::shared_ptr<const PossiblePlaces> possible = places_.Of(wanted);
    const std::vector<Place>& all = possible->all;
    if (all.size() == 1) return *possible;
    auto twin = all.end();
    if (HasEarlier(message) && message.Text(kEarlierArgument) == wanted.name &&
        message.Number(kEarlierArgument + 1) == wanted.line) {
        twin = std::find(all.begin(), all.end(), places_.Of(EarlierWantedBy(message, wanted))->all[0]);
    }
    const bool hasTwin = twin != all.end();
    // Where as many say the same as there are places, each has its own.
    const std::size_t checked = checked_->Count(message);
    std::size_t shown = checked > 0 ? checked_->Shown(message)++ : 0;
    if (all.size() - hasTwin == checked && shown < checked) {
        if (hasTwin && all.begin() + static_cast<std::ptrdiff_t>(shown) >= twin) ++shown;
        return {{all[shown]}};
    }
    PossiblePlaces places = {{}, possible->different};
    if (hasTwin && std::find(std::next(twin), all.end(), *twin) == all.end()) --places.different;
    for (auto place = all.begin(); place != all.end() && places.all.size() <= kMostNotes; ++place) {
        const bool isNew = std::find(places.all.begin(), places.all.end(), *place) == places.all.end();
        if (place != twin && isNew) places.all.push_back(*place);
    }
    return places;
}

std::optional<Place> Report::SectionWithout(const std::string& section, const std::string& key) {
    const std::vector<Place>& sections = places_.SectionsWithout(section, key);
    // The library names no place. Where as many sections lack the entry as it complains of, they must be these.
    const std::size_t shown = missingShown_[{section, key}]++;
    if (sections.size() != missing_[{section, key}]) return std::nullopt;
    return sections[shown];
}

void Report::AddWay(Finding& finding) {
    // Of a file that was opened several times, the first way.
    const auto opening = openings_.find(finding.place.path);
    if (finding.place.line == 0 || opening == openings_.end() || opening->second == 0) return;
    const auto [way, isNew] = ways_.try_emplace(opening->second);
    if (isNew) {
        for (const Place& item : places_.WayTo(opening->second)) {
            way->second.push_back(item.line ? text_.SubString(item.path, item.line, 0) : item);
        }
    }
    finding.way = way->second;
}

}  // namespace zek::tool
