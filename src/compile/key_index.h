/// Keys by their hash, each with an identifier. Relies on hash.h and large_pages.h.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "model/hash.h"
#include "model/large_pages.h"

namespace zek {

/// Copies of texts, each with a NUL behind it, one behind the other, so that going through many does not fetch a line
/// of memory for each.
class Texts {
public:
    std::string_view Keep(std::string_view text) {
        const std::size_t size = text.size() + 1;
        if (size > left_.size()) {
            const std::size_t room = std::max(kBlock, size);
            left_ = {blocks_.emplace_back(std::make_unique_for_overwrite<char[]>(room)).get(), room};
        }
        *std::copy(text.begin(), text.end(), left_.begin()) = 0;
        const std::string_view kept(left_.data(), text.size());
        left_ = left_.subspan(size);
        return kept;
    }
    static unsigned Keep(unsigned number) { return number; }

private:
    static constexpr std::size_t kBlock = 1 << 16;

    std::vector<std::unique_ptr<char[]>> blocks_;
    std::span<char> left_;
};

template <class Key>
struct KeyedIdentifier {
    Key key;
    unsigned id;
};

/// The keys in the order in which they were first asked for, with copies of their texts.
template <class Key>
class KeyIndex {
public:
    using Row = KeyedIdentifier<Key>;

    /// The row of a key; a new one has the identifier 0. Valid until the next call.
    Row& Of(const Key& key) {
        if (rows_.size() * 2 >= slots_.size()) Grow();
        const std::uint32_t hash = HashOf(key);
        Slot& slot = SlotOf(hash, key);
        if (slot.row == 0) {
            slot = {hash, static_cast<std::uint32_t>(rows_.size() + 1)};
            rows_.push_back(Row{texts_.Keep(key), 0});
        }
        return rows_[slot.row - 1];
    }
    /// The identifier of a key, or 0.
    unsigned Find(const Key& key) {
        if (rows_.empty()) return 0;
        const Slot& slot = SlotOf(HashOf(key), key);
        return slot.row == 0 ? 0 : rows_[slot.row - 1].id;
    }

    const LargeVector<Row>& Rows() const { return rows_; }

private:
    static constexpr std::size_t kFewest = 64;

    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t row = 0;  ///< counted from 1; 0 for a free slot
    };

    /// The slot of a key, or the free one in which it belongs.
    Slot& SlotOf(std::uint32_t hash, const Key& key) {
        std::size_t at = hash & mask_;
        while (slots_[at].row != 0 && !(slots_[at].hash == hash && rows_[slots_[at].row - 1].key == key)) {
            at = (at + 1) & mask_;
        }
        return slots_[at];
    }

    /// Makes room at twice the size. The hashes are kept, so that no key is read again.
    void Grow() {
        LargeVector<Slot> grown(slots_.empty() ? kFewest : slots_.size() * 2);
        mask_ = grown.size() - 1;
        for (const Slot& slot : slots_) {
            if (slot.row == 0) continue;
            std::size_t at = slot.hash & mask_;
            while (grown[at].row != 0) at = (at + 1) & mask_;
            grown[at] = slot;
        }
        slots_ = std::move(grown);
    }

    Texts texts_;
    LargeVector<Row> rows_;
    LargeVector<Slot> slots_;  ///< a power of two of them, or none
    std::size_t mask_ = 0;
};

}  // namespace zek
