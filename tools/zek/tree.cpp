#include <algorithm>
#include <functional>
#include <string_view>

#include "tree_writer.h"

namespace zek::tool {
namespace {

constexpr std::size_t kRoot = static_cast<std::size_t>(-1);
constexpr std::size_t kNobody = static_cast<std::size_t>(-2);

/// Nodes that name their parents, walked from the top. `parents` holds a position, kRoot, or kNobody for a parent that
/// does not exist.
class Forest {
public:
    /// Shows one node at a depth, and what is wrong with its parent.
    using Show = std::function<void(std::size_t node, std::size_t depth, ParentFault fault)>;

    explicit Forest(std::vector<std::size_t> parents) : parents_(std::move(parents)), children_(parents_.size()) {
        for (std::size_t node = 0; node < parents_.size(); ++node) {
            if (parents_[node] < parents_.size()) children_[parents_[node]].push_back(node);
        }
    }

    void Walk(const Show& show) {
        shown_.assign(parents_.size(), false);
        for (std::size_t node = 0; node < parents_.size(); ++node) {
            if (parents_[node] == kRoot) From(node, ParentFault::kNone, show);
        }
        for (std::size_t node = 0; node < parents_.size(); ++node) {
            if (parents_[node] == kNobody) From(node, ParentFault::kMissing, show);
        }
        // What is left has a parent and hangs on none of the above: it is its own ancestor, or hangs on one that is.
        for (std::size_t node = 0; node < parents_.size(); ++node) {
            if (!shown_[node]) From(OnCircle(node), ParentFault::kCircle, show);
        }
    }

private:
    void From(std::size_t top, ParentFault fault, const Show& show) {
        std::vector<std::pair<std::size_t, std::size_t>> waiting = {{top, 0}};
        while (!waiting.empty()) {
            const auto [node, depth] = waiting.back();
            waiting.pop_back();
            if (shown_[node]) continue;
            shown_[node] = true;
            show(node, depth, depth == 0 ? fault : ParentFault::kNone);
            for (auto child = children_[node].rbegin(); child != children_[node].rend(); ++child) {
                waiting.emplace_back(*child, depth + 1);
            }
        }
    }

    /// The first node of the circle that the ancestors of a node without a top end in.
    std::size_t OnCircle(std::size_t node) const {
        // Two go up, one of them twice as fast; where they meet is on the circle.
        std::size_t fast = node;
        do {
            node = parents_[node];
            fast = parents_[parents_[fast]];
        } while (node != fast);
        std::size_t first = node;
        for (std::size_t other = parents_[node]; other != node; other = parents_[other]) first = std::min(first, other);
        return first;
    }

    std::vector<std::size_t> parents_;
    std::vector<std::vector<std::size_t>> children_;
    std::vector<bool> shown_;
};

/// The position of each name or ID; the first of several that are alike counts, as in the library. Sorted, since who
/// writes an image could choose the keys so that a table of hashes becomes one long list.
template <class Key>
class Positions {
public:
    /// `keyOf` gives the key of an object as an optional.
    template <class Object, class KeyOf>
    Positions(const std::vector<Object>& objects, KeyOf keyOf) {
        for (std::size_t i = 0; i < objects.size(); ++i) {
            if (const std::optional<Key> key = keyOf(objects[i])) sorted_.emplace_back(*key, i);
        }
        std::sort(sorted_.begin(), sorted_.end());
    }

    std::size_t Of(const Key& key) const {
        const auto found = std::lower_bound(sorted_.begin(), sorted_.end(), std::pair<Key, std::size_t>(key, 0));
        return found == sorted_.end() || found->first != key ? kNobody : found->second;
    }

private:
    std::vector<std::pair<Key, std::size_t>> sorted_;
};

class Tree {
public:
    Tree(const Hardware& hardware, TreeWriter& writer)
        : hardware_(hardware),
          writer_(writer),
          groups_(hardware.groups, [](const ShownGroup& group) { return std::optional<std::string_view>(group.name); }),
          views_(hardware.views, [](const ShownView& view) { return view.id; }),
          sensors_(hardware.sensors, [](const ShownSensor& sensor) { return sensor.id; }) {}

    void ShowGroups() {
        std::vector<std::vector<const ShownSensor*>> members(hardware_.groups.size());
        std::vector<const ShownSensor*> homeless;
        for (const ShownSensor& sensor : hardware_.sensors) {
            const std::size_t group = groups_.Of(sensor.parent);
            (group == kNobody ? homeless : members[group]).push_back(&sensor);
        }
        std::vector<std::size_t> parents;
        for (const ShownGroup& group : hardware_.groups) {
            parents.push_back(group.parent == "0" ? kRoot : groups_.Of(group.parent));
        }
        Forest(std::move(parents)).Walk([&](std::size_t node, std::size_t depth, ParentFault fault) {
            writer_.Group(hardware_.groups[node], depth, fault, members[node]);
        });
        writer_.Homeless(homeless);
    }

    void ShowViews() {
        std::vector<std::size_t> parents;
        for (const ShownView& view : hardware_.views) {
            const bool top = !view.parent || *view.parent == 0;
            parents.push_back(top ? kRoot : views_.Of(*view.parent));
        }
        Forest(std::move(parents)).Walk([&](std::size_t node, std::size_t depth, ParentFault fault) {
            const ShownView& view = hardware_.views[node];
            std::vector<const ShownSensor*> sensors;
            for (const ShownValue& member : view.sensors) sensors.push_back(SensorOf(member));
            writer_.View(view, depth, fault, sensors);
        });
    }

private:
    const ShownSensor* SensorOf(const ShownValue& member) const {
        const std::size_t sensor = member.number ? sensors_.Of(*member.number) : kNobody;
        return sensor == kNobody ? nullptr : &hardware_.sensors[sensor];
    }

    const Hardware& hardware_;
    TreeWriter& writer_;
    Positions<std::string_view> groups_;
    Positions<unsigned> views_;
    Positions<unsigned> sensors_;
};

}  // namespace

void WalkTree(const Hardware& hardware, TreeWriter& writer) {
    Tree tree(hardware, writer);
    tree.ShowGroups();
    tree.ShowViews();
}

}  // namespace zek::tool
