#include "check/predefined_names.h"

namespace zek {

const unsigned* PredefinedIndex::Find(const std::string& name) {
    if (IsNeeded()) {
        if (!IsInStep()) Read();
        return values_.Find(name);
    }
    const auto place = g_tblPreDefine.find(name);
    return place == g_tblPreDefine.end() ? nullptr : &place->second;
}

void PredefinedIndex::Define(const std::string& name, unsigned value) {
    const bool inStep = IsInStep();
    g_tblPreDefine[name] = value;
    if (inStep && IsNeeded()) {
        values_.Add(name, value) = value;
    } else {
        Forget();
    }
}

void PredefinedIndex::Read() {
    values_.Restart(g_tblPreDefine.size());
    for (const auto& [name, value] : g_tblPreDefine) values_.Add(name, value);
}

void ForgetPredefinedIndex() { g_predefinedIndex.Forget(); }

}  // namespace zek

void AddPredDefineValue(const std::string& name, unsigned int value) { zek::g_predefinedIndex.Define(name, value); }

unsigned GetPreDefinedValue(const std::string& name, unsigned int* value) {
    const unsigned* const found = zek::g_predefinedIndex.Find(name);
    if (!found) return 0;
    *value = *found;
    return 1;
}
