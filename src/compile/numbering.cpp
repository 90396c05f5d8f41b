#include "compile/numbering.h"

#include <span>

#include "check/vocabulary.h"
#include "compile/enter_keys.h"
#include "compile/state.h"

namespace zek {

namespace {

template <class View>
unsigned NumberIn(KeyIndex<View>& keys, const View& key, unsigned& counter) {
    unsigned& id = keys.Of(key).id;
    if (id == 0) id = counter++;
    return id;
}

}  // namespace

template <class Key, class View>
void Numbering::Keys<Key, View>::TakeIn(std::map<Key, unsigned>& table) {
    mapped.reserve(table.size());
    for (auto& [key, id] : table) {
        index.Of(key).id = id;
        mapped.push_back(&id);
    }
}

template <class Key, class View>
void Numbering::Keys<Key, View>::Enter(std::map<Key, unsigned>& table) const {
    for (std::size_t i = 0; i < mapped.size(); ++i) *mapped[i] = index.Rows()[i].id;
    EnterKeys(table, std::span(index.Rows()).subspan(mapped.size()));
}

Numbering::Numbering() : predefinedDigits_(g_tblPreDefine.lower_bound("0") != g_tblPreDefine.lower_bound(":")) {
    for (const IdentifierTable& table : kIdentifierTables) {
        if (table.names) KeysOf(table).TakeIn(*table.names);
    }
    numbers_.TakeIn(g_tblDword);
    g_numbering = this;
}

Numbering::~Numbering() { g_numbering = nullptr; }

std::size_t Numbering::RowOf(const IdentifierTable& table) {
    return static_cast<std::size_t>(&table - kIdentifierTables.data());
}

unsigned Numbering::Number(const IdentifierTable& table, std::string_view name) {
    return NumberIn(KeysOf(table).index, name, *table.counter);
}

unsigned Numbering::Number(unsigned number) { return NumberIn(numbers_.index, number, g_idxDword); }

unsigned Numbering::LookUp(const IdentifierTable& table, std::string_view name) {
    return KeysOf(table).index.Of(name).id;
}

std::span<const KeyedIdentifier<std::string_view>> Numbering::Names(const IdentifierTable& table) const {
    return names_[RowOf(table)].index.Rows();
}

void Numbering::Enter() {
    for (const IdentifierTable& table : kIdentifierTables) {
        if (table.names) KeysOf(table).Enter(*table.names);
    }
    numbers_.Enter(g_tblDword);
    ++g_changes;
}

}  // namespace zek
