#include "view/entry_shape.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "check/vocabulary.h"

namespace zek {

namespace {

constexpr unsigned kClassShift = 24;

constexpr EntryShape One(std::string_view role) { return {role, false, kNoRole, 1, 1}; }

/// By the ordinal of the keyword; without a fixed role where no entry has that name. NAME and PARENT hang on the kind.
constexpr auto kKeywordShapes = [] {
    std::array<EntryShape, 0x17> shapes{};
    for (unsigned ordinal = 0x02; ordinal <= 0x11; ++ordinal) shapes[ordinal] = One("n");
    for (const unsigned ordinal : {0x01U, 0x13U, 0x14U, 0x15U}) shapes[ordinal] = One("s");
    shapes[0x16] = {"", false, kNumberOperand, 0, kNoLimit};
    return shapes;
}();

constexpr EntryShape kRepeaterShape = {"na", false, kReference, 2, kNoLimit};

constexpr unsigned Bit(unsigned kind) { return 1U << (kind & kIdOrdinalMask); }

/// In which kinds of sections a name of the class of a table stands.
struct NamedIn {
    unsigned nameClass;
    unsigned kinds;
};
constexpr NamedIn kNamedIn[] = {
    {kIdProperty,
     Bit(kImageProperty) | Bit(kImageSystem) | Bit(kImageSensor) | Bit(kImageDevice) | Bit(kImageTavrGroup)},
    {kIdGlobal, Bit(kImageGlobal)},
    {kIdValue, Bit(kImageGroup) | Bit(kImageSensor) | Bit(kImageDevice) | Bit(kImageAction)},
    {kIdRepeater, Bit(kImageRepeater)},
};

bool MayName(unsigned kind, unsigned name) {
    for (const NamedIn& row : kNamedIn) {
        if (row.nameClass == (name & kIdClassMask)) return row.kinds & Bit(kind);
    }
    return false;
}

std::optional<EntryShape> ShapeOfKeyword(unsigned kind, unsigned name) {
    const unsigned ordinal = name & kIdOrdinalMask;
    if (ordinal >= kKeywordShapes.size()) return {};
    const EntryShape& shape = kKeywordShapes[ordinal];
    if (shape.fixed.empty() && shape.list == kNoRole) return {};
    if (name == kIdName && kind == kImageAction) return One("a");
    const bool ofGroups = kind == kImageGroup && (name == kIdName || name == kIdParent);
    return ofGroups || (kind == kImageSensor && name == kIdParent) ? One("g") : shape;
}

/// The classes that can stand in a role, a bit for each.
constexpr unsigned ClassesOf(char role) {
    constexpr auto bit = [](unsigned wordClass) { return 1U << (wordClass >> kClassShift); };
    switch (role) {
        case kTextWord: return bit(kIdString);
        case kGroupWord: return bit(kIdGroup);
        case kActionOperand: return bit(kIdAction);
        case kTableOperand: return bit(kIdTableName);
        case kNumberOperand: return bit(kIdNumber);
        case kValueTypeWord: return bit(kIdValueType);
        case kOperatorOperand: return bit(kIdOperator);
        case kReference:
        case kValueNameOperand: return bit(kIdNumber) | bit(kIdValue) | bit(kIdGlobal) | bit(kIdArgument);
        default: return 0;
    }
}

/// By the role's letter, for the many words of an image.
constexpr auto kClassesOf = [] {
    std::array<unsigned, 128> classes{};
    for (std::size_t role = 0; role < classes.size(); ++role) classes[role] = ClassesOf(static_cast<char>(role));
    return classes;
}();

}  // namespace

std::optional<EntryShape> ShapeOfKey(unsigned kind, unsigned name) {
    const unsigned nameClass = name & kIdClassMask;
    if (nameClass == kIdKeyword) return ShapeOfKeyword(kind, name);
    if (!MayName(kind, name)) return {};
    return nameClass == kIdRepeater ? kRepeaterShape : One("s");
}

EntryShape ShapeOfValue(unsigned type, bool comparison) {
    const ValueShape* shape = ShapeOf(type);
    if (!shape) return {"", true, kNoRole, 1, 1};
    std::string_view operands = shape->operands;
    if (type == kOperation && !comparison) operands = operands.substr(0, 3);
    const std::size_t fixed = 1 + operands.size();
    if (!shape->list) return {operands, true, kNoRole, fixed, fixed};
    return {operands, true, kReference, std::max(fixed, shape->fewest), type == kListOfFour ? shape->most : kNoLimit};
}

bool IsValueKey(unsigned kind, unsigned name) {
    const unsigned nameClass = name & kIdClassMask;
    return (nameClass == kIdValue || nameClass == kIdGlobal) && MayName(kind, name);
}

bool IsOperatorCode(unsigned code) {
    return std::any_of(std::begin(g_NTMapOper), std::end(g_NTMapOper),
                       [code](const tagNTMAP& row) { return row.dwID == code; });
}

bool IsComparison(unsigned code) { return code >= kFirstComparison; }

bool MayStand(char role, unsigned word) {
    const unsigned ofWord = word >> kClassShift;
    return ofWord < 32 && (kClassesOf[static_cast<unsigned char>(role)] >> ofWord & 1);
}

}  // namespace zek
