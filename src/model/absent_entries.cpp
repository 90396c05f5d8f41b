#include "model/absent_entries.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "model/section_kinds.h"
#include "model/state.h"

namespace zek {

namespace {

bool IsAbsent(const CZEKEntry& entry, const DeclaredEntry& declared) {
    return entry.m_dwType == declared.type && entry.m_eNotation == declared.notation && entry.m_dwLine == 0 &&
           entry.m_dwFile == 0 && entry.m_strName.empty() && entry.m_ZekEntryData.m_dwType == 0 && !HoldsData(entry) &&
           entry.m_vstrSubStr.empty() && entry.m_dwWaiting == 0;
}

CZEKEntry* Construct(std::size_t kind, std::size_t position) {
    const DeclaredEntry& declared = kSectionKinds[kind].declared[position];
    return ConstructEntry(g_sharedEntries.memory[kind][position], declared.type, declared.notation);
}

}  // namespace

CZEKEntry* SharedEntry(const SectionKind& kind, std::size_t position) {
    const auto row = static_cast<std::size_t>(&kind - kSectionKinds.data());
    CZEKEntry*& entry = g_sharedEntries.entries[row][position];
    if (!entry) entry = Construct(row, position);
    return entry;
}

void ShareAbsentEntries(CZEKSection& section) {
    if (!IsModelLarge()) return;
    const SectionKind* kind = KindOf(section.m_dwType);
    const std::size_t declared = kind ? std::min(kind->declared.size(), section.m_vpEntry.size()) : 0;
    for (std::size_t i = 0; i < declared; ++i) {
        CZEKEntry*& place = section.m_vpEntry[i];
        if (!IsAbsent(*place, kind->declared[i])) continue;
        delete place;
        place = SharedEntry(*kind, i);
    }
}

bool IsShared(const void* entry) {
    const std::less<const void*> before;
    const auto& memory = g_sharedEntries.memory;
    return !before(entry, std::begin(memory)) && before(entry, std::end(memory));
}

CZEKEntry& OwnEntry(CZEKEntry*& place) {
    if (IsShared(place)) place = NewEntry(place->m_dwType, place->m_eNotation).release();
    return *place;
}

void RenewSharedEntry(void* entry) {
    const std::byte* const first = g_sharedEntries.memory[0][0];
    const auto index = static_cast<std::size_t>(static_cast<std::byte*>(entry) - first) / sizeof(CZEKEntry);
    Construct(index / kMostDeclared, index % kMostDeclared);
}

}  // namespace zek
