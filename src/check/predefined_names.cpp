#include "check/predefined_names.h"

#include <utility>

namespace zek {

const unsigned* PredefinedIndex::Find(const std::string& name) {
    if (size_ != g_tblPreDefine.size()) ReadLater();
    if (!isRead_ && IsWorthReading()) Read();
    if (isRead_) return values_.Find(name);
    const auto place = g_tblPreDefine.find(name);
    return place == g_tblPreDefine.end() ? nullptr : &place->second;
}

void PredefinedIndex::Define(const std::string& name, unsigned value) {
    const std::size_t before = g_tblPreDefine.size();
    // Not read where memory runs out halfway.
    const bool wasRead = std::exchange(isRead_, false);
    g_tblPreDefine[name] = value;
    if (!wasRead || size_ != before || size_ != g_tblPreDefine.size()) return ReadLater();
    values_.Add(name, value) = value;
    isRead_ = true;
}

void PredefinedIndex::ReadLater() {
    size_ = g_tblPreDefine.size();
    isRead_ = false;
    asked_ = 0;
}

bool PredefinedIndex::IsWorthReading() { return size_ > kSmall && ++asked_ > size_ / kNamesForALookUp; }

void PredefinedIndex::Read() {
    values_.Restart(size_);
    for (const auto& [name, value] : g_tblPreDefine) values_.Add(name, value);
    isRead_ = true;
}

const KeyTable<std::string_view, unsigned>* PredefinedNames() { return g_predefinedIndex.Names(); }

void ForgetPredefinedIndex() { g_predefinedIndex.Forget(); }

}  // namespace zek

void AddPredDefineValue(const std::string& name, unsigned int value) { zek::g_predefinedIndex.Define(name, value); }

unsigned GetPreDefinedValue(const std::string& name, unsigned int* value) {
    const unsigned* const found = zek::g_predefinedIndex.Find(name);
    if (!found) return 0;
    *value = *found;
    return 1;
}
