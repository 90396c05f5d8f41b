#include "hardware.h"

#include "zekcomp/identifiers.h"

namespace zek::tool {
namespace {

constexpr const char* kSensorKeys[] = {"ID",           "TYPE",         "THEORY",      "THRESHOLD_FH",
                                       "THRESHOLD_WH", "THRESHOLD_FL", "THRESHOLD_WL"};

/// What an ID or PID names. Hosts read the number for none as nothing.
std::optional<unsigned> NamedBy(const ShownValue& id) { return id.number == kIdUnresolved ? std::nullopt : id.number; }

ShownSensor Sensor(const Values& values, const ShownSection& section) {
    ShownSensor sensor;
    sensor.parent = values.First(section, "PARENT").text;
    sensor.name = values.First(section, "NAME").text;
    sensor.id = NamedBy(values.First(section, "ID"));
    for (const char* key : kSensorKeys) {
        if (section.Entry(key)) sensor.values.emplace_back(key, values.First(section, key));
    }
    return sensor;
}

ShownView View(const Values& values, const ShownSection& section) {
    const ShownValue id = values.First(section, "ID");
    const ShownValue parent = values.First(section, "PID");
    return {values.First(section, "NAME").text, NamedBy(id), id.text, NamedBy(parent), parent.text,
            values.List(section, "SENSORS")};
}

}  // namespace

Hardware HardwareOf(const Image& image) {
    Hardware hardware;
    const Values values(image);
    image.ForEachSectionOf("GROUP", [&](const ShownSection& section) {
        hardware.groups.push_back({values.First(section, "NAME").text, values.First(section, "PARENT").text});
    });
    image.ForEachSectionOf("SENSOR",
                           [&](const ShownSection& section) { hardware.sensors.push_back(Sensor(values, section)); });
    image.ForEachSectionOf("TAVRGROUP",
                           [&](const ShownSection& section) { hardware.views.push_back(View(values, section)); });
    return hardware;
}

}  // namespace zek::tool
