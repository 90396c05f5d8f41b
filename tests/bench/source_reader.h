/// Generated sources taken apart again, without the libraries. Relies on nothing.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace zek::test {

struct SourceItem {
    std::string key;
    std::vector<std::string> values;  ///< the sub-strings, without their quotes

    bool operator==(const SourceItem&) const = default;
};

struct SourceSection {
    std::string keyword;
    std::vector<SourceItem> items;

    bool operator==(const SourceSection&) const = default;
};

/// The sections of a source as the generator writes it.
std::vector<SourceSection> ReadSource(std::string_view text);

struct Counts {
    unsigned sections = 0;
    unsigned items = 0;
};

/// How much there is of each kind of section, by its keyword.
std::map<std::string, Counts> CountKinds(std::string_view text);

}  // namespace zek::test
