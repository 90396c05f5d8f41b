/// A section of the source model, the fourteen kinds of sections, and the process-wide registry of all sections. Relies
/// on entry.h.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "model/entry.h"

class CZEKSection;

namespace zek {

/// The sections of one kind in the order in which they were made. Owns them until CZEKSection::Destory.
using SectionList = std::vector<CZEKSection*>;

struct SectionKind;

}  // namespace zek

class ZEK_API CZEKSection : public CZEKObj {
public:
    CZEKSection();
    CZEKSection(unsigned type, tagNOTATION notation);
    ~CZEKSection() override;

    /// Takes an item into a declared entry of its key; a key given again becomes one more entry. 0 when the kind
    /// declares no such key. The kinds that override this add entries for the keys that they do not declare.
    virtual unsigned SetEntry(const std::string& file, const std::string& key, const std::string& value, unsigned line);

    /// A new section of the kind that `name` is the keyword of, listed in the registry, or null.
    static CZEKSection* Create(const std::string& file, const std::string& name, unsigned line);
    void Init(const std::string& file, const std::string& name, unsigned line);

    /// The two passes over one section; 1 or 0. The argument is not used.
    unsigned IsValid(unsigned flag);
    unsigned IsValidEx(unsigned flag);

    void GetBuffer(std::vector<unsigned char>& out);
    /// Throws `std::out_of_range` when the buffer ends early; what was read before stays.
    void SetBuffer(const std::vector<unsigned char>& in);

    /// Destroys every section of every kind and empties the table of predefined names. The kinds stay registered.
    static void Destory();

    /// Sections that the library makes come from its pool, those of a host from the heap; each goes back to where it
    /// came from.
    static void operator delete(void* memory, std::size_t size);

    /// The lists of the kinds, in the order in which a section of each was first made.
    static std::vector<zek::SectionList*> m_svpHSection;

    /// Owned; the declared entries first, then the added ones. In a model of more than zek::kPlainModel sections, those
    /// that were declared and not given are shared by the sections of a kind; SetEntry fills them.
    std::vector<CZEKEntry*> m_vpEntry;

protected:
    /// The construction step of every kind: registers the kind, lists the section, declares the kind's entries.
    void Declare(zek::SectionList& list, const zek::SectionKind& kind);
};

/// What every kind has: its list, the two constructors (with and without type id and notation), `Init0`, which both
/// run.
#define ZEK_SECTION_KIND(Kind)                 \
public:                                        \
    static zek::SectionList m_sHeader;         \
    Kind();                                    \
    Kind(unsigned type, tagNOTATION notation); \
    ~Kind() override;                          \
    void Init0();

/// What every kind has that takes undeclared keys.
#define ZEK_OPEN_SECTION_KIND(Kind)                                                                             \
    ZEK_SECTION_KIND(Kind)                                                                                      \
    unsigned SetEntry(const std::string& file, const std::string& key, const std::string& value, unsigned line) \
        override;

class ZEK_API CGSQUORZEK : public CZEKSection {
    ZEK_SECTION_KIND(CGSQUORZEK)
};
class ZEK_API CGSPROPERTY : public CZEKSection {
    ZEK_OPEN_SECTION_KIND(CGSPROPERTY)
};
class ZEK_API CGSSYSTEM : public CZEKSection {
    ZEK_OPEN_SECTION_KIND(CGSSYSTEM)
};
class ZEK_API CGSGROUP : public CZEKSection {
    ZEK_SECTION_KIND(CGSGROUP)
};
class ZEK_API CGSSENSOR : public CZEKSection {
    ZEK_OPEN_SECTION_KIND(CGSSENSOR)
};
class ZEK_API CGSDEVICE : public CZEKSection {
    ZEK_OPEN_SECTION_KIND(CGSDEVICE)
};
class ZEK_API CGSACTION : public CZEKSection {
    ZEK_OPEN_SECTION_KIND(CGSACTION)
};
class ZEK_API CGSTABLE : public CZEKSection {
    ZEK_OPEN_SECTION_KIND(CGSTABLE)
};
class ZEK_API CGSTAVRGROUP : public CZEKSection {
    ZEK_OPEN_SECTION_KIND(CGSTAVRGROUP)
};
class ZEK_API CGSGLOBAL : public CZEKSection {
    ZEK_OPEN_SECTION_KIND(CGSGLOBAL)
};
class ZEK_API CGSREPEATER : public CZEKSection {
    ZEK_OPEN_SECTION_KIND(CGSREPEATER)
};
class ZEK_API CGSDEFINE : public CZEKSection {
    ZEK_OPEN_SECTION_KIND(CGSDEFINE)
};
class ZEK_API CGSIFDEF : public CZEKSection {
    ZEK_OPEN_SECTION_KIND(CGSIFDEF)
public:
    /// Takes the condition, the section's first item: 1 when its word is a predefined name.
    unsigned ChkIFDEF(const std::string& file, const std::string& key, const std::string& value, unsigned line);

    unsigned m_dwSeen = 0;       ///< 1 once the first item has been handled
    unsigned m_dwCondition = 0;  ///< what ChkIFDEF gave
};
class ZEK_API CGSINCLUDE : public CZEKSection {
    ZEK_OPEN_SECTION_KIND(CGSINCLUDE)
};

/// The list of the first registered kind whose first section has this type id; null when there is no such section.
ZEK_API zek::SectionList* FindSectHead(unsigned type);

/// The first entry of this type id that is no family entry, or the family entry of this type at position `index` (from
/// 0). Null when there is none; an index of 0xFFFFFFFF then becomes the number of the family entries.
ZEK_API CZEKEntry* FindEntry(CZEKSection* section, unsigned type, unsigned& index);

namespace zek {

/// A model of up to this many sections is kept plain: each section has its own entries, each entry its sub-strings, so
/// that a host may look at them and change them. In a larger one absent_entries.h and waiting_values.h save memory.
inline constexpr std::size_t kPlainModel = 1000;
/// How many sections the registry lists.
inline std::size_t SectionsOfModel() {
    std::size_t sections = 0;
    for (const SectionList* list : CZEKSection::m_svpHSection) sections += list->size();
    return sections;
}
/// Whether these are more than kPlainModel.
bool IsModelLarge();

/// The first entry of this type id, or null.
CZEKEntry* FirstEntry(const CZEKSection& section, unsigned type);
/// The text of that entry, or null when there is no such entry or it holds none.
std::string* TextOfEntry(const CZEKSection& section, unsigned type);

/// The sections of a type id, in order; an empty range when there are none.
const SectionList& SectionsOf(unsigned type);

/// Adds an entry for an item whose key is not declared.
CZEKEntry& AddEntry(CZEKSection& section, unsigned type, unsigned notation, const std::string& file,
                    const std::string& key, const std::string& value, unsigned line);

}  // namespace zek
