/// The groups, sensors and TAVRGROUPs of an image, as the tree shows them. Relies on image.h.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "values.h"

namespace zek::tool {

struct ShownGroup {
    std::string name;
    std::string parent;
};

struct ShownSensor {
    std::string parent;
    std::string name;
    std::optional<unsigned> id;
    /// ID, TYPE and the thresholds, as far as the sensor has them: key and value.
    std::vector<std::pair<std::string, ShownValue>> values;
};

struct ShownView {
    std::string name;
    std::optional<unsigned> id;
    std::string idText;
    std::optional<unsigned> parent;
    std::string parentText;
    std::vector<ShownValue> sensors;  ///< the IDs that it lists
};

struct Hardware {
    std::vector<ShownGroup> groups;
    std::vector<ShownSensor> sensors;
    std::vector<ShownView> views;
};

Hardware HardwareOf(const Image& image);

}  // namespace zek::tool
