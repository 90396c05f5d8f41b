#include "suggestion.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <numeric>

namespace zek::tool {
namespace {

constexpr unsigned kFarthest = 2;
constexpr unsigned kTooFar = kFarthest + 1;
constexpr std::size_t kWidth = 2 * kFarthest + 1;
constexpr std::size_t kLettersAtOnce = 16;  ///< of a comparison for equality

/// How far the first letters of a name, as many as rows stand above this one, are from the first ones of what was
/// written: from as many, and from up to two fewer or more.
using Row = std::array<unsigned, kWidth>;

Row FirstRow(std::size_t written) {
    Row row;
    row.fill(kTooFar);
    for (std::size_t more = 0; more <= std::min<std::size_t>(kFarthest, written); ++more) {
        row[kFarthest + more] = static_cast<unsigned>(more);
    }
    return row;
}

/// The row below, by the letter of the name at `depth`, from 1.
Row NextRow(const Row& above, std::string_view written, char letter, std::size_t depth) {
    Row row;
    for (std::size_t i = 0; i < kWidth; ++i) {
        row[i] = kTooFar;
        const std::size_t shifted = depth + i;
        if (shifted < kFarthest || shifted - kFarthest > written.size()) continue;
        const std::size_t count = shifted - kFarthest;
        if (count > 0) row[i] = std::min(row[i], above[i] + (written[count - 1] == letter ? 0 : 1));
        if (i + 1 < kWidth) row[i] = std::min(row[i], above[i + 1] + 1);
        if (i > 0 && count > 0) row[i] = std::min(row[i], row[i - 1] + 1);
    }
    return row;
}

std::size_t CommonBeginning(std::string_view a, std::string_view b, std::size_t most) {
    const std::size_t end = std::min({a.size(), b.size(), most});
    return static_cast<std::size_t>(
        std::mismatch(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(end), b.begin()).first - a.begin());
}

/// How two names compare where neither capitals nor blanks around them count, and _ is a blank: below 0, 0 or above.
int CompareAlike(std::string_view a, std::string_view b) {
    const auto trim = [](std::string_view& text) {
        while (text.starts_with(' ') || text.starts_with('\t')) text.remove_prefix(1);
        while (text.ends_with(' ') || text.ends_with('\t')) text.remove_suffix(1);
    };
    trim(a);
    trim(b);
    const auto plain = [](char c) { return c == '_' ? ' ' : std::tolower(static_cast<unsigned char>(c)); };
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        if (const int order = plain(a[i]) - plain(b[i])) return order;
    }
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

/// Takes from what is left; false where that is not enough.
bool Take(ComparisonsLeft& left, std::size_t letters) {
    if (left.letters < letters) return false;
    left.letters -= letters;
    return true;
}

}  // namespace

NearNames::NearNames(std::vector<std::string> names) : names_(std::move(names)) {
    std::sort(names_.begin(), names_.end());
    names_.erase(std::unique(names_.begin(), names_.end()), names_.end());
    alike_.resize(names_.size());
    std::iota(alike_.begin(), alike_.end(), 0U);
    std::stable_sort(alike_.begin(), alike_.end(),
                     [&](std::size_t a, std::size_t b) { return CompareAlike(names_[a], names_[b]) < 0; });
}

/// The first name behind one that does not begin so as that one does.
std::size_t NearNames::Behind(std::size_t at, std::string_view beginning) const {
    std::size_t low = at + 1;
    std::size_t step = 1;
    while (low + step < names_.size() && names_[low + step].starts_with(beginning)) step *= 2;
    const auto end = names_.begin() + static_cast<std::ptrdiff_t>(std::min(low + step, names_.size()));
    const auto first = names_.begin() + static_cast<std::ptrdiff_t>(std::min(low, names_.size()));
    return static_cast<std::size_t>(
        std::partition_point(first, end, [&](const std::string& name) { return name.starts_with(beginning); }) -
        names_.begin());
}

std::optional<std::string> NearNames::Nearest(std::string_view written, ComparisonsLeft& left) const {
    if (std::binary_search(names_.begin(), names_.end(), written)) return std::nullopt;
    std::optional<std::string> alike = Alike(written);
    return alike ? alike : Near(written, left);
}

std::optional<std::string> NearNames::Alike(std::string_view written) const {
    const auto found = std::partition_point(alike_.begin(), alike_.end(),
                                            [&](std::size_t at) { return CompareAlike(names_[at], written) < 0; });
    if (found == alike_.end() || CompareAlike(names_[*found], written) != 0 || names_[*found].empty())
        return std::nullopt;
    return names_[*found];
}

std::optional<std::string> NearNames::Near(std::string_view written, ComparisonsLeft& left) const {
    std::optional<std::string> nearest;
    unsigned allowed = kFarthest;
    std::vector<Row> rows = {FirstRow(written.size())};
    std::string_view before;
    for (std::size_t at = 0; at < names_.size() && allowed > 0;) {
        const std::string_view name = names_[at];
        std::size_t depth = CommonBeginning(name, before, rows.size() - 1);
        if (!Take(left, 1 + depth / kLettersAtOnce)) return std::nullopt;
        rows.resize(depth + 1);
        before = name;
        const auto isNear = [&] { return *std::min_element(rows.back().begin(), rows.back().end()) <= allowed; };
        while (depth < name.size() && isNear()) {
            if (!Take(left, 1)) return std::nullopt;
            ++depth;
            rows.push_back(NextRow(rows.back(), written, name[depth - 1], depth));
        }
        if (!isNear()) {
            at = Behind(at, name.substr(0, depth));
            continue;
        }
        ++at;
        const std::size_t difference = kFarthest + written.size() - name.size();
        const unsigned distance = difference < kWidth ? rows.back()[difference] : kTooFar;
        if (distance > allowed || distance >= std::min(written.size(), name.size())) continue;
        nearest = name;
        allowed = distance - 1;
    }
    return nearest;
}

std::optional<std::string> NearestName(std::string_view written, const std::set<std::string>& names) {
    ComparisonsLeft left;
    return NearNames({names.begin(), names.end()}).Nearest(written, left);
}

}  // namespace zek::tool
