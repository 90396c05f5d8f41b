/// A compiled image for queries, and the code that a query leaves. Relies on image_bytes.h.
#pragma once

#include "compile/image_bytes.h"

namespace zek::test {

inline constexpr unsigned kSensor = 0x01000005;
inline constexpr unsigned kDevice = 0x01000006;
inline constexpr unsigned kNameWord = 0x02000015;
inline constexpr unsigned kIDWord = 0x02000008;

inline std::vector<unsigned char> TableData(std::size_t size) {
    std::vector<unsigned char> data(size);
    for (std::size_t i = 0; i < size; ++i) data[i] = static_cast<unsigned char>(i / 256 * 16 + i % 7);
    return data;
}

/// Sections of several kinds; the strings are s0 to s3, the numbers 10, 20 and 0xFFFFFFFF.
inline std::string QueriedImage() {
    const auto data = TableData(600);
    return Image(
        {{kSensor, {{kNameWord, {0x12000000}}, {kIDWord, {0x11000000}}, {0x03000000, {0x12000003}}}},
         {0x01000002, {{0x03000000, {0x12000000}}, {0x03000001, {}}}},
         {kSensor, {{kNameWord, {}}, {kIDWord, {}}, {kNameWord, {0x12000001}}, {kIDWord, {0x11000001}}}},
         {kSensor, {{kNameWord, {0x12000001, 0x12000002}}, {kIDWord, {0x11000001, 0x11000000}}}},
         {kDevice, {}},
         {0x01000007, {{kNameWord, {0x11000000}}, {kIDWord, {0x12000000}}}},
         {0x01000008, {{kNameWord, {}}, {0x03000000, {0x12000000}}}},
         {0x0100000a, {{0x04000000, {0x1e000001, 0x11000000}}, {kNameWord, {0x12000002}}}},
         {0x0100000b, {{0x06000000, {0x11000000, 0x1a000000}}}},
         {0x01000004, {{kNameWord, {0x18000002}}}},
         {0x01000004, {{kNameWord, {}}, {kNameWord, {0x18000001}}}},
         {0x01000001, {{0x03000009, {0x12000000}}}}},
        {Record(0x03000000, Names({"p0", "p1"})), Record(0x04000000, Names({"g0"})), Record(0x06000000, Names({"r0"})),
         Record(0x11000000, Joined({10, 20, 0xFFFFFFFF})), Record(0x12000000, Names({"s0", "s1", "s2", "s3"})),
         Record(0x18000000, Names({"0", "A", "B"})), Record(0x1b000000, std::string(data.begin(), data.end()))});
}

/// The code that a call leaves in its slot; the other slot must keep what it held.
template <class Call>
unsigned CodeAfter(Call&& call) {
    gcSetLastError(77);
    gdSetLastError(88);
    call();
    EXPECT_EQ(gdGetLastError(), 88U) << "the other family's slot";
    return gcGetLastError();
}

}  // namespace zek::test
