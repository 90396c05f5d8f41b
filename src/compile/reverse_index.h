/// From an identifier back to its key. Stands beside a table's map because walking the map for every identifier would make
/// each query as slow as the image is large. Relies on the standard library.
#pragma once

#include <map>
#include <unordered_map>
#include <vector>

namespace zek {

/// The keys of a table in the order of their identifiers, from `first` to below `end`; null where no key has one. Of several
/// keys with one identifier the first in key order stands.
template <class Key>
std::vector<const Key*> KeysByIdentifier(const std::map<Key, unsigned>& table, unsigned first, unsigned end) {
    std::vector<const Key*> keys(end - first);
    for (const auto& [key, id] : table) {
        if (id >= first && id < end && !keys[id - first]) keys[id - first] = &key;
    }
    return keys;
}

/// Follows one table: made anew when the table's size or the count of our own changes differs from what it was made for.
template <class Key>
class ReverseIndex {
public:
    /// The first key in key order with this identifier, or null. `first` and `end` bound the identifiers given out.
    const Key* KeyOf(const std::map<Key, unsigned>& table, unsigned first, unsigned end, unsigned id, unsigned changes) {
        if (size_ != table.size() || changes_ != changes || first_ != first || keys_.size() != end - first) {
            Make(table, first, end);
            changes_ = changes;
        }
        if (id - first_ < keys_.size()) return keys_[id - first_];
        const auto stray = strays_.find(id);
        return stray == strays_.end() ? nullptr : stray->second;
    }

private:
    void Make(const std::map<Key, unsigned>& table, unsigned first, unsigned end) {
        keys_ = KeysByIdentifier(table, first, end);
        strays_.clear();
        for (const auto& [key, id] : table) {
            if (id < first || id >= end) strays_.try_emplace(id, &key);
        }
        size_ = table.size();
        first_ = first;
    }

    std::vector<const Key*> keys_;
    std::unordered_map<unsigned, const Key*> strays_;  ///< identifiers that no counter of ours gave out
    std::size_t size_ = 0;
    unsigned first_ = 0;
    unsigned changes_ = 0;
};

}  // namespace zek
