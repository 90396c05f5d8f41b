#include "source_pairing.h"

#include <algorithm>

namespace zek::tool {
namespace {

/// A key as a compiled image shows it: two have one identifier there.
std::string_view CompiledKey(std::string_view key) { return key == "VALUE_" ? "VALUE" : key; }

}  // namespace

SourcePairing::SourcePairing(const DebugSource& source) {
    for (const DebugSection& section : source.sections) sections_[section.keyword].push_back(&section);
}

const DebugSection* SourcePairing::SectionOf(const ShownSection& section) const {
    const auto ofKind = sections_.find(section.keyword);
    const bool isThere = ofKind != sections_.end() && section.index < ofKind->second.size();
    return isThere ? ofKind->second[section.index] : nullptr;
}

std::vector<const DebugEntry*> SourcePairing::EntriesOf(const ShownSection& section, const DebugSection& source) {
    std::map<std::string_view, std::vector<std::size_t>> positions;
    for (std::size_t at = 0; at < source.entries.size(); ++at) {
        const DebugEntry& entry = source.entries[at];
        if (entry.given) positions[CompiledKey(entry.key)].push_back(at);
    }
    std::vector<const DebugEntry*> entries;
    std::size_t next = 0;
    for (const ShownEntry& entry : section.entries) {
        const std::vector<std::size_t>& places = positions[entry.key];
        const auto at = std::lower_bound(places.begin(), places.end(), next);
        entries.push_back(at == places.end() ? nullptr : &source.entries[*at]);
        if (at != places.end()) next = *at + 1;
    }
    return entries;
}

}  // namespace zek::tool
