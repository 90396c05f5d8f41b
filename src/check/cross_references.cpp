#include "check/cross_references.h"

#include <algorithm>

#include "check/vocabulary.h"

namespace zek {

namespace {

template <class Map, class Key>
Place FindPlace(const Map& map, const Key& key) {
    const auto place = map.find(key);
    return place == map.end() ? Place{} : place->second;
}

}  // namespace

CrossReferences::CrossReferences() {
    for (unsigned type :
         {kGroupSection, kSensorSection, kDeviceSection, kActionSection, kTableSection, kTavrGroupSection}) {
        ReadNames(type);
    }
    for (unsigned type : {kPropertySection, kGlobalSection, kRepeaterSection}) ReadKeys(type);
    ReadGroups();
    ReadTavrGroups();
    for (CZEKSection* section : SectionsOf(kSensorSection)) {
        if (const std::string* id = TextOfEntry(*section, kID)) sensorIDs_.insert(NumberOrNameOr0(*id));
    }
    for (const CZEKSection* section : SectionsOf(kGlobalSection)) {
        for (const CZEKEntry* entry : section->m_vpEntry) {
            if (entry->m_dwType == kGlobal) globals_.insert(entry->m_strName);
        }
    }
}

void CrossReferences::ReadNames(unsigned sectionType) {
    Kind& kind = kinds_[sectionType];
    std::size_t position = 0;
    for (CZEKSection* section : SectionsOf(sectionType)) {
        if (const std::string* name = TextOfEntry(*section, kName)) {
            kind.names.try_emplace(*name, Place{section, FirstEntry(*section, kName), position});
        }
        const std::string* id = TextOfEntry(*section, kID);
        if (unsigned number = 0; id && StringToLong(*id, &number)) {
            kind.ids.try_emplace(number, Place{section, FirstEntry(*section, kID), position});
        }
        ++position;
    }
}

void CrossReferences::ReadKeys(unsigned sectionType) {
    Kind& kind = kinds_[sectionType];
    std::size_t position = 0;
    for (CZEKSection* section : SectionsOf(sectionType)) {
        for (CZEKEntry* entry : section->m_vpEntry) {
            if (HoldsData(*entry)) kind.keys.try_emplace(entry->m_strName, Place{section, entry, position});
        }
        ++position;
    }
}

void CrossReferences::ReadGroups() {
    for (const CZEKSection* section : SectionsOf(kGroupSection)) {
        // A group's name is its second entry, whatever that is.
        const std::string* name = section->m_vpEntry.size() > 1 ? TextOf(*section->m_vpEntry[1]) : nullptr;
        if (!name) continue;
        const auto [line, added] = groupLines_.try_emplace(*name, section->m_dwLine);
        if (!added) line->second = std::min(line->second, section->m_dwLine);
    }
}

void CrossReferences::ReadTavrGroups() {
    for (CZEKSection* section : SectionsOf(kTavrGroupSection)) {
        if (const std::string* id = TextOfEntry(*section, kID)) tavrGroupIDs_.insert(NumberOrNameOr0(*id));
        const CZEKEntry* sensors = FirstEntry(*section, kSensors);
        const TextList* list = sensors ? ListOf(sensors->m_ZekEntryData) : nullptr;
        if (!list) continue;
        for (const std::string& id : *list) listedSensors_.insert(NumberOrNameOr0(id));
    }
}

Place CrossReferences::FirstNamed(unsigned sectionType, const std::string& name) const {
    return FindPlace(kinds_.at(sectionType).names, std::string_view(name));
}

Place CrossReferences::FirstWithID(unsigned sectionType, unsigned id) const {
    return FindPlace(kinds_.at(sectionType).ids, id);
}

Place CrossReferences::FirstKey(unsigned sectionType, const std::string& key) const {
    return FindPlace(kinds_.at(sectionType).keys, std::string_view(key));
}

bool CrossReferences::IsGroupAbove(const std::string& name, unsigned line) const {
    const auto place = groupLines_.find(name);
    return place != groupLines_.end() && place->second < line;
}

bool CrossReferences::HasValue(const CZEKSection& section, const std::string& key) {
    if (valuesOf_ != &section) {
        valuesOf_ = &section;
        values_.clear();
        for (const CZEKEntry* entry : section.m_vpEntry) {
            if (entry->m_dwType == kActionValue) values_.insert(entry->m_strName);
        }
    }
    return values_.contains(key);
}

References::References() {
    if (g_crossReferences) return;
    own_ = std::make_unique<CrossReferences>();
    g_crossReferences = own_.get();
}

References::~References() {
    if (own_) g_crossReferences = nullptr;
}

CrossReferences* References::operator->() const { return g_crossReferences; }

}  // namespace zek
