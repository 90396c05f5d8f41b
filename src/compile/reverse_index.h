/// From an identifier back to its key. Stands beside a table's map because walking the map for every identifier would
/// make each query as slow as the image is large. Relies on image_stamp.h.
#pragma once

#include <algorithm>
#include <map>
#include <unordered_map>
#include <vector>

#include "compile/image_stamp.h"

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

/// Follows one table: made anew when the table's size or the count of our own changes differs from what it was made
/// for. A host that changes a larger table itself is followed when it changes the table's size.
template <class Key>
class ReverseIndex {
public:
    /// The first key in key order with this identifier, or null. `first` is the table's first identifier.
    const Key* KeyOf(const std::map<Key, unsigned>& table, unsigned first, unsigned id, unsigned changes) {
        if (table.size() <= kWalkedAtOnce) return Walk(table, id);
        if (keys_.size() != table.size() || changes_ != changes) {
            Make(table, first);
            changes_ = changes;
        }
        if (id - first < keys_.size()) return keys_[id - first];
        const auto stray = strays_.find(id);
        return stray == strays_.end() ? nullptr : stray->second;
    }

private:
    static const Key* Walk(const std::map<Key, unsigned>& table, unsigned id) {
        const auto place =
            std::find_if(table.begin(), table.end(), [id](const auto& pair) { return pair.second == id; });
        return place == table.end() ? nullptr : &place->first;
    }

    void Make(const std::map<Key, unsigned>& table, unsigned first) {
        keys_ = KeysByIdentifier<Key>(table, first, table.size());
        strays_.clear();
        for (const auto& [key, id] : table) {
            if (id - first >= keys_.size()) strays_.try_emplace(id, &key);
        }
    }

    std::vector<const Key*> keys_;  ///< as many as the table has keys, since identifiers are given out without gaps
    std::unordered_map<unsigned, const Key*> strays_;  ///< the identifiers behind a gap, and 0 for unnumbered keys
    unsigned changes_ = 0;
};

}  // namespace zek
