/// Where the file of an include stands. Relies on the file system alone.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "suggestion.h"

namespace zek::tool {

/// The search for one name.
struct IncludeFound {
    std::string path;  ///< empty when nothing of that name stands anywhere
    /// Where it was looked for in vain, in order; "." is the current folder. The reason of the system follows in
    /// parentheses where it is another than that nothing of the name stands there. Empty for an absolute name.
    std::vector<std::string> folders;
};

/// Looks beside the including file, in the current folder, in the folders given, then in the built-in one. The first
/// place where anything of the name stands is taken, whatever it is. Found nowhere, the name is looked for once more
/// with each backslash taken as a slash.
class IncludeSearch {
public:
    /// An empty `builtIn` means that there is none.
    IncludeSearch(std::vector<std::string> folders, std::string builtIn);

    /// `includer` is the path of the including file.
    IncludeFound Find(const std::string& name, const std::string& includer) const;

    /// What probably was meant by a name that is found nowhere: the name with one of its parts, a folder or the file,
    /// replaced by one that stands there and makes it a file's. Nothing where none is near.
    struct Near {
        std::string name;
        std::string path;
    };
    std::optional<Near> Nearest(const std::string& name, const std::string& includer);

private:
    std::vector<std::string> Folders(const std::string& includer) const;
    const NearNames& NamesIn(const std::string& folder);
    std::optional<Near> NearestIn(const std::string& folder, const std::string& name);

    std::vector<std::string> folders_;
    std::map<std::string, NearNames> names_;  // by the folder in which they stand
    std::size_t mostNames_ = 100'000;         // that may still be read
    ComparisonsLeft left_;
};

/// The folder of the files that come with the command: share/zek/include beside the folder that the program runs from;
/// empty when that cannot be told.
std::string BuiltInFolder();

}  // namespace zek::tool
