/// Where the [GROUP] sections of an image stand in a source: the compiler wants a group on a lower line than its
/// children, whatever files they are in. Relies on the standard library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace zek::tool {

/// A group and how many lines it takes.
struct GroupLines {
    std::optional<std::size_t> parent = {};  ///< its position; nothing at the top
    std::uint32_t lines = 0;
};

/// Groups that follow each other in a file of their own, in the order of the image.
struct GroupFile {
    std::size_t first = 0;                   ///< position of its first group; each next one is the one behind
    std::vector<std::uint32_t> starts = {};  ///< the line of each
};

struct GroupOrder {
    std::vector<GroupFile> files;  ///< in the order of the image; no group is in two
    std::uint32_t mainStart = 1;   ///< the groups in no file stand in the main source from this line on
};

/// Nothing goes to a file where every parent stands before its children. Throws Failure where parents go in a circle.
GroupOrder OrderGroups(const std::vector<GroupLines>& groups);

}  // namespace zek::tool
