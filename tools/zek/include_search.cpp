#include "include_search.h"

#include <sys/stat.h>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

#include "paths.h"

namespace zek::tool {
namespace {

std::optional<std::string> StandsIn(const std::vector<std::string>& folders, const std::string& name) {
    if (name.empty()) return std::nullopt;
    for (const std::string& folder : folders) {
        std::string path = InFolder(folder, name);
        if (Stands(path)) return path;
    }
    return std::nullopt;
}

/// Such as " (Permission denied)"; empty where it is just that nothing stands there.
std::string WhyNot(const std::string& path) {
    struct stat info {};
    if (lstat(path.c_str(), &info) == 0 || errno == ENOENT) return {};
    return std::string(" (") + std::strerror(errno) + ')';
}

}  // namespace

IncludeSearch::IncludeSearch(std::vector<std::string> folders, std::string builtIn) : folders_{std::string()} {
    // The current folder, the empty text, comes first.
    for (std::string& folder : folders) folders_.push_back(std::move(folder));
    if (!builtIn.empty()) folders_.push_back(std::move(builtIn));
}

std::vector<std::string> IncludeSearch::Folders(const std::string& includer) const {
    std::vector<std::string> places = {FolderOf(includer)};
    for (const std::string& folder : folders_) {
        if (std::find(places.begin(), places.end(), folder) == places.end()) places.push_back(folder);
    }
    return places;
}

IncludeFound IncludeSearch::Find(const std::string& name, const std::string& includer) const {
    std::vector<std::string> places = Folders(includer);
    std::optional<std::string> path = StandsIn(places, name);
    if (!path && name.find('\\') != std::string::npos) path = StandsIn(places, WithSlashes(name));
    if (path) return {*path, {}};
    if (name.starts_with('/')) return {};
    for (std::string& folder : places) folder = (folder.empty() ? "." : folder) + WhyNot(InFolder(folder, name));
    return {{}, std::move(places)};
}

const NearNames& IncludeSearch::NamesIn(const std::string& folder) {
    const auto known = names_.find(folder);
    if (known != names_.end()) return known->second;
    std::vector<std::string> names;
    std::error_code failed;
    std::filesystem::directory_iterator entries(folder.empty() ? "." : folder, failed);
    for (const std::filesystem::directory_iterator end; !failed && entries != end; entries.increment(failed)) {
        if (mostNames_ == 0) break;
        --mostNames_;
        names.push_back(entries->path().filename().string());
    }
    return names_.emplace(folder, NearNames(std::move(names))).first->second;
}

std::optional<IncludeSearch::Near> IncludeSearch::NearestIn(const std::string& folder, const std::string& name) {
    // From the file on, which is misspelt more often than its folders.
    for (std::size_t end = name.size(), begin = 0; end != 0; end = begin == 0 ? 0 : begin - 1) {
        const std::size_t slash = name.rfind('/', end - 1);
        begin = slash == name.npos ? 0 : slash + 1;
        const std::string above = InFolder(folder, name.substr(0, begin == 0 ? 0 : begin - 1));
        const std::optional<std::string> part = NamesIn(above).Nearest(name.substr(begin, end - begin), left_);
        if (!part) continue;
        const std::string meant = name.substr(0, begin) + *part + name.substr(end);
        struct stat info {};
        const std::string path = InFolder(folder, meant);
        if (stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode)) return Near{meant, path};
    }
    return std::nullopt;
}

std::optional<IncludeSearch::Near> IncludeSearch::Nearest(const std::string& name, const std::string& includer) {
    const std::string slashed = WithSlashes(name);
    for (const std::string& folder : Folders(includer)) {
        std::optional<Near> near = NearestIn(folder, slashed);
        if (near || slashed.starts_with('/')) return near;
    }
    return std::nullopt;
}

std::string BuiltInFolder() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return {};
    return (program.parent_path().parent_path() / "share/zek/include").string();
}

}  // namespace zek::tool
