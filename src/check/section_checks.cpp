#include "check/section_checks.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <map>
#include <vector>

#include "check/cross_references.h"
#include "check/messages.h"
#include "check/vocabulary.h"
#include "model/hash.h"
#include "model/look_ahead.h"
#include "model/output.h"
#include "model/section_kinds.h"

namespace zek {

namespace {

bool IsOnlyOne(CZEKSection& section) {
    const SectionList& sections = SectionsOf(section.m_dwType);
    if (sections.size() == 1 && sections.front() == &section) return true;
    const char* name = section.m_strName.c_str();
    LOG(kSectionRedefined, section.GetFile(0).c_str(), section.m_dwLine, name, name);
    return false;
}

/// No key stands in an earlier section of the kind; the first section that clashes is reported.
bool AreKeysNew(CZEKSection& section) {
    const References references;
    if (!references->MayRepeat(section.m_dwType)) return true;
    const CZEKEntry* repeated = nullptr;
    const KeyPlace* earliest = nullptr;
    for (const CZEKEntry* entry : section.m_vpEntry) {
        if (!HoldsData(*entry)) continue;
        const KeyPlace* first = references->FirstKey(section.m_dwType, entry->m_strName);
        if (!first || first->place.section == &section) continue;
        if (earliest && first->place.position >= earliest->place.position) continue;
        repeated = entry;
        earliest = first;
    }
    if (!repeated) return true;
    LOG(kEntryDefinedBefore, section.GetFile(0).c_str(), repeated->m_dwLine, section.m_strName.c_str(),
        repeated->m_strName.c_str(), earliest->entry->GetFile(0).c_str(), earliest->entry->m_dwLine);
    return false;
}

/// A group's parent begins on an earlier line number, whatever file each group stands in.
bool IsParentAbove(CZEKSection& section) {
    // The parent is the first entry; a group without a parent text counts as one with an empty text.
    const std::string* text = section.m_vpEntry.empty() ? nullptr : TextOf(*section.m_vpEntry[0]);
    const std::string_view parent = text ? std::string_view(*text) : "";
    if (parent == "0" || References()->IsGroupAbove(parent, section.m_dwLine)) return true;
    LOG(kParentNotDefined, section.GetFile(0).c_str(), section.m_dwLine);
    return false;
}

/// No earlier section of the kind has the same NAME or the same ID; the first section that clashes is reported, by its
/// name before its id.
bool AreNameAndIDNew(CZEKSection& section) {
    const References references;
    if (!references->MayRepeat(section.m_dwType)) return true;
    const auto unlessOwn = [&section](Place place) { return place.section == &section ? Place{} : place; };
    const Identity own = IdentityOf(section);
    const std::string* name = TextOrNull(own.name);
    const std::string* id = TextOrNull(own.id);
    Place sameName;
    Place sameID;
    if (name) sameName = unlessOwn(references->FirstNamed(section.m_dwType, *name));
    if (unsigned number = 0; id && StringToLong(*id, &number)) {
        sameID = unlessOwn(references->FirstWithID(section.m_dwType, number));
    }
    if (!sameName.section && !sameID.section) return true;
    const bool byName = sameName.section && (!sameID.section || sameName.position <= sameID.position);
    const Identity first = IdentityOf(byName ? *sameName.section : *sameID.section);
    CZEKEntry& before = byName ? *first.name : *first.id;
    LOG(byName ? kNameRedefined : kIDRedefined, section.GetFile(0).c_str(), (byName ? own.name : own.id)->m_dwLine,
        section.m_strName.c_str(), (byName ? name : id)->c_str(), before.GetFile(0).c_str(), before.m_dwLine);
    return false;
}

/// What a section must not share with the other sections of its kind.
bool IsNewInItsKind(CZEKSection& section) {
    switch (section.m_dwType) {
        case kQuorzekSection:
        case kSystemSection: return IsOnlyOne(section);
        case kPropertySection:
        case kGlobalSection:
        case kRepeaterSection: return AreKeysNew(section);
        case kGroupSection: return IsParentAbove(section) && AreNameAndIDNew(section);
        case kSensorSection:
        case kDeviceSection:
        case kActionSection:
        case kTableSection:
        case kTavrGroupSection: return AreNameAndIDNew(section);
        default: return true;
    }
}

/// The most entries of a section whose keys are held against each other without hashing them whole.
constexpr std::size_t kFew = 64;

/// A slot for a key, by its length and its end: the beginnings of keys are alike.
std::uint8_t SlotOf(std::string_view key) {
    std::uint32_t end = 0;
    if (key.size() >= sizeof end) {
        std::memcpy(&end, key.data() + key.size() - sizeof end, sizeof end);
    } else {
        for (const char character : key) end = end << 8 | static_cast<unsigned char>(character);
    }
    return static_cast<std::uint8_t>((end + key.size()) * kGoldenRatio >> 56);
}

/// Whether few entries have no key twice. Most sections are no larger, and this needs no memory.
bool AreFewKeysUnique(const std::vector<CZEKEntry*>& entries) {
    std::array<std::uint8_t, 256> positions{};  // by slot, from 1
    std::uint8_t position = 0;
    for (const CZEKEntry* entry : entries) {
        ++position;
        if (!HoldsData(*entry)) continue;
        std::uint8_t slot = SlotOf(entry->m_strName);
        for (; positions[slot] != 0; ++slot) {
            if (entries[positions[slot] - 1U]->m_strName == entry->m_strName) return false;
        }
        positions[slot] = position;
    }
    return true;
}

/// No key twice in the section. Each repetition is reported once, those of the first repeated key first.
bool AreKeysUnique(CZEKSection& section) {
    if (section.m_vpEntry.size() <= kFew && AreFewKeysUnique(section.m_vpEntry)) return true;
    const References references;
    auto& firsts = references->keysOfSection;
    firsts.Restart(section.m_vpEntry.size());
    std::map<unsigned, std::vector<const CZEKEntry*>> repetitions;  // by the position of the first
    unsigned position = 0;
    for (const CZEKEntry* entry : section.m_vpEntry) {
        if (HoldsData(*entry)) {
            const unsigned first = firsts.Add(entry->m_strName, position);
            if (first != position) repetitions[first].push_back(entry);
        }
        ++position;
    }
    for (const auto& [first, entries] : repetitions) {
        for (const CZEKEntry* entry : entries) {
            LOG(kEntryRedefined, section.GetFile(0).c_str(), entry->m_dwLine, section.m_strName.c_str(),
                entry->m_strName.c_str());
        }
    }
    return repetitions.empty();
}

/// Reads the cross-references of each section along with it, while the section is at hand.
bool MakeFirstPass(CrossReferences& references) {
    unsigned valid = 1;
    for (const SectionList* list : CZEKSection::m_svpHSection) {
        references.Begin(*list);
        for (CZEKSection* section : *list) {
            valid &= section->IsValid(0);
            if (valid) references.Read(*section);
        }
    }
    return valid != 0;
}

bool MakeSecondPass(CrossReferences& read) {
    const References references(&read);
    unsigned valid = 1;
    const bool looksAhead = LookAhead::IsWorthIt();
    const auto note = [&read](const CZEKSection& section, LookAhead& ahead) {
        const OperandTables tables = read.TablesOfOperands();
        if (!tables.Any()) return;
        for (const CZEKEntry* entry : section.m_vpEntry) {
            if (const CGeValue* value = ValueOf(entry->m_ZekEntryData)) NoteOperands(*value, tables, ahead);
        }
    };
    for (const SectionList* list : CZEKSection::m_svpHSection) {
        VisitAhead(*list, looksAhead, note, [&valid](CZEKSection& section) {
            valid &= section.IsValidEx(0);
            return true;
        });
    }
    return valid != 0;
}

}  // namespace

bool CheckModel() {
    CrossReferences references;
    return MakeFirstPass(references) && MakeSecondPass(references);
}

}  // namespace zek

unsigned CZEKSection::IsValid(unsigned) {
    const zek::SectionKind* kind = zek::KindOf(m_dwType);
    if (!kind) {
        LOG(zek::kBadSectionType, GetFile(0).c_str(), m_dwLine, m_strName.c_str());
        return 0;
    }
    if (m_strName != kind->keyword) {
        LOG(zek::kBadSectionName, GetFile(0).c_str(), m_dwLine, m_strName.c_str());
        return 0;
    }
    unsigned valid = 1;
    for (CZEKEntry* entry : m_vpEntry) valid &= entry->IsValid(this, 0);
    return valid;
}

unsigned CZEKSection::IsValidEx(unsigned) {
    if (m_dwType == zek::kIncludeSection) return 1;
    const zek::References references;
    unsigned valid = zek::IsNewInItsKind(*this);
    valid &= unsigned{zek::AreKeysUnique(*this)};
    for (CZEKEntry* entry : m_vpEntry) valid &= entry->IsValidEx(this, 0);
    return valid;
}
