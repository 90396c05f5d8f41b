#include "hardware.h"

#include <cstdlib>

namespace zek::tool {
namespace {

constexpr const char* kSensorKeys[] = {"ID",           "TYPE",         "THEORY",      "THRESHOLD_FH",
                                       "THRESHOLD_WH", "THRESHOLD_FL", "THRESHOLD_WL"};

/// Reads the values of entries, which a compiled image holds as words and a debug image as the text of the source.
class Values {
public:
    explicit Values(const Image& image) : compiled_(image.Kind() == ImageKind::kCompiled), names_(image.Names()) {}

    ShownValue First(const ShownSection& section, const char* key) const {
        const ShownEntry* entry = section.Entry(key);
        if (!entry) return {};
        if (!compiled_) return Written(entry->value);
        return entry->words.empty() ? ShownValue() : OfWord(entry->words[0]);
    }

    std::vector<ShownValue> List(const ShownSection& section, const char* key) const {
        std::vector<ShownValue> values;
        const ShownEntry* entry = section.Entry(key);
        if (!entry) return values;
        for (const ShownWord& word : entry->words) values.push_back(OfWord(word));
        // A comma stands before every element.
        for (std::size_t comma = 0; comma < entry->value.size();) {
            const std::size_t next = std::min(entry->value.find(',', comma + 1), entry->value.size());
            values.push_back(Written(entry->value.substr(comma + 1, next - comma - 1)));
            comma = next;
        }
        return values;
    }

private:
    static ShownValue OfWord(const ShownWord& word) {
        if (word.number) return {std::to_string(*word.number), word.number};
        return {word.text.value_or(std::string()), {}};
    }

    /// A predefined name or a number of the source: hexadecimal after 0x, else decimal.
    ShownValue Written(const std::string& text) const {
        const auto name = names_.find(text);
        if (name != names_.end()) return {text, name->second};
        const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
        char* end = nullptr;
        const auto number = static_cast<unsigned>(std::strtoull(text.c_str(), &end, hexadecimal ? 16 : 10));
        if (end == text.c_str()) return {text, {}};
        return {text, number};
    }

    bool compiled_;
    const std::map<std::string, unsigned>& names_;
};

ShownSensor Sensor(const Values& values, const ShownSection& section) {
    ShownSensor sensor;
    sensor.parent = values.First(section, "PARENT").text;
    sensor.name = values.First(section, "NAME").text;
    sensor.id = values.First(section, "ID").number;
    for (const char* key : kSensorKeys) {
        if (section.Entry(key)) sensor.values.emplace_back(key, values.First(section, key));
    }
    return sensor;
}

ShownView View(const Values& values, const ShownSection& section) {
    const ShownValue id = values.First(section, "ID");
    const ShownValue parent = values.First(section, "PID");
    return {values.First(section, "NAME").text, id.number, id.text, parent.number, parent.text,
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
