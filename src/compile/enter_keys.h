/// Entering many keys into a table at once. Relies on key_index.h.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string_view>
#include <vector>

#include "compile/key_index.h"

namespace zek {

/// One of many keys while they are sorted: where it stands among them, and what decides its place among most others
/// without a look at them.
struct RankedKey {
    std::uint64_t rank;
    std::size_t position;
};

/// The keys in key order; equal ones in the order in which they stand.
std::vector<RankedKey> InKeyOrder(std::span<const KeyedIdentifier<std::string_view>> names);
std::vector<RankedKey> InKeyOrder(std::span<const KeyedIdentifier<unsigned>> numbers);

/// Adds the keys that the table does not have; of several equal ones the first stands. They are added in key order, so
/// that each is placed by the one before: a search from the top would miss the cache at most levels of a large table.
template <class Key, class View>
void EnterKeys(std::map<Key, unsigned>& table, std::span<const KeyedIdentifier<View>> keys) {
    auto last = table.end();
    for (const RankedKey& ranked : InKeyOrder(keys)) {
        const auto& row = keys[ranked.position];
        last = table.try_emplace(last, Key(row.key), row.id);
    }
}

}  // namespace zek
