#include "model/section.h"

#include <algorithm>
#include <span>

#include "check/vocabulary.h"
#include "model/absent_entries.h"
#include "model/section_kinds.h"
#include "model/state.h"

namespace zek {

namespace {

/// The place of the first of these entries that has this type id and is no family entry, or null.
CZEKEntry** PlaceOf(unsigned type, std::span<CZEKEntry*> entries) {
    const auto entry = std::find_if(entries.begin(), entries.end(), [type](const CZEKEntry* candidate) {
        return candidate->m_dwType == type && !IsFamily(*candidate);
    });
    return entry == entries.end() ? nullptr : &*entry;
}

/// The place of the entry that takes an item of this key, or null: of the first row with this keyword of which the
/// section has an entry.
CZEKEntry** DeclaredEntryOf(CZEKSection& section, const std::string& key) {
    const tagNTMAP* row = key.empty() ? nullptr : RowOfKeyword(key);
    if (!row) return nullptr;
    const std::span<CZEKEntry*> entries = section.m_vpEntry;
    // Those of the kind come first, and behind them a source adds none that is found: a walk over a long section for
    // each of its items would take the square of their number.
    const SectionKind* kind = g_readingSection ? KindOf(section.m_dwType) : nullptr;
    if (kind) return PlaceOf(row->dwID, entries.first(std::min(kind->declared.size(), entries.size())));
    for (; row != kKeywords.end(); ++row) {
        if (TextOf(*row) != key) continue;
        if (CZEKEntry** entry = PlaceOf(row->dwID, entries)) return entry;
    }
    return nullptr;
}

}  // namespace

CZEKEntry& AddEntry(CZEKSection& section, unsigned type, unsigned notation, const std::string& file,
                    const std::string& key, const std::string& value, unsigned line) {
    std::unique_ptr<CZEKEntry> entry = NewEntry(type, notation);
    entry->Init(file, key, value, line);
    std::vector<CZEKEntry*>& entries = section.m_vpEntry;
    // By a quarter, not twice: most sections get a few entries more than they declare.
    if (entries.size() == entries.capacity()) entries.reserve(entries.size() + entries.size() / 4 + 4);
    entries.push_back(entry.get());
    return *entry.release();
}

CZEKEntry* FirstEntry(const CZEKSection& section, unsigned type) {
    const auto& entries = section.m_vpEntry;
    const auto entry = std::find_if(entries.begin(), entries.end(),
                                    [type](const CZEKEntry* candidate) { return candidate->m_dwType == type; });
    return entry == entries.end() ? nullptr : *entry;
}

std::string* TextOfEntry(const CZEKSection& section, unsigned type) {
    const CZEKEntry* entry = FirstEntry(section, type);
    return entry ? TextOf(*entry) : nullptr;
}

bool IsModelLarge() { return SectionsOfModel() > kPlainModel; }

const SectionList& SectionsOf(unsigned type) {
    static constexpr SectionList kNone;
    const SectionList* list = FindSectHead(type);
    return list ? *list : kNone;
}

}  // namespace zek

CZEKSection::CZEKSection() = default;

CZEKSection::CZEKSection(unsigned type, tagNOTATION notation) {
    m_dwType = type;
    m_eNotation = notation;
}

CZEKSection::~CZEKSection() {
    for (const CZEKEntry* entry : m_vpEntry) {
        if (!zek::IsShared(entry)) delete entry;
    }
}

void CZEKSection::operator delete(void* memory, std::size_t size) { zek::g_pool.Give(memory, size); }

CZEKSection* CZEKSection::Create(const std::string& file, const std::string& name, unsigned line) {
    for (const zek::SectionKind& kind : zek::kSectionKinds) {
        if (name != kind.keyword) continue;
        CZEKSection* section = kind.make(kind);
        section->Init(file, name, line);
        return section;
    }
    return nullptr;
}

void CZEKSection::Init(const std::string& file, const std::string& name, unsigned line) {
    SetFile(file);
    m_strName = name;
    m_dwLine = line;
}

unsigned CZEKSection::SetEntry(const std::string& file, const std::string& key, const std::string& value,
                               unsigned line) {
    CZEKEntry** declared = zek::DeclaredEntryOf(*this, key);
    if (!declared) return 0;
    if ((*declared)->m_strName.empty()) {
        zek::OwnEntry(*declared).Init(file, key, value, line);
    } else {
        zek::AddEntry(*this, (*declared)->m_dwType, zek::kNotationRepeated, file, key, value, line);
    }
    return 1;
}

void CZEKSection::Declare(zek::SectionList& list, const zek::SectionKind& kind) {
    m_vpEntry.reserve(kind.declared.size());
    for (std::size_t i = 0; i < kind.declared.size(); ++i) {
        const auto [type, notation] = kind.declared[i];
        m_vpEntry.push_back(zek::g_readingLargeModel ? zek::SharedEntry(kind, i)
                                                     : zek::NewEntry(type, notation).release());
    }
    // Listed last: a section whose construction fails for want of memory is gone again.
    if (std::find(m_svpHSection.begin(), m_svpHSection.end(), &list) == m_svpHSection.end())
        m_svpHSection.push_back(&list);
    list.push_back(this);
    ++zek::g_modelChanges;
}

void CZEKSection::Destory() {
    for (zek::SectionList* list : m_svpHSection) {
        for (const CZEKSection* section : *list) delete section;
        list->clear();
    }
    g_tblPreDefine.clear();
    zek::ForgetPredefinedIndex();
    ++zek::g_modelChanges;
}

zek::SectionList* FindSectHead(unsigned type) {
    for (zek::SectionList* list : CZEKSection::m_svpHSection) {
        if (!list->empty() && list->front()->m_dwType == type) return list;
    }
    return nullptr;
}

CZEKEntry* FindEntry(CZEKSection* section, unsigned type, unsigned& index) {
    unsigned families = 0;
    for (CZEKEntry* entry : section->m_vpEntry) {
        if (entry->m_dwType != type) continue;
        if (!zek::IsFamily(*entry) || families++ == index) return entry;
    }
    if (index == 0xFFFFFFFF) index = families;
    return nullptr;
}
