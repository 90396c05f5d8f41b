/// Random numbers that are the same on every machine for the same seed. Relies on nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace zek::bench {

/// What random numbers are drawn for.
enum Stream : unsigned {
    kContents = 0,    ///< a section; plus its kind
    kNames = 64,      ///< a name; plus the kind that it is one of
    kPatterns = 128,  ///< what an action is like
    kStyle,           ///< how the text of a source is laid out
    kLopsided,        ///< sources that are no boards
};

/// A sequence (splitmix64) that is fixed by the seed and by what it is drawn for.
class Random {
public:
    /// `stream` is a Stream; `index` tells its sequences apart.
    Random(std::uint64_t seed, unsigned stream, unsigned index)
        : state_(Mix(seed + kStep) ^ Mix((std::uint64_t{stream} << 32 | index) + 2 * kStep)) {}

    std::uint64_t Next() { return Mix(state_ += kStep); }
    /// A number from 0 up to, but not including, `end`, which is at least 1.
    unsigned Below(std::size_t end) { return static_cast<unsigned>(((Next() >> 32) * std::uint64_t{end}) >> 32); }
    bool OneIn(unsigned times) { return Below(times) == 0; }
    bool Percent(unsigned chance) { return Below(100) < chance; }
    template <class Item>
    const Item& Pick(std::span<const Item> items) {
        return items[Below(items.size())];
    }
    template <class Item>
    void Shuffle(std::vector<Item>& items) {
        for (std::size_t i = items.size(); i > 1; --i) std::swap(items[i - 1], items[Below(i)]);
    }

private:
    static constexpr std::uint64_t kStep = 0x9E3779B97F4A7C15U;

    static constexpr std::uint64_t Mix(std::uint64_t z) {
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31);
    }

    std::uint64_t state_;
};

}  // namespace zek::bench
