/// Finds a source file name in the list of source files. Stands beside the list because every entry of a source looks
/// its file up, which must not walk the list. Relies on key_table.h.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "model/key_table.h"

namespace zek {

class FileIndex {
public:
    /// The position of `file` in `files`, where it is appended when absent. In a list in which it stands more than
    /// once, the first, or the one where it was found before. Follows a host that changes the list itself, but where
    /// that writes a name over another one of a long list: this is seen when the size of the list has changed, too.
    unsigned PositionIn(std::vector<std::string>& files, const std::string& file);

private:
    /// A list of no more files is walked for a new one.
    static constexpr std::size_t kSmall = 64;

    unsigned Find(const std::vector<std::string>& files, const std::string& file) const;
    void Read(const std::vector<std::string>& files);

    KeyTable<std::string_view, unsigned> positions_;  ///< where each name stood when it was last looked for
    std::size_t size_ = 0;                            ///< of a long list when all of its names were among them
    unsigned last_ = 0;                               ///< what was found last: mostly it is asked for again
};

}  // namespace zek
