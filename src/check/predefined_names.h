/// The look-up of predefined names. Stands beside g_tblPreDefine because a description asks for a name with nearly
/// every value, and a description with many definitions is a high tree. Relies on vocabulary.h.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "check/vocabulary.h"
#include "model/key_table.h"

namespace zek {

/// Follows g_tblPreDefine: every change that the library makes at once, one that a host makes directly when the size of
/// the table has changed, by whomever. So what was read is good for one size of the table; behind each change the table
/// itself is asked, until so many look-ups have come that reading it anew is worth it. Has copies of the names, since a
/// host may have erased any.
class PredefinedIndex {
public:
    /// The value of a name, or null.
    const unsigned* Find(const std::string& name);
    /// What Find looks up in; null while that is the table itself.
    const KeyTable<std::string_view, unsigned>* Names() const { return isRead_ ? &values_ : nullptr; }
    /// Makes the definition in the table and here.
    void Define(const std::string& name, unsigned value);
    /// Lets go of everything, to be read again when it is next needed.
    void Forget() { *this = {}; }

private:
    /// A table of no more names is always asked itself.
    static constexpr std::size_t kSmall = 64;
    /// A look-up in the table takes as long as reading a few names; so many, because most tables are complete before
    /// they are asked.
    static constexpr std::size_t kNamesForALookUp = 32;

    void ReadLater();
    bool IsWorthReading();
    void Read();

    KeyTable<std::string_view, unsigned> values_;
    std::size_t size_ = 0;   ///< of the table when it was last looked at
    bool isRead_ = false;    ///< whether the values are those of the table
    std::size_t asked_ = 0;  ///< look-ups in the table itself at this size
};

extern PredefinedIndex g_predefinedIndex;

}  // namespace zek
