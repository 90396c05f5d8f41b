#include "source_pairing.h"

namespace zek::tool {

SourcePairing::SourcePairing(const DebugSource& source) {
    for (const DebugSection& section : source.sections) sections_[section.keyword].push_back(&section);
}

const DebugSection* SourcePairing::SectionOf(const ShownSection& section) const {
    const auto ofKind = sections_.find(section.keyword);
    if (ofKind == sections_.end() || section.index >= ofKind->second.size()) return nullptr;
    const DebugSection* const source = ofKind->second[section.index];
    const DebugEntry* const name = source->Entry("NAME");
    const bool named = section.name && section.Entry("NAME");
    if (named && (!name || name->texts.empty() || name->texts[0] != *section.name)) return nullptr;
    return source;
}

std::vector<const DebugEntry*> SourcePairing::EntriesOf(const ShownSection& section, const DebugSection& source) {
    std::vector<const DebugEntry*> entries;
    std::size_t next = 0;
    for (const ShownEntry& entry : section.entries) {
        std::size_t at = next;
        while (at < source.entries.size() && !(source.entries[at].given && source.entries[at].key == entry.key)) ++at;
        const bool found = at < source.entries.size();
        entries.push_back(found ? &source.entries[at] : nullptr);
        if (found) next = at + 1;
    }
    return entries;
}

}  // namespace zek::tool
