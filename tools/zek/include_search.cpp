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

IncludeFound IncludeSearch::Find(const std::string& name, const std::string& includer) const {
    std::vector<std::string> places = {FolderOf(includer)};
    for (const std::string& folder : folders_) {
        if (std::find(places.begin(), places.end(), folder) == places.end()) places.push_back(folder);
    }
    std::optional<std::string> path = StandsIn(places, name);
    if (!path && name.find('\\') != std::string::npos) path = StandsIn(places, WithSlashes(name));
    if (path) return {*path, {}};
    if (name.starts_with('/')) return {};
    for (std::string& folder : places) folder = (folder.empty() ? "." : folder) + WhyNot(InFolder(folder, name));
    return {{}, std::move(places)};
}

std::string BuiltInFolder() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return {};
    return (program.parent_path().parent_path() / "share/zek/include").string();
}

}  // namespace zek::tool
