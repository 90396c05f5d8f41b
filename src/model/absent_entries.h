/// The declared entries that the source never gives. A board has millions of them, all alike, so that in a large model
/// a section's own are replaced, once it is read, by those that all sections of its kind share. Relies on section.h.
#pragma once

#include <cstddef>

#include "model/section.h"

namespace zek {

/// No kind declares more entries.
inline constexpr std::size_t kMostDeclared = 17;

/// A shared entry for each that a kind declares, by kind and position.
struct SharedEntries {
    CZEKEntry* entries[14][kMostDeclared];
    alignas(CZEKEntry) std::byte memory[14][kMostDeclared][sizeof(CZEKEntry)];
};

/// Shares what the section declares and was not given; to be called when its items are read. What fills a shared entry,
/// SetEntry and the reading of bytes, gives the section one of its own first.
void ShareAbsentEntries(CZEKSection& section);

bool IsShared(const void* entry);

/// The entry in this place of a section, made its own when it is shared.
CZEKEntry& OwnEntry(CZEKEntry*& place);

/// Makes a shared entry again that a host took for its own and destroyed.
void RenewSharedEntry(void* entry);

}  // namespace zek
