/// What a debug image may hold: the kinds of sections with the keys that a source may give them, and the fields of each
/// class of typed data and of each value type. Relies on value_shapes.h; docs/debug-image.md tells the bytes.
#pragma once

#include <algorithm>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

#include "zekcomp/value_shapes.h"

namespace zek::tool {

inline constexpr unsigned kSectionTypes = 0x20000000;  ///< a section's type id is this and its number, from 1

// Type ids of entries: text, text that is a number, and value.
constexpr unsigned TextKey(unsigned number) { return 0x10020000 | number; }
constexpr unsigned NumericKey(unsigned number) { return 0x10028000 | number; }
constexpr unsigned ValueKey(unsigned number) { return 0x10080000 | number; }
inline constexpr unsigned kDefinitionKey = 0x10010001;
inline constexpr unsigned kSensorsKey = 0x10048001;
inline constexpr unsigned kRepeaterKey = 0x10100001;
inline constexpr unsigned kRowKey = TextKey(0x12);       ///< of a table
inline constexpr unsigned kPropertyKey = TextKey(0x18);  ///< P_name
inline constexpr unsigned kFileKey = TextKey(0x19);
inline constexpr unsigned kOwnValueKey = ValueKey(8);  ///< VALUE_name of a sensor or device

/// A declared key of a kind.
struct DebugKey {
    unsigned type;
    const char* name;
    unsigned notation;
};

/// A kind of section.
struct DebugKind {
    const char* keyword;
    unsigned notation;
    std::span<const DebugKey> declared;  ///< the entries that each such section begins with
    unsigned added;                      ///< what else a source may give it; 0 for nothing
    bool addsProperties = false;         ///< and kPropertyKey

    /// A declared key by its name; null where there is none.
    constexpr const DebugKey* Declared(std::string_view key) const {
        const auto found = std::find_if(declared.begin(), declared.end(),
                                        [key](const DebugKey& candidate) { return key == candidate.name; });
        return found == declared.end() ? nullptr : &*found;
    }

