/// The names and numbers by which sections refer to each other, as the second pass asks for them. Stands beside the
/// model because walking it for every reference would compare every section with every other. Relies on the model.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "model/section.h"

namespace zek {

/// Where something stands first among the sections of a kind; `section` is null when nowhere.
struct Place {
    CZEKSection* section = nullptr;
    CZEKEntry* entry = nullptr;
    std::size_t position = 0;  ///< of the section in its kind's list
};

/// Reads the model once; good as long as the model does not change.
class CrossReferences {
public:
    CrossReferences();

    /// The first section of the type whose NAME is this text.
    Place FirstNamed(unsigned sectionType, const std::string& name) const;
    /// The first section of the type whose ID is this number, written as one.
    Place FirstWithID(unsigned sectionType, unsigned id) const;
    /// The first entry with data and this key in the sections of the type ([PROPERTY], [GLOBAL] or [REPEATER]).
    Place FirstKey(unsigned sectionType, const std::string& key) const;

    bool IsGlobal(const std::string& key) const { return globals_.contains(key); }
    /// Whether a group of this name begins on a line number below `line`, whatever its file.
    bool IsGroupAbove(const std::string& name, unsigned line) const;
    bool IsTavrGroupID(unsigned id) const { return tavrGroupIDs_.contains(id); }
    bool IsSensorID(unsigned id) const { return sensorIDs_.contains(id); }
    /// Whether a SENSORS list holds this number.
    bool IsListedSensor(unsigned id) const { return listedSensors_.contains(id); }
    /// Whether the section has a VALUE_ entry of this key.
    bool HasValue(const CZEKSection& section, const std::string& key);

private:
    using Keys = std::unordered_set<std::string_view>;
    struct Kind {
        std::unordered_map<std::string_view, Place> names;
        std::unordered_map<unsigned, Place> ids;
        std::unordered_map<std::string_view, Place> keys;
    };

    void ReadNames(unsigned sectionType);
    void ReadKeys(unsigned sectionType);
    void ReadGroups();
    void ReadTavrGroups();

    std::unordered_map<unsigned, Kind> kinds_;                   ///< by section type
    std::unordered_map<std::string_view, unsigned> groupLines_;  ///< the smallest line of the groups of a name
    Keys globals_;
    std::unordered_set<unsigned> tavrGroupIDs_;
    std::unordered_set<unsigned> sensorIDs_;
    std::unordered_set<unsigned> listedSensors_;
    const CZEKSection* valuesOf_ = nullptr;  ///< the section that HasValue was asked about last
    Keys values_;                            ///< and its VALUE_ keys
};

/// The cross-references of the model for as long as this lives: those of the running second pass, else made for this
/// use.
class References {
public:
    References();
    ~References();
    References(const References&) = delete;
    References& operator=(const References&) = delete;

    CrossReferences* operator->() const;

private:
    std::unique_ptr<CrossReferences> own_;
};

/// What a References in use made, else null.
extern CrossReferences* g_crossReferences;

}  // namespace zek
