/// Sources that can be read only once, pipes and devices, kept in memory, so that they are read as a file is: by the
/// compiler, and again for what stands on their lines. Relies on memory_file.h.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "memory_file.h"

namespace zek::tool {

class SourceCopies {
public:
    /// Reads what a path leads to, unless that was done before, and gives the name of the copy, which is valid in this
    /// process while the object lives. Empty, and why, when it cannot be read, or is empty where it may not be.
    std::string Take(const std::string& path, bool mayBeEmpty, std::string& why);

    /// The name under which a path can be read: that of its copy, or else the path.
    std::string NameOf(const std::string& path) const;

private:
    std::map<std::string, std::unique_ptr<MemoryFile>> copies_;  // by path
};

}  // namespace zek::tool
