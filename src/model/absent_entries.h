/// The declared entries that the source never gives. A board has millions of them, all alike, so that in a large model
/// all sections of a kind share them. What fills one, SetEntry and the reading of bytes, gives the section one of its
/// own first. Relies on section.h.
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

/// The shared entry for the one that a kind declares at a position; made at first use, never destroyed.
CZEKEntry* SharedEntry(const SectionKind& kind, std::size_t position);

/// In a large model, shares what a section that was read from a debug image declares and was not given. Until then all
/// its entries are its own.
void ShareAbsentEntries(CZEKSection& section);

bool IsShared(const void* entry);

/// The entry in this place of a section, made its own when it is shared.
CZEKEntry& OwnEntry(CZEKEntry*& place);

/// Makes a shared entry again that a host took for its own and destroyed.
void RenewSharedEntry(void* entry);

}  // namespace zek
