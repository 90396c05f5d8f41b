/// What the identifiers of all classes stand for. Stands beside the reverse indexes because hosts ask for any class in
/// any order: a look-up that branches on the class makes the processor wait for the word before it can guess on.
/// Relies on tables.h, reverse_index.h, image_stamp.h.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "compile/image_stamp.h"
#include "compile/reverse_index.h"
#include "compile/tables.h"

namespace zek {

class Resolver {
public:
    Resolver();
    Resolver(const Resolver&) = delete;
    Resolver& operator=(const Resolver&) = delete;

    /// What an identifier stands for, where that is found at once. Inline, since most queries are little more.
    bool AtOnce(unsigned id, tagGCVALUE& value) const {
        const Class& its = classes_[id >> kIdClassShift];
        const unsigned ordinal = id & kIdOrdinalMask;
        if (changes_ != g_changes || numbers_ != g_tblDword.size()) return false;
        if (its.keys != its.names->size() || ordinal >= its.count) return false;
        value = its.values[ordinal];
        return value.dwKind != 0;
    }
    /// What an identifier stands for, or nothing.
    tagGCVALUE Resolve(unsigned id);
    /// Takes in a key that one of our functions has numbered in a table, or added to it with 0. A new one has made the
    /// table larger.
    void Follow(const IdentifierTable& table, const std::string& name, unsigned id, bool isNew);
    void Follow(const IdentifierTable& table, unsigned number, unsigned id, bool isNew);
    /// Lets go of the texts of a table, which is about to be read.
    void Forget(const IdentifierTable& table);

private:
    /// The identifiers of one class.
    struct Class {
        const tagGCVALUE* values = nullptr;  ///< by ordinal
        unsigned count = 0;     ///< 0 while a key has been added since the table was read, so that each value is tested
        unsigned testable = 0;  ///< so many values are tested before the table is worth reading anew; 0 when it was
                                ///< read, but for behind the first key that was added
        const NameTable* names = nullptr;  ///< an empty one for classes of no names
        std::size_t keys = kNever;         ///< of that table when the values were read
    };

    static constexpr std::size_t kNever = static_cast<std::size_t>(-1);

    Class& ClassOf(unsigned id) { return classes_[id >> kIdClassShift]; }
    NameIndex& IndexOf(const IdentifierTable& table);
    /// Lets go of the values of all classes when something of ours has changed, and of numbers when their table has.
    void FollowChanges();
    /// In a table, whose values are read when they are out of date; a small one is walked.
    template <class Table, class Index>
    tagGCVALUE ValueIn(const Table& table, Index& index, unsigned id);
    template <class Table, class Index>
    static void Read(Class& its, const Table& table, Index& index, unsigned id);
    /// Adds a key to the index of a table; false where memory runs out, so that the table must be read.
    template <class Index, class Key>
    static bool Add(Class& its, Index& index, const Key& key, unsigned id);

    std::array<Class, 256> classes_;
    unsigned changes_ = 0;     ///< g_changes when values were read last
    std::size_t numbers_ = 0;  ///< of g_tblDword then
    std::array<NameIndex, kIdentifierTables.size()> nameIndexes_;
    NumberIndex numberIndex_;
    NameTable noNames_;
};

}  // namespace zek
