/// What the tests of the typed data share: the shape of every value type, filled values, buffers as strings. Relies on
/// entry_data.h.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/entry_data.h"

namespace zek::test {

/// The payload of a value type: so many strings, then perhaps a list.
struct ValueType {
    unsigned type;
    std::size_t strings;
    bool list;
};

inline constexpr ValueType kValueTypes[] = {
    {0, 0, false},  {1, 1, false},   {2, 5, false},  {3, 1, true},    {4, 4, false},   {5, 4, true},
    {6, 2, true},   {7, 0, true},    {8, 4, false},  {9, 4, true},    {10, 2, false},  {11, 4, true},
    {12, 4, false}, {101, 1, false}, {102, 2, true}, {103, 1, false}, {104, 1, false},
};

inline constexpr unsigned kTypesWithoutPayload[] = {13, 50, 99, 100, 105, 106, 0x80000000, 0xFFFFFFFF};

/// The classes of entries, as the type ids of one entry each.
inline constexpr unsigned kNumberEntry = 0x10010005;
inline constexpr unsigned kTextEntry = 0x10020013;
inline constexpr unsigned kListEntry = 0x10048001;
inline constexpr unsigned kValueEntryType = 0x10080007;
inline constexpr unsigned kRepeaterEntry = 0x10100001;
inline constexpr unsigned kNoClassEntry = 0x10200001;

using List = std::vector<std::string>;

/// What a repeater item is: the fields stand in this order.
struct RepeaterRecord {
    std::string count;
    std::string action;
    List parameters;
};

/// The strings of a payload, which stand one after the other, and the list behind them.
inline std::string* StringsIn(const CGeValue& value) { return static_cast<std::string*>(value.GetData()); }
inline List& ListIn(const CGeValue& value, const ValueType& shape) {
    return *reinterpret_cast<List*>(StringsIn(value) + shape.strings);
}

/// "s0", "s1", ... in the strings, and "l0", "", "l2" in the list.
inline void Fill(const CGeValue& value, const ValueType& shape) {
    for (std::size_t i = 0; i < shape.strings; ++i) StringsIn(value)[i] = "s" + std::to_string(i);
    if (shape.list) ListIn(value, shape) = {"l0", "", "l2"};
}

/// GetBuffer into a vector that was not empty.
template <class Holder>
std::string BytesOf(Holder& holder) {
    std::vector<unsigned char> bytes{0xee, 0xee};
    holder.GetBuffer(bytes);
    return {bytes.begin(), bytes.end()};
}

template <class Holder>
void Restore(Holder& holder, std::string_view bytes) {
    holder.SetBuffer(std::vector<unsigned char>(bytes.begin(), bytes.end()));
}

/// What Restore throws; empty when it does not.
template <class Holder>
std::string RestoreFailure(Holder& holder, std::string_view bytes) {
    try {
        Restore(holder, bytes);
    } catch (const std::out_of_range& error) {
        return error.what();
    }
    return {};
}

}  // namespace zek::test