    /// Whether a key makes a definition, be it called as a declared one.
    constexpr bool Defines() const { return added == kDefinitionKey; }
};

/// The notation of a declared key that is given again.
inline constexpr unsigned kRepeatedNotation = 2;

/// The notation of an entry that a source adds to those declared.
constexpr unsigned AddedNotation(unsigned type) {
    if (type == ValueKey(7)) return 14;
    if (type >> 16 == ValueKey(0) >> 16) return 46;
    return type == kFileKey ? 2 : 10;
}

// Those that several kinds declare.
inline constexpr DebugKey kParentKey = {TextKey(0x14), "PARENT", 1};
inline constexpr DebugKey kNameKey = {TextKey(0x15), "NAME", 1};
inline constexpr DebugKey kTypeKey = {NumericKey(0x02), "TYPE", 1};
inline constexpr DebugKey kIDKey = {NumericKey(0x08), "ID", 1};
inline constexpr DebugKey kInitFlagKey = {NumericKey(0x09), "INITFLAG", 1};
inline constexpr DebugKey kControlMaskKey = {NumericKey(0x0a), "CONTROLMASK", 1};
inline constexpr DebugKey kInitKey = {ValueKey(2), "VALUE_INIT", 6};
inline constexpr DebugKey kDeinitKey = {ValueKey(3), "VALUE_DEINIT", 6};
inline constexpr DebugKey kEntryKey = {ValueKey(4), "VALUE_ENTRY", 6};
inline constexpr DebugKey kExitKey = {ValueKey(5), "VALUE_EXIT", 6};
inline constexpr DebugKey kIpmiKey = {ValueKey(6), "VALUE_IPMI", 38};

// In the order of docs/debug-image.md, "Declared keys".
inline constexpr DebugKey kQuorzekKeys[] = {{TextKey(0x01), "VERSION", 1}};
inline constexpr DebugKey kSystemKeys[] = {kTypeKey,
                                           {TextKey(0x13), "MODEL", 1},
                                           {NumericKey(0x03), "FLAG", 1},
                                           {NumericKey(0x04), "SOUTHBRIDGE", 2},
                                           {NumericKey(0x05), "NORTHBRIDGE", 2},
                                           {NumericKey(0x06), "ZEKLOOP", 1}};
inline constexpr DebugKey kGroupKeys[] = {
    kParentKey, kNameKey, {NumericKey(0x07), "CHILDGROUP", 1}, kInitKey, kDeinitKey, kEntryKey, kExitKey};
inline constexpr DebugKey kSensorKeys[] = {kParentKey,
                                           kNameKey,
                                           kIDKey,
                                           kTypeKey,
                                           kInitFlagKey,
                                           kControlMaskKey,
                                           {NumericKey(0x0b), "THEORY", 2},
                                           {NumericKey(0x0c), "THRESHOLD_FH", 2},
                                           {NumericKey(0x0d), "THRESHOLD_WH", 2},
                                           {NumericKey(0x0e), "THRESHOLD_FL", 2},
                                           {NumericKey(0x0f), "THRESHOLD_WL", 2},
                                           kInitKey,
                                           kDeinitKey,
                                           kEntryKey,
                                           kExitKey,
                                           {ValueKey(0), "VALUE", 37},
                                           kIpmiKey};
inline constexpr DebugKey kDeviceKeys[] = {kNameKey, kIDKey, kInitFlagKey, kControlMaskKey};
inline constexpr DebugKey kActionKeys[] = {
    kNameKey, {NumericKey(0x10), "ARGNUMBER", 2}, kIpmiKey, {ValueKey(0), "VALUE", 38}};
inline constexpr DebugKey kTableKeys[] = {kNameKey, kTypeKey};
inline constexpr DebugKey kTavrGroupKeys[] = {
    kNameKey, kIDKey, {NumericKey(0x11), "PID", 1}, {kSensorsKey, "SENSORS", 1}};
inline constexpr DebugKey kIfdefKeys[] = {{TextKey(0x16), "DEFINEWORD", 1}};

/// By the number of the kind, from 1.
inline constexpr DebugKind kDebugKinds[] = {
    {"QUORZEK", 1, kQuorzekKeys, 0},
    {"PROPERTY", 2, {}, TextKey(0x17)},
    {"SYSTEM", 1, kSystemKeys, 0, true},
    {"GROUP", 2, kGroupKeys, 0},
    {"SENSOR", 2, kSensorKeys, kOwnValueKey, true},
    {"DEVICE", 2, kDeviceKeys, kOwnValueKey, true},
    {"ACTION", 2, kActionKeys, ValueKey(7)},
    {"TABLE", 2, kTableKeys, kRowKey},
    {"TAVRGROUP", 1, kTavrGroupKeys, 0, true},
    {"GLOBAL", 2, {}, ValueKey(1)},
    {"REPEATER", 2, {}, kRepeaterKey},
    {"DEFINE", 2, {}, kDefinitionKey},
    {"IFDEF", 2, kIfdefKeys, kDefinitionKey},
    {"INCLUDE", 2, {}, kFileKey},
};

/// The kind of a section by its type id; null where there is none.
constexpr const DebugKind* DebugKindOf(unsigned type) {
    const unsigned row = type - kSectionTypes - 1;
    return row < std::size(kDebugKinds) ? &kDebugKinds[row] : nullptr;
}

/// The same by its keyword.
constexpr const DebugKind* DebugKindOf(std::string_view keyword) {
    const auto* const row = std::find_if(std::begin(kDebugKinds), std::end(kDebugKinds),
                                         [keyword](const DebugKind& kind) { return keyword == kind.keyword; });
    return row == std::end(kDebugKinds) ? nullptr : row;
}

/// The fields of typed data by the class of its type id, one letter each: n number, t text, l list of texts, v value
/// record. Null for what is no class.
constexpr const char* DataFields(unsigned type) {
    switch (type >> 16) {
        case 0x1001: return "n";
        case 0x1002: return "t";
        case 0x1004: return "l";
        case 0x1008: return "v";
        case 0x1010: return "ttl";
        default: return nullptr;
    }
}

/// The operands of a value type, with the same letters.
inline std::string ValueFields(unsigned type) {
    const ValueShape* const shape = ShapeOf(type);
    if (!shape) return {};
    return std::string(shape->operands.size(), 't') + (shape->list ? "l" : "");
}

}  // namespace zek::tool
