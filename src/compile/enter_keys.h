/// Entering many keys into a table at once. Relies on fetch.h.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "model/fetch.h"

namespace zek {

template <class Key>
struct KeyedIdentifier {
    Key key;
    unsigned id;
};

/// One of many keys while they are sorted: where it stands among them, and what decides its place among most others
/// without a look at them.
struct RankedKey {
    std::uint64_t rank;
    std::size_t position;
};

/// The keys in key order; equal ones in the order in which they stand, and so, not in key order, names that differ only
/// in NULs at their ends.
std::vector<RankedKey> InKeyOrder(std::span<const KeyedIdentifier<std::string_view>> names);
std::vector<RankedKey> InKeyOrder(std::span<const KeyedIdentifier<unsigned>> numbers);

/// Has the processor fetch keys that are entered soon, of those that are left: in key order they lie anywhere in
/// memory.
template <class View>
void FetchSoon(std::span<const KeyedIdentifier<View>> keys, std::span<const RankedKey> left) {
    constexpr std::size_t kAhead = 8;
    if (left.size() <= 2 * kAhead) return;
    Fetch(&keys[left[2 * kAhead].position]);
    if constexpr (std::is_same_v<View, std::string_view>) Fetch(keys[left[kAhead].position].key.data());
}

/// Adds the keys that the table does not have; of several equal ones the first stands. They are added in key order, so
/// that most belong where the one before did: a search from the top would miss the cache at most levels of a large
/// table.
template <class Key, class View>
void EnterKeys(std::map<Key, unsigned>& table, std::span<const KeyedIdentifier<View>> keys) {
    auto next = table.begin();
    const std::vector<RankedKey> order = InKeyOrder(keys);
    for (std::size_t i = 0; i < order.size(); ++i) {
        FetchSoon(keys, std::span(order).subspan(i));
        const auto& row = keys[order[i].position];
        if (next != table.end() && next->first < row.key) next = table.lower_bound(Key(row.key));
        table.emplace_hint(next, row.key, row.id);
    }
}

/// Enters keys as they are read, many at a time: so many that they are sorted in the cache, and that an image of
/// nothing but short names takes little memory beside its table. Texts of keys must outlive it.
template <class Key, class View>
class EnteredKeys {
public:
    explicit EnteredKeys(std::map<Key, unsigned>& table) : table_(table) {}

    void Add(View key, unsigned id) {
        if (keys_.size() == kMost) Enter();
        keys_.push_back({key, id});
    }
    /// Enters those that are left; to be called behind the last one.
    void Enter() {
        EnterKeys(table_, std::span(std::as_const(keys_)));
        keys_.clear();
    }

private:
    static constexpr std::size_t kMost = std::size_t{1} << 14;

    std::map<Key, unsigned>& table_;
    std::vector<KeyedIdentifier<View>> keys_;
};

}  // namespace zek
