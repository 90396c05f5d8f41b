/// The keys of all tables while the model is compiled into an image. Stands beside the maps because the compiler asks
/// for a key with nearly every word that it writes; nobody can look at the maps meanwhile, so new keys are entered
/// there at the end, all at once. Relies on tables.h.
#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "compile/enter_keys.h"
#include "compile/tables.h"
#include "model/key_table.h"
#include "model/look_ahead.h"

namespace zek {

/// While one exists, Number, LookUp and PutTable (tables.h) ask it instead of the maps. The tables become what it says
/// by Enter alone: without it, the end of this leaves counters and table data as they were before.
class Numbering {
public:
    Numbering();
    ~Numbering();
    Numbering(const Numbering&) = delete;
    Numbering& operator=(const Numbering&) = delete;

    unsigned Number(const IdentifierTable& table, std::string_view name);
    unsigned Number(unsigned number);
    unsigned LookUp(const IdentifierTable& table, std::string_view name);

    /// The keys of a class of names while fetching them ahead is worth it, else null.
    const LookAhead::Names* IfLarge(unsigned classWord) const {
        return LookAhead::IfLarge(&names_[RowOf(*TableOf(classWord))].index);
    }

    /// Whether the text may be a predefined name. Most texts that are asked about are numbers or globals, and looking
    /// each up among the names of a large description is a cache miss; few descriptions predefine anything so.
    bool MayBePredefined(std::string_view text) const {
        if (text.starts_with("G_")) return predefinedGlobals_;
        return predefinedDigits_ || text.empty() || text[0] < '0' || text[0] > '9';
    }

    /// The keys of a table, those of its map and the new ones, in no order that matters.
    std::vector<KeyedIdentifier<std::string_view>> Names(const IdentifierTable& table) const;
    std::vector<KeyedIdentifier<unsigned>> Numbers() const { return numbers_.Rows(); }

    /// Makes what Enter will need: the last thing that may run out of memory. Nothing is numbered afterwards.
    void Prepare();
    /// Enters what was numbered or looked up into the maps. To be called once, at the end, behind Prepare.
    void Enter() noexcept;

private:
    template <class Key, class View>
    struct Keys {
        KeyTable<View, unsigned> index;
        std::vector<unsigned*> mapped;  ///< the values in the map of the first rows, which it had from the start
        std::map<Key, unsigned> added;  ///< the other rows, once they are prepared

        void TakeIn(std::map<Key, unsigned>& table);
        std::vector<KeyedIdentifier<View>> Rows() const;
        void Prepare();
        void Enter(std::map<Key, unsigned>& table) noexcept;
    };

    using NameKeys = Keys<std::string, std::string_view>;
    NameKeys& KeysOf(const IdentifierTable& table) { return names_[RowOf(table)]; }

    std::array<NameKeys, kIdentifierTables.size()> names_;
    Keys<unsigned, unsigned> numbers_;
    bool predefinedDigits_;                                      ///< whether a predefined name begins with a digit
    bool predefinedGlobals_;                                     ///< whether one begins as globals do
    std::array<unsigned, kIdentifierTables.size()> counters_{};  ///< before
    std::vector<unsigned char> tableData_;                       ///< before
    bool entered_ = false;
};

}  // namespace zek
