#include "parser_test.h"

namespace {

// A parsed file of two sections, [SENSOR] with two items and [EMPTY] with none.
class SizeProtocol : public ParserTest {
protected:
    void SetUp() override {
        ParserTest::SetUp();
        file_ = RSOpenFile(Write("two.ini", "\n[SENSOR]\nNAME = Speed\nflag\n[EMPTY]\n"));
        ASSERT_NE(file_, nullptr);
        ASSERT_EQ(RSParse(file_), 1u);
        section_ = RSEnumSection(file_, 0);
        ASSERT_NE(section_, nullptr);
    }
    void TearDown() override {
        RSCloseFile(&file_);
        ParserTest::TearDown();
    }

    void* file_ = nullptr;
    void* section_ = nullptr;
    unsigned size_ = 0;
    unsigned valueSize_ = 0;
    unsigned line_ = 77;
    char buffer_[16] = "untouched";
    char value_[16] = "untouched";
};

TEST_F(SizeProtocol, NullNameGivesTheSizeWithTheNul) {
    EXPECT_EQ(RSGetSectInfo(section_, nullptr, &size_, &line_), 1u);
    EXPECT_EQ(size_, 7u);
}

TEST_F(SizeProtocol, ExactBufferIsFilledWithNameAndLine) {
    size_ = 7;
    EXPECT_EQ(RSGetSectInfo(section_, buffer_, &size_, &line_), 1u);
    EXPECT_EQ(std::string(buffer_, 10), std::string("SENSOR\0ed\0", 10));
    EXPECT_EQ(size_, 7u);
    EXPECT_EQ(line_, 2u);
}

TEST_F(SizeProtocol, LargerNameBufferWillDo) {
    size_ = sizeof buffer_;
    EXPECT_EQ(RSGetSectInfo(section_, buffer_, &size_, &line_), 1u);
    EXPECT_STREQ(buffer_, "SENSOR");
    EXPECT_EQ(size_, sizeof buffer_);
}

TEST_F(SizeProtocol, NameBufferTooSmallStoresNothing) {
    size_ = 6;
    EXPECT_EQ(RSGetSectInfo(section_, buffer_, &size_, &line_), 0u);
    EXPECT_STREQ(buffer_, "untouched");
    EXPECT_EQ(size_, 6u);
    EXPECT_EQ(line_, 77u);
}

TEST_F(SizeProtocol, SectionLineMayBeNull) {
    size_ = 7;
    EXPECT_EQ(RSGetSectInfo(section_, buffer_, &size_, nullptr), 1u);
    EXPECT_STREQ(buffer_, "SENSOR");
}

TEST_F(SizeProtocol, NullSizeFails) {
    EXPECT_EQ(RSGetSectInfo(section_, nullptr, nullptr, &line_), 0u);
    EXPECT_EQ(RSGetSectInfo(section_, buffer_, nullptr, &line_), 0u);
    EXPECT_EQ(RSEnumItem(section_, 0, nullptr, nullptr, nullptr, &valueSize_, &line_), 0u);
    EXPECT_EQ(RSEnumItem(section_, 0, nullptr, &size_, nullptr, nullptr, &line_), 0u);
    EXPECT_STREQ(buffer_, "untouched");
    EXPECT_EQ(line_, 77u);
}

TEST_F(SizeProtocol, NullItemBuffersGiveBothSizes) {
    EXPECT_EQ(RSEnumItem(section_, 0, nullptr, &size_, nullptr, &valueSize_, &line_), 1u);
    EXPECT_EQ(size_, 5u);
    EXPECT_EQ(valueSize_, 6u);
}

TEST_F(SizeProtocol, EmptyValueNeedsOneByte) {
    EXPECT_EQ(RSEnumItem(section_, 1, nullptr, &size_, nullptr, &valueSize_, &line_), 1u);
    EXPECT_EQ(valueSize_, 1u);
    EXPECT_EQ(RSEnumItem(section_, 1, buffer_, &size_, value_, &valueSize_, &line_), 1u);
    EXPECT_STREQ(buffer_, "flag");
    EXPECT_EQ(std::string(value_, 9), std::string("\0ntouched", 9));
}

TEST_F(SizeProtocol, ExactItemBuffersAreFilledWithTheLine) {
    size_ = 5;
    valueSize_ = 6;
    EXPECT_EQ(RSEnumItem(section_, 0, buffer_, &size_, value_, &valueSize_, &line_), 1u);
    EXPECT_EQ(std::string(buffer_, 9), std::string("NAME\0ched", 9));
    EXPECT_EQ(std::string(value_, 9), std::string("Speed\0hed", 9));
    EXPECT_EQ(line_, 3u);
}

TEST_F(SizeProtocol, EitherItemBufferTooSmallStoresNothing) {
    for (const auto& [keySize, valueSize] : {std::pair(4u, 6u), std::pair(5u, 5u), std::pair(0u, 0u)}) {
        SCOPED_TRACE(keySize);
        size_ = keySize;
        valueSize_ = valueSize;
        EXPECT_EQ(RSEnumItem(section_, 0, buffer_, &size_, value_, &valueSize_, &line_), 0u);
        EXPECT_STREQ(buffer_, "untouched");
        EXPECT_STREQ(value_, "untouched");
        EXPECT_EQ(size_, keySize);
        EXPECT_EQ(valueSize_, valueSize);
        EXPECT_EQ(line_, 77u);
    }
}

TEST_F(SizeProtocol, OneItemBufferMayBeNull) {
    size_ = sizeof buffer_;
    EXPECT_EQ(RSEnumItem(section_, 0, buffer_, &size_, nullptr, &valueSize_, &line_), 1u);
    EXPECT_STREQ(buffer_, "NAME");
    EXPECT_EQ(valueSize_, 6u);
    EXPECT_EQ(line_, 3u);
    EXPECT_EQ(RSEnumItem(section_, 0, nullptr, &size_, value_, &valueSize_, nullptr), 1u);
    EXPECT_STREQ(value_, "Speed");
    EXPECT_EQ(size_, 5u);
}

TEST_F(SizeProtocol, OneItemBufferTooSmallKeepsTheOtherSize) {
    size_ = 4;
    valueSize_ = 99;
    EXPECT_EQ(RSEnumItem(section_, 0, buffer_, &size_, nullptr, &valueSize_, &line_), 0u);
    EXPECT_EQ(valueSize_, 99u);
}

TEST_F(SizeProtocol, PeekedItemStandsInTheFile) {
    const char* key = nullptr;
    const char* value = nullptr;
    EXPECT_EQ(RSPeekItem(section_, 0, &key, &size_, &value, &valueSize_, &line_), 1u);
    EXPECT_EQ(std::string(key, size_), std::string("NAME\0", 5));
    EXPECT_EQ(std::string(value, valueSize_), std::string("Speed\0", 6));
    EXPECT_EQ(line_, 3u);
    const char* again = nullptr;
    EXPECT_EQ(RSPeekItem(section_, 1, &again, &size_, &value, &valueSize_, &line_), 1u);
    EXPECT_EQ(std::string(again, size_), std::string("flag\0", 5));
    EXPECT_EQ(std::string(value, valueSize_), std::string("\0", 1));
    EXPECT_EQ(line_, 4u);
    EXPECT_STREQ(key, "NAME");
}

TEST_F(SizeProtocol, NothingIsPeekedPastTheLastItemAndForANullHandle) {
    const char* text = buffer_;
    for (void* section : {section_, RSEnumSection(file_, 1), static_cast<void*>(nullptr)}) {
        EXPECT_EQ(RSPeekItem(section, 2, &text, &size_, &text, &valueSize_, &line_), 0u);
    }
    EXPECT_EQ(text, buffer_);
    EXPECT_EQ(size_, 0u);
    EXPECT_EQ(line_, 77u);
}

TEST_F(SizeProtocol, ItemsEndAfterTheLast) {
    for (const unsigned index : {2u, 3u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        SCOPED_TRACE(index);
        EXPECT_EQ(RSEnumItem(section_, index, nullptr, &size_, nullptr, &valueSize_, &line_), 0u);
    }
    EXPECT_EQ(RSEnumItem(RSEnumSection(file_, 1), 0, nullptr, &size_, nullptr, &valueSize_, &line_), 0u);
    EXPECT_EQ(size_, 0u);
    EXPECT_EQ(valueSize_, 0u);
}

TEST_F(SizeProtocol, SectionsEndAfterTheLast) {
    EXPECT_NE(RSEnumSection(file_, 1), nullptr);
    for (const unsigned index : {2u, 3u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
        SCOPED_TRACE(index);
        EXPECT_EQ(RSEnumSection(file_, index), nullptr);
    }
}

TEST_F(SizeProtocol, AnyOrderOfIndicesGivesTheSame) {
    std::string key;
    std::string value;
    EXPECT_EQ(RSEnumSection(file_, 0), section_);
    EXPECT_TRUE(ReadItem(section_, 1, key, value, line_));
    EXPECT_EQ(key, "flag");
    EXPECT_TRUE(ReadItem(section_, 0, key, value, line_));
    EXPECT_EQ(key, "NAME");
    EXPECT_EQ(RSEnumSection(file_, 0), section_);
}

TEST_F(SizeProtocol, NullHandlesFail) {
    void* none = nullptr;
    EXPECT_EQ(RSParse(nullptr), 0u);
    EXPECT_EQ(RSEnumSection(nullptr, 0), nullptr);
    EXPECT_EQ(RSGetSectInfo(nullptr, nullptr, &size_, &line_), 0u);
    EXPECT_EQ(RSEnumItem(nullptr, 0, nullptr, &size_, nullptr, &valueSize_, &line_), 0u);
    EXPECT_EQ(RSFindSEction(nullptr, "SENSOR"), nullptr);
    EXPECT_EQ(RSCloseFile(nullptr), 0u);
    EXPECT_EQ(RSCloseFile(&none), 0u);
    EXPECT_EQ(size_, 0u);
    EXPECT_EQ(line_, 77u);
}

TEST_F(SizeProtocol, ClosingSetsTheHandleToNull) {
    EXPECT_EQ(RSCloseFile(&file_), 1u);
    EXPECT_EQ(file_, nullptr);
    EXPECT_EQ(RSCloseFile(&file_), 0u);
}

TEST_F(SizeProtocol, ParsingAgainChangesNothing) {
    const std::string before = Dump(file_);
    EXPECT_EQ(RSParse(file_), 1u);
    EXPECT_EQ(RSEnumSection(file_, 0), section_);
    EXPECT_EQ(Dump(file_), before);
    EXPECT_EQ(before, "2 [SENSOR]\n3 <NAME> <Speed>\n4 <flag> <>\n5 [EMPTY]\n");
}

TEST_F(SizeProtocol, NothingIsFoundBeforeParsing) {
    const OpenedFile other(Write("other.ini", "[SENSOR]\n"));
    ASSERT_TRUE(other);
    EXPECT_EQ(RSEnumSection(other.Get(), 0), nullptr);
    EXPECT_EQ(RSFindSEction(other.Get(), "SENSOR"), nullptr);
    EXPECT_EQ(RSParse(other.Get()), 1u);
    EXPECT_NE(RSEnumSection(other.Get(), 0), nullptr);
}

TEST_F(SizeProtocol, FindingTakesTheFirstOfThatNameByteForByte) {
    const OpenedFile file(Write("find.ini", "[B]\n[A]\nk\n[A]\n[ ]\n[C\n"));
    ASSERT_TRUE(file);
    ASSERT_EQ(RSParse(file.Get()), 1u);
    EXPECT_EQ(RSFindSEction(file.Get(), "A"), RSEnumSection(file.Get(), 1));
    EXPECT_EQ(RSFindSEction(file.Get(), "B"), RSEnumSection(file.Get(), 0));
    EXPECT_EQ(RSFindSEction(file.Get(), ""), RSEnumSection(file.Get(), 3));
    EXPECT_EQ(RSFindSEction(file.Get(), "[C"), RSEnumSection(file.Get(), 4));
    for (const std::string& name : {std::string("a"), std::string("AB"), std::string("A\0", 2), std::string("C")}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(RSFindSEction(file.Get(), name), nullptr);
    }
}

}  // namespace
