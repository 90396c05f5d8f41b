/// The paths by which files were opened. A file that is opened by another spelling of such a path is called by the
/// first one; where the path leads through another folder or to another name of the file, what it includes may be
/// another, and it has a path of its own. Relies on the file system.
#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <utility>

namespace zek::tool {

class Spellings {
public:
    using FileId = std::pair<dev_t, ino_t>;

    /// The path by which the file was opened first where this one spells the same; else this one.
    std::string First(FileId file, const std::string& path);
    /// Enters an opening, by a path that First gave.
    void Add(FileId file, const std::string& path);
    /// Takes an opening out again.
    void Drop(FileId file, const std::string& path);

private:
    struct Paths {
        std::map<std::string, std::size_t> openings;  ///< how many by each path
        std::map<std::string, std::string> byPlace;   ///< the paths again, once another spelling was asked about
    };

    std::map<FileId, Paths> files_;
};

}  // namespace zek::tool
