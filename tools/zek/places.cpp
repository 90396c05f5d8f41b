#include "places.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "lint_text.h"

namespace zek::tool {
namespace {

/// Whether a text is a sub-string of a value: between commas, quotes or its ends, but for blanks.
bool IsSubString(const std::string& value, const std::string& text) {
    const auto isBound = [&](std::size_t at) { return at == value.npos || value[at] == ',' || value[at] == '"'; };
    for (std::size_t at = 0; (at = value.find(text, at)) != value.npos; ++at) {
        const std::size_t before = at == 0 ? value.npos : value.find_last_not_of(" \t", at - 1);
        if (isBound(before) && isBound(value.find_first_not_of(" \t", at + text.size()))) return true;
    }
    return false;
}

bool Fits(const SourceLine& line, const Wanted& wanted) {
    if (!wanted.section.empty() && line.section->name != wanted.section) return false;
    if (!wanted.key.empty() && (!line.item || line.item->key != wanted.key)) return false;
    return std::all_of(wanted.texts.begin(), wanted.texts.end(),
                       [&](const std::string& text) { return line.item && IsSubString(line.item->value, text); });
}

/// Whether the library complains of a section that it lacks the entry of that key. The condition of an [IFDEF] is one
/// only where it comes first.
bool Lacks(const SourceSection& section, const std::string& key) {
    if (section.name == "IFDEF") return section.items.empty() || section.items.front().key != key;
    return !section.Find(key);
}

}  // namespace

Places::Places(const std::vector<SourceFile>& files, SourceIndex& index) : files_(files), index_(index) {
    for (std::size_t i = 0; i < files.size(); ++i) {
        Openings& openings = openings_[NameInMessages(files[i].name)];
        openings.positions.push_back(i);
        openings.isOneFile &= files[i].path == files[openings.positions[0]].path;
    }
}

std::shared_ptr<const PossiblePlaces> Places::Of(const Wanted& wanted) {
    const auto only = [](Place place) { return std::make_shared<PossiblePlaces>(PossiblePlaces{{std::move(place)}}); };
    if (wanted.line == 0 && !files_.empty()) return only({files_.front().path, 0});
    const auto known = openings_.find(wanted.name);
    if (known == openings_.end()) return only({wanted.name, wanted.line});
    const Openings& openings = known->second;
    if (openings.isOneFile) return only({files_[openings.positions[0]].path, wanted.line});
    const auto [found, isNew] = found_.try_emplace(wanted);
    if (isNew) found->second = Find(wanted, openings);
    return found->second;
}

std::shared_ptr<const PossiblePlaces> Places::Find(const Wanted& wanted, const Openings& openings) {
    std::vector<Place> places = Fitting(wanted, openings);
    // A text need not stand in the value as the message has it.
    if (places.empty() && !wanted.texts.empty()) {
        return Of({wanted.name, wanted.line, wanted.section, wanted.key, {}});
    }
    if (places.empty()) {
        for (const std::size_t opening : openings.positions) places.push_back({files_[opening].path, wanted.line});
    }
    std::set<std::string_view> paths;
    for (const Place& place : places) paths.insert(place.path);
    return std::make_shared<PossiblePlaces>(PossiblePlaces{std::move(places), paths.size()});
}

std::vector<Place> Places::Fitting(const Wanted& wanted, const Openings& openings) {
    SectionsRead();
    std::vector<std::pair<Order, std::size_t>> fitting;
    for (const std::size_t opening : openings.positions) {
        const std::optional<SourceLine> line = index_.At(files_[opening].path, wanted.line);
        if (line && Fits(*line, wanted)) fitting.emplace_back(OrderOf(opening, *line), opening);
    }
    std::sort(fitting.begin(), fitting.end());
    std::vector<Place> places;
    for (const auto& [order, opening] : fitting) places.push_back({files_[opening].path, wanted.line});
    return places;
}

Places::Order Places::OrderOf(std::size_t opening, const SourceLine& line) const {
    // One that was not met in the reading again comes last.
    if (line.position >= positions_[opening].size()) return {read_.size(), opening};
    return {kinds_.at(line.section->name), positions_[opening][line.position]};
}

const std::vector<Place>& Places::SectionsWithout(const std::string& section, const std::string& key) {
    const auto [found, isNew] = without_.try_emplace({section, key});
    if (!isNew) return found->second;
    for (const ReadSection& candidate : SectionsRead()) {
        if (candidate.section->name != section || !Lacks(*candidate.section, key)) continue;
        found->second.push_back({*candidate.path, candidate.section->line});
    }
    return found->second;
}

const SourceSection* Places::SectionOf(const Place& item) {
    const std::optional<SourceLine> line = index_.At(item.path, item.line);
    return line ? line->section : nullptr;
}

std::vector<Place> Places::WayTo(std::size_t opening) {
    SectionsRead();
    std::vector<Place> way;
    for (; opening != 0; opening = files_[opening].includer) {
        way.push_back({files_[files_[opening].includer].path, lines_[opening]});
    }
    std::reverse(way.begin(), way.end());
    return way;
}

/// The sections of a file and, where one of them includes a file, that file's.
void Places::ReadAgain(std::size_t position, const std::vector<std::vector<std::size_t>>& included) {
    auto next = included[position].begin();
    for (const SourceSection& section : index_.Sections(files_[position].path)) {
        kinds_.try_emplace(section.name, read_.size());
        positions_[position].push_back(read_.size());
        read_.push_back({&files_[position].path, &section});
        if (section.name != "INCLUDE") continue;
        for (const SourceItem& item : section.items) {
            // One that could not be loaded is not among the files.
            const std::string name = BackslashFolder(files_[position].name) + FirstSubString(item.value);
            if (next == included[position].end() || files_[*next].name != name) continue;
            lines_[*next] = item.line;
            ReadAgain(*next++, included);
        }
    }
}

const std::vector<Places::ReadSection>& Places::SectionsRead() {
    if (!read_.empty() || files_.empty()) return read_;
    std::vector<std::vector<std::size_t>> included(files_.size());
    for (std::size_t i = 1; i < files_.size(); ++i) included[files_[i].includer].push_back(i);
    positions_.resize(files_.size());
    lines_.resize(files_.size());
    ReadAgain(0, included);
    return read_;
}

}  // namespace zek::tool
