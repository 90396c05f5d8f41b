#include <sys/stat.h>

#include "zek/command.h"

namespace zek::test {

namespace {

class ZekCompile : public ZekTest {};

TEST_F(ZekCompile, WritesBothImagesBesideTheSource) {
    std::filesystem::create_directory("boards.v2");
    for (const auto& [source, stem] :
         std::vector<std::pair<std::string, std::string>>{{"boards.v2/x.zek", "boards.v2/x"},
                                                          {"boards.v2/y", "boards.v2/y"},
                                                          {"boards.v2/z.tar.zek", "boards.v2/z.tar"}}) {
        SCOPED_TRACE(source);
        WriteSound(source);
        const Result result = Zek({"compile", source});
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "");
        EXPECT_TRUE(Read(stem + ".zki").starts_with("QUOR ZEK meta."));
        EXPECT_TRUE(Read(stem + ".zkd").starts_with("QUOR ZEK metaD."));
    }
    EXPECT_EQ(Names("boards.v2").size(), 9u);
}

TEST_F(ZekCompile, WritesWhatTheLibraryWrites) {
    WriteSound("a.zek", 3);
    ASSERT_EQ(Zek({"compile", "a.zek", "-o", "image", "-g", "debug"}).code, 0);
    InChild([] {
        ASSERT_EQ(gccCompStart("a.zek"), 1U);
        gccParse();
        ASSERT_EQ(gccCheck(), 1U);
        ASSERT_EQ(gccOutputD("own.zkd"), 1U);
        ASSERT_EQ(gccOutput("own.zki"), 1U);
        gccCompEnd();
    });
    EXPECT_EQ(Dump(WithoutTime(Read("image"))), Dump(WithoutTime(Read("own.zki"))));
    EXPECT_EQ(Dump(WithoutTime(Read("debug"))), Dump(WithoutTime(Read("own.zkd"))));
}

TEST_F(ZekCompile, TakesOneNameAndLeavesTheOther) {
    WriteSound("a.zek");
    ASSERT_EQ(Zek({"compile", "a.zek", "-o", "b.bin"}).code, 0);
    EXPECT_EQ(Names(), (Strings{"a.zek", "a.zkd", "b.bin"}));
    ASSERT_EQ(Zek({"compile", "-g", "c.bin", "a.zek"}).code, 0);
    EXPECT_EQ(Names(), (Strings{"a.zek", "a.zkd", "a.zki", "b.bin", "c.bin"}));
}

TEST_F(ZekCompile, SourceWithErrorsTouchesNoImage) {
    Write("a.zek", "[GROUP]\nPARENT = 0\nNAME = a\n");
    Write("a.zki", "old");
    const Result result = Zek({"compile", "a.zek"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(WithoutExcerpts(result.err),
              "a.zek:1:1: error: [GROUP]:CHILDGROUP, This ENTRY does not exist. [E101]\n"
              "a.zek: 1 error\n");
    EXPECT_EQ(Read("a.zki"), "old");
    EXPECT_EQ(Names(), (Strings{"a.zek", "a.zki"}));
}

TEST_F(ZekCompile, WarningsDoNotStopIt) {
    Write("a.zek", "[PROPERTY]\nName = a,b\n");
    const Result result = Zek({"compile", "a.zek"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(
        WithoutExcerpts(result.err),
        "a.zek:2:10: warning: [PROPERTY]:Name, More than one sub-string and get the first one as sub-string. [W101]\n"
        "a.zek: 1 warning\n");
    EXPECT_EQ(Names(), (Strings{"a.zek", "a.zkd", "a.zki"}));
}

TEST_F(ZekCompile, SourceThatCannotBeReadEndsWithTwo) {
    std::filesystem::create_directory("folder");
    Write("file", "");
    for (const auto& [source, reason] :
         std::vector<std::pair<std::string, std::string>>{{"missing.zek", "No such file or directory"},
                                                          {"folder", "Is a directory"},
                                                          {"file/a.zek", "Not a directory"}}) {
        for (const std::string command : {"compile", "check"}) {
            const Result result = Zek({command, source});
            EXPECT_EQ(result.code, 2);
            EXPECT_EQ(result.err, "zek: cannot read " + source + ": " + reason + '\n');
        }
    }
    EXPECT_EQ(Names(), (Strings{"file", "folder"}));
}

TEST_F(ZekCompile, RefusesOneFileForBothImages) {
    WriteSound("a.zek");
    Write("there", "old");
    std::filesystem::create_symlink("there", "link");
    for (const auto& [image, debug] :
         std::vector<std::pair<std::string, std::string>>{{"b", "b"}, {"b", "./b"}, {"there", "link"}, {"a.zkd", ""}}) {
        SCOPED_TRACE(image + ' ' + debug);
        Strings arguments = {"compile", "a.zek", "-o", image};
        if (!debug.empty()) arguments.insert(arguments.end(), {"-g", debug});
        const Result result = Zek(arguments);
        EXPECT_EQ(result.code, 2);
        EXPECT_TRUE(result.err.starts_with("zek: both images would go to the same file: ")) << result.err;
    }
    EXPECT_EQ(Read("there"), "old");
    EXPECT_EQ(Names(), (Strings{"a.zek", "link", "there"}));
}

TEST_F(ZekCompile, NeverReplacesASource) {
    WriteSound("part.zek");
    Write("a.zki", "[INCLUDE]\nFILE = part.zek\n");
    for (const Strings& arguments : std::vector<Strings>{{"a.zki"}, {"a.zki", "-o", "x", "-g", "./part.zek"}}) {
        Strings all = {"compile"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const Result result = Zek(all);
        EXPECT_EQ(result.code, 2);
        EXPECT_TRUE(result.err.starts_with("zek: the image would replace a source: ")) << result.err;
    }
    EXPECT_EQ(Read("a.zki"), "[INCLUDE]\nFILE = part.zek\n");
    EXPECT_EQ(Names(), (Strings{"a.zki", "part.zek"}));
}

TEST_F(ZekCompile, ReadsASourceFromAPipe) {
    WriteSound("a.zek");
    const Result result =
        Program({"sh", "-c", "cat a.zek | " ZEK_PROGRAM " compile /dev/stdin -o image -g debug"}).Finish();
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    ASSERT_EQ(Zek({"compile", "a.zek"}).code, 0);
    EXPECT_EQ(Dump(WithoutTime(Read("image"))), Dump(WithoutTime(Read("a.zki"))));
}

}  // namespace

}  // namespace zek::test
