/// The look-up of predefined names. Stands beside g_tblPreDefine because a description asks for a name with nearly
/// every value, and a description with many definitions is a high tree. Relies on vocabulary.h.
#pragma once

#include <string>
#include <string_view>

#include "check/vocabulary.h"
#include "model/key_table.h"

namespace zek {

/// Follows g_tblPreDefine: every change that the library makes at once, one that a host makes directly when the size of
/// the table has changed. Has copies of the names, since such a host may have erased any.
class PredefinedIndex {
public:
    /// The value of a name, or null.
    const unsigned* Find(const std::string& name);
    /// Makes the definition in the table and here.
    void Define(const std::string& name, unsigned value);
    /// Lets go of everything, to be read again when it is next needed.
    void Forget() { values_ = {}; }

private:
    /// Small tables are asked themselves.
    static bool IsNeeded() { return g_tblPreDefine.size() > 64; }
    bool IsInStep() const { return values_.Size() == g_tblPreDefine.size(); }
    void Read();

    KeyTable<std::string_view, unsigned> values_;
};

extern PredefinedIndex g_predefinedIndex;

}  // namespace zek
