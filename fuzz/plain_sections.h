/// The text of a section file read as its rules are told, character by character. Relies on the standard library.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zek::fuzz {

struct PlainItem {
    std::string key;
    std::string value;
    unsigned line;
};

struct PlainSection {
    std::string name;
    unsigned line;
    std::vector<PlainItem> items;
};

std::vector<PlainSection> PlainSections(std::string_view text);

}  // namespace zek::fuzz
