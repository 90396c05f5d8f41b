/// An entry of the source model, one KEY = value item of a section, and its five kinds. Relies on object.h,
/// entry_data.h.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "model/entry_data.h"
#include "model/object.h"

class ZEK_API CZEKEntry : public CZEKObj {
public:
    CZEKEntry() noexcept;
    CZEKEntry(unsigned type, tagNOTATION notation) noexcept;
    ~CZEKEntry() override;

    /// First pass: the entry stands where it must, its key and value are well-formed; converts the sub-strings into the
    /// typed data. `parent` is its section; `flag` 0 lets go of the sub-strings once converted, any other flag keeps
    /// them. 1 or 0, every problem sent to `Output`; so for all checks below.
    virtual unsigned IsValid(CZEKObj* parent, unsigned flag) = 0;
    /// Second pass: what the value refers to exists. This one always passes.
    virtual unsigned IsValidEx(CZEKObj* parent, unsigned flag);

    /// Stores an item: file, key, line, and its value cut into sub-strings at commas outside double quotes.
    void Init(const std::string& file, const std::string& key, const std::string& value, unsigned line);

    unsigned ChkEntryExist(CZEKObj* parent, unsigned flag);
    unsigned ChkEntryName(CZEKObj* parent, unsigned flag);
    unsigned ChkDigital(const std::string& text, CZEKObj* parent, unsigned flag);
    unsigned ChkArgName(const std::string& name, CZEKObj* parent, unsigned flag, unsigned maxArg);
    unsigned ChkGlobalName(const std::string& name, CZEKObj* parent, unsigned flag);
    unsigned ChkTableName(const std::string& name, CZEKObj* parent, unsigned flag);
    unsigned ChkActionName(const std::string& name, CZEKObj* parent, unsigned flag);
    unsigned ChkActionParamNum(const std::string& actionName, unsigned count, CZEKObj* parent, unsigned flag);

    void GetBuffer(std::vector<unsigned char>& out);
    /// Throws `std::out_of_range` when the buffer ends early; what was read before stays.
    void SetBuffer(const std::vector<unsigned char>& in);

    /// Where the value waits to be cut (waiting_values.h); 0 when it does not. It fills the room that the base leaves,
    /// so that the members below stand where they always stood.
    unsigned m_dwWaiting = 0;
    CZekEntryData m_ZekEntryData;  ///< the converted value; empty until an item is stored
    /// The pieces of the value as written. In a model of more than zek::kPlainModel sections, those of an item that was
    /// read from a source are cut when the entry is checked, and none are there before.
    std::vector<std::string> m_vstrSubStr;

    /// Entries that the library makes come from its pool, those of a host from the heap; each goes back to where it
    /// came from.
    static void operator delete(void* memory, std::size_t size);
};

/// What every kind has: the two constructors (with and without type id and notation) and a first pass of its own.
#define ZEK_ENTRY_KIND(Kind)                            \
public:                                                 \
    Kind() noexcept;                                    \
    Kind(unsigned type, tagNOTATION notation) noexcept; \
    ~Kind() override;                                   \
    unsigned IsValid(CZEKObj* parent, unsigned flag) override;

/// What every kind has that refers to other sections.
#define ZEK_REFERRING_ENTRY_KIND(Kind) \
    ZEK_ENTRY_KIND(Kind)               \
    unsigned IsValidEx(CZEKObj* parent, unsigned flag) override;

class ZEK_API CGEDWORD : public CZEKEntry {
    ZEK_ENTRY_KIND(CGEDWORD)
};
class ZEK_API CGESTRING : public CZEKEntry {
    ZEK_REFERRING_ENTRY_KIND(CGESTRING)
};
class ZEK_API CGESTRINGLIST : public CZEKEntry {
    ZEK_REFERRING_ENTRY_KIND(CGESTRINGLIST)
};
class ZEK_API CGEREPEATER : public CZEKEntry {
    ZEK_REFERRING_ENTRY_KIND(CGEREPEATER)
};
class ZEK_API CGEVALUE : public CZEKEntry {
    ZEK_REFERRING_ENTRY_KIND(CGEVALUE)
public:
    /// One operand: a VALUE_ name, an argument up to `maxArg`, a global, else a number or predefined name.
    unsigned IsValidSubValue(const std::string& text, CZEKObj* parent, unsigned flag, unsigned maxArg);
    /// A VALUE_ entry of the same section.
    unsigned ChkValueName(const std::string& name, CZEKObj* parent, unsigned flag);
};

namespace zek {

/// An entry of the kind that the type id names, made in memory that is large enough, or null for an unknown class.
CZEKEntry* ConstructEntry(void* memory, unsigned type, unsigned notation);
/// The same in memory of its own.
std::unique_ptr<CZEKEntry> NewEntry(unsigned type, unsigned notation);

/// The typed data as what it is; null when the entry holds nothing.
inline std::string* TextOf(const CZEKEntry& entry) { return TextOf(entry.m_ZekEntryData); }

/// Cuts the value into the sub-strings if it waits for that.
void CutSubStrings(CZEKEntry& entry);
/// Takes a value that waits and is one sub-string, without cutting it; false for any other.
bool TakeWhole(CZEKEntry& entry, std::string& text);

inline bool HoldsData(const CZEKEntry& entry) { return entry.m_ZekEntryData.m_pData != nullptr; }
inline bool IsFamily(const CZEKEntry& entry) { return (entry.m_eNotation & kFamily) != 0; }

}  // namespace zek
