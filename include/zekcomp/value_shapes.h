/// The shape of every kind of payload: how many strings, whether a list follows, and what each operand is. Relies on
/// nothing.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace zek {

/// What the string of an operand is; one letter per string in a ValueShape.
enum Operand : char {
    kReference = 'r',      ///< a number, predefined name, global, argument or VALUE_ name
    kNumberOperand = 'n',  ///< a number or predefined name
    kOperatorOperand = 'o',
    kActionOperand = 'a',
    kTableOperand = 't',
    kValueNameOperand = 'v',
};

inline constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

/// The payload of a value type: some strings, then perhaps a list of references.
struct ValueShape {
    unsigned type;
    std::string_view operands;  ///< an Operand per string
    bool list;
    std::size_t fewest;  ///< sub-strings with the type word included: fewer is an error
    std::size_t most;    ///< more is a warning
};

inline constexpr ValueShape kValueShapes[] = {
    // type operands list  fewest most
    {0, "", false, 0, 1},
    {1, "r", false, 2, 2},
    {2, "orrrr", false, 4, kNoLimit},  // how many a type 2 takes hangs on its operator: see CGEVALUE::IsValid
    {3, "a", true, 2, kNoLimit},
    {4, "rnnr", false, 5, 5},
    {5, "rnnr", true, 6, 6},
    {6, "nn", true, 3, kNoLimit},
    {7, "", true, 0, 5},
    {8, "rnnr", false, 5, 5},
    {9, "rnnr", true, 6, 6},
    {10, "tr", false, 3, 3},
    {11, "rnnr", true, 6, 6},
    {12, "rnnr", false, 5, 5},
    {101, "r", false, 2, 2},
    {102, "ra", true, 3, kNoLimit},
    {103, "r", false, 2, 2},
    {104, "v", false, 2, 2},
};
static_assert(std::size(kValueShapes) == 17, "one row per value type that takes operands, and type 0");

/// The value types that rules name.
inline constexpr unsigned kOperation = 2;
inline constexpr unsigned kCall = 3;
inline constexpr unsigned kSmbusList = 11;
inline constexpr unsigned kSmbus = 12;
inline constexpr unsigned kListOfFour = 7;

/// The shape of a value type; null for one without payload (13 to 100, above 104).
constexpr const ValueShape* ShapeOf(unsigned type) {
    // The types stand in their order, with one gap.
    constexpr unsigned kGap = 88;
    const std::size_t row = type <= kSmbus ? type : type - kGap;
    return row < std::size(kValueShapes) && kValueShapes[row].type == type ? &kValueShapes[row] : nullptr;
}
static_assert(std::all_of(std::begin(kValueShapes), std::end(kValueShapes),
                          [](const ValueShape& shape) { return ShapeOf(shape.type) == &shape; }));

/// Whether the type reads or writes a bus: reference, number, bus type, base address.
constexpr bool IsBusAccess(const ValueShape& shape) { return shape.operands == "rnnr"; }

}  // namespace zek
