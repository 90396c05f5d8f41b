#include "related_places.h"

#include "lint_text.h"

namespace zek::tool {

constexpr RelatedPlaces::Row RelatedPlaces::kRows[] = {
    {"E201", &RelatedPlaces::AddOtherSection},
    {"E202", &RelatedPlaces::AddFirstItem},
    {"E206", &RelatedPlaces::AddParentBelow},
    {"E308", &RelatedPlaces::AddAction},
};

void RelatedPlaces::AddTo(Finding& finding, const Message& message) {
    for (const Row& row : kRows) {
        if (row.code == finding.code) (this->*row.add)(finding, message);
    }
}

/// SECTION %s is redefined: each of them says so.
void RelatedPlaces::AddOtherSection(Finding& finding, const Message& message) {
    bool before = true;
    for (const Places::ReadSection* other : OfKind(message.Text(2))) {
        const Place place = text_.Head(*other->path, other->section->line);
        if (place == finding.place) {
            before = false;
            continue;
        }
        finding.notes.push_back({Filled(before ? NoteText::kDefinedBefore : NoteText::kDefinedAgain), place});
        return;
    }
}

/// [%s], Entry %s is redefined: in the same section.
void RelatedPlaces::AddFirstItem(Finding& finding, const Message& message) {
    const auto line = index_.At(finding.place.path, finding.place.line);
    const SourceItem* const first = line ? FirstItem(*line->section, message.Text(3)) : nullptr;
    if (!first || first->line >= finding.place.line) return;
    finding.notes.push_back({Filled(NoteText::kDefinedBefore), text_.Head(finding.place.path, first->line)});
}

/// Parent of this group hasn't been defined: a group of that name stands on no smaller line.
void RelatedPlaces::AddParentBelow(Finding& finding, const Message&) {
    const auto line = index_.At(finding.place.path, finding.place.line);
    const SourceItem* const parent = line ? FirstItem(*line->section, "PARENT") : nullptr;
    if (!parent) return;
    finding.place = ValuePlace(finding.place.path, *parent);
    const ReadSections& groups = Named("GROUP", FirstSubString(parent->value));
    if (groups.empty()) return;
    const SourceItem& name = *FirstItem(*groups[0]->section, "NAME");
    finding.notes.push_back({Filled(NoteText::kParent), ValuePlace(*groups[0]->path, name)});
}

/// The ACTION %s needs %u PARAMS.
void RelatedPlaces::AddAction(Finding& finding, const Message& message) {
    const ReadSections& actions = Named("ACTION", message.Text(4));
    if (actions.empty()) return;
    const Places::ReadSection& action = *actions[0];
    finding.notes.push_back({Filled(NoteText::kAction), ValuePlace(*action.path, *FirstItem(*action.section, "NAME"))});
    const SourceItem* const number = FirstItem(*action.section, "ARGNUMBER");
    if (number) finding.notes.push_back({Filled(NoteText::kArgumentCount), ValuePlace(*action.path, *number)});
}

const RelatedPlaces::ReadSections& RelatedPlaces::OfKind(const std::string& kind) {
    if (!read_) Read();
    return byKind_[kind];
}

const RelatedPlaces::ReadSections& RelatedPlaces::Named(const std::string& kind, const std::string& name) {
    if (!read_) Read();
    return byName_[{kind, name}];
}

void RelatedPlaces::Read() {
    read_ = true;
    for (const Places::ReadSection& read : places_.SectionsRead()) {
        byKind_[read.section->name].push_back(&read);
        const SourceItem* const name = read.section->Find("NAME");
        if (name) byName_[{read.section->name, FirstSubString(name->value)}].push_back(&read);
    }
}

const SourceItem* RelatedPlaces::FirstItem(const SourceSection& section, std::string_view key) {
    if (&section != section_) {
        section_ = &section;
        firstItems_.clear();
        for (const SourceItem& item : section.items) firstItems_.try_emplace(item.key, &item);
    }
    const auto found = firstItems_.find(key);
    return found == firstItems_.end() ? nullptr : found->second;
}

Place RelatedPlaces::ValuePlace(const std::string& path, const SourceItem& item) {
    return text_.SubString(path, item.line, 0);
}

}  // namespace zek::tool
