#include "view/entry_shape.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>

#include "check/vocabulary.h"

namespace zek {

namespace {

constexpr unsigned kClassShift = 24;

/// Kinds of sections, a bit for each.
template <class... Kinds>
constexpr unsigned Bits(Kinds... kinds) {
    return ((1U << (kinds & kIdOrdinalMask)) | ...);
}

/// What a keyword has as its words, and in which kinds of sections it stands.
struct Keyword {
    EntryShape shape = {};
    unsigned kinds = 0;
};

constexpr EntryShape One(std::string_view role) { return {role, false, kNoRole, 1, 1}; }
constexpr EntryShape kText = One("s");
constexpr EntryShape kNumber = One("n");
constexpr EntryShape kNumbers = {"", false, kNumberOperand, 0, kNoLimit};

/// By the ordinal of the keyword; in no kind where no entry has that name. In some kinds the word of a NAME or PARENT
/// is another, see ShapeOfKey.
constexpr std::array<Keyword, kKeywords> kKeywordRows = {{
    {},
    {kText, Bits(kImageQuorzek)},                                  // VERSION
    {kNumber, Bits(kImageSystem, kImageSensor, kImageTable)},      // TYPE
    {kNumber, Bits(kImageSystem)},                                 // FLAG
    {kNumber, Bits(kImageSystem)},                                 // SOUTHBRIDGE
    {kNumber, Bits(kImageSystem)},                                 // NORTHBRIDGE
    {kNumber, Bits(kImageSystem)},                                 // ZEKLOOP
    {kNumber, Bits(kImageGroup)},                                  // CHILDGROUP
    {kNumber, Bits(kImageSensor, kImageDevice, kImageTavrGroup)},  // ID
    {kNumber, Bits(kImageSensor, kImageDevice)},                   // INITFLAG
    {kNumber, Bits(kImageSensor, kImageDevice)},                   // CONTROLMASK
    {kNumber, Bits(kImageSensor)},                                 // THEORY
    {kNumber, Bits(kImageSensor)},                                 // THRESHOLD_FH
    {kNumber, Bits(kImageSensor)},                                 // THRESHOLD_WH
    {kNumber, Bits(kImageSensor)},                                 // THRESHOLD_FL
    {kNumber, Bits(kImageSensor)},                                 // THRESHOLD_WL
    {kNumber, Bits(kImageAction)},                                 // ARGNUMBER
    {kNumber, Bits(kImageTavrGroup)},                              // PID
    {},
    {kText, Bits(kImageSystem)},                                                                         // MODEL
    {kText, Bits(kImageGroup, kImageSensor)},                                                            // PARENT
    {kText, Bits(kImageGroup, kImageSensor, kImageDevice, kImageAction, kImageTable, kImageTavrGroup)},  // NAME
    {kNumbers, Bits(kImageTavrGroup)},                                                                   // SENSORS
}};

constexpr EntryShape kRepeaterShape = {"na", false, kReference, 2, kNoLimit};

/// In which kinds of sections a name of the class of a table stands, by the number of the class.
constexpr auto kKindsOfClass = [] {
    std::array<unsigned, 32> kinds{};
    kinds[kIdProperty >> kClassShift] = Bits(kImageProperty, kImageSystem, kImageSensor, kImageDevice, kImageTavrGroup);
    kinds[kIdGlobal >> kClassShift] = Bits(kImageGlobal);
    kinds[kIdValue >> kClassShift] = Bits(kImageGroup, kImageSensor, kImageDevice, kImageAction);
    kinds[kIdRepeater >> kClassShift] = Bits(kImageRepeater);
    return kinds;
}();

/// The values of a group, without VALUE_.
constexpr std::string_view kGroupValues[] = {"INIT", "DEINIT", "ENTRY", "EXIT"};

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

unsigned KindsWith(unsigned name) {
    const unsigned nameClass = name >> kClassShift;
    const unsigned ordinal = name & kIdOrdinalMask;
    if (nameClass >= kKindsOfClass.size()) return 0;
    const bool keyword = nameClass == kIdKeyword >> kClassShift && ordinal < kKeywords;
    return keyword ? kKeywordRows[ordinal].kinds : kKindsOfClass[nameClass];
}

bool IsNameOfValue(unsigned kind, std::string_view name) {
    // Longer than any number.
    constexpr std::size_t kLong = 16;
    if (kind != kImageGroup && kind != kImageAction) return true;
    if (kind == kImageGroup) return std::ranges::find(kGroupValues, name) != std::end(kGroupValues);
    return name.empty() || name == "IPMI" || IsNumber(std::string(name.substr(0, kLong)));
}

EntryShape ShapeOfKey(unsigned kind, unsigned name) {
    const unsigned nameClass = name & kIdClassMask;
    if (nameClass == kIdRepeater) return kRepeaterShape;
    if (nameClass != kIdKeyword) return kText;
    if (name == kIdName && kind == kImageAction) return One("a");
    const bool ofGroup = kind == kImageGroup && (name == kIdName || name == kIdParent);
    if (ofGroup || (kind == kImageSensor && name == kIdParent)) return One("g");
    return kKeywordRows[name & kIdOrdinalMask].shape;
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

bool IsValueKey(unsigned name) {
    const unsigned nameClass = name & kIdClassMask;
    return nameClass == kIdValue || nameClass == kIdGlobal;
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
