#include "compile/numbering.h"

#include <span>

#include "check/vocabulary.h"
#include "compile/state.h"

namespace zek {

namespace {

template <class View>
unsigned NumberIn(KeyTable<View, unsigned>& keys, View key, unsigned& counter) {
    unsigned& id = keys.Add(key, 0);
    if (id == 0) id = counter++;
    return id;
}

/// Whether there is a predefined name from `first` on and before `end`, in key order.
bool IsAnyPredefined(const char* first, const char* end) {
    return g_tblPreDefine.lower_bound(first) != g_tblPreDefine.lower_bound(end);
}

}  // namespace

template <class Key, class View>
void Numbering::Keys<Key, View>::TakeIn(std::map<Key, unsigned>& table) {
    mapped.reserve(table.size());
    for (auto& [key, id] : table) {
        index.Add(key, id);
        mapped.push_back(&id);
    }
}

template <class Key, class View>
std::vector<KeyedIdentifier<View>> Numbering::Keys<Key, View>::Rows() const {
    std::vector<KeyedIdentifier<View>> rows;
    rows.reserve(index.Size());
    for (const auto& [key, id] : index) rows.push_back({key, id});
    return rows;
}

template <class Key, class View>
void Numbering::Keys<Key, View>::Prepare() {
    const std::vector<KeyedIdentifier<View>> rows = Rows();
    EnterKeys(added, std::span(rows).subspan(mapped.size()));
}

template <class Key, class View>
void Numbering::Keys<Key, View>::Enter(std::map<Key, unsigned>& table) noexcept {
    auto known = index.begin();
    for (unsigned* id : mapped) {
        *id = (*known).second;
        ++known;
    }
    if (table.empty()) return table.swap(added);
    auto next = table.begin();
    while (!added.empty()) {
        auto row = added.extract(added.begin());
        if (next != table.end() && next->first < row.key()) next = table.lower_bound(row.key());
        table.insert(next, std::move(row));
    }
}

Numbering::Numbering() : predefinedDigits_(IsAnyPredefined("0", ":")), predefinedGlobals_(IsAnyPredefined("G_", "G`")) {
    for (const IdentifierTable& table : kIdentifierTables) {
        if (table.names) KeysOf(table).TakeIn(*table.names);
    }
    numbers_.TakeIn(g_tblDword);
    for (std::size_t i = 0; i < counters_.size(); ++i) {
        if (kIdentifierTables[i].counter) counters_[i] = *kIdentifierTables[i].counter;
    }
    tableData_.swap(g_tblTableData);
    g_numbering = this;
}

Numbering::~Numbering() {
    g_numbering = nullptr;
    if (entered_) return;
    for (std::size_t i = 0; i < counters_.size(); ++i) {
        if (kIdentifierTables[i].counter) *kIdentifierTables[i].counter = counters_[i];
    }
    tableData_.swap(g_tblTableData);
}

unsigned Numbering::Number(const IdentifierTable& table, std::string_view name) {
    return NumberIn(KeysOf(table).index, name, *table.counter);
}

unsigned Numbering::Number(unsigned number) { return NumberIn(numbers_.index, number, g_idxDword); }

unsigned Numbering::LookUp(const IdentifierTable& table, std::string_view name) {
    return KeysOf(table).index.Add(name, 0);
}

std::vector<KeyedIdentifier<std::string_view>> Numbering::Names(const IdentifierTable& table) const {
    return names_[RowOf(table)].Rows();
}

void Numbering::Prepare() {
    for (const IdentifierTable& table : kIdentifierTables) {
        if (table.names) KeysOf(table).Prepare();
    }
    numbers_.Prepare();
}

void Numbering::Enter() noexcept {
    for (const IdentifierTable& table : kIdentifierTables) {
        if (table.names) KeysOf(table).Enter(*table.names);
    }
    numbers_.Enter(g_tblDword);
    ++g_changes;
    entered_ = true;
}

}  // namespace zek
