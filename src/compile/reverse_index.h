/// From an identifier back to its key. Stands beside a table's map because walking the map for every identifier would
/// make each query as slow as the image is large. Relies on the published records, texts.h.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/large_pages.h"
#include "model/texts.h"
#include "zekcomp/records.h"

namespace zek {

/// The keys of a table, or of rows of a key and an identifier, in the order of their identifiers, `count` of them from
/// `first` on; null where no key has one. Of several keys with one identifier the first in key order stands.
template <class Key, class Rows>
std::vector<const Key*> KeysByIdentifier(const Rows& rows, unsigned first, std::size_t count) {
    std::vector<const Key*> keys(count);
    for (const auto& [key, id] : rows) {
        if (id - first >= count) continue;
        const Key*& place = keys[id - first];
        if (!place || key < *place) place = &key;
    }
    return keys;
}

/// The first key in key order with this identifier, or null.
template <class Key>
const Key* FirstKeyWith(const std::map<Key, unsigned>& table, unsigned id) {
    const auto place = std::find_if(table.begin(), table.end(), [id](const auto& pair) { return pair.second == id; });
    return place == table.end() ? nullptr : &place->first;
}

/// The data of a value result: a number, or the address of a text.
using DataWord = std::uint64_t;

inline DataWord DataWordOf(unsigned number) { return number; }
inline DataWord DataWordOf(const std::string& text) { return reinterpret_cast<std::uintptr_t>(text.c_str()); }

/// The kinds of a value result.
inline constexpr unsigned kNumberKind = 1;
inline constexpr unsigned kNameKind = 2;

inline tagGCVALUE NoValue(unsigned id) { return {0, id, {0}}; }

/// The identifiers of a table that KeysByIdentifier leaves out, with their keys, in the order of the identifiers. Of
/// several keys with one identifier the first in key order stands.
template <class Key>
std::vector<std::pair<unsigned, const Key*>> StrayKeys(const std::map<Key, unsigned>& table, unsigned first) {
    std::vector<std::pair<unsigned, const Key*>> strays;
    for (const auto& [key, id] : table) {
        if (id - first >= table.size()) strays.emplace_back(id, &key);
    }
    std::stable_sort(strays.begin(), strays.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    const auto same = [](const auto& a, const auto& b) { return a.first == b.first; };
    strays.erase(std::unique(strays.begin(), strays.end(), same), strays.end());
    return strays;
}

/// What an index keeps of a name: a copy, so that a host that takes a key out of the map itself leaves nothing that
/// points to it. Copies stay where they are, since hosts keep what a query gave them, until most of them are of keys
/// that are no longer in the table.
class KeptName {
public:
    static constexpr unsigned kKind = kNameKind;
    static constexpr DataWord kNone = 0;

    /// The copy of a name; `last` is the one of its identifier so far.
    DataWord Keep(const std::string& name, const tagGCVALUE& last) {
        wanted_ += name.size() + 1;
        const bool same = last.dwKind != 0 && std::string_view(last.pszName) == name.c_str();
        return same ? last.qwNumber : reinterpret_cast<std::uintptr_t>(texts_.Keep(name.c_str()).data());
    }
    /// Whether a name comes before the one of a value in key order; not where both are alike up to a NUL.
    static bool Precedes(const std::string& name, const tagGCVALUE& value) {
        return std::strcmp(name.c_str(), value.pszName) < 0;
    }

    /// Begins to count what is kept again.
    void Recount() { wanted_ = 0; }
    /// Whether the copies take so much more than what was kept since then that they should begin anew.
    bool IsOverfull() const { return texts_.Size() > kMostForEach * (wanted_ + kAlwaysKept); }

private:
    static constexpr std::size_t kMostForEach = 4;
    static constexpr std::size_t kAlwaysKept = 1 << 14;

    Texts texts_;
    std::size_t wanted_ = 0;
};

class KeptNumber {
public:
    static constexpr unsigned kKind = kNumberKind;
    /// Also a number, which cannot be told from none: hosts rely on it.
    static constexpr DataWord kNone = 0xFFFFFFFF;

    static DataWord Keep(unsigned number, const tagGCVALUE&) { return DataWordOf(number); }
    static void Recount() {}
    static bool IsOverfull() { return false; }
    static bool Precedes(unsigned number, const tagGCVALUE& value) { return number < value.qwNumber; }
};

/// What the identifiers of one table stood for when it was read.
template <class Key, class Keeper>
class ReverseIndex {
public:
    static tagGCVALUE ValueOf(unsigned id, DataWord word) {
        return word == Keeper::kNone ? NoValue(id) : tagGCVALUE{Keeper::kKind, id, {word}};
    }

    /// `first` is the table's first identifier.
    void Read(const std::map<Key, unsigned>& table, unsigned first) {
        TakeIn(table, first);
        if (!keeper_.IsOverfull()) return;
        // Most are of names that a host took out; what was given is promised while the table is unchanged.
        Forget();
        TakeIn(table, first);
    }
    /// The first key in key order with each identifier from the first one on; as many as the table has keys, since
    /// identifiers are given out without gaps. Good until the table is read again.
    std::span<const tagGCVALUE> Values() const { return values_; }
    /// The same for any identifier of the class, also one behind a gap.
    tagGCVALUE At(unsigned id) const {
        const std::size_t ordinal = id - first_;
        return ordinal < values_.size() ? values_[ordinal] : StrayIn(strays_, id);
    }
    /// Takes in a key that was numbered, or was added to the table with a number.
    void Add(const Key& key, unsigned id) {
        const std::size_t ordinal = id - first_;
        if (ordinal == values_.size()) values_.push_back(At(id));
        tagGCVALUE& value =
            ordinal < values_.size() ? values_[ordinal] : strays_.try_emplace(id, NoValue(id)).first->second;
        if (value.dwKind == 0 || Keeper::Precedes(key, value)) value = ValueOf(id, keeper_.Keep(key, value));
    }
    /// Lets go of everything.
    void Forget() { *this = {}; }

private:
    void TakeIn(const std::map<Key, unsigned>& table, unsigned first) {
        keeper_.Recount();
        first_ = first;
        const std::vector<const Key*> keys = KeysByIdentifier<Key>(table, first, table.size());
        values_.resize(keys.size());
        for (std::size_t i = 0; i < keys.size(); ++i) {
            const unsigned id = first + static_cast<unsigned>(i);
            values_[i] = keys[i] ? ValueOf(id, keeper_.Keep(*keys[i], values_[i])) : NoValue(id);
        }
        ReadStrays(StrayKeys<Key>(table, first));
    }

    /// By identifier; 0 for the unnumbered keys that were there when the table was read.
    using Strays = std::map<unsigned, tagGCVALUE>;

    static tagGCVALUE StrayIn(const Strays& strays, unsigned id) {
        const auto place = strays.find(id);
        return place == strays.end() ? NoValue(id) : place->second;
    }

    void ReadStrays(const std::vector<std::pair<unsigned, const Key*>>& keys) {
        const Strays last = std::exchange(strays_, {});
        for (const auto& [id, key] : keys) {
            strays_.emplace_hint(strays_.end(), id, ValueOf(id, keeper_.Keep(*key, StrayIn(last, id))));
        }
    }

    unsigned first_ = 0;  ///< the table's first identifier
    LargeVector<tagGCVALUE> values_;
    Strays strays_;
    Keeper keeper_;
};

using NameIndex = ReverseIndex<std::string, KeptName>;
using NumberIndex = ReverseIndex<unsigned, KeptNumber>;

}  // namespace zek
