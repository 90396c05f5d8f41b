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

Json Sensors(const std::vector<const ShownSensor*>& sensors) {
    Json json = Json::array();
    for (const ShownSensor* sensor : sensors) json.push_back(Sensor(*sensor));
    return json;
}

/// A flat list with depths: a chain of parents can be longer than readers of JSON can nest.
class JsonTree : public TreeWriter {
public:
    explicit JsonTree(JsonOutput& json) : json_(json) { json_.BeginArray("groups"); }

    void Group(const ShownGroup& group, std::size_t depth, ParentFault fault,
               const std::vector<const ShownSensor*>& sensors) override {
        Json json = {{"depth", depth}, {"name", JsonText(group.name)}, {"parent", JsonText(group.parent)}};
        AddFault(json, fault);
        json["sensors"] = Sensors(sensors);
        json_.Element(json);
    }

    void Homeless(const std::vector<const ShownSensor*>& sensors) override {
        json_.End();
        json_.Member("sensorsWithoutGroup", Sensors(sensors));
        json_.BeginArray("tavrgroups");
    }

    void View(const ShownView& view, std::size_t depth, ParentFault fault,
              const std::vector<const ShownSensor*>& sensors) override {
        Json json = {{"depth", depth}, {"name", JsonText(view.name)}};
        if (view.id) json["id"] = *view.id;
        if (view.parent) json["pid"] = *view.parent;
        AddFault(json, fault);
        json["sensors"] = Json::array();
        for (std::size_t i = 0; i < sensors.size(); ++i) json["sensors"].push_back(Member(view.sensors[i], sensors[i]));
        json_.Element(json);
    }

private:
    static void AddFault(Json& json, ParentFault fault) {
        if (fault != ParentFault::kNone) json["parentFault"] = fault == ParentFault::kMissing ? "missing" : "circle";
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
