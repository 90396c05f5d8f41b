#include "frontend/parse.h"
#include "support/process_test.h"

namespace zek::test {

class ParserWrapper : public ProcessTest {
protected:
    void SetUp() override {
        ProcessTest::SetUp();
        Write("main.zek", "[GROUP]\nNAME=g\n KEY = a , \"b\" ; comment\n\n[TABLE]\n");
        file_ = g_Parse.RSOpenFile("main.zek");
        ASSERT_NE(file_, nullptr);
    }
    void TearDown() override {
        g_Parse.RSCloseFile(file_);
        ProcessTest::TearDown();
    }

    void* file_ = nullptr;
};

TEST_F(ParserWrapper, HandsOutTheSectionsOfAParsedFile) {
    EXPECT_EQ(g_Parse.RSEnumSection(file_, 0), nullptr) << "not parsed yet";
    EXPECT_EQ(g_Parse.RSParse(file_), 1U);
    EXPECT_NE(g_Parse.RSEnumSection(file_, 0), nullptr);
    EXPECT_NE(g_Parse.RSEnumSection(file_, 1), g_Parse.RSEnumSection(file_, 0));
    EXPECT_EQ(g_Parse.RSEnumSection(file_, 2), nullptr);
}

TEST_F(ParserWrapper, FindsASectionByItsName) {
    g_Parse.RSParse(file_);
    EXPECT_EQ(g_Parse.RSFindSection(file_, "TABLE"), g_Parse.RSEnumSection(file_, 1));
    EXPECT_EQ(g_Parse.RSFindSection(file_, "FOO"), nullptr);
}

TEST_F(ParserWrapper, CopiesNameKeyAndValue) {
    g_Parse.RSParse(file_);
    void* section = g_Parse.RSEnumSection(file_, 0);
    std::string name;
    unsigned line = 0;
    EXPECT_EQ(g_Parse.RSGetSectInfo(section, name, line), 1U);
    EXPECT_EQ(name, "GROUP");
    EXPECT_EQ(line, 1U);
    std::string key;
    std::string value;
    EXPECT_EQ(g_Parse.RSEnumItem(section, 1, key, value, line), 1U);
    EXPECT_EQ(key, "KEY");
    EXPECT_EQ(value, "a , \"b\"");
    EXPECT_EQ(line, 3U);
}

TEST_F(ParserWrapper, LeavesTheTextsAsTheyAreOnFailure) {
    g_Parse.RSParse(file_);
    std::string key = "key";
    std::string value = "value";
    unsigned line = 0;
    EXPECT_EQ(g_Parse.RSEnumItem(g_Parse.RSEnumSection(file_, 1), 0, key, value, line), 0U);
    EXPECT_EQ(g_Parse.RSGetSectInfo(nullptr, key, line), 0U);
    EXPECT_EQ(key, "key");
    EXPECT_EQ(value, "value");
}

TEST_F(ParserWrapper, ClosesTheFileAndEmptiesTheHandle) {
    EXPECT_EQ(g_Parse.RSCloseFile(file_), 1U);
    EXPECT_EQ(file_, nullptr);
    EXPECT_EQ(g_Parse.RSCloseFile(file_), 0U);
}

TEST_F(ParserWrapper, AnswersNothingForANullHandle) {
    EXPECT_EQ(g_Parse.RSOpenFile("none.zek"), nullptr);
    EXPECT_EQ(g_Parse.RSParse(nullptr), 0U);
    EXPECT_EQ(g_Parse.RSEnumSection(nullptr, 0), nullptr);
    EXPECT_EQ(g_Parse.RSFindSection(nullptr, "TABLE"), nullptr);
}

}  // namespace zek::test
