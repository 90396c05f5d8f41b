#include "suggestion.h"

#include <algorithm>
#include <vector>

namespace zek::tool {
namespace {

constexpr std::size_t kFarthest = 2;

}  // namespace

std::size_t EditDistance(std::string_view a, std::string_view b, std::size_t most) {
    if (std::max(a.size(), b.size()) - std::min(a.size(), b.size()) > most) return most + 1;
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        std::size_t least = row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
            least = std::min(least, row[j]);
        }
        if (least > most) return most + 1;
    }
    return std::min(row.back(), most + 1);
}

std::optional<std::string> NearestName(std::string_view written, const std::set<std::string>& names) {
    if (names.contains(std::string(written))) return std::nullopt;
    std::optional<std::string> nearest;
    std::size_t allowed = kFarthest;
    for (const std::string& name : names) {
        const std::size_t distance = EditDistance(written, name, allowed);
        if (distance > allowed || distance >= std::min(written.size(), name.size())) continue;
        nearest = name;
        allowed = distance - 1;
        if (allowed == 0) break;
    }
    return nearest;
}

}  // namespace zek::tool
