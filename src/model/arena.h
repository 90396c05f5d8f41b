/// Memory that is taken piece by piece and let go of at once. Stands beside the heap because a piece is found by 32
/// bits, half of a pointer, never moves, and lies right behind the one before. Relies on large_pages.h.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include "model/large_pages.h"

namespace zek {

/// Takes its memory in blocks, each as large as all before it together; the first has `kFirst` bytes, a power of two.
template <std::size_t kFirst>
class Arena {
public:
    /// Pieces are aligned to so many bytes, and take a multiple of them.
    static constexpr std::size_t kGrain = 8;

    Arena() = default;
    Arena(Arena&& other) noexcept { *this = std::move(other); }
    Arena& operator=(Arena&& other) noexcept {
        std::swap(blocks_, other.blocks_);
        std::swap(next_, other.next_);
        return *this;
    }
    ~Arena() {
        for (std::size_t row = 0; row < blocks_.size(); ++row) {
            if (blocks_[row].memory) LargePageAllocator<std::byte>().deallocate(blocks_[row].memory, SizeOf(row));
        }
    }

    /// Uncleared memory of so many bytes; gives its place. Throws `std::bad_alloc`.
    std::uint32_t Take(std::size_t size) {
        const std::size_t grains = (size + kGrain - 1) / kGrain;
        while (EndOf(RowOf(next_)) - next_ < grains) next_ = EndOf(RowOf(next_));
        if (next_ + grains > kMostGrains) throw std::bad_alloc();
        Block& block = blocks_[RowOf(next_)];
        if (!block.memory) block.memory = LargePageAllocator<std::byte>().allocate(SizeOf(RowOf(next_)));
        const auto place = static_cast<std::uint32_t>(next_);
        next_ += grains;
        block.end = next_;
        return place;
    }
    std::byte* At(std::uint32_t place) const {
        const std::size_t row = RowOf(place);
        return blocks_[row].memory + (place - StartOf(row)) * kGrain;
    }
    /// Where the piece behind one of this size begins; End behind the last.
    std::uint32_t Behind(std::uint32_t place, std::size_t size) const {
        return Occupied(place + (size + kGrain - 1) / kGrain);
    }
    std::uint32_t Begin() const { return Occupied(0); }
    std::uint32_t End() const { return static_cast<std::uint32_t>(next_); }
    /// Takes all pieces back and keeps the memory for others.
    void Clear() {
        for (Block& block : blocks_) block.end = 0;
        next_ = 0;
    }

private:
    static constexpr std::size_t kFirstGrains = kFirst / kGrain;
    static constexpr std::size_t kMostGrains = 0xFFFFFFFF;

    struct Block {
        std::byte* memory = nullptr;
        std::size_t end = 0;  ///< of what is taken of it, in grains
    };

    static std::size_t RowOf(std::size_t grain) {
        return static_cast<std::size_t>(std::bit_width(grain / kFirstGrains));
    }
    static std::size_t StartOf(std::size_t row) { return row == 0 ? 0 : kFirstGrains << (row - 1); }
    static std::size_t EndOf(std::size_t row) { return kFirstGrains << row; }
    static std::size_t SizeOf(std::size_t row) { return (EndOf(row) - StartOf(row)) * kGrain; }

    /// This place, or where the next block with pieces begins.
    std::uint32_t Occupied(std::size_t place) const {
        while (place < next_ && place >= blocks_[RowOf(place)].end) place = EndOf(RowOf(place));
        return static_cast<std::uint32_t>(place);
    }

    std::array<Block, std::bit_width(kMostGrains / kFirstGrains)> blocks_;
    std::size_t next_ = 0;  ///< in grains
};

}  // namespace zek
