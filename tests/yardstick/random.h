/// Random numbers that are the same everywhere for the same seed. Relies on the standard library.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace zek::test {

class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15U + 0x1234567) {}

    std::uint64_t Next() {
        std::uint64_t z = state_ += 0x9E3779B97F4A7C15U;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31);
    }
    /// A number below `end`, which is at least 1.
    unsigned Below(std::size_t end) { return static_cast<unsigned>(Next() % end); }
    bool Chance(unsigned percent) { return Below(100) < percent; }
    template <class Item>
    const Item& Pick(const std::vector<Item>& items) {
        return items[Below(items.size())];
    }
    std::string OneOf(const std::vector<std::string>& texts) { return Pick(texts); }
    template <class Item>
    void Shuffle(std::vector<Item>& items) {
        for (std::size_t i = items.size(); i > 1; --i) std::swap(items[i - 1], items[Below(i)]);
    }

private:
    std::uint64_t state_;
};

}  // namespace zek::test
