/// The parts of a path. Relies on the file system only to see whether something stands there.
#pragma once

#include <string>

namespace zek::tool {

/// The path of standard input as a source.
inline constexpr char kStandardInput[] = "/dev/stdin";

/// The folder part of a path, without its slash: empty where the path has none, "/" for the root.
std::string FolderOf(const std::string& path);

/// The path of a name in a folder; an empty folder is the current one, and an absolute name stays as it is.
std::string InFolder(const std::string& folder, const std::string& name);

/// Whether anything of that name is there, be it a link that leads nowhere.
bool Stands(const std::string& path);

/// With a slash for each backslash.
std::string WithSlashes(std::string name);

/// The path of a main source: the name as it is, or with slashes where only that stands.
std::string MainSource(const std::string& name);

}  // namespace zek::tool
