/// Keys by their hash, each with an identifier. Relies on the standard library.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace zek {

inline std::uint32_t HashOf(std::string_view name) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>{}(name));
}

inline std::uint32_t HashOf(unsigned number) {
    constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;
    return static_cast<std::uint32_t>((number * kGoldenRatio) >> 32);
}

/// Copies of texts, one behind the other, so that going through many does not fetch a line of memory for each.
class Texts {
public:
    std::string_view Keep(std::string_view text) {
        if (text.size() > left_.size()) {
            const std::size_t size = std::max(kBlock, text.size());
            left_ = {blocks_.emplace_back(std::make_unique_for_overwrite<char[]>(size)).get(), size};
        }
        const std::string_view kept(left_.data(), text.size());
        std::copy(text.begin(), text.end(), left_.begin());
        left_ = left_.subspan(text.size());
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
        if (rows_.size() * 4 >= slots_.size() * 3) Grow();
        const std::uint32_t hash = HashOf(key);
        for (std::size_t at = hash & mask_;; at = (at + 1) & mask_) {
            Slot& slot = slots_[at];
            if (slot.row == 0) {
                slot = {hash, static_cast<std::uint32_t>(rows_.size() + 1)};
                return rows_.emplace_back(Row{texts_.Keep(key), 0});
            }
            if (slot.hash == hash && rows_[slot.row - 1].key == key) return rows_[slot.row - 1];
        }
    }

    const std::vector<Row>& Rows() const { return rows_; }

private:
    static constexpr std::size_t kFewest = 64;

    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t row = 0;  ///< counted from 1; 0 for a free slot
    };

    /// Makes room at twice the size. The hashes are kept, so that no key is read again.
    void Grow() {
        std::vector<Slot> grown(slots_.empty() ? kFewest : slots_.size() * 2);
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
    std::vector<Row> rows_;
    std::vector<Slot> slots_;  ///< a power of two of them, or none
    std::size_t mask_ = 0;
};

}  // namespace zek
