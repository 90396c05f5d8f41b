#include "tree.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

#include "printable.h"

namespace zek::tool {
namespace {

/// Deeper lines are not indented further but begin with their depth, or a long chain of parents would make an endless
/// output.
constexpr std::size_t kDeepest = 40;

constexpr std::size_t kRoot = static_cast<std::size_t>(-1);
constexpr std::size_t kNobody = static_cast<std::size_t>(-2);

std::string Indented(std::size_t depth, const std::string& text) {
    if (depth <= kDeepest) return std::string(2 * depth, ' ') + text + '\n';
    return std::string(2 * kDeepest, ' ') + '(' + std::to_string(depth) + ") " + text + '\n';
}

std::string Assigned(const std::string& key, const std::string& value) { return ' ' + key + '=' + Printable(value); }

/// Nodes that name their parents, walked from the top. `parents` holds a position, kRoot, or kNobody for a parent that
/// does not exist.
class Forest {
public:
    /// Shows one node at a depth; the note says what is wrong with its parent, if anything.
    using Show = std::function<void(std::size_t node, std::size_t depth, const char* note)>;

    explicit Forest(std::vector<std::size_t> parents) : parents_(std::move(parents)), children_(parents_.size()) {
        for (std::size_t node = 0; node < parents_.size(); ++node) {
            if (parents_[node] < parents_.size()) children_[parents_[node]].push_back(node);
        }
    }

    void Walk(const Show& show) {
        shown_.assign(parents_.size(), false);
        for (std::size_t node = 0; node < parents_.size(); ++node) {
            if (parents_[node] == kRoot) From(node, "", show);
        }
        for (std::size_t node = 0; node < parents_.size(); ++node) {
            if (parents_[node] == kNobody) From(node, ", which does not exist", show);
        }
        // What is left has a parent and hangs on none of the above: it is its own ancestor, or hangs on one that is.
        for (std::size_t node = 0; node < parents_.size(); ++node) {
            if (!shown_[node]) From(OnCircle(node), ", which it is an ancestor of", show);
        }
    }

private:
    void From(std::size_t top, const char* note, const Show& show) {
        std::vector<std::pair<std::size_t, std::size_t>> waiting = {{top, 0}};
        while (!waiting.empty()) {
            const auto [node, depth] = waiting.back();
            waiting.pop_back();
            if (shown_[node]) continue;
            shown_[node] = true;
            show(node, depth, depth == 0 ? note : "");
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

/// The position of each parent; the first of several that answer to a name or an ID counts, as in the library.
template <class Key>
using Positions = std::unordered_map<Key, std::size_t>;

template <class Key>
std::size_t PositionOf(const Positions<Key>& positions, const Key& key) {
    const auto found = positions.find(key);
    return found == positions.end() ? kNobody : found->second;
}

class Tree {
public:
    Tree(const Hardware& hardware, StandardOutput& out) : hardware_(hardware), out_(out) {
        for (std::size_t i = 0; i < hardware.groups.size(); ++i) groups_.try_emplace(hardware.groups[i].name, i);
        for (std::size_t i = 0; i < hardware.views.size(); ++i) {
            if (hardware.views[i].id) views_.try_emplace(*hardware.views[i].id, i);
        }
        for (std::size_t i = 0; i < hardware.sensors.size(); ++i) {
            if (hardware.sensors[i].id) sensors_.try_emplace(*hardware.sensors[i].id, i);
        }
    }

    void WriteGroups() {
        std::vector<std::vector<std::size_t>> members(hardware_.groups.size());
        std::vector<std::size_t> homeless;
        for (std::size_t i = 0; i < hardware_.sensors.size(); ++i) {
            const std::size_t group = PositionOf(groups_, hardware_.sensors[i].parent);
            (group == kNobody ? homeless : members[group]).push_back(i);
        }
        std::vector<std::size_t> parents;
        for (const ShownGroup& group : hardware_.groups) {
            parents.push_back(group.parent == "0" ? kRoot : PositionOf(groups_, group.parent));
        }
        Forest(std::move(parents)).Walk([&](std::size_t node, std::size_t depth, const char* note) {
            WriteGroup(hardware_.groups[node], depth, note);
            for (const std::size_t sensor : members[node]) WriteSensor(hardware_.sensors[sensor], depth + 1, false);
        });
        for (const std::size_t sensor : homeless) WriteSensor(hardware_.sensors[sensor], 0, true);
    }

    void WriteViews() {
        std::vector<std::size_t> parents;
        for (const ShownView& view : hardware_.views) {
            const bool top = !view.parent || *view.parent == 0;
            parents.push_back(top ? kRoot : PositionOf(views_, *view.parent));
        }
        Forest(std::move(parents)).Walk([&](std::size_t node, std::size_t depth, const char* note) {
            WriteView(hardware_.views[node], depth, note);
        });
    }

private:
    void WriteGroup(const ShownGroup& group, std::size_t depth, const std::string& note) {
        std::string text = "GROUP " + Quoted(group.name);
        if (!note.empty()) text += " (PARENT " + Quoted(group.parent) + note + ')';
        out_.Write(Indented(depth, text));
    }

    void WriteSensor(const ShownSensor& sensor, std::size_t depth, bool homeless) {
        std::string text = "SENSOR " + Quoted(sensor.name);
        for (const auto& [key, value] : sensor.values) text += Assigned(key, value);
        if (homeless) text += " (PARENT " + Quoted(sensor.parent) + ", which does not exist)";
        out_.Write(Indented(depth, text));
    }

    void WriteView(const ShownView& view, std::size_t depth, const std::string& note) {
        std::string text = "TAVRGROUP " + Quoted(view.name) + Assigned("ID", view.idText);
        if (!note.empty()) text += " (PID " + Printable(view.parentText) + note + ')';
        out_.Write(Indented(depth, text));
        for (const ShownMember& member : view.sensors) {
            const std::size_t sensor = member.id ? PositionOf(sensors_, *member.id) : kNobody;
            const std::string name = sensor == kNobody ? "(does not exist)" : Quoted(hardware_.sensors[sensor].name);
            out_.Write(Indented(depth + 1, "SENSOR " + name + Assigned("ID", member.text)));
        }
    }

    const Hardware& hardware_;
    StandardOutput& out_;
    Positions<std::string> groups_;
    Positions<unsigned> views_;
    Positions<unsigned> sensors_;
};

}  // namespace

void WriteTree(const Hardware& hardware, StandardOutput& out) {
    Tree tree(hardware, out);
    tree.WriteGroups();
    tree.WriteViews();
}

}  // namespace zek::tool
