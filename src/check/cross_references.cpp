#include "check/cross_references.h"

#include <algorithm>

#include "check/vocabulary.h"
#include "model/section_kinds.h"

namespace zek {

Identity IdentityOf(const CZEKSection& section) {
    Identity identity;
    for (CZEKEntry* entry : section.m_vpEntry) {
        if (entry->m_dwType == kName && !identity.name) identity.name = entry;
        if (entry->m_dwType == kID && !identity.id) identity.id = entry;
        if (identity.name && identity.id) break;
    }
    return identity;
}

void CrossReferences::ReadModel() {
    onlyListed_ = false;
    for (const SectionList* list : CZEKSection::m_svpHSection) {
        Begin(*list);
        for (CZEKSection* section : *list) Read(*section);
    }
}

void CrossReferences::Begin(const SectionList& list) {
    type_ = list.empty() ? 0 : list.front()->m_dwType;
    position_ = 0;
    // A restored list can begin with a section of another type; of two lists of a type the first counts.
    kind_ = KindOf(type_) && FindSectHead(type_) == &list ? &kinds_[RowOf(type_)] : nullptr;
    if (kind_) kind_->sections = &list;
}

void CrossReferences::Read(CZEKSection& section) {
    onlyListed_ &= kind_ && section.m_dwType == type_;
    if (!kind_) return;
    switch (type_) {
        case kPropertySection:
        case kGlobalSection:
        case kRepeaterSection: ReadKeys(section); break;
        case kGroupSection: ReadGroup(section); [[fallthrough]];
        case kSensorSection:
        case kDeviceSection:
        case kTableSection: ReadIdentity(section); break;
        case kActionSection:
            ReadIdentity(section);
            ReadParamCount(section);
            break;
        case kTavrGroupSection:
            ReadIdentity(section);
            ReadSensorList(section);
            break;
        default: break;
    }
    ++position_;
}

void CrossReferences::ReadIdentity(const CZEKSection& section) {
    const Identity identity = IdentityOf(section);
    const std::size_t count = kind_->sections->size();
    if (const std::string* name = TextOrNull(identity.name)) {
        kind_->names.Reserve(count);
        kind_->repeated |= kind_->names.Add(*name, position_) != position_;
    }
    const std::string* id = TextOrNull(identity.id);
    if (!id) return;
    if (unsigned number = 0; StringToLong(*id, &number)) {
        kind_->ids.Reserve(count);
        kind_->repeated |= kind_->ids.Add(number, position_) != position_;
    } else {
        kind_->otherIDs.Add(NumberOrNameOr0(*id), {});
    }
}

void CrossReferences::ReadKeys(CZEKSection& section) {
    for (CZEKEntry* entry : section.m_vpEntry) {
        if (HoldsData(*entry)) {
            const KeyPlace& first = kind_->keys.Add(entry->m_strName, {{&section, position_}, entry});
            kind_->repeated |= first.place.section != &section;
        }
        if (type_ == kGlobalSection && entry->m_dwType == kGlobal) globals_.Add(entry->m_strName, 0);
    }
}

void CrossReferences::ReadGroup(const CZEKSection& section) {
    // A group's name is its second entry, whatever that is.
    const std::string* name = section.m_vpEntry.size() > 1 ? TextOf(*section.m_vpEntry[1]) : nullptr;
    if (!name) return;
    unsigned& line = groupLines_.Add(*name, section.m_dwLine);
    line = std::min(line, section.m_dwLine);
}

void CrossReferences::ReadParamCount(CZEKSection& section) {
    const std::string* count = TextOfEntry(section, kArgNumber);
    paramCounts_.push_back(count ? NumberOr0(*count) : 0);
}

void CrossReferences::ReadSensorList(CZEKSection& section) {
    const CZEKEntry* sensors = FirstEntry(section, kSensors);
    const TextList* list = sensors ? ListOf(sensors->m_ZekEntryData) : nullptr;
    if (!list || list->empty()) return;
    listedSensors_.Reserve(SectionsOf(kSensorSection).size());
    for (const std::string& id : *list) listedSensors_.Add(NumberOrNameOr0(id), {});
}

Place CrossReferences::FirstNamed(unsigned sectionType, std::string_view name) const {
    const Kind& kind = At(sectionType);
    const unsigned* position = kind.names.Find(name);
    return position ? Place{(*kind.sections)[*position], *position} : Place{};
}

std::optional<unsigned> CrossReferences::ParamCount(std::string_view actionName) const {
    const unsigned* position = At(kActionSection).names.Find(actionName);
    return position ? std::optional(paramCounts_[*position]) : std::nullopt;
}

Place CrossReferences::FirstWithID(unsigned sectionType, unsigned id) const {
    const Kind& kind = At(sectionType);
    const unsigned* position = kind.ids.Find(id);
    return position ? Place{(*kind.sections)[*position], *position} : Place{};
}

const KeyPlace* CrossReferences::FirstKey(unsigned sectionType, std::string_view key) const {
    return At(sectionType).keys.Find(key);
}

OperandTables CrossReferences::TablesOfOperands() const {
    constexpr auto ifLarge = LookAhead::IfLarge;
    return {ifLarge(PredefinedNames()), ifLarge(&globals_), 0, ifLarge(&At(kActionSection).names),
            ifLarge(&At(kTableSection).names)};
}

bool CrossReferences::IsGroupAbove(std::string_view name, unsigned line) const {
    const unsigned* smallest = groupLines_.Find(name);
    return smallest && *smallest < line;
}

bool CrossReferences::HasValue(const CZEKSection& section, std::string_view key) {
    if (valuesOf_ != &section) {
        valuesOf_ = &section;
        values_.Restart(section.m_vpEntry.size());
        for (const CZEKEntry* entry : section.m_vpEntry) {
            if (entry->m_dwType == kActionValue) values_.Add(entry->m_strName, {});
        }
    }
    return values_.Find(key);
}

void References::Use(CrossReferences* given) {
    if (!given) {
        own_ = std::make_unique<CrossReferences>();
        own_->ReadModel();
    }
    g_crossReferences = given ? given : own_.get();
    inUse_ = true;
}

}  // namespace zek
