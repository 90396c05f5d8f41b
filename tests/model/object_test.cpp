#include "model/object.h"

#include "support/process_test.h"

namespace zek::test {

using SourceFile = ProcessTest;
using Files = std::vector<std::string>;

TEST_F(SourceFile, JoinsTheListWhenItIsNew) {
    CZEKObj first;
    CZEKObj second;
    CZEKObj third;
    EXPECT_EQ(first.m_dwFile, 0U);
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, Files());
    first.SetFile("b.zek");
    second.SetFile("a.zek");
    third.SetFile("b.zek");
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, Files({"b.zek", "a.zek"}));
    EXPECT_EQ(first.m_dwFile, 0U);
    EXPECT_EQ(second.m_dwFile, 1U);
    EXPECT_EQ(third.m_dwFile, 0U);
    third.SetFile("a.zek");
    EXPECT_EQ(third.m_dwFile, 1U);
}

TEST_F(SourceFile, IsComparedExactly) {
    CZEKObj object;
    for (const char* file : {"a.zek", "A.zek", "./a.zek", "a.zek ", ""}) object.SetFile(file);
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, Files({"a.zek", "A.zek", "./a.zek", "a.zek ", ""}));
    EXPECT_EQ(object.m_dwFile, 4U);
}

TEST_F(SourceFile, IsFoundInAListThatTheHostHasChanged) {
    CZEKObj object;
    CZEKObj::m_svstrIncFiles = {"x.zek", "a.zek", "a.zek"};
    object.SetFile("a.zek");
    EXPECT_EQ(object.m_dwFile, 1U);
    object.SetFile("b.zek");
    EXPECT_EQ(object.m_dwFile, 3U);
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, Files({"x.zek", "a.zek", "a.zek", "b.zek"}));
}

TEST_F(SourceFile, IsSplitAtItsLastBackslashOnly) {
    struct Row {
        const char* file;
        const char* base;
        const char* directory;
    };
    const Row rows[] = {
        {"a.ini", "a.ini", ""},
        {"dir/a.ini", "dir/a.ini", ""},
        {"dir\\a.ini", "a.ini", "dir\\"},
        {"c:\\one\\two\\a.ini", "a.ini", "c:\\one\\two\\"},
        {"one\\two/a.ini", "two/a.ini", "one\\"},
        {"dir\\", "", "dir\\"},
        {"\\a.ini", "a.ini", "\\"},
        {"", "", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.file);
        CZEKObj object;
        object.SetFile(row.file);
        EXPECT_EQ(object.GetFile(0), row.base);
        for (const int mode : {1, 2, -1, 255}) EXPECT_EQ(object.GetFile(mode), row.directory);
    }
}

TEST_F(SourceFile, IsLookedForInTheListAsItStands) {
    CZEKObj object;
    object.SetFile("A");
    CZEKObj::m_svstrIncFiles = {"B"};
    object.SetFile("B");
    EXPECT_EQ(object.m_dwFile, 0U);
    object.SetFile("A");
    EXPECT_EQ(object.m_dwFile, 1U);
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, (std::vector<std::string>{"B", "A"}));
}

TEST_F(SourceFile, IsEmptyForAnIndexOutsideTheList) {
    CZEKObj object;
    EXPECT_EQ(object.GetFile(0), "");
    EXPECT_EQ(object.GetFile(1), "");
    object.SetFile("dir\\a.ini");
    for (const unsigned index : {1U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(index);
        object.m_dwFile = index;
        EXPECT_EQ(object.GetFile(0), "");
        EXPECT_EQ(object.GetFile(1), "");
    }
}

}  // namespace zek::test
