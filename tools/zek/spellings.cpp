#include "spellings.h"

#include <filesystem>
#include <system_error>

#include "paths.h"

namespace zek::tool {
namespace {

/// The name in its folder as the system knows that, or the path itself where it knows none.
std::string PlaceOf(const std::string& path) {
    namespace fs = std::filesystem;
    const std::string written = FolderOf(path);
    std::error_code failed;
    const fs::path folder = fs::canonical(written.empty() ? "." : written, failed);
    return failed ? path : (folder / fs::path(path).filename()).string();
}

}  // namespace

std::string Spellings::First(FileId file, const std::string& path) {
    const auto known = files_.find(file);
    if (known == files_.end() || known->second.openings.contains(path)) return path;
    Paths& paths = known->second;
    // Most files are opened by one path, for which the system need not be asked.
    if (paths.byPlace.empty()) {
        for (const auto& [opened, count] : paths.openings) paths.byPlace.emplace(PlaceOf(opened), opened);
    }
    const auto opened = paths.byPlace.find(PlaceOf(path));
    return opened == paths.byPlace.end() ? path : opened->second;
}

void Spellings::Add(FileId file, const std::string& path) {
    Paths& paths = files_[file];
    if (++paths.openings[path] == 1 && !paths.byPlace.empty()) paths.byPlace.emplace(PlaceOf(path), path);
}

void Spellings::Drop(FileId file, const std::string& path) {
    const auto known = files_.find(file);
    const auto opening = known->second.openings.find(path);
    if (--opening->second > 0) return;
    known->second.openings.erase(opening);
    std::erase_if(known->second.byPlace, [&](const auto& row) { return row.second == path; });
}

}  // namespace zek::tool
