/// What a debug image may hold: its kinds of sections with their entries, and the fields of each class of typed data
/// and of each value type. Relies on the standard library; docs/debug-image.md tells the bytes.
#pragma once

#include <iterator>
#include <span>

namespace zek::tool {

inline constexpr unsigned kSectionTypes = 0x20000000;  ///< a section's type id is this and its number, from 1

// Type ids of entries: text, text that is a number, and value.
constexpr unsigned TextKey(unsigned number) { return 0x10020000 | number; }
constexpr unsigned NumericKey(unsigned number) { return 0x10028000 | number; }
constexpr unsigned ValueKey(unsigned number) { return 0x10080000 | number; }
inline constexpr unsigned kDefinitionKey = 0x10010001;
inline constexpr unsigned kSensorsKey = 0x10048001;
inline constexpr unsigned kRepeaterKey = 0x10100001;
inline constexpr unsigned kPropertyKey = TextKey(0x18);  ///< P_name

/// A kind of section.
struct DebugKind {
    const char* keyword;
    std::span<const unsigned> declared;  ///< the entries that each such section begins with
    unsigned added;                      ///< what else a source may give it; 0 for nothing
    bool addsProperties = false;         ///< and kPropertyKey
};

// NAME and ID, which most kinds have.
inline constexpr unsigned kNameKey = TextKey(0x15);
inline constexpr unsigned kIDKey = NumericKey(0x08);

// In the order of docs/debug-image.md, "Declared keys".
inline constexpr unsigned kQuorzekKeys[] = {TextKey(0x01)};
inline constexpr unsigned kSystemKeys[] = {NumericKey(0x02), TextKey(0x13),    NumericKey(0x03),
                                           NumericKey(0x04), NumericKey(0x05), NumericKey(0x06)};
inline constexpr unsigned kGroupKeys[] = {TextKey(0x14), kNameKey,    NumericKey(0x07), ValueKey(2),
                                          ValueKey(3),   ValueKey(4), ValueKey(5)};
inline constexpr unsigned kSensorKeys[] = {
    TextKey(0x14),    kNameKey,         kIDKey,           NumericKey(0x02), NumericKey(0x09), NumericKey(0x0a),
    NumericKey(0x0b), NumericKey(0x0c), NumericKey(0x0d), NumericKey(0x0e), NumericKey(0x0f), ValueKey(2),
    ValueKey(3),      ValueKey(4),      ValueKey(5),      ValueKey(0),      ValueKey(6)};
inline constexpr unsigned kDeviceKeys[] = {kNameKey, kIDKey, NumericKey(0x09), NumericKey(0x0a)};
inline constexpr unsigned kActionKeys[] = {kNameKey, NumericKey(0x10), ValueKey(6), ValueKey(0)};
inline constexpr unsigned kTableKeys[] = {kNameKey, NumericKey(0x02)};
inline constexpr unsigned kTavrGroupKeys[] = {kNameKey, kIDKey, NumericKey(0x11), kSensorsKey};
inline constexpr unsigned kIfdefKeys[] = {TextKey(0x16)};

/// By the number of the kind, from 1.
inline constexpr DebugKind kDebugKinds[] = {
    {"QUORZEK", kQuorzekKeys, 0},
    {"PROPERTY", {}, TextKey(0x17)},
    {"SYSTEM", kSystemKeys, 0, true},
    {"GROUP", kGroupKeys, 0},
    {"SENSOR", kSensorKeys, ValueKey(8), true},
    {"DEVICE", kDeviceKeys, ValueKey(8), true},
    {"ACTION", kActionKeys, ValueKey(7)},
    {"TABLE", kTableKeys, TextKey(0x12)},
    {"TAVRGROUP", kTavrGroupKeys, 0, true},
    {"GLOBAL", {}, ValueKey(1)},
    {"REPEATER", {}, kRepeaterKey},
    {"DEFINE", {}, kDefinitionKey},
    {"IFDEF", kIfdefKeys, kDefinitionKey},
    {"INCLUDE", {}, TextKey(0x19)},
};

/// The kind of a section by its type id; null where there is none.
constexpr const DebugKind* DebugKindOf(unsigned type) {
    const unsigned row = type - kSectionTypes - 1;
    return row < std::size(kDebugKinds) ? &kDebugKinds[row] : nullptr;
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
constexpr const char* ValueFields(unsigned type) {
    constexpr const char* kLow[] = {"",  "t",    "ttttt", "tl", "tttt",  "ttttl", "ttl",
                                    "l", "tttt", "ttttl", "tt", "ttttl", "tttt"};
    constexpr const char* kHigh[] = {"t", "ttl", "t", "t"};
    constexpr unsigned kFirstHigh = 101;
    if (type < std::size(kLow)) return kLow[type];
    return type - kFirstHigh < std::size(kHigh) ? kHigh[type - kFirstHigh] : "";
}

}  // namespace zek::tool
