#include "model/bytes.h"

#include <gtest/gtest.h>

namespace zek::test {

namespace {

using Bytes = std::vector<unsigned char>;

Bytes BytesOf(const ByteBuffer& buffer) { return {buffer.Data(), buffer.Data() + buffer.Size()}; }

}  // namespace

TEST(ByteWriter, PutsWordsBehindEachOtherLowByteFirst) {
    const std::vector<unsigned> rest = {0x01020304, 0xFFFFFFFE};
    ByteBuffer buffer;
    ByteWriter out(buffer);
    out.Words({0x80818283, 7}, rest);
    out.Words({});
    out.Words({0x0A0B0C0D});
    EXPECT_EQ(BytesOf(buffer),
              (Bytes{0x83, 0x82, 0x81, 0x80, 7, 0, 0, 0, 4, 3, 2, 1, 0xFE, 0xFF, 0xFF, 0xFF, 0x0D, 0x0C, 0x0B, 0x0A}));
}

TEST(ByteReader, TakesWordsThatBeginAnywhere) {
    const Bytes bytes = {9, 0x83, 0x82, 0x81, 0x80, 4, 3, 2, 1, 5};
    ByteReader in(bytes);
    in.Seek(1);
    EXPECT_EQ(in.Words(2), (std::vector<unsigned>{0x80818283, 0x01020304}));
    EXPECT_EQ(in.Position(), 9u);
    EXPECT_EQ(in.Words(0), std::vector<unsigned>{});
}

TEST(ByteReader, TakesNoWordWhenTheLastIsCut) {
    const Bytes bytes(11);
    ByteReader in(bytes);
    EXPECT_THROW(in.Words(3), std::out_of_range);
    EXPECT_EQ(in.Position(), 0u);
    EXPECT_EQ(in.Words(2), (std::vector<unsigned>{0, 0}));
}

TEST(ByteReader, ReadsZerosForMissingBytesOfAWord) {
    const Bytes bytes = {1, 2, 3, 4, 5, 6, 7};
    const std::vector<unsigned> expected = {0x04030201, 0x00070605, 0};
    ByteReader one(bytes.data(), bytes.size(), 12);
    for (unsigned word : expected) EXPECT_EQ(one.U32(), word);
    ByteReader all(bytes.data(), bytes.size(), 12);
    EXPECT_EQ(all.Words(3), expected);
    EXPECT_THROW(all.U32(), std::out_of_range);
}

TEST(ByteReader, TakesNoMemoryForWordsThatAreMissing) {
    const Bytes bytes = {1, 2, 3, 4};
    ByteReader in(bytes.data(), bytes.size(), std::size_t{1} << 40);
    EXPECT_THROW(in.Words(std::size_t{1} << 30), std::out_of_range);
    EXPECT_EQ(in.U32(), 0x04030201u);
}

}  // namespace zek::test
