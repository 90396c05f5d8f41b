// The names that somebody probably meant.
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <set>
#include <utility>

#include "suggestion.h"

namespace zek::tool {

namespace {

TEST(Suggestion, IsTheNearestNameWithinTwoLetters) {
    const struct {
        std::string written;
        std::set<std::string> names;
        std::string nearest;
    } rows[] = {
        {"SENSR", {"SENSOR", "SYSTEM"}, "SENSOR"},
        {"SENSSORS", {"SENSOR"}, "SENSOR"},
        {"SESNOR", {"SENSOR"}, "SENSOR"},
        {"SENSOR", {"SENSOR", "SENSORS"}, ""},
        {"SNSR", {"SENSORS"}, ""},
        {"ab", {"xy"}, ""},
        {"abc", {"abd", "abcd", "abce"}, "abcd"},
        {"", {"a"}, ""},
        {"w101", {"W001", "W101"}, "W101"},
        {" POW\t", {"poe", "pow"}, "pow"},
        {"  ", {"", "a"}, ""},
        {"abc", {}, ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(NearestName(row.written, row.names).value_or(""), row.nearest) << row.written;
}

/// By the whole table, for any distance.
std::size_t PlainDistance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
        }
    }
    return row.back();
}

std::string PlainNearest(const std::string& written, const std::set<std::string>& names) {
    std::string nearest;
    std::size_t least = 3;
    for (const std::string& name : names) {
        const std::size_t distance = PlainDistance(written, name);
        if (distance == 0) return "";
        if (distance >= least || distance >= std::min(written.size(), name.size())) continue;
        nearest = name;
        least = distance;
    }
    return nearest;
}

TEST(Suggestion, IsThatOfThePlainSearch) {
    std::mt19937 random(7);
    const auto word = [&] {
        std::string text(random() % 8, ' ');
        for (char& letter : text) letter = static_cast<char>('a' + random() % 3);
        return text;
    };
    std::size_t found = 0;
    for (int round = 0; round < 3000; ++round) {
        std::set<std::string> names;
        for (std::size_t count = random() % 40; count > 0; --count) names.insert(word());
        const std::string written = word();
        const std::string nearest = NearestName(written, names).value_or("");
        EXPECT_EQ(nearest, PlainNearest(written, names)) << written;
        found += nearest.empty() ? 0 : 1;
    }
    EXPECT_GT(found, 500U);
}

TEST(Suggestion, EndsWhereTooMuchWouldBeCompared) {
    std::vector<std::string> names;
    for (int i = 0; i < 100'000; ++i) names.push_back("Sensor" + std::to_string(i));
    const NearNames near(names);
    ComparisonsLeft left;
    EXPECT_EQ(near.Nearest("Sensr99999", left), "Sensor99999");
    std::size_t most = 0;
    for (int i = 0; i < 100; ++i) {
        const std::size_t before = left.letters;
        near.Nearest("Sendor" + std::to_string(i * 997) + "xy", left);
        most = std::max(most, before - left.letters);
    }
    // A walk over all would be some 1,000,000.
    EXPECT_LT(most, 100'000U);
    for (int i = 0; i < 100'000; ++i) near.Nearest("Sendor" + std::to_string(i) + "xy", left);
    EXPECT_EQ(near.Nearest("Sensr99999", left), std::nullopt);
}

}  // namespace

}  // namespace zek::tool
