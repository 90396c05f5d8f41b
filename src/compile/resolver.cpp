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

}  // namespace

Resolver::Resolver() {
    for (Class& its : classes_) its.names = &noNames_;
    for (const IdentifierTable& table : kIdentifierTables) {
        if (table.names) ClassOf(table.classWord).names = table.names;
    }
    for (const auto& values : kImmediates) ClassOf(values[0].dwID) = {values.data(), kReady, &noNames_, 0};
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
    if (its.keys != its.names->size()) {
        its.keys = kNever;
        index.Read(table, id & kIdClassMask);
        its.values = index.Values().data();
        its.count = static_cast<unsigned>(index.Values().size());
        its.keys = its.names->size();
    }
    const unsigned ordinal = id & kIdOrdinalMask;
    return ordinal < its.count ? its.values[ordinal] : index.StrayOf(id);
}

void Resolver::FollowChanges() {
    if (changes_ != g_changes) {
        for (const IdentifierTable& table : kIdentifierTables) ClassOf(table.classWord).keys = kNever;
    }
    if (numbers_ != g_tblDword.size()) ClassOf(kIdNumber).keys = kNever;
    changes_ = g_changes;
    numbers_ = g_tblDword.size();
}

NameIndex& Resolver::IndexOf(const IdentifierTable& table) {
    return nameIndexes_[static_cast<std::size_t>(&table - kIdentifierTables.data())];
}

void Resolver::Forget(const NameTable& names) {
    for (const IdentifierTable& table : kIdentifierTables) {
        if (table.names != &names) continue;
        IndexOf(table).Forget();
        ClassOf(table.classWord).keys = kNever;
    }
}

}  // namespace zek
