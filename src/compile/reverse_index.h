/// From an identifier back to its key. Stands beside a table's map because walking the map for every identifier would
/// make each query as slow as the image is large. Relies on texts.h.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "model/texts.h"

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

/// What an index keeps of a name: a copy, so that a host that takes a key out of the map itself leaves nothing that
/// points to it. A copy stays where it is until the table is read anew, since hosts keep what a query gave them.
class KeptName {
public:
    using Kept = const char*;
    static constexpr Kept kNone = nullptr;

    /// The copy of a name; `last` is the one of its identifier so far.
    Kept Keep(const std::string& name, Kept last) {
        const bool same = last && std::string_view(last) == name.c_str();
        return same ? last : texts_.Keep(name.c_str()).data();
    }

private:
    Texts texts_;
};

class KeptNumber {
public:
    using Kept = unsigned;
    /// Also a number, which cannot be told from none: hosts rely on it.
    static constexpr Kept kNone = 0xFFFFFFFF;

    static Kept Keep(unsigned number, Kept) { return number; }
};

/// Follows one table: made anew when the table's size or the count of our own changes differs from what it was made
/// for. A host that changes a larger table itself is followed when it changes the table's size.
template <class Key, class Keeper>
class ReverseIndex {
public:
    using Kept = typename Keeper::Kept;

    /// The first key in key order with this identifier, or kNone. `first` is the table's first identifier.
    Kept KeyOf(const std::map<Key, unsigned>& table, unsigned first, unsigned id, unsigned changes) {
        if (size_ != table.size() || changes_ != changes) {
            Make(table, first);
            size_ = table.size();
            changes_ = changes;
        }
        if (id - first < keys_.size()) return keys_[id - first];
        const auto stray = strays_.find(id);
        return stray == strays_.end() ? Keeper::kNone : stray->second;
    }
    /// Lets go of everything: the table is read anew.
    void Forget() { *this = {}; }

private:
    void Make(const std::map<Key, unsigned>& table, unsigned first) {
        const std::vector<const Key*> keys = KeysByIdentifier<Key>(table, first, table.size());
        keys_.resize(keys.size(), Keeper::kNone);
        for (std::size_t i = 0; i < keys.size(); ++i) {
            keys_[i] = keys[i] ? keeper_.Keep(*keys[i], keys_[i]) : Keeper::kNone;
        }
        const std::unordered_map<unsigned, Kept> last = std::exchange(strays_, {});
        for (const auto& [key, id] : table) {
            if (id - first < keys_.size() || strays_.contains(id)) continue;
            const auto place = last.find(id);
            strays_[id] = keeper_.Keep(key, place == last.end() ? Keeper::kNone : place->second);
        }
    }

    std::vector<Kept> keys_;  ///< as many as the table has keys, since identifiers are given out without gaps
    std::unordered_map<unsigned, Kept> strays_;  ///< the identifiers behind a gap, and 0 for unnumbered keys
    Keeper keeper_;
    std::size_t size_ = 0;
    unsigned changes_ = 0;
};

using NameIndex = ReverseIndex<std::string, KeptName>;
using NumberIndex = ReverseIndex<unsigned, KeptNumber>;

}  // namespace zek
