/// Memory for the small objects of the source model: its sections, entries and their typed data. Stands beside the heap
/// because a board has millions of them in a few sizes, which are made together and freed together: they need no header
/// each, and large blocks of them get large pages. Relies on the standard library.
#pragma once

#include <array>
#include <cstddef>
#include <new>

namespace zek {

class Pool {
public:
    /// The size of the largest objects it has memory for.
    static constexpr std::size_t kLargest = 192;

    /// Uncleared memory for an object of 1 to kLargest bytes, aligned as pointers are; until it is given back with the
    /// same size. Throws `std::bad_alloc`.
    void* Take(std::size_t size);
    /// A new object in such memory.
    template <class Object, class... Arguments>
    Object* New(Arguments... arguments) {
        static_assert(sizeof(Object) <= kLargest && alignof(Object) <= alignof(void*));
        void* const memory = Take(sizeof(Object));
        try {
            return new (memory) Object(arguments...);
        } catch (...) {
            Give(memory, sizeof(Object));
            throw;
        }
    }
    /// Memory that was not taken from here, as a host may supply it, goes back to the heap. Once everything is given
    /// back, the pool holds no memory.
    void Give(void* memory, std::size_t size);
    /// Whether the memory was taken from here.
    bool Owns(const void* memory) const;

private:
    static constexpr std::size_t kGrain = 8;

    /// What a free piece of memory holds: the next free one of its size.
    struct Piece {
        Piece* next;
    };
    /// The head of a block that pieces are cut from.
    struct Block {
        Block* older;
        std::size_t size;
    };

    static std::size_t Grains(std::size_t size) { return (size + kGrain - 1) / kGrain; }
    void* Cut(std::size_t size);
    void AddBlock();
    void FreeBlocks();

    std::array<Piece*, kLargest / kGrain + 1> free_{};  ///< by size in grains
    Block* newest_ = nullptr;
    char* uncut_ = nullptr;  ///< the rest of the newest block
    std::size_t left_ = 0;
    char* made_ = nullptr;   ///< where the pages begin that the system makes when they are written
    std::size_t total_ = 0;  ///< bytes in all blocks
    std::size_t taken_ = 0;  ///< pieces that were not given back
};

}  // namespace zek
