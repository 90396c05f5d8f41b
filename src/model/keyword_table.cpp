#include "model/keyword_table.h"

#include <algorithm>

namespace zek {

namespace {

/// The rows of the keyword table by the hash of something, beside the table because every item of a source asks for its
/// key: 1 + the row, 0 where none is. A row whose place is taken stands in the next free one, so that the first of
/// equal rows is found first.
using Places = std::array<unsigned char, 128>;

constexpr unsigned PlaceOf(std::string_view keyword) {
    if (keyword.empty()) return 0;
    const auto first = static_cast<unsigned char>(keyword.front());
    const auto last = static_cast<unsigned char>(keyword.back());
    return static_cast<unsigned>(keyword.size()) * 9 + first * 3U + last;
}

constexpr unsigned PlaceOf(unsigned type) { return type + (type >> 12) * 7; }

/// The keywords with their lengths.
constexpr std::array kNames = [] {
    std::array<std::string_view, kKeywords.size()> names;
    std::transform(kKeywords.begin(), kKeywords.end(), names.begin(), [](const tagNTMAP& row) { return row.pszName; });
    return names;
}();

constexpr std::array kTypes = [] {
    std::array<unsigned, kKeywords.size()> types{};
    std::transform(kKeywords.begin(), kKeywords.end(), types.begin(), [](const tagNTMAP& row) { return row.dwID; });
    return types;
}();

template <class Keys>
constexpr Places PlacesOf(const Keys& keys) {
    Places places{};
    for (unsigned row = 0; row < keys.size(); ++row) {
        std::size_t place = PlaceOf(keys[row]) % places.size();
        while (places[place]) place = (place + 1) % places.size();
        places[place] = static_cast<unsigned char>(row + 1);
    }
    return places;
}

constexpr Places kByName = PlacesOf(kNames);
constexpr Places kByType = PlacesOf(kTypes);

template <class Keys, class Key>
const tagNTMAP* Find(const Keys& keys, const Places& places, const Key& key) {
    for (std::size_t place = PlaceOf(key) % places.size(); places[place]; place = (place + 1) % places.size()) {
        const std::size_t row = places[place] - 1U;
        if (keys[row] == key) return &kKeywords[row];
    }
    return nullptr;
}

}  // namespace

const tagNTMAP* RowOfKeyword(std::string_view keyword) { return Find(kNames, kByName, keyword); }

const tagNTMAP* KeywordOf(unsigned type) { return Find(kTypes, kByType, type); }

std::string_view TextOf(const tagNTMAP& row) { return kNames[static_cast<std::size_t>(&row - kKeywords.data())]; }

}  // namespace zek

const std::array<tagNTMAP, 37> g_NTMapEntry = zek::kKeywords;
const unsigned g_dwNTMEntry = zek::kKeywords.size();
