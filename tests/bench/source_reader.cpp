#include "bench/source_reader.h"

namespace zek::test {
namespace {

std::string_view Trim(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(' ');
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

/// Takes a line off the text, joined with those that continue it and without comments.
std::string TakeLine(std::string_view& text) {
    std::string joined;
    while (!text.empty()) {
        const std::size_t length = text.find('\n');
        std::string_view line = text.substr(0, length);
        text.remove_prefix(length + 1);
        if (line.starts_with(';')) return joined;
        // What the generator remarks begins with so many blanks; in texts there are never as many.
        line = Trim(line.substr(0, line.find("    ;")));
        const bool goesOn = line.ends_with('\\');
        joined += goesOn ? line.substr(0, line.size() - 1) : line;
        if (!goesOn) return joined;
    }
    return joined;
}

std::vector<std::string> SubStrings(std::string_view value) {
    std::vector<std::string> values(1);
    bool quoted = false;
    for (const char character : value) {
        if (character == '"') {
            quoted = !quoted;
        } else if (character == ',' && !quoted) {
            values.emplace_back();
        } else {
            values.back() += character;
        }
    }
    return values;
}

}  // namespace

std::vector<SourceSection> ReadSource(std::string_view text) {
    std::vector<SourceSection> sections;
    while (!text.empty()) {
        const std::string line = TakeLine(text);
        if (line.starts_with('[')) {
            sections.push_back({line.substr(1, line.size() - 2), {}});
        } else if (!line.empty()) {
            const std::size_t equals = line.find('=');
            const std::string_view key = Trim(std::string_view(line).substr(0, equals));
            const std::string_view value = Trim(std::string_view(line).substr(equals + 1));
            sections.back().items.push_back({std::string(key), SubStrings(value)});
        }
    }
    return sections;
}

std::map<std::string, Counts> CountKinds(std::string_view text) {
    std::map<std::string, Counts> kinds;
    for (const SourceSection& section : ReadSource(text)) {
        Counts& counts = kinds[section.keyword];
        ++counts.sections;
        counts.items += static_cast<unsigned>(section.items.size());
    }
    return kinds;
}

}  // namespace zek::test
