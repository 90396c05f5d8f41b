#include "json_output.h"
#include "tree.h"
#include "tree_writer.h"

namespace zek::tool {
namespace {

Json Sensor(const ShownSensor& sensor) {
    Json json = {{"name", JsonText(sensor.name)}};
    if (sensor.id) json["id"] = *sensor.id;
    json["parent"] = JsonText(sensor.parent);
    json["values"] = Json::object();
    for (const auto& [key, value] : sensor.values) {
        json["values"][key] = {{"written", JsonText(value.text)}};
        if (value.number) json["values"][key]["number"] = *value.number;
    }
    return json;
}

void WriteSensors(JsonOutput& json, const std::string& name, const std::vector<const ShownSensor*>& sensors) {
    json.BeginArray(name);
    for (const ShownSensor* sensor : sensors) json.Element(Sensor(*sensor));
    json.End();
}

/// A flat list with depths: a chain of parents can be longer than readers of JSON can nest.
class JsonTree : public TreeWriter {
public:
    explicit JsonTree(JsonOutput& json) : json_(json) { json_.BeginArray("groups"); }

    void Group(const ShownGroup& group, std::size_t depth, ParentFault fault,
               const std::vector<const ShownSensor*>& sensors) override {
        Begin(depth, group.name);
        json_.Member("parent", JsonText(group.parent));
        WriteFault(fault);
        WriteSensors(json_, "sensors", sensors);
        json_.End();
    }

    void Homeless(const std::vector<const ShownSensor*>& sensors) override {
        json_.End();
        WriteSensors(json_, "sensorsWithoutGroup", sensors);
        json_.BeginArray("tavrgroups");
    }

    void View(const ShownView& view, std::size_t depth, ParentFault fault,
              const std::vector<const ShownSensor*>& sensors) override {
        Begin(depth, view.name);
        if (view.id) json_.Member("id", *view.id);
        if (view.parent) json_.Member("pid", *view.parent);
        WriteFault(fault);
        json_.BeginArray("sensors");
        for (std::size_t i = 0; i < sensors.size(); ++i) json_.Element(Member(view.sensors[i], sensors[i]));
        json_.End();
        json_.End();
    }

private:
    void Begin(std::size_t depth, const std::string& name) {
        json_.BeginObject();
        json_.Member("depth", depth);
        json_.Member("name", JsonText(name));
    }

    void WriteFault(ParentFault fault) {
        if (fault == ParentFault::kNone) return;
        json_.Member("parentFault", fault == ParentFault::kMissing ? "missing" : "circle");
    }

    static Json Member(const ShownValue& member, const ShownSensor* sensor) {
        Json json = {{"written", JsonText(member.text)}};
        if (member.number) json["id"] = *member.number;
        if (sensor) json["name"] = JsonText(sensor->name);
        return json;
    }

    JsonOutput& json_;
};

}  // namespace

void WriteTreeAsJson(ImageKind kind, const Hardware& hardware, StandardOutput& out) {
    JsonOutput json(out, "zek-tree/1");
    json.Member("image", NameOf(kind));
    JsonTree writer(json);
    WalkTree(hardware, writer);
    json.End();
    json.Finish();
}

}  // namespace zek::tool
