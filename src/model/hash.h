/// The hashes of names and numbers in the tables of this library. Relies on the standard library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zek {

inline constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;

/// Another one in every process, so that nobody can write a description whose names all have one hash.
extern const std::uint64_t kHashSeed;

/// Both halves of a product, one mixed into the other.
inline std::uint64_t MixedProduct(std::uint64_t a, std::uint64_t b) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = Wide{a} * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

/// As many characters of a text as the type of the result has bytes.
template <class Word>
Word CharactersAt(std::string_view text, std::size_t start) {
    Word word;
    std::memcpy(&word, text.data() + start, sizeof(Word));
    return word;
}

/// Of a text, eight characters at a time and without a call: nearly every word of a description is looked up so.
inline std::uint32_t HashOf(std::string_view text) {
    const std::size_t size = text.size();
    std::uint64_t hash = size ^ kGoldenRatio;
    const auto mixIn = [&hash](std::uint64_t characters) { hash = MixedProduct(characters ^ kHashSeed, hash); };
    // The last characters may be mixed in twice.
    if (size >= 8) {
        for (std::size_t start = 0; start < size - 8; start += 8) mixIn(CharactersAt<std::uint64_t>(text, start));
        mixIn(CharactersAt<std::uint64_t>(text, size - 8));
    } else if (size >= 4) {
        mixIn(CharactersAt<std::uint32_t>(text, 0) | std::uint64_t{CharactersAt<std::uint32_t>(text, size - 4)} << 32);
    } else {
        std::uint64_t characters = 0;
        for (const char character : text) characters = characters << 8 | static_cast<unsigned char>(character);
        mixIn(characters);
    }
    return static_cast<std::uint32_t>(MixedProduct(hash ^ kHashSeed, kGoldenRatio));
}

template <class Word>
bool IsSameAt(std::size_t start, std::string_view a, std::string_view b) {
    return CharactersAt<Word>(a, start) == CharactersAt<Word>(b, start);
}

/// Whether two texts are the same: also without a call, since most that are compared behind their hashes are.
inline bool IsSame(std::string_view a, std::string_view b) {
    const std::size_t size = a.size();
    if (size != b.size()) return false;
    // The last characters may be compared twice.
    if (size >= 8) {
        for (std::size_t start = 0; start < size - 8; start += 8) {
            if (!IsSameAt<std::uint64_t>(start, a, b)) return false;
        }
        return IsSameAt<std::uint64_t>(size - 8, a, b);
    }
    if (size >= 4) return IsSameAt<std::uint32_t>(0, a, b) && IsSameAt<std::uint32_t>(size - 4, a, b);
    for (std::size_t i = 0; i < size; ++i) {
        if (a[i] != b[i]) return false;
    }
    return true;
}

/// Eight numbers in a row share a line of slots, since ids and addresses come in rows.
inline std::uint32_t HashOf(unsigned number) {
    return static_cast<std::uint32_t>(MixedProduct((number >> 3) ^ kHashSeed, kGoldenRatio)) << 3 | (number & 7);
}

/// Of two numbers. Mixed twice: once, chosen numbers would meet with some seeds, and by a factor that is made of the
/// seed, those in a row would.
inline std::uint32_t HashOf(unsigned first, unsigned second, std::uint64_t seed = kHashSeed) {
    const std::uint64_t both = std::uint64_t{first} << 32 | second;
    return static_cast<std::uint32_t>(MixedProduct(MixedProduct(both ^ seed, kGoldenRatio) ^ seed, kGoldenRatio));
}

}  // namespace zek
