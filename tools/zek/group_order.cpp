#include "group_order.h"

#include <algorithm>

#include "decompile.h"

namespace zek::tool {
namespace {

class Ordering {
public:
    explicit Ordering(const std::vector<GroupLines>& groups)
        : groups_(groups), early_(groups.size(), false), depths_(groups.size(), kUnknown) {}

    GroupOrder Run() {
        for (std::size_t i = 0; i < groups_.size(); ++i) {
            if (groups_[i].parent && *groups_[i].parent >= i) MarkEarly(*groups_[i].parent);
        }
        GroupOrder order;
        for (std::size_t i = 0; i < groups_.size(); ++i) {
            if (early_[i]) Append(order.files, i);
        }
        for (GroupFile& file : order.files) Measure(file);
        // The first line of each depth: behind the longest stretch of the depth before, in whatever file.
        std::vector<std::uint32_t> starts = {1};
        for (const std::uint32_t lines : longest_) starts.push_back(starts.back() + lines);
        for (GroupFile& file : order.files) Place(file, starts);
        order.mainStart = starts.back();
        return order;
    }

private:
    static constexpr std::size_t kUnknown = static_cast<std::size_t>(-1);

    /// A group that stands behind a child of it, and those above it, which must come before.
    void MarkEarly(std::size_t group) {
        for (std::optional<std::size_t> next = group; next && !early_[*next]; next = groups_[*next].parent) {
            early_[*next] = true;
        }
    }

    std::size_t Depth(std::size_t group) {
        std::vector<std::size_t> path;
        for (std::optional<std::size_t> next = group; next && depths_[*next] == kUnknown;) {
            path.push_back(*next);
            if (path.size() > groups_.size()) throw CannotExpress("the parents of groups go in a circle");
            next = groups_[*next].parent;
        }
        for (; !path.empty(); path.pop_back()) {
            const std::optional<std::size_t> parent = groups_[path.back()].parent;
            depths_[path.back()] = parent ? depths_[*parent] + 1 : 0;
        }
        return depths_[group];
    }

    void Append(std::vector<GroupFile>& files, std::size_t group) {
        const bool follows = group > 0 && early_[group - 1] && !files.empty() && Depth(group) >= Depth(group - 1);
        if (!follows) files.push_back({group});
        files.back().starts.push_back(0);
    }

    void Measure(const GroupFile& file) {
        std::vector<std::uint32_t> lines;
        for (std::size_t i = 0; i < file.starts.size(); ++i) {
            const std::size_t depth = Depth(file.first + i);
            lines.resize(std::max(lines.size(), depth + 1));
            lines[depth] += groups_[file.first + i].lines;
        }
        longest_.resize(std::max(longest_.size(), lines.size()));
        for (std::size_t depth = 0; depth < lines.size(); ++depth) {
            longest_[depth] = std::max(longest_[depth], lines[depth]);
        }
    }

    void Place(GroupFile& file, const std::vector<std::uint32_t>& starts) {
        std::uint32_t next = 1;
        for (std::size_t i = 0; i < file.starts.size(); ++i) {
            file.starts[i] = std::max(next, starts[Depth(file.first + i)]);
            next = file.starts[i] + groups_[file.first + i].lines;
        }
    }

    const std::vector<GroupLines>& groups_;
    std::vector<bool> early_;
    std::vector<std::size_t> depths_;
    std::vector<std::uint32_t> longest_;  // by depth
};

}  // namespace

GroupOrder OrderGroups(const std::vector<GroupLines>& groups) { return Ordering(groups).Run(); }

}  // namespace zek::tool
