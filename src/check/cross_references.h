/// The names and numbers by which sections refer to each other, as the second pass asks for them. Stands beside the
/// model because walking it for every reference would compare every section with every other. Relies on the model.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/key_table.h"
#include "model/look_ahead.h"
#include "model/section.h"

namespace zek {

/// Where something stands first among the sections of a kind; `section` is null when nowhere.
struct Place {
    CZEKSection* section = nullptr;
    unsigned position = 0;  ///< of the section in its kind's list
};

/// Where a key stands first among the sections of a kind.
struct KeyPlace {
    Place place;
    CZEKEntry* entry = nullptr;
};

/// The entries that identify a section: the first of each type, or null.
struct Identity {
    CZEKEntry* name = nullptr;
    CZEKEntry* id = nullptr;
};
Identity IdentityOf(const CZEKSection& section);

/// The text of an entry; null when there is no entry or it holds none.
inline const std::string* TextOrNull(const CZEKEntry* entry) { return entry ? TextOf(*entry) : nullptr; }

/// Read from the model once, either as a whole or section by section; good as long as the model does not change.
class CrossReferences {
public:
    void ReadModel();
    /// Begins a list of the model, whose sections are then read in order.
    void Begin(const SectionList& list);
    void Read(CZEKSection& section);

    /// The first section of the type whose NAME is this text.
    Place FirstNamed(unsigned sectionType, std::string_view name) const;
    /// How many parameters the first action of this name takes; nothing when there is none.
    std::optional<unsigned> ParamCount(std::string_view actionName) const;
    /// The first section of the type whose ID is this number, written as one.
    Place FirstWithID(unsigned sectionType, unsigned id) const;
    /// The first entry with data and this key in the sections of the type ([PROPERTY], [GLOBAL] or [REPEATER]), or
    /// null.
    const KeyPlace* FirstKey(unsigned sectionType, std::string_view key) const;

    /// False only when no section of the type has the NAME, ID or a key of an earlier one, so that none of them needs
    /// to be looked up.
    bool MayRepeat(unsigned sectionType) const { return !onlyListed_ || At(sectionType).repeated; }

    /// Where the operands of values are looked up.
    OperandTables TablesOfOperands() const;

    bool IsGlobal(std::string_view key) const { return globals_.Find(key); }
    /// Whether a group of this name begins on a line number below `line`, whatever its file.
    bool IsGroupAbove(std::string_view name, unsigned line) const;
    bool IsTavrGroupID(unsigned id) const { return At(kTavrGroupSection).HasID(id); }
    bool IsSensorID(unsigned id) const { return At(kSensorSection).HasID(id); }
    /// Whether a SENSORS list holds this number.
    bool IsListedSensor(unsigned id) const { return listedSensors_.Find(id); }
    /// Whether the section has a VALUE_ entry of this key.
    bool HasValue(const CZEKSection& section, std::string_view key);

    /// Room for the keys of one section and their positions, kept from one section to the next: a table of its own for
    /// each would be most of the work.
    KeyTable<std::string_view, unsigned> keysOfSection;

private:
    struct Nothing {};
    using Texts = KeyTable<std::string_view, Nothing>;
    using Numbers = KeyTable<unsigned, Nothing>;

    struct Kind {
        bool HasID(unsigned id) const { return ids.Find(id) || otherIDs.Find(id); }

        const SectionList* sections = nullptr;
        bool repeated = false;                       ///< whether a section has the name, ID or a key of an earlier one
        KeyTable<std::string_view, unsigned> names;  ///< to the position in `sections`
        KeyTable<unsigned, unsigned> ids;            ///< the same
        Numbers otherIDs;                            ///< the values of IDs that are not written as numbers
        KeyTable<std::string_view, KeyPlace> keys;
    };

    static std::size_t RowOf(unsigned sectionType) { return (sectionType & kSectionOrdinalMask) - 1; }
    const Kind& At(unsigned sectionType) const { return kinds_[RowOf(sectionType)]; }

    void ReadIdentity(const CZEKSection& section);
    void ReadKeys(CZEKSection& section);
    void ReadGroup(const CZEKSection& section);
    void ReadParamCount(CZEKSection& section);
    void ReadSensorList(CZEKSection& section);

    std::array<Kind, 14> kinds_;                       ///< by section type
    KeyTable<std::string_view, unsigned> groupLines_;  ///< the smallest line of the groups of a name
    std::vector<unsigned> paramCounts_;                ///< of the actions
    KeyTable<std::string_view, unsigned> globals_;     ///< with no values that matter
    Numbers listedSensors_;

    /// Whether each section that is asked about was read, in the list of its type. A host may ask about others.
    bool onlyListed_ = true;
    Kind* kind_ = nullptr;   ///< of the list that is read; null when nothing refers to its sections
    unsigned type_ = 0;      ///< the same
    unsigned position_ = 0;  ///< of the next section in the list

    const CZEKSection* valuesOf_ = nullptr;  ///< the section that HasValue was asked about last
    Texts values_;                           ///< and its VALUE_ keys
};

/// What a References in use refers to, else null.
extern CrossReferences* g_crossReferences;

/// The cross-references of the model for as long as this lives: those in use already, else the given ones, else some
/// made for this use.
class References {
public:
    References() : References(nullptr) {}
    explicit References(CrossReferences* given) {
        if (!g_crossReferences) Use(given);
    }
    ~References() {
        if (inUse_) g_crossReferences = nullptr;
    }
    References(const References&) = delete;
    References& operator=(const References&) = delete;

    CrossReferences* operator->() const { return g_crossReferences; }

private:
    void Use(CrossReferences* given);

    std::unique_ptr<CrossReferences> own_;
    bool inUse_ = false;
};

}  // namespace zek
