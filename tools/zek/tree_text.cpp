#include "printable.h"
#include "tree.h"
#include "tree_writer.h"

namespace zek::tool {
namespace {

/// Deeper lines are not indented further but begin with their depth, or a long chain of parents would make an endless
/// output.
constexpr std::size_t kDeepest = 40;

std::string Indented(std::size_t depth, const std::string& text) {
    if (depth <= kDeepest) return std::string(2 * depth, ' ') + text + '\n';
    return std::string(2 * kDeepest, ' ') + '(' + std::to_string(depth) + ") " + text + '\n';
}

std::string Assigned(const std::string& key, const std::string& value) { return ' ' + key + '=' + Printable(value); }

const char* Told(ParentFault fault) {
    return fault == ParentFault::kMissing ? ", which does not exist" : ", which it is an ancestor of";
}

class TextTree : public TreeWriter {
public:
    explicit TextTree(StandardOutput& out) : out_(out) {}

    void Group(const ShownGroup& group, std::size_t depth, ParentFault fault,
               const std::vector<const ShownSensor*>& sensors) override {
        std::string text = "GROUP " + Quoted(group.name);
        if (fault != ParentFault::kNone) text += " (PARENT " + Quoted(group.parent) + Told(fault) + ')';
        out_.Write(Indented(depth, text));
        for (const ShownSensor* sensor : sensors) out_.Write(Indented(depth + 1, Text(*sensor)));
    }

    void Homeless(const std::vector<const ShownSensor*>& sensors) override {
        for (const ShownSensor* sensor : sensors) {
            const std::string why = " (PARENT " + Quoted(sensor->parent) + Told(ParentFault::kMissing) + ')';
            out_.Write(Indented(0, Text(*sensor) + why));
        }
    }

    void View(const ShownView& view, std::size_t depth, ParentFault fault,
              const std::vector<const ShownSensor*>& sensors) override {
        std::string text = "TAVRGROUP " + Quoted(view.name) + Assigned("ID", view.idText);
        if (fault != ParentFault::kNone) text += " (PID " + Printable(view.parentText) + Told(fault) + ')';
        out_.Write(Indented(depth, text));
        for (std::size_t i = 0; i < sensors.size(); ++i) {
            const std::string name = sensors[i] ? Quoted(sensors[i]->name) : "(does not exist)";
            out_.Write(Indented(depth + 1, "SENSOR " + name + Assigned("ID", view.sensors[i].text)));
        }
    }

private:
    static std::string Text(const ShownSensor& sensor) {
        std::string text = "SENSOR " + Quoted(sensor.name);
        for (const auto& [key, value] : sensor.values) text += Assigned(key, value.text);
        return text;
    }

    StandardOutput& out_;
};

}  // namespace

void WriteTree(const Hardware& hardware, StandardOutput& out) {
    TextTree writer(out);
    WalkTree(hardware, writer);
}

}  // namespace zek::tool
