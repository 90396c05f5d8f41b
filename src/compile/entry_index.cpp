#include "compile/entry_index.h"

#include <algorithm>
#include <cstring>
#include <tuple>

#include "compile/compile.h"

namespace zek {

namespace {

/// Of no text.
constexpr unsigned kNoIdentifier = kIdUnresolved;

/// Texts are compared up to where they differ: in a damaged image one may have a million characters.
bool StandsFor(unsigned identifier, const std::string& text) {
    const tagGCVALUE own = GetTblData(identifier);
    return own.dwKind == 2 && std::strcmp(text.c_str(), own.pszName) == 0;
}

template <class Test>
tagGCENTRY* Walk(tagGCSECT& section, Test&& test) {
    const auto entry = std::find_if(section.vEntries.begin(), section.vEntries.end(), test);
    return entry == section.vEntries.end() ? nullptr : &*entry;
}

}  // namespace

template <class Rows>
void NamedIdentifiers::Add(const Rows& rows) {
    for (const auto& row : rows) {
        Add(row.identifier);
        tables_ |= TableSetOf(row.identifier);
    }
    stamp_ = StampOf(tables_);
}

void NamedIdentifiers::Add(unsigned identifier) {
    if (before_.Find(identifier)) return;
    const tagGCVALUE name = GetTblData(identifier);
    if (name.dwKind != 2) {
        before_.Add(identifier, kNoIdentifier);
        return;
    }
    unsigned& last = last_.Add(HashOf(std::string_view(name.pszName)), kNoIdentifier);
    before_.Add(identifier, last);
    last = identifier;
}

template <class Visit>
void NamedIdentifiers::ForEachOf(const std::string& text, Visit&& visit) const {
    for (const unsigned* id = last_.Find(HashOf(text)); id && *id != kNoIdentifier; id = before_.Find(*id)) {
        if (StandsFor(*id, text)) visit(*id);
    }
}

tagGCENTRY* EntryIndex::Named(tagGCSECT& section, const std::string& name) {
    if (name.find('\0') != std::string::npos) return nullptr;
    Entries* entries = Of(section);
    if (!entries) {
        return Walk(section, [&name](const tagGCENTRY& entry) { return StandsFor(entry.dwName, name); });
    }
    ReadNames(*entries);
    // A text can have an identifier in several tables; the entry that stands first counts.
    tagGCENTRY* first = nullptr;
    names_.ForEachOf(name, [&](unsigned identifier) {
        tagGCENTRY* const entry = Find(*entries, section, identifier);
        if (entry && (!first || entry < first)) first = entry;
    });
    return first;
}

tagGCENTRY* EntryIndex::WithName(tagGCSECT& section, unsigned identifier) {
    if (const Entries* entries = Of(section)) return Find(*entries, section, identifier);
    return Walk(section, [identifier](const tagGCENTRY& entry) { return entry.dwName == identifier; });
}

tagGCENTRY* EntryIndex::Find(const Entries& entries, tagGCSECT& section, unsigned identifier) {
    const auto& firsts = entries.firsts;
    // The compiler numbers new keys one by one, so the identifier mostly tells the row.
    const std::size_t row = identifier - firsts.front().identifier;
    if (row < firsts.size() && firsts[row].identifier == identifier) return &section.vEntries[firsts[row].position];
    const auto first = std::ranges::lower_bound(firsts, identifier, {}, &FirstEntry::identifier);
    const bool found = first != firsts.end() && first->identifier == identifier;
    return found ? &section.vEntries[first->position] : nullptr;
}

void EntryIndex::ReadNames(Entries& entries) {
    if (!names_.IsInStep()) {
        names_ = {};
        ++reading_;
    }
    if (entries.reading == reading_) return;
    names_.Add(entries.firsts);
    entries.reading = reading_;
}

EntryIndex::Entries* EntryIndex::OfLong(const tagGCSECT& section) {
    if (const SectionsStamp now = SectionsStamp::Now(); stamp_ != now) {
        stamp_ = {};
        long_.clear();
        names_ = {};
        for (const tagGCSECT* listed : g_GCHead) {
            if (listed->vEntries.size() > kWalkedAtOnce) long_[listed];
        }
        stamp_ = now;
    }
    const auto place = long_.find(&section);
    if (place == long_.end()) return nullptr;
    Entries& entries = place->second;
    if (entries.begin != section.vEntries.data() || entries.count != section.vEntries.size()) entries = Read(section);
    return &entries;
}

EntryIndex::Entries EntryIndex::Read(const tagGCSECT& section) {
    Entries entries{{}, section.vEntries.data(), section.vEntries.size()};
    auto& firsts = entries.firsts;
    firsts.reserve(entries.count);
    for (unsigned position = 0; const tagGCENTRY& entry : section.vEntries) {
        firsts.push_back({entry.dwName, position++});
    }
    std::ranges::sort(firsts, {}, [](const FirstEntry& row) { return std::tie(row.identifier, row.position); });
    const auto same = [](const FirstEntry& a, const FirstEntry& b) { return a.identifier == b.identifier; };
    firsts.erase(std::unique(firsts.begin(), firsts.end(), same), firsts.end());
    return entries;
}

}  // namespace zek
