/// What stands on which line of the source files, read again through the parser library once the compiler has read
/// them. Relies on the parser library that serves; pipes and devices cannot be read twice and stay unknown.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "parser_library.h"

namespace zek::tool {

struct SourceItem {
    std::string key;
    std::string value;
    unsigned line = 0;
};

struct SourceSection {
    std::string name;
    unsigned line = 0;
    std::vector<SourceItem> items;

    bool HasKey(const std::string& key) const;
};

class SourceIndex {
public:
    explicit SourceIndex(const ParserLibrary& library) : library_(library) {}

    /// The sections of a file in order; none when it cannot be read again.
    const std::vector<SourceSection>& Sections(const std::string& path);

    /// Whether a section of that name, or an item in one, stands on the line. With a key, only an item of that key
    /// counts. An empty section name stands for any.
    bool Stands(const std::string& path, unsigned line, const std::string& section, const std::string& key);

    /// The line of a file's section at a position (from 0), when its name is that one.
    std::optional<unsigned> LineOfSection(const std::string& path, unsigned position, const std::string& name);

private:
    std::vector<SourceSection> Read(const std::string& path) const;

    ParserLibrary library_;
    std::map<std::string, std::vector<SourceSection>> files_;
};

}  // namespace zek::tool
