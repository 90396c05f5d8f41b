#include "model/keyword_table.h"

#include <algorithm>

namespace zek {

namespace {

/// The rows in the order of something that they are looked up by; rows that are equal in it stay in their order.
template <class Compare>
constexpr std::array<tagNTMAP, kKeywords.size()> Sorted(Compare&& before) {
    std::array<tagNTMAP, kKeywords.size()> rows = kKeywords;
    for (std::size_t i = 1; i < rows.size(); ++i) {
        for (std::size_t j = i; j > 0 && before(rows[j], rows[j - 1]); --j) std::swap(rows[j], rows[j - 1]);
    }
    return rows;
}

constexpr std::string_view NameOf(const tagNTMAP& row) { return row.pszName; }

constexpr std::array kByKeyword = Sorted([](const tagNTMAP& a, const tagNTMAP& b) { return NameOf(a) < NameOf(b); });
constexpr std::array kByType = Sorted([](const tagNTMAP& a, const tagNTMAP& b) { return a.dwID < b.dwID; });

}  // namespace

const tagNTMAP* RowOfKeyword(std::string_view keyword) {
    const auto* row = std::lower_bound(kByKeyword.begin(), kByKeyword.end(), keyword,
                                       [](const tagNTMAP& a, std::string_view b) { return NameOf(a) < b; });
    return row != kByKeyword.end() && NameOf(*row) == keyword ? row : nullptr;
}

const tagNTMAP* KeywordOf(unsigned type) {
    const auto* row = std::lower_bound(kByType.begin(), kByType.end(), type,
                                       [](const tagNTMAP& a, unsigned b) { return a.dwID < b; });
    return row != kByType.end() && row->dwID == type ? row : nullptr;
}

}  // namespace zek

const std::array<tagNTMAP, 37> g_NTMapEntry = zek::kKeywords;
const unsigned g_dwNTMEntry = zek::kKeywords.size();
