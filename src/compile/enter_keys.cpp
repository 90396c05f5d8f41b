#include "compile/enter_keys.h"

#include <algorithm>
#include <array>
#include <bit>
#include <compare>
#include <numeric>

namespace zek {

namespace {

constexpr std::size_t kCharactersOfRank = 8;
/// So few names are compared as a whole.
constexpr std::size_t kFewNames = 16;
/// So are names that go on being alike: a damaged image must not lead to the end of the stack.
constexpr unsigned kDeepest = 256;

using Names = std::span<const KeyedIdentifier<std::string_view>>;

constexpr auto kByRank = [](const RankedKey& a, const RankedKey& b) {
    return a.rank != b.rank ? a.rank < b.rank : a.position < b.position;
};

constexpr unsigned kBytesOfRank = 8;
/// So few are sorted faster by comparing them.
constexpr std::size_t kFewRanks = 512;
/// So many, with as much room again, are sorted in the cache.
constexpr std::size_t kRanksInCache = std::size_t{1} << 15;

unsigned ByteOf(std::uint64_t rank, unsigned byte) { return rank >> 8 * byte & 0xFF; }

/// How many keys have each value of a byte; once they are sorted by it, where those of each end.
using Places = std::array<std::size_t, 256>;

/// Sorts keys by a byte of their ranks; those of one value stay in order. Needs as much room as they take.
void SortByByte(std::span<RankedKey> keys, std::span<RankedKey> room, unsigned byte, Places& places) {
    std::exclusive_scan(places.begin(), places.end(), places.begin(), std::size_t{0});
    for (const RankedKey& key : keys) room[places[ByteOf(key.rank, byte)]++] = key;
    std::copy_n(room.begin(), keys.size(), keys.begin());
}

/// Sorts byte by byte, from the lowest, but for the bytes that all have in common.
void SortFewByRank(std::span<RankedKey> keys, std::span<RankedKey> room) {
    if (keys.size() <= kFewRanks) return std::sort(keys.begin(), keys.end(), kByRank);
    std::array<Places, kBytesOfRank> places{};
    for (const RankedKey& key : keys) {
        for (unsigned byte = 0; byte < kBytesOfRank; ++byte) ++places[byte][ByteOf(key.rank, byte)];
    }
    for (unsigned byte = 0; byte < kBytesOfRank; ++byte) {
        if (places[byte][ByteOf(keys[0].rank, byte)] != keys.size()) SortByByte(keys, room, byte, places[byte]);
    }
}

/// Sorts by the highest byte that they do not have in common, then those of each value: soon these are in the cache,
/// where going through them for each byte takes far less time.
void SortByRank(std::span<RankedKey> keys, std::span<RankedKey> room) {
    if (keys.size() <= kRanksInCache) return SortFewByRank(keys, room);
    std::uint64_t differing = 0;
    for (const RankedKey& key : keys) differing |= key.rank ^ keys[0].rank;
    if (differing == 0) return;
    const auto byte = static_cast<unsigned>(std::bit_width(differing) - 1) / 8;
    Places places{};
    for (const RankedKey& key : keys) ++places[ByteOf(key.rank, byte)];
    SortByByte(keys, room, byte, places);
    std::size_t start = 0;
    for (const std::size_t end : places) {
        SortByRank(keys.subspan(start, end - start), room);
        start = end;
    }
}

/// Sorts keys that stand in the order of their positions by rank. Those of one rank stay in order.
void SortByRank(std::span<RankedKey> keys) {
    if (keys.size() <= kFewRanks) return SortFewByRank(keys, {});
    std::vector<RankedKey> room(keys.size());
    SortByRank(keys, room);
}

/// Eight characters as a number, the first of them the highest.
std::uint64_t EightAt(const char* from) {
    const auto at = [from](unsigned i) { return std::uint64_t{static_cast<unsigned char>(from[i])}; };
    // Written out, so that the compiler makes one load of it.
    return at(0) << 56 | at(1) << 48 | at(2) << 40 | at(3) << 32 | at(4) << 24 | at(5) << 16 | at(6) << 8 | at(7);
}

/// The characters of a name from `start` on; what is missing counts as NULs.
std::uint64_t RankAt(std::size_t start, std::string_view name) {
    const std::size_t left = name.size() - std::min(start, name.size());
    if (left >= kCharactersOfRank) return EightAt(name.data() + start);
    if (left == 0) return 0;
    if (name.size() >= kCharactersOfRank) {
        return EightAt(name.data() + name.size() - kCharactersOfRank) << 8 * (kCharactersOfRank - left);
    }
    std::uint64_t rank = 0;
    for (const char character : name.substr(start)) rank = rank << 8 | static_cast<unsigned char>(character);
    return rank << 8 * (kCharactersOfRank - left);
}

/// Sorts some of the names, which have their first `start` characters in common.
class NameSort {
public:
    explicit NameSort(Names names) : names_(names) {}

    void From(std::size_t start, std::span<RankedKey> some, unsigned depth = 0) const {
        if (some.size() <= kFewNames || depth == kDeepest) return ByWholeName(some);
        const std::size_t differing = start + Common(start, some);
        for (RankedKey& ranked : some) ranked.rank = RankAt(differing, NameOf(ranked));
        SortByRank(some);
        while (!some.empty()) {
            const auto end = std::find_if(some.begin(), some.end(),
                                          [&some](const RankedKey& other) { return other.rank != some[0].rank; });
            const auto equal = some.first(static_cast<std::size_t>(end - some.begin()));
            if (equal.size() > 1 && AnyGoesOn(differing + kCharactersOfRank, equal))
                From(differing + kCharactersOfRank, equal, depth + 1);
            some = some.subspan(equal.size());
        }
    }

private:
    std::string_view NameOf(const RankedKey& ranked) const { return names_[ranked.position].key; }

    /// The number of characters from `start` on that all have in common.
    std::size_t Common(std::size_t start, std::span<const RankedKey> some) const {
        std::string_view common = TailOf(some[0], start);
        for (const RankedKey& ranked : some) {
            const std::string_view tail = TailOf(ranked, start);
            if (tail.starts_with(common)) continue;
            const auto end = std::mismatch(common.begin(), common.end(), tail.begin(), tail.end()).first;
            common = {common.begin(), end};
        }
        return common.size();
    }

    std::string_view TailOf(const RankedKey& ranked, std::size_t start) const {
        const std::string_view name = NameOf(ranked);
        return name.substr(std::min(start, name.size()));
    }

    /// Whether a name does not end with its rank, at `end`.
    bool AnyGoesOn(std::size_t end, std::span<const RankedKey> some) const {
        return std::any_of(some.begin(), some.end(),
                           [this, end](const RankedKey& ranked) { return NameOf(ranked).size() > end; });
    }

    void ByWholeName(std::span<RankedKey> some) const {
        std::sort(some.begin(), some.end(), [this](const RankedKey& a, const RankedKey& b) {
            const auto order = NameOf(a) <=> NameOf(b);
            return order != 0 ? order < 0 : a.position < b.position;
        });
    }

    Names names_;
};

}  // namespace

std::vector<RankedKey> InKeyOrder(Names names) {
    std::vector<RankedKey> order(names.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i].position = i;
    NameSort(names).From(0, order);
    return order;
}

std::vector<RankedKey> InKeyOrder(std::span<const KeyedIdentifier<unsigned>> numbers) {
    std::vector<RankedKey> order(numbers.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = {numbers[i].key, i};
    SortByRank(order);
    return order;
}

}  // namespace zek
