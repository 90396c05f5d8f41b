#include "source_index.h"

#include <sys/stat.h>
#include <algorithm>
#include <iterator>

namespace zek::tool {
namespace {

bool IsRegular(const std::string& path) {
    struct stat info {};
    return stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

std::string SectionName(const ParserLibrary& library, void* handle, unsigned& line) {
    unsigned size = 0;
    if (!library.getSectInfo(handle, nullptr, &size, &line)) return {};
    std::string name(size, '\0');
    if (!library.getSectInfo(handle, name.data(), &size, &line)) return {};
    return name.c_str();
}

/// The item at a position; nothing past the last.
std::optional<SourceItem> ItemAt(const ParserLibrary& library, void* section, unsigned position) {
    SourceItem item;
    unsigned keySize = 0;
    unsigned valueSize = 0;
    if (!library.enumItem(section, position, nullptr, &keySize, nullptr, &valueSize, &item.line)) return std::nullopt;
    std::string key(keySize, '\0');
    std::string value(valueSize, '\0');
    if (!library.enumItem(section, position, key.data(), &keySize, value.data(), &valueSize, &item.line)) {
        return std::nullopt;
    }
    item.key = key.c_str();
    item.value = value.c_str();
    return item;
}

}  // namespace

const SourceItem* SourceSection::Find(const std::string& key) const {
    const auto found =
        std::find_if(items.begin(), items.end(), [&](const SourceItem& item) { return item.key == key; });
    return found == items.end() ? nullptr : &*found;
}

const std::vector<SourceSection>& SourceIndex::Sections(const std::string& path) {
    const auto known = files_.find(path);
    return known != files_.end() ? known->second : files_.emplace(path, Read(path)).first->second;
}

std::optional<SourceLine> SourceIndex::At(const std::string& path, unsigned line) {
    // Sections, and the items of a section, stand on rising lines.
    const std::vector<SourceSection>& sections = Sections(path);
    const auto behind = std::upper_bound(sections.begin(), sections.end(), line,
                                         [](unsigned wanted, const SourceSection& a) { return wanted < a.line; });
    if (behind == sections.begin()) return std::nullopt;
    const auto section = std::prev(behind);
    SourceLine found = {static_cast<std::size_t>(section - sections.begin()), &*section, nullptr};
    const auto item = std::lower_bound(section->items.begin(), section->items.end(), line,
                                       [](const SourceItem& a, unsigned wanted) { return a.line < wanted; });
    if (item != section->items.end() && item->line == line) found.item = &*item;
    if (!found.item && section->line != line) return std::nullopt;
    return found;
}

std::optional<unsigned> SourceIndex::LineOfSection(const std::string& path, unsigned position,
                                                   const std::string& name) {
    const std::vector<SourceSection>& sections = Sections(path);
    if (position >= sections.size() || sections[position].name != name) return std::nullopt;
    return sections[position].line;
}

std::vector<SourceSection> SourceIndex::Read(const std::string& path) const {
    std::vector<SourceSection> sections;
    const std::string name = copies_ ? copies_->NameOf(path) : path;
    void* file = library_.Serves() && IsRegular(name) ? library_.openFile(name) : nullptr;
    if (!file) return sections;
    library_.parse(file);
    while (void* handle = library_.enumSection(file, static_cast<unsigned>(sections.size()))) {
        SourceSection section;
        section.name = SectionName(library_, handle, section.line);
        while (std::optional<SourceItem> item = ItemAt(library_, handle, static_cast<unsigned>(section.items.size()))) {
            section.items.push_back(std::move(*item));
        }
        sections.push_back(std::move(section));
    }
    library_.closeFile(&file);
    return sections;
}

}  // namespace zek::tool
