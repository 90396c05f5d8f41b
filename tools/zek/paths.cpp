#include "paths.h"

#include <sys/stat.h>
#include <algorithm>

namespace zek::tool {

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {};
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string InFolder(const std::string& folder, const std::string& name) {
    if (folder.empty() || name.starts_with('/')) return name;
    return folder.ends_with('/') ? folder + name : folder + '/' + name;
}

bool Stands(const std::string& path) {
    struct stat info {};
    return lstat(path.c_str(), &info) == 0;
}

std::string WithSlashes(std::string name) {
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

std::string MainSource(const std::string& name) {
    const std::string slashed = WithSlashes(name);
    return !Stands(name) && Stands(slashed) ? slashed : name;
}

}  // namespace zek::tool
