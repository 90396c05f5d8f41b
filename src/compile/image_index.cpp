#include "compile/image_index.h"

#include <algorithm>
#include <utility>

#include "compile/compile.h"
#include "compile/state.h"
#include "compile/tables.h"

namespace zek {

namespace {

bool HasFreeNames(unsigned identifier) {
    return identifier == kImageProperty || identifier == kImageGlobal || identifier == kImageRepeater;
}

struct Nothing {};

}  // namespace

SectionsStamp SectionsStamp::Now() {
    if (g_GCHead.empty()) return {g_changes, g_sectionsMade, 0, nullptr, nullptr};
    return {g_changes, g_sectionsMade, g_GCHead.size(), g_GCHead.front(), g_GCHead.back()};
}

ImageIndex::Kind& ImageIndex::KindOf(unsigned identifier) {
    const bool isShort = g_GCHead.size() <= kWalkedAtOnce;
    if (const SectionsStamp now = SectionsStamp::Now(); stamp_ != now) {
        stamp_ = {};
        kinds_ = {};
        other_ = {};
        if (!isShort) SortByKind();
        stamp_ = now;
    }
    const unsigned ordinal = identifier - kImageSectionClass;
    Kind& kind = ordinal < kinds_.size() ? kinds_[ordinal] : other_;
    if (isShort) return OfShortList(kind, identifier);
    if (kind.isCollected && kind.identifier == identifier) return kind;
    return CollectOther(identifier);
}

ImageIndex::Kind& ImageIndex::OfShortList(Kind& kept, unsigned identifier) {
    if (IsKept(kept, identifier)) return kept;
    CollectOther(identifier);
    if (&kept == &other_ || !HasLongSection(other_)) return other_;
    kept = std::exchange(other_, {});
    return kept;
}

void ImageIndex::SortByKind() {
    for (tagGCSECT* section : g_GCHead) {
        const unsigned ordinal = section->dwSect - kImageSectionClass;
        if (ordinal < kinds_.size()) kinds_[ordinal].sections.push_back(section);
    }
    for (unsigned ordinal = 0; Kind & kind : kinds_) {
        kind.identifier = kImageSectionClass + ordinal++;
        kind.isCollected = true;
    }
}

/// Whether reading the entries of the sections for every query would take the square of their number.
bool ImageIndex::HasLongSection(const Kind& kind) {
    return std::ranges::any_of(kind.entries, [](const auto& entries) { return entries.size() > kWalkedAtOnce; });
}

/// Whether the sections of a short list are those that were collected.
bool ImageIndex::IsKept(const Kind& kind, unsigned identifier) {
    if (kind.identifier != identifier || !HasLongSection(kind)) return false;
    std::size_t position = 0;
    for (const tagGCSECT* section : g_GCHead) {
        if (section->dwSect != identifier) continue;
        if (position == kind.sections.size() || kind.sections[position] != section) return false;
        const std::span<const tagGCENTRY> entries = kind.entries[position++];
        if (entries.data() != section->vEntries.data() || entries.size() != section->vEntries.size()) return false;
    }
    return position == kind.sections.size();
}

ImageIndex::Kind& ImageIndex::CollectOther(unsigned identifier) {
    // Nothing is left of the kind before when memory runs out.
    std::vector<tagGCSECT*> sections = std::move(other_.sections);
    std::vector<std::span<const tagGCENTRY>> entries = std::move(other_.entries);
    other_ = {};
    sections.clear();
    entries.clear();
    for (tagGCSECT* section : g_GCHead) {
        if (section->dwSect != identifier) continue;
        sections.push_back(section);
        entries.emplace_back(section->vEntries);
    }
    other_.identifier = identifier;
    other_.sections = std::move(sections);
    other_.entries = std::move(entries);
    other_.isCollected = true;
    return other_;
}

ImageIndex::Names ImageIndex::ReadNames(const Kind& kind) {
    Names names;
    KeyTable<unsigned, Nothing> words;
    for (tagGCSECT* section : kind.sections) {
        for (const tagGCENTRY& entry : section->vEntries) {
            const bool byValue = entry.dwName == kIdName && !entry.vdwValues.empty();
            if (!byValue && !HasFreeNames(kind.identifier)) continue;
            // A candidate that is no name text counts as compared all the same.
            names.any = true;
            const unsigned word = byValue ? entry.vdwValues[0] : entry.dwName;
            names.tables |= TableSetOf(word);
            // A name is read once: a damaged image may name a thousand sections by one text of a million characters.
            if (words.Find(word)) continue;
            words.Add(word, {});
            const tagGCVALUE name = GetTblData(word);
            if (name.dwKind == 2) names.keys.Add(name.pszName, section);
        }
    }
    names.stamp = StampOf(names.tables);
    return names;
}

ImageIndex::IDs ImageIndex::ReadIDs(const Kind& kind) {
    const TableSet numbers = TableSetOf(kIdNumber);
    IDs ids{{}, false, numbers, StampOf(numbers)};
    for (tagGCSECT* section : kind.sections) {
        for (const tagGCENTRY& entry : section->vEntries) {
            if (entry.dwName != kIdID || entry.vdwValues.empty()) continue;
            ids.any = true;
            const tagGCVALUE id = GetTblData(entry.vdwValues[0]);
            if (id.dwKind == 1) ids.keys.Add(static_cast<unsigned>(id.qwNumber), section);
        }
    }
    return ids;
}

template <class Key>
Found ImageIndex::Find(const FirstSections<Key>& firsts, const Key& key) {
    tagGCSECT* const* section = firsts.keys.Find(key);
    return {section ? *section : nullptr, firsts.any};
}

const std::vector<tagGCSECT*>& ImageIndex::Sections(unsigned identifier) { return KindOf(identifier).sections; }

Found ImageIndex::Named(unsigned identifier, const std::string& name) {
    Kind& kind = KindOf(identifier);
    if (!IsInStep(kind.names)) kind.names = ReadNames(kind);
    return Find(*kind.names, std::string_view(name));
}

Found ImageIndex::WithID(unsigned identifier, unsigned number) {
    Kind& kind = KindOf(identifier);
    if (!IsInStep(kind.ids)) kind.ids = ReadIDs(kind);
    return Find(*kind.ids, number);
}

}  // namespace zek
