#include "places.h"

#include <algorithm>

namespace zek::tool {
namespace {

/// The first sub-string of a value, as the compiler cuts it: up to a comma, or what stands in quotes that come before
/// one.
std::string FirstText(const std::string& value) {
    const std::size_t comma = std::min(value.find(','), value.size());
    const std::size_t quote = value.find('"');
    if (quote == std::string::npos || comma < quote) return value.substr(0, comma);
    const std::size_t closing = value.find('"', quote + 1);
    return value.substr(quote + 1, closing == std::string::npos ? closing : closing - quote - 1);
}

}  // namespace

Places::Places(const std::vector<SourceFile>& files, SourceIndex& index) : files_(files), index_(index) {
    for (const SourceFile& file : files) {
        std::vector<std::string>& paths = pathsByName_[NameInMessages(file.name)];
        if (std::find(paths.begin(), paths.end(), file.path) == paths.end()) paths.push_back(file.path);
    }
}

std::vector<Place> Places::Of(const Wanted& wanted) {
    if (wanted.line == 0 && !files_.empty()) return {{files_.front().path, 0}};
    const auto known = pathsByName_.find(wanted.name);
    if (known == pathsByName_.end()) return {{wanted.name, wanted.line}};
    std::vector<Place> all;
    std::vector<Place> fitting;
    for (const std::string& path : known->second) {
        all.push_back({path, wanted.line});
        if (known->second.size() == 1) break;
        if (index_.Stands(path, wanted.line, wanted.section, wanted.key)) fitting.push_back(all.back());
    }
    return fitting.empty() ? all : fitting;
}

const std::vector<Place>& Places::SectionsWithout(const std::string& section, const std::string& key) {
    const auto [found, isNew] = without_.try_emplace({section, key});
    if (!isNew) return found->second;
    for (const ReadSection& candidate : SectionsRead()) {
        if (candidate.section->name != section || candidate.section->HasKey(key)) continue;
        found->second.push_back({*candidate.path, candidate.section->line});
    }
    return found->second;
}

/// The sections of a file and, where one of them includes a file, that file's.
void Places::ReadAgain(std::size_t position, const std::vector<std::vector<std::size_t>>& included) {
    auto next = included[position].begin();
    for (const SourceSection& section : index_.Sections(files_[position].path)) {
        read_.push_back({&files_[position].path, &section});
        if (section.name != "INCLUDE") continue;
        for (const SourceItem& item : section.items) {
            // One that could not be loaded is not among the files.
            const std::string name = BackslashFolder(files_[position].name) + FirstText(item.value);
            if (next != included[position].end() && files_[*next].name == name) ReadAgain(*next++, included);
        }
    }
}

const std::vector<Places::ReadSection>& Places::SectionsRead() {
    if (!read_.empty() || files_.empty()) return read_;
    std::vector<std::vector<std::size_t>> included(files_.size());
    for (std::size_t i = 1; i < files_.size(); ++i) included[files_[i].includer].push_back(i);
    ReadAgain(0, included);
    return read_;
}

}  // namespace zek::tool
