#include "model/pool.h"

#include <algorithm>
#include <functional>
#include <new>

#include "model/large_pages.h"

// GCC and Clang tell in different ways that AddressSanitizer is on.
#if defined(__has_feature)
#define ZEK_POOL_ON_HEAP __has_feature(address_sanitizer)
#elif defined(__SANITIZE_ADDRESS__)
#define ZEK_POOL_ON_HEAP 1
#else
#define ZEK_POOL_ON_HEAP 0
#endif

namespace zek {

namespace {

/// Under AddressSanitizer every object is one of the heap, whose ends and whose life are watched.
constexpr bool kOnHeap = ZEK_POOL_ON_HEAP;

constexpr std::size_t kFirstBlock = std::size_t{1} << 14;

/// The pages of blocks too large for large pages are made so many bytes at a time.
constexpr std::size_t kMadeAtOnce = std::size_t{1} << 20;
static_assert(kLargePage % kMadeAtOnce == 0 && kMadeAtOnce > Pool::kLargest);

/// Whether a block is made of large pages. It then comes from the system, not from the heap, which it would keep busy.
constexpr bool IsLarge(std::size_t block) { return block >= kLargePage; }

}  // namespace

void* Pool::Take(std::size_t size) {
    if (kOnHeap) return ::operator new(size);
    const std::size_t grains = Grains(size);
    Piece*& first = free_[grains];
    void* memory = first;
    if (first) {
        first = first->next;
    } else {
        memory = Cut(grains * kGrain);
    }
    ++taken_;
    return memory;
}

void Pool::Give(void* memory, std::size_t size) {
    if (!Owns(memory)) return ::operator delete(memory);
    Piece*& first = free_[Grains(size)];
    first = new (memory) Piece{first};
    if (--taken_ == 0) FreeBlocks();
}

bool Pool::Owns(const void* memory) const {
    const std::less<const void*> before;
    for (const Block* block = newest_; block; block = block->older) {
        const char* end = reinterpret_cast<const char*>(block) + block->size;
        if (!before(memory, block) && before(memory, end)) return true;
    }
    return false;
}

void* Pool::Cut(std::size_t size) {
    if (left_ < size) AddBlock();
    void* const memory = uncut_;
    uncut_ += size;
    left_ -= size;
    if (uncut_ > made_) {
        MakePages(made_, kMadeAtOnce);
        made_ += kMadeAtOnce;
    }
    return memory;
}

/// Blocks grow with the pool, so that they stay few. What is left of the last one is lost.
void Pool::AddBlock() {
    std::size_t size = std::max(kFirstBlock, total_ / 2);
    if (size >= kLargePage / 4) size = InLargePages(size);
    void* const memory = IsLarge(size) ? MapLargePages(size) : ::operator new(size);
    newest_ = new (memory) Block{newest_, size};
    uncut_ = reinterpret_cast<char*>(newest_ + 1);
    left_ = size - sizeof(Block);
    made_ = static_cast<char*>(memory) + (size > kMostInLargePages ? 0 : size);
    total_ += size;
}

void Pool::FreeBlocks() {
    while (Block* const block = newest_) {
        newest_ = block->older;
        if (IsLarge(block->size)) {
            UnmapLargePages(block, block->size);
        } else {
            ::operator delete(block);
        }
    }
    *this = {};
}

}  // namespace zek
