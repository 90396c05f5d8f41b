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

/// Of a text, eight characters at a time and without a call: nearly every word of a description is looked up so.
inline std::uint32_t HashOf(std::string_view text) {
    const auto charactersAt = [text]<class Word>(std::size_t start, Word word) {
        std::memcpy(&word, text.data() + start, sizeof(Word));
        return std::uint64_t{word};
    };
    const std::size_t size = text.size();
    std::uint64_t hash = size ^ kGoldenRatio;
    const auto mixIn = [&hash](std::uint64_t characters) { hash = MixedProduct(characters ^ kHashSeed, hash); };
    // The last characters may be mixed in twice.
    if (size >= 8) {
        for (std::size_t start = 0; start < size - 8; start += 8) mixIn(charactersAt(start, std::uint64_t{}));
        mixIn(charactersAt(size - 8, std::uint64_t{}));
    } else if (size >= 4) {
        mixIn(charactersAt(0, std::uint32_t{}) | charactersAt(size - 4, std::uint32_t{}) << 32);
    } else {
        std::uint64_t characters = 0;
        for (const char character : text) characters = characters << 8 | static_cast<unsigned char>(character);
        mixIn(characters);
    }
    return static_cast<std::uint32_t>(MixedProduct(hash ^ kHashSeed, kGoldenRatio));
}

/// Eight numbers in a row share a line of slots, since ids and addresses come in rows.
inline std::uint32_t HashOf(unsigned number) {
    return static_cast<std::uint32_t>(MixedProduct((number >> 3) ^ kHashSeed, kGoldenRatio)) << 3 | (number & 7);
}

}  // namespace zek
