/// Finds a source file name in the list of source files. Stands beside the list because every entry of a source looks
/// its file up, which must not walk the list. Relies on the standard library.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace zek {

class FileIndex {
public:
    /// The position of `file` in `files`, where it is appended when absent. In a list in which it stands more than
    /// once, the first, or the one where it was found before.
    unsigned PositionIn(std::vector<std::string>& files, const std::string& file);

private:
    std::unordered_map<std::string, unsigned> positions_;  ///< where each name stood when it was last looked for
    unsigned last_ = 0;                                    ///< what was found last: mostly it is asked for again
};

}  // namespace zek
