/// What stands on which line of the source files, read again through the parser library once the compiler has read
/// them. Relies on the parser library that serves, and for pipes and devices on the copies of source_copies.h.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "parser_library.h"
#include "source_copies.h"

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

    /// The first item of that key, or null.
    const SourceItem* Find(const std::string& key) const;
};

struct SourceLine {
    std::size_t position = 0;  ///< of the section in its file
    const SourceSection* section = nullptr;
    const SourceItem* item = nullptr;  ///< null for a header
};

class SourceIndex {
public:
    /// The copies must outlive this; without them pipes and devices cannot be read.
    explicit SourceIndex(const ParserLibrary& library, const SourceCopies* copies = nullptr)
        : library_(library), copies_(copies) {}

    /// The sections of a file in order; none when it cannot be read again.
    const std::vector<SourceSection>& Sections(const std::string& path);

    /// What stands on a line of a file; nothing where it is neither a header nor an item.
    std::optional<SourceLine> At(const std::string& path, unsigned line);

    /// The line of a file's section at a position (from 0), when its name is that one.
    std::optional<unsigned> LineOfSection(const std::string& path, unsigned position, const std::string& name);

private:
    std::vector<SourceSection> Read(const std::string& path) const;

    ParserLibrary library_;
    const SourceCopies* copies_;
    std::map<std::string, std::vector<SourceSection>> files_;
};

}  // namespace zek::tool
