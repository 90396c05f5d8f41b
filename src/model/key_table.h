/// Names or numbers, each with a value, looked up by hash: nodes of a map would cost more time and memory than what
/// they hold. Relies on hash.h, arena.h and fetch.h.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

#include "model/arena.h"
#include "model/fetch.h"
#include "model/hash.h"
#include "model/large_pages.h"

namespace zek {

/// Keys, `std::string_view` or `unsigned`, with the value that each was added with first. A row holds all of a key, its
/// text included, so that a look-up in a large table misses the cache twice: at the slot and at the row.
template <class Key, class Value>
class KeyTable {
    static_assert(std::is_trivially_copyable_v<Value> && alignof(Value) <= Arena<8>::kGrain);
    static constexpr bool kIsText = std::is_same_v<Key, std::string_view>;

    struct Row {
        [[no_unique_address]] Value value;
        unsigned word;  ///< the number, or the size of the text, which stands behind the row
    };

public:
    /// Makes room for so many keys in a table without any; more may be added.
    void Reserve(std::size_t count) {
        if (size_ == 0) MakeSlots(count);
    }

    /// Empties the table and makes room for so many keys.
    void Restart(std::size_t count) {
        rows_.Clear();
        size_ = 0;
        Reserve(count);
    }

    std::size_t Size() const { return size_; }

    /// The value of the key, which is this one when the key is new. Stays where it is until the table is emptied.
    Value& Add(Key key, const Value& value) {
        if (size_ >= RoomOf(slots_.size())) Grow();
        const unsigned tag = TagOf(key);
        Slot& slot = slots_[SlotOf(key, tag)];
        if (slot.row == 0) {
            slot = {tag, AddRow(key, value) + 1};
            ++size_;
        }
        return RowAt(slot.row - 1).value;
    }

    /// The value of the key, or null.
    const Value* Find(Key key) const {
        if (size_ == 0) return nullptr;
        const Slot& slot = slots_[SlotOf(key, TagOf(key))];
        return slot.row == 0 ? nullptr : &RowAt(slot.row - 1).value;
    }

    /// What a look-up finds a key by: the number, or the hash of the text, which tells it from most other texts.
    static unsigned TagOf(Key key) {
        if constexpr (kIsText)
            return HashOf(key);
        else
            return key;
    }
    /// Whether look-ups wait for memory in a model that takes more than the caches hold.
    bool IsLarge() const { return slots_.size() >= kSlotsOfLarge; }
    // What a look-up in a large table reads, fetched ahead of it: first the slot, then the row.
    void FetchSlot(unsigned tag) const { Fetch(&slots_[FirstPosition(tag)]); }
    void FetchRow(unsigned tag) const {
        if (size_ == 0) return;
        const std::uint32_t row = slots_[PositionOf(tag, [](const Slot&) { return true; })].row;
        if (row != 0) Fetch(rows_.At(row - 1));
    }

    /// Goes through the keys and their values in the order in which they were added.
    class Iterator {
    public:
        Iterator(const KeyTable& table, std::uint32_t place) : table_(table), place_(place) {}
        std::pair<Key, const Value&> operator*() const { return {KeyOf(Get()), Get().value}; }
        Iterator& operator++() {
            place_ = table_.rows_.Behind(place_, SizeOf(Get()));
            return *this;
        }
        bool operator==(const Iterator& other) const { return place_ == other.place_; }

    private:
        const Row& Get() const { return table_.RowAt(place_); }

        const KeyTable& table_;
        std::uint32_t place_;
    };
    Iterator begin() const { return {*this, rows_.Begin()}; }
    Iterator end() const { return {*this, rows_.End()}; }

private:
    static constexpr std::size_t kSlotsOfLarge = std::size_t{1} << 13;

    struct Slot {
        unsigned tag;  ///< the number, or the hash of the text: of most other texts it tells without a look at them
        std::uint32_t row;  ///< its place, from 1; 0 in a free slot
    };

    static unsigned HashOfTag(unsigned tag) { return kIsText ? tag : HashOf(tag); }
    static std::size_t SizeOf(const Row& row) { return sizeof(Row) + (kIsText ? row.word : 0); }
    static Key KeyOf(const Row& row) {
        if constexpr (kIsText)
            return {reinterpret_cast<const char*>(&row + 1), row.word};
        else
            return row.word;
    }
    Row& RowAt(std::uint32_t place) const { return *std::launder(reinterpret_cast<Row*>(rows_.At(place))); }

    std::uint32_t AddRow(Key key, const Value& value) {
        std::size_t size = 0;
        if constexpr (kIsText) size = key.size();
        const std::uint32_t place = rows_.Take(sizeof(Row) + size);
        std::byte* const memory = rows_.At(place);
        if constexpr (kIsText) {
            new (memory) Row{value, static_cast<unsigned>(size)};
            std::copy(key.begin(), key.end(), reinterpret_cast<char*>(memory + sizeof(Row)));
        } else {
            new (memory) Row{value, key};
        }
        return place;
    }

    /// How many keys so many slots are for: a quarter of the slots stays free.
    static constexpr std::size_t RoomOf(std::size_t slots) { return slots - slots / 4; }

    static std::size_t SlotsFor(std::size_t count) { return std::bit_ceil(count + count / 3 + 4); }

    void MakeSlots(std::size_t count) {
        slots_.clear();
        slots_.assign(SlotsFor(count), {0, 0});
    }

    std::size_t FirstPosition(unsigned tag) const { return HashOfTag(tag) & (slots_.size() - 1); }

    /// The position of the first slot of the tag that is `wanted`, else of the free slot where it belongs.
    template <class Wanted>
    std::size_t PositionOf(unsigned tag, Wanted&& wanted) const {
        const std::size_t mask = slots_.size() - 1;
        std::size_t position = FirstPosition(tag);
        for (; slots_[position].row != 0; position = (position + 1) & mask) {
            if (slots_[position].tag == tag && wanted(slots_[position])) break;
        }
        return position;
    }

    /// The position of the key's slot, else of the free slot where it belongs.
    std::size_t SlotOf(Key key, unsigned tag) const {
        return PositionOf(tag, [&](const Slot& slot) {
            if constexpr (kIsText) return IsSame(KeyOf(RowAt(slot.row - 1)), key);
            return true;
        });
    }

    void Grow() {
        LargeVector<Slot> grown(SlotsFor(slots_.size()), {0, 0});
        const std::size_t mask = grown.size() - 1;
        for (const Slot& slot : slots_) {
            if (slot.row == 0) continue;
            std::size_t position = HashOfTag(slot.tag) & mask;
            while (grown[position].row != 0) position = (position + 1) & mask;
            grown[position] = slot;
        }
        slots_ = std::move(grown);
    }

    Arena<1 << 12> rows_;
    LargeVector<Slot> slots_;  ///< a power of two of them, none before the first key
    std::size_t size_ = 0;
};

}  // namespace zek
