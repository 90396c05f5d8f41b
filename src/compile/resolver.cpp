#include "compile/resolver.h"

#include "compile/image_stamp.h"
#include "compile/state.h"

namespace zek {

namespace {

/// The classes whose identifiers are numbers by themselves.
constexpr unsigned kImmediateClasses[] = {kIdArgument, kIdValueType, kIdOperator};

/// The first of them, so many of each class, ready like those of a table.
constexpr unsigned kReady = 256;
constexpr auto kImmediates = [] {
    std::array<std::array<tagGCVALUE, kReady>, std::size(kImmediateClasses)> values{};
    for (std::size_t row = 0; row < values.size(); ++row) {
        for (unsigned i = 0; i < kReady; ++i) values[row][i] = {kNumberKind, kImmediateClasses[row] + i, {i}};
    }
    return values;
}();

bool IsImmediate(unsigned id) {
    const unsigned classWord = id & kIdClassMask;
    return std::find(std::begin(kImmediateClasses), std::end(kImmediateClasses), classWord) !=
           std::end(kImmediateClasses);
}

/// Reading so many keys takes about as long as testing a value.
constexpr unsigned kKeysForATest = 16;

const char* KeyOf(const NameTable&, const tagGCVALUE& value) { return value.pszName; }
unsigned KeyOf(const NumberTable&, const tagGCVALUE& value) { return static_cast<unsigned>(value.qwNumber); }

/// Whether the table still gives an identifier to the key that the value is of. Where no key is known for the
/// identifier, there is nothing to test.
template <class Table>
bool Stands(const Table& table, const tagGCVALUE& value) {
    if (value.dwKind == 0) return true;
    const auto row = table.find(KeyOf(table, value));
    return row != table.end() && row->second == value.dwID;
}

}  // namespace

Resolver::Resolver() {
    for (Class& its : classes_) its.names = &noNames_;
    for (const IdentifierTable& table : kIdentifierTables) {
        if (table.names) ClassOf(table.classWord).names = table.names;
    }
    for (const auto& values : kImmediates) ClassOf(values[0].dwID) = {values.data(), kReady, 0, &noNames_, 0};
}

tagGCVALUE Resolver::Resolve(unsigned id) {
    FollowChanges();
    if (IsImmediate(id)) return {kNumberKind, id, {id & kIdOrdinalMask}};
    const IdentifierTable* table = TableOf(id & kIdClassMask);
    if (table && table->names) return ValueIn(*table->names, IndexOf(*table), id);
    if (table && table->numbers) return ValueIn(*table->numbers, numberIndex_, id);
    return {0, id, {0}};
}

template <class Table, class Index>
tagGCVALUE Resolver::ValueIn(const Table& table, Index& index, unsigned id) {
    Class& its = ClassOf(id);
    if (table.size() <= kWalkedAtOnce) {
        its.keys = kNever;
        const auto* key = FirstKeyWith(table, id);
        return key ? Index::ValueOf(id, DataWordOf(*key)) : NoValue(id);
    }
    if (its.keys != its.names->size()) Read(its, table, index, id);
    if (its.count != 0) return index.At(id);
    // The host may have changed other keys before the one that was added.
    if (its.testable == 0) {
        Read(its, table, index, id);
        its.testable = its.count / kKeysForATest;
    } else if (!Stands(table, index.At(id)) || --its.testable == 0) {
        Read(its, table, index, id);
    }
    return index.At(id);
}

template <class Table, class Index>
void Resolver::Read(Class& its, const Table& table, Index& index, unsigned id) {
    its.keys = kNever;
    index.Read(table, id & kIdClassMask);
    its.values = index.Values().data();
    its.count = static_cast<unsigned>(index.Values().size());
    its.testable = 0;
    its.keys = its.names->size();
}

void Resolver::Follow(const IdentifierTable& table, const std::string& name, unsigned id, bool isNew) {
    Class& its = ClassOf(table.classWord);
    const bool inStep = its.keys + isNew == table.names->size();
    its.keys = kNever;
    if (inStep && Add(its, IndexOf(table), name, id)) its.keys = table.names->size();
}

void Resolver::Follow(const IdentifierTable& table, unsigned number, unsigned id, bool isNew) {
    Class& its = ClassOf(table.classWord);
    const bool inStep = its.keys != kNever && numbers_ + isNew == table.numbers->size();
    its.keys = kNever;
    if (!inStep || !Add(its, numberIndex_, number, id)) return;
    numbers_ = table.numbers->size();
    its.keys = its.names->size();
}

template <class Index, class Key>
bool Resolver::Add(Class& its, Index& index, const Key& key, unsigned id) {
    try {
        if (id != 0) index.Add(key, id);
    } catch (const std::bad_alloc&) {
        // The key stays in the table all the same.
        return false;
    }
    its.values = index.Values().data();
    its.count = 0;
    return true;
}

void Resolver::FollowChanges() {
    if (changes_ != g_changes) {
        for (const IdentifierTable& table : kIdentifierTables) ClassOf(table.classWord).keys = kNever;
    }
    if (numbers_ != g_tblDword.size()) ClassOf(kIdNumber).keys = kNever;
    changes_ = g_changes;
    numbers_ = g_tblDword.size();
}

NameIndex& Resolver::IndexOf(const IdentifierTable& table) { return nameIndexes_[RowOf(table)]; }

void Resolver::Forget(const IdentifierTable& table) {
    IndexOf(table).Forget();
    ClassOf(table.classWord).keys = kNever;
}

}  // namespace zek
