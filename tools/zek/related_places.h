/// What else belongs to some errors of the library, which name one place where there are two: where the other
/// definition is, or the action that is called. Relies on places.h for what was read and on source_text.h for columns.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "finding.h"
#include "messages.h"
#include "places.h"
#include "source_text.h"

namespace zek::tool {

class RelatedPlaces {
public:
    /// All must outlive this.
    RelatedPlaces(Places& places, SourceIndex& index, SourceText& text) : places_(places), index_(index), text_(text) {}

    /// Adds the notes to a finding that the message became, and marks what it is about where its place is a section.
    void AddTo(Finding& finding, const Message& message);

private:
    struct Row {
        std::string_view code;
        void (RelatedPlaces::*add)(Finding&, const Message&);
    };
    static const Row kRows[];

    void AddOtherSection(Finding& finding, const Message& message);
    void AddFirstItem(Finding& finding, const Message& message);
    void AddParentBelow(Finding& finding, const Message& message);
    void AddAction(Finding& finding, const Message& message);

    using ReadSections = std::vector<const Places::ReadSection*>;
    /// All sections of a kind, or those with that NAME, in the order of the reading.
    const ReadSections& OfKind(const std::string& kind);
    const ReadSections& Named(const std::string& kind, const std::string& name);
    void Read();
    /// Null where there is none. Quick for many questions about one section.
    const SourceItem* FirstItem(const SourceSection& section, std::string_view key);
    /// The first sub-string of the value of an item.
    Place ValuePlace(const std::string& path, const SourceItem& item);

    Places& places_;
    SourceIndex& index_;
    SourceText& text_;
    std::map<std::string, ReadSections> byKind_;
    std::map<std::pair<std::string, std::string>, ReadSections> byName_;
    bool read_ = false;
    const SourceSection* section_ = nullptr;                              // the one that was asked for an item last
    std::unordered_map<std::string_view, const SourceItem*> firstItems_;  // of that one
};

}  // namespace zek::tool
