/// The table of section kinds: keyword, type id, notation, declared entries, what becomes of an undeclared key, and how
/// a section of the kind is made. Relies on section.h and keyword_table.h.
#pragma once

#include <array>
#include <span>

#include "model/keyword_table.h"
#include "model/section.h"

namespace zek {

/// An entry that sections of a kind have from their construction on, empty until its key is met.
struct DeclaredEntry {
    unsigned type;
    unsigned notation;
};

/// The entry that an undeclared key becomes.
struct AddedEntry {
    unsigned type = 0;  ///< 0: the key is refused
    unsigned notation = 0;
    bool prefixPApart = false;  ///< keys that begin with "P_" become kPrefixP entries instead
};

struct SectionKind {
    const char* keyword;
    unsigned type;
    unsigned notation;
    std::span<const DeclaredEntry> declared;
    AddedEntry undeclared;
    CZEKSection* (*make)(const SectionKind& kind);
    CZEKSection* (*makeToRestore)();  ///< null: such sections of a debug image are passed over
};

extern const std::array<SectionKind, 14> kSectionKinds;

/// The row of a type id, or null.
const SectionKind* KindOf(unsigned type);

/// Adds the entry that an undeclared key becomes in sections of a kind that takes such keys.
CZEKEntry& AddUndeclared(CZEKSection& section, const SectionKind& kind, const std::string& file, const std::string& key,
                         const std::string& value, unsigned line);

}  // namespace zek

/// Keyword and type id of every section kind, as published.
extern ZEK_API const std::array<tagNTMAP, 14> g_NTMapSect;
extern ZEK_API const unsigned g_dwNTMSect;
