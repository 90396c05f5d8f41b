#include "model/object.h"

#include <unistd.h>

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

TEST_F(SourceFile, IsFoundAmongMany) {
    CZEKObj object;
    const auto positionOf = [&](unsigned number) {
        object.SetFile("file" + std::to_string(number));
        return object.m_dwFile;
    };
    for (unsigned i = 0; i < 200; ++i) EXPECT_EQ(positionOf(i), i);
    for (unsigned i = 200; i-- > 0;) EXPECT_EQ(positionOf(i), i);
    EXPECT_EQ(CZEKObj::m_svstrIncFiles.size(), 200U);
}

TEST_F(SourceFile, IsFoundInALongListThatTheHostHasChanged) {
    CZEKObj object;
    const auto expectPosition = [&](const std::string& file, unsigned position, std::size_t files) {
        SCOPED_TRACE(file);
        object.SetFile(file);
        EXPECT_EQ(object.m_dwFile, position);
        EXPECT_EQ(CZEKObj::m_svstrIncFiles.size(), files);
    };
    auto& files = CZEKObj::m_svstrIncFiles;
    for (int i = 0; i < 64; ++i) object.SetFile("file" + std::to_string(i));
    files[3] = "written";
    expectPosition("new64", 64, 65);
    expectPosition("written", 3, 65);
    expectPosition("file3", 65, 66);
    std::swap(files[10], files[20]);
    expectPosition("file10", 20, 66);
    expectPosition("file20", 10, 66);
    files.push_back("pushed");
    files[5] = "written too";
    expectPosition("pushed", 66, 67);
    expectPosition("written too", 5, 67);
    files.insert(files.begin(), "new68");
    expectPosition("file0", 1, 68);
    expectPosition("new68", 0, 68);
    files = {"pushed"};
    expectPosition("file1", 1, 2);
    expectPosition("pushed", 0, 2);
    for (int i = 2; i < 70; ++i) object.SetFile("again" + std::to_string(i));
    files.resize(60);
    expectPosition("pushed", 0, 60);
    for (int i = 60; i < 70; ++i) files.push_back("other" + std::to_string(i));
    expectPosition("other65", 65, 70);
}

TEST_F(SourceFile, JoinsALongListInNoTime) {
    constexpr unsigned kFiles = 200'000;
    InChild([] {
        // Walking the list for every new file would take minutes.
        alarm(20);
        CZEKObj object;
        for (unsigned i = 0; i < kFiles; ++i) {
            object.SetFile("a folder/file" + std::to_string(i));
            ASSERT_EQ(object.m_dwFile, i);
        }
    });
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
