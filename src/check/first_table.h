/// A table that keeps the first value of each name or number. Relies on hash.h and large_pages.h.
#pragma once

#include <bit>
#include <cstddef>
#include <string_view>
#include <utility>

#include "model/hash.h"
#include "model/large_pages.h"

namespace zek {

/// Keys with the value that each was added with first. All rows lie in one block, in the order in which they were
/// added, since a node for each would cost more time and memory than the row. `Kept` is what a row holds of its key: a
/// view of a text is good as long as the text lives, a string is a copy.
template <class Key, class Value, class Kept = Key>
class FirstTable {
public:
    /// Makes room for so many keys in a table without any; more may be added.
    void Reserve(std::size_t count) {
        if (!rows_.empty()) return;
        rows_.reserve(count);
        MakeSlots(count);
    }

    /// Empties the table and makes room for so many keys.
    void Restart(std::size_t count) {
        rows_.clear();
        Reserve(count);
    }

    std::size_t Size() const { return rows_.size(); }

    /// The value of the key, which is this one when the key is new.
    Value& Add(Key key, const Value& value) {
        if (rows_.size() >= RoomOf(slots_.size())) Grow();
        const unsigned hash = HashOf(key);
        Slot& slot = slots_[SlotOf(key, hash)];
        if (slot.row == 0) {
            rows_.push_back({Kept(key), value});
            slot = {hash, static_cast<unsigned>(rows_.size())};
        }
        return rows_[slot.row - 1].value;
    }

    /// The value of the key, or null.
    const Value* Find(Key key) const {
        if (rows_.empty()) return nullptr;
        const Slot& slot = slots_[SlotOf(key, HashOf(key))];
        return slot.row == 0 ? nullptr : &rows_[slot.row - 1].value;
    }

private:
    struct Row {
        Kept key;
        Value value;
    };
    struct Slot {
        unsigned hash;
        unsigned row;  ///< from 1; 0 in a free slot
    };

    /// How many keys so many slots are for: a quarter of the slots stays free.
    static constexpr std::size_t RoomOf(std::size_t slots) { return slots - slots / 4; }

    void MakeSlots(std::size_t count) { slots_.assign(std::bit_ceil(count + count / 3 + 4), {0, 0}); }

    /// The position of the key's slot, else of the free slot where it belongs.
    std::size_t SlotOf(Key key, unsigned hash) const {
        const std::size_t mask = slots_.size() - 1;
        std::size_t position = hash & mask;
        for (; slots_[position].row != 0; position = (position + 1) & mask) {
            if (slots_[position].hash == hash && rows_[slots_[position].row - 1].key == key) break;
        }
        return position;
    }

    void Grow() {
        const LargeVector<Slot> old = std::move(slots_);
        MakeSlots(old.size());
        const std::size_t mask = slots_.size() - 1;
        for (const Slot& slot : old) {
            if (slot.row == 0) continue;
            std::size_t position = slot.hash & mask;
            while (slots_[position].row != 0) position = (position + 1) & mask;
            slots_[position] = slot;
        }
    }

    LargeVector<Row> rows_;
    LargeVector<Slot> slots_;  ///< a power of two of them, none before the first key
};

}  // namespace zek
