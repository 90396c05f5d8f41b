#include "compile/entry_index.h"

#include <algorithm>
#include <cstring>

#include "compile/compile.h"
#include "compile/tables.h"

namespace zek {

namespace {

template <class Map, class Key>
tagGCENTRY* Find(const Map& map, const Key& key) {
    const auto place = map.find(key);
    return place == map.end() ? nullptr : place->second;
}

template <class Test>
tagGCENTRY* Walk(tagGCSECT& section, Test&& test) {
    const auto entry = std::find_if(section.vEntries.begin(), section.vEntries.end(), test);
    return entry == section.vEntries.end() ? nullptr : &*entry;
}

}  // namespace

tagGCENTRY* EntryIndex::Named(tagGCSECT& section, const std::string& name) {
    if (const Entries* entries = Of(section)) return Find(entries->byText, name);
    // Texts are compared up to where they differ: in a damaged image one may have a million characters.
    if (name.find('\0') != std::string::npos) return nullptr;
    return Walk(section, [&name](const tagGCENTRY& entry) {
        const tagGCVALUE own = GetTblData(entry.dwName);
        return own.dwKind == 2 && std::strcmp(name.c_str(), own.pszName) == 0;
    });
}

tagGCENTRY* EntryIndex::WithName(tagGCSECT& section, unsigned identifier) {
    if (const Entries* entries = Of(section)) return Find(entries->byIdentifier, identifier);
    for (tagGCENTRY& entry : section.vEntries) {
        if (entry.dwName == identifier) return &entry;
    }
    return nullptr;
}

EntryIndex::Entries* EntryIndex::OfLong(tagGCSECT& section) {
    if (const ImageStamp now = ImageStamp::Now(); stamp_ != now) {
        stamp_ = {};
        long_.clear();
        for (const tagGCSECT* listed : g_GCHead) {
            if (listed->vEntries.size() > kWalkedAtOnce) long_[listed];
        }
        stamp_ = now;
    }
    const auto place = long_.find(&section);
    if (place == long_.end()) return nullptr;
    Entries& entries = place->second;
    if (entries.first != section.vEntries.data() || entries.count != section.vEntries.size()) entries = Read(section);
    return &entries;
}

EntryIndex::Entries EntryIndex::Read(tagGCSECT& section) {
    Entries entries;
    entries.first = section.vEntries.data();
    entries.count = section.vEntries.size();
    for (tagGCENTRY& entry : section.vEntries) {
        // A name is read once: a damaged image may name a thousand entries by one text of a million characters.
        if (!entries.byIdentifier.try_emplace(entry.dwName, &entry).second) continue;
        const tagGCVALUE name = GetTblData(entry.dwName);
        if (name.dwKind == 2) entries.byText.try_emplace(name.pszName, &entry);
    }
    return entries;
}

}  // namespace zek
