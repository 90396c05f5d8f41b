#include "file_search.h"

#include <sys/stat.h>

#include <algorithm>

#include "state.h"

namespace zek::parser {
namespace {

// Anything counts, a directory or a broken link, too: it hides what stands further down the search.
bool Stands(const std::string& path) {
    struct stat info {};
    return lstat(path.c_str(), &info) == 0;
}

std::optional<std::string> SearchFor(const std::string& name) {
    if (name.empty()) return std::nullopt;
    if (Stands(name)) return name;
    if (name.front() == '/') return std::nullopt;
    for (const std::string& dir : g_searchDirs) {
        std::string path = dir.empty() ? name : dir + '/' + name;
        if (Stands(path)) return path;
    }
    return std::nullopt;
}

std::optional<std::string> AskHook(const std::string& name) {
    // A copy: the hook may close the file that the path belongs to.
    const std::string includer = g_enumerated.empty() ? std::string() : g_enumerated.back()->Path();
    std::string path;
    if (!g_openHook(g_openHookContext, name, includer, path)) return std::nullopt;
    return path;
}

bool HasNul(const std::string& text) { return text.find('\0') != std::string::npos; }

}  // namespace

std::optional<std::string> FindFile(const std::string& name) {
    std::optional<std::string> path;
    if (g_openHook) {
        path = AskHook(name);
    } else if (!HasNul(name)) {
        path = SearchFor(name);
        if (!path && name.find('\\') != std::string::npos) {
            std::string slashed = name;
            std::replace(slashed.begin(), slashed.end(), '\\', '/');
            path = SearchFor(slashed);
        }
    }
    if (path && HasNul(*path)) return std::nullopt;
    return path;
}

}  // namespace zek::parser
