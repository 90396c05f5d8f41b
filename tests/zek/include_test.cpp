#include <sys/stat.h>

#include "zek/command.h"

namespace zek::test {

namespace {

/// A property whose warning tells which file was taken: the line of a value with two sub-strings.
constexpr char kMark[] = "[PROPERTY]\nMark = a,b\n";

class ZekInclude : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        for (const char* folder : {"boards", "boards/parts", "one", "two", "two/parts"}) {
            std::filesystem::create_directory(folder);
        }
    }

    static void WriteMark(const std::string& file) { Write(file, kMark); }

    static std::string Include(const std::string& name) { return "[INCLUDE]\nFILE = " + name + '\n'; }

    /// What `check` says of boards/main.zek.
    static std::string Said(Strings arguments = {}) {
        arguments.insert(arguments.begin(), {"check", "boards/main.zek"});
        return WithoutExcerpts(Zek(arguments).err);
    }

    /// What is said when that file was taken; `way` are the files of the includes that led there.
    static std::string Taken(const std::string& file, const Strings& way = {"boards/main.zek"}) {
        std::string said = file +
                           ":2:10: warning: [PROPERTY]:Mark, More than one sub-string and get the first one as "
                           "sub-string. [W101]\n";
        for (const std::string& includer : way) said += includer + ":2:8: note: included from here\n";
        return said + "boards/main.zek: 1 warning\n";
    }

    static std::string BuiltIn() {
        return (std::filesystem::path(ZEK_PROGRAM).parent_path().parent_path() / "share/zek/include").string();
    }
};

TEST_F(ZekInclude, IsLookedForBesideTheFileThenHereThenInTheFoldersInOrder) {
    Write("boards/main.zek", Include("part.zek"));
    const Strings folders = {"-I", "one", "-Itwo"};
    for (const char* place : {"two/", "one/", "", "boards/"}) {
        WriteMark(std::string(place) + "part.zek");
        EXPECT_EQ(Said(folders), Taken(std::string(place) + "part.zek"));
    }
}

TEST_F(ZekInclude, FolderMayStandBeforeTheSource) {
    Write("boards/main.zek", Include("part.zek"));
    WriteMark("one/part.zek");
    EXPECT_EQ(WithoutExcerpts(Zek({"check", "-I", "one", "boards/main.zek"}).err), Taken("one/part.zek"));
}

TEST_F(ZekInclude, IsLookedForBesideTheFileThatIncludesIt) {
    Write("boards/main.zek", Include("parts/a.zek"));
    Write("boards/parts/a.zek", Include("b.zek"));
    WriteMark("boards/b.zek");
    WriteMark("b.zek");
    EXPECT_EQ(Said(), Taken("b.zek", {"boards/main.zek", "boards/parts/a.zek"}));
    WriteMark("boards/parts/b.zek");
    EXPECT_EQ(Said(), Taken("boards/parts/b.zek", {"boards/main.zek", "boards/parts/a.zek"}));
}

TEST_F(ZekInclude, FromAFolderOfTheSearchLooksBesideItself) {
    Write("boards/main.zek", Include("parts/a.zek"));
    Write("two/parts/a.zek", Include("b.zek"));
    WriteMark("two/parts/b.zek");
    EXPECT_EQ(Said({"-I", "two"}), Taken("two/parts/b.zek", {"boards/main.zek", "two/parts/a.zek"}));
}

TEST_F(ZekInclude, WordsComeWithTheCommand) {
    Write("boards/main.zek", Include("zek/words.zek") + "[GLOBAL]\nG_X = VT_VALUE,BUSTYPE_SMBUS\nG_Y = VT_NONE\n");
    EXPECT_EQ(Said(), "");
    Write("boards/main.zek", Include("zek\\words.zek") + "[GLOBAL]\nG_X = VT_VALUE,1\n");
    EXPECT_EQ(Said(), "");
}

TEST_F(ZekInclude, OwnWordsWinOverThoseOfTheCommand) {
    std::filesystem::create_directory("one/zek");
    WriteMark("one/zek/words.zek");
    Write("boards/main.zek", Include("zek/words.zek"));
    EXPECT_EQ(Said({"-I", "one"}), Taken("one/zek/words.zek"));
}

TEST_F(ZekInclude, BackslashIsASlashWhereNothingElseStands) {
    Write("boards/main.zek", Include("parts\\a.zek"));
    WriteMark("boards/parts/a.zek");
    EXPECT_EQ(Said(), Taken("boards/parts/a.zek"));
    WriteMark("boards/parts\\a.zek");
    EXPECT_EQ(Said(), Taken("boards/parts\\a.zek"));
}

/// The compiler puts the folder of a name with backslashes before the names that the file includes.
TEST_F(ZekInclude, StandsBesideAFileThatWasNamedWithBackslashes) {
    Write("boards/main.zek", Include("parts\\a.zek"));
    Write("boards/parts/a.zek", Include("b.zek"));
    WriteMark("boards/parts/b.zek");
    EXPECT_EQ(Said(), Taken("boards/parts/b.zek", {"boards/main.zek", "boards/parts/a.zek"}));
    std::filesystem::rename("boards/parts/b.zek", "one/b.zek");
    EXPECT_EQ(Said({"-I", "one"}), Taken("one/b.zek", {"boards/main.zek", "boards/parts/a.zek"}));
}

TEST_F(ZekInclude, MainSourceMayBeNamedWithBackslashes) {
    Write("boards/main.zek", Include("part.zek"));
    WriteSound("boards/part.zek");
    EXPECT_EQ(Zek({"compile", "boards\\main.zek"}).err, "");
    EXPECT_EQ(Names("boards"), (Strings{"main.zek", "main.zkd", "main.zki", "part.zek", "parts"}));
}

TEST_F(ZekInclude, MissingFileIsAnErrorWithTheFoldersThatWereTried) {
    Write("boards/main.zek", "; first\n" + Include("part.zek"));
    const Result result = Zek({"compile", "boards/main.zek", "-I", "one", "-I", "two"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(WithoutExcerpts(result.err),
              "boards/main.zek:3:8: error: [INCLUDE]:FILE FILE part.zek cannot be loaded. [E003]\n"
              "boards/main.zek:3:8: note: part.zek was not found; looked in: boards, ., one, two, " +
                  BuiltIn() + "\nboards/main.zek: 1 error\n");
    EXPECT_EQ(Names("boards"), (Strings{"main.zek", "parts"}));
}

TEST_F(ZekInclude, UnreadableFileIsAnErrorWithTheReason) {
    Write("boards/main.zek", Include("parts") + "FILE = dangling\n");
    std::filesystem::create_symlink("nowhere", "boards/dangling");
    EXPECT_EQ(Said(),
              "boards/main.zek:2:8: error: [INCLUDE]:FILE FILE parts cannot be loaded. [E003]\n"
              "boards/main.zek:2:8: note: parts cannot be read: boards/parts: Is a directory\n"
              "boards/main.zek:3:8: error: [INCLUDE]:FILE FILE dangling cannot be loaded. [E003]\n"
              "boards/main.zek:3:8: note: dangling cannot be read: boards/dangling: No such file or directory\n"
              "boards/main.zek: 2 errors\n");
}

TEST_F(ZekInclude, MissingFileIsCalledAsItWasAskedFor) {
    Write("boards/main.zek", "[INCLUDE]\nFILE = \"a b.zek\", more\nFILE = /missing/c.zek\n");
    const std::string warning =
        "boards/main.zek:2:18: warning: [INCLUDE]:FILE, More than one sub-string and get the first one as sub-string. "
        "[W101]\n";
    EXPECT_EQ(Said(),
              warning +
                  "boards/main.zek:2:9: error: [INCLUDE]:FILE FILE \"a b.zek\", more cannot be loaded. [E003]\n"
                  "boards/main.zek:2:9: note: a b.zek was not found; looked in: boards, ., " +
                  BuiltIn() +
                  "\nboards/main.zek:3:8: error: [INCLUDE]:FILE FILE /missing/c.zek cannot be loaded. [E003]\n"
                  "boards/main.zek:3:8: note: /missing/c.zek does not exist\nboards/main.zek: 2 errors, 1 warning\n");
}

TEST_F(ZekInclude, FolderThatCannotBeSearchedIsNamedWithTheReason) {
    Write("boards/main.zek", Include("b.zek"));
    Write("file", "");
    std::filesystem::create_symlink("loop", "loop");
    EXPECT_EQ(Said({"-I", "file", "-I", "one", "-I", "loop"}),
              "boards/main.zek:2:8: error: [INCLUDE]:FILE FILE b.zek cannot be loaded. [E003]\n"
              "boards/main.zek:2:8: note: b.zek was not found; looked in: boards, ., file (Not a "
              "directory), one, loop (Too many levels of symbolic links), " +
                  BuiltIn() + "\nboards/main.zek: 1 error\n");
}

TEST_F(ZekInclude, PipeThatIsRefusedIsToldWithTheLimits) {
    const std::string limits =
        ": a pipe or device is refused when it gives more than 256 MiB, keeps silent for two seconds, or, being a "
        "pipe, "
        "ends without a byte\n";
    // Nobody writes to it.
    ASSERT_EQ(mkfifo("boards/pipe", 0600), 0);
    Write("boards/main.zek", Include("pipe"));
    EXPECT_EQ(Said(),
              "boards/main.zek:2:8: error: [INCLUDE]:FILE FILE pipe cannot be loaded. [E003]\n"
              "boards/main.zek:2:8: note: pipe cannot be read: boards/pipe" +
                  limits + "boards/main.zek: 1 error\n");
    const Result result = Zek({"check", "boards/pipe"});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, "zek: cannot read boards/pipe" + limits);
}

TEST_F(ZekInclude, FileThatIncludesItselfIsAnErrorWithTheChain) {
    Write("boards/main.zek", Include("a.zek"));
    Write("boards/a.zek", Include("b.zek"));
    Write("boards/b.zek", kMark + Include("a.zek"));
    const Result result = Zek({"check", "boards/main.zek"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(WithoutExcerpts(result.err),
              "boards/b.zek:4:8: error: [INCLUDE]:FILE FILE a.zek cannot be loaded. [E003]\n"
              "boards/b.zek:4:8: note: a.zek includes itself: boards/a.zek -> boards/b.zek -> boards/a.zek\n"
              "boards/main.zek:2:8: note: included from here\n"
              "boards/a.zek:2:8: note: included from here\n"
              "boards/b.zek:2:10: warning: [PROPERTY]:Mark, More than one sub-string and get the first one as "
              "sub-string. [W101]\n"
              "boards/main.zek: 1 error, 1 warning\n");
}

TEST_F(ZekInclude, ChainNamesTheItemThatLedToEachFile) {
    Write("boards/main.zek", Include("a.zek") + "FILE = a.zek\nFILE = \"parts/c.zek\"\n");
    Write("boards/a.zek", "[DEFINE]\nA = 1\n");
    Write("boards/parts/c.zek", kMark + Include("c.zek") + "FILE = ../main.zek\n");
    EXPECT_EQ(Said(),
              "boards/parts/c.zek:4:8: error: [INCLUDE]:FILE FILE c.zek cannot be loaded. [E003]\n"
              "boards/parts/c.zek:4:8: note: c.zek includes itself: boards/parts/c.zek -> boards/parts/c.zek\n"
              "boards/main.zek:4:9: note: included from here\n"
              "boards/parts/c.zek:5:8: error: [INCLUDE]:FILE FILE ../main.zek cannot be loaded. [E003]\n"
              "boards/parts/c.zek:5:8: note: ../main.zek includes itself: boards/main.zek -> boards/parts/c.zek -> "
              "boards/parts/../main.zek\n"
              "boards/parts/c.zek:2:10: warning: [PROPERTY]:Mark, More than one sub-string and get the first one as "
              "sub-string. [W101]\n"
              "boards/main.zek: 2 errors, 1 warning\n");
}

/// A pipe cannot be read again to see where its items stand.
TEST_F(ZekInclude, ChainThroughAPipeHasNoLines) {
    Write("boards/a.zek", Include("a.zek"));
    const Result result =
        Program({"sh", "-c", "printf '[INCLUDE]\\nFILE=boards/a.zek\\n' | " ZEK_PROGRAM " check /dev/stdin"}).Finish();
    EXPECT_EQ(WithoutExcerpts(result.err),
              "boards/a.zek:2:8: error: [INCLUDE]:FILE FILE a.zek cannot be loaded. [E003]\n"
              "boards/a.zek:2:8: note: a.zek includes itself: boards/a.zek -> boards/a.zek\n"
              "/dev/stdin: note: included from here\n"
              "/dev/stdin: 1 error\n");
}

TEST_F(ZekInclude, ExplosionEndsAtTheMostFiles) {
    Write("boards/main.zek", Include("1.zek") + "FILE = 1.zek\n");
    for (unsigned i = 1; i < 40; ++i) {
        const std::string next = std::to_string(i + 1) + ".zek";
        Write("boards/" + std::to_string(i) + ".zek", Include(next) + "FILE = " + next + '\n');
    }
    Write("boards/40.zek", "[DEFINE]\nA = 1\n");
    const Result result = Zek({"compile", "boards/main.zek"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(WithoutExcerpts(result.err),
              "boards/38.zek:2:8: error: [INCLUDE]:FILE FILE 39.zek cannot be loaded. [E003]\n"
              "boards/38.zek:2:8: note: 39.zek is not read: 10000 files were read, as many as --max-files allows\n"
              "boards/38.zek:2:8: note: 32 more includes not read for the same reason\n"
              "boards/main.zek:2:8: note: included from here\n"
              "boards/1.zek:2:8: note: included from here\n"
              "boards/2.zek:2:8: note: included from here\n"
              "boards/3.zek:2:8: note: included from here\n"
              "boards/4.zek:2:8: note: included from here\n"
              "boards/5.zek:2:8: note: included from here\n"
              "boards/6.zek:2:8: note: included from here\n"
              "boards/7.zek:2:8: note: included from here\n"
              "boards/8.zek:2:8: note: included from here\n"
              "boards/9.zek:2:8: note: included from here\n"
              "boards/10.zek:2:8: note: included from here\n"
              "boards/11.zek:2:8: note: included from here\n"
              "boards/12.zek:2:8: note: included from here\n"
              "boards/13.zek:2:8: note: included from here\n"
              "boards/14.zek:2:8: note: included from here\n"
              "boards/15.zek:2:8: note: included from here\n"
              "boards/16.zek:2:8: note: included from here\n"
              "boards/17.zek:2:8: note: included from here\n"
              "boards/18.zek:2:8: note: included from here\n"
              "boards/19.zek:2:8: note: included from here\n"
              "boards/20.zek:2:8: note: included from here\n"
              "boards/21.zek:2:8: note: included from here\n"
              "boards/22.zek:2:8: note: included from here\n"
              "boards/23.zek:2:8: note: included from here\n"
              "boards/24.zek:2:8: note: included from here\n"
              "boards/25.zek:2:8: note: included from here\n"
              "boards/26.zek:2:8: note: included from here\n"
              "boards/27.zek:2:8: note: included from here\n"
              "boards/28.zek:2:8: note: included from here\n"
              "boards/29.zek:2:8: note: included from here\n"
              "boards/30.zek:2:8: note: included from here\n"
              "boards/31.zek:2:8: note: included from here\n"
              "boards/32.zek:2:8: note: included from here\n"
              "boards/33.zek:2:8: note: included from here\n"
              "boards/34.zek:2:8: note: included from here\n"
              "boards/35.zek:2:8: note: included from here\n"
              "boards/36.zek:2:8: note: included from here\n"
              "boards/37.zek:2:8: note: included from here\n"
              "boards/main.zek: 1 error\n");
    EXPECT_FALSE(std::filesystem::exists("boards/main.zki"));
}

TEST_F(ZekInclude, MostFilesCountsEveryOpening) {
    Write("boards/main.zek", Include("a.zek") + "FILE = b.zek\nFILE = a.zek\nFILE = b.zek\n");
    Write("boards/a.zek", "[DEFINE]\nA = 1\n");
    Write("boards/b.zek", Include("a.zek"));
    EXPECT_EQ(Said({"--max-files", "7"}), "");
    EXPECT_EQ(Said({"--max-files", "6"}),
              "boards/b.zek:2:8: error: [INCLUDE]:FILE FILE a.zek cannot be loaded. [E003]\n"
              "boards/b.zek:2:8: note: a.zek is not read: 6 files were read, as many as --max-files allows\n"
              "boards/main.zek:3:8: note: included from here\n"
              "boards/main.zek: 1 error\n");
    EXPECT_EQ(Said({"--max-files=3"}),
              "boards/b.zek:2:8: error: [INCLUDE]:FILE FILE a.zek cannot be loaded. [E003]\n"
              "boards/b.zek:2:8: note: a.zek is not read: 3 files were read, as many as --max-files allows\n"
              "boards/b.zek:2:8: note: 2 more includes not read for the same reason\n"
              "boards/main.zek:3:8: note: included from here\n"
              "boards/main.zek: 1 error\n");
    // For each source by itself.
    EXPECT_EQ(Zek({"check", "--max-files", "7", "boards/main.zek", "boards/main.zek"}).code, 0);
    EXPECT_EQ(Zek({"check", "--max-files", "1", "boards/a.zek", "boards/main.zek"}).code, 1);
}

TEST_F(ZekInclude, FileMayBeIncludedTwice) {
    Write("boards/main.zek", Include("a.zek") + "FILE = a.zek\n");
    Write("boards/a.zek", "[DEFINE]\nA = 1\n");
    EXPECT_EQ(Said(), "");
}

TEST_F(ZekInclude, ChainOf257FilesIsTooDeep) {
    Write("boards/main.zek", Include("1.zek"));
    for (unsigned i = 1; i < 256; ++i) {
        Write("boards/" + std::to_string(i) + ".zek", Include(std::to_string(i + 1) + ".zek"));
    }
    Write("boards/255.zek", "[DEFINE]\nA = 1\n");
    EXPECT_EQ(Said(), "");
    Write("boards/255.zek", Include("256.zek"));
    Write("boards/256.zek", "[DEFINE]\nA = 1\n");
    EXPECT_EQ(Said(),
              "boards/255.zek:2:8: error: [INCLUDE]:FILE FILE 256.zek cannot be loaded. [E003]\n"
              "boards/255.zek:2:8: note: 256.zek is included too deep: 256 files are open inside one another\n"
              "boards/main.zek:2:8: note: included from here\n"
              "boards/1.zek:2:8: note: included from here\n"
              "boards/2.zek:2:8: note: included from here\n"
              "boards/3.zek:2:8: note: included from here\n"
              "boards/4.zek:2:8: note: included from here\n"
              "boards/5.zek:2:8: note: included from here\n"
              "boards/6.zek:2:8: note: included from here\n"
              "boards/7.zek:2:8: note: included from here\n"
              "boards/8.zek:2:8: note: included from here\n"
              "boards/9.zek:2:8: note: included from here\n"
              "boards/10.zek:2:8: note: included from here\n"
              "boards/11.zek:2:8: note: included from here\n"
              "boards/12.zek:2:8: note: included from here\n"
              "boards/13.zek:2:8: note: included from here\n"
              "boards/14.zek:2:8: note: included from here\n"
              "boards/15.zek:2:8: note: included from here\n"
              "boards/16.zek:2:8: note: included from here\n"
              "boards/17.zek:2:8: note: included from here\n"
              "boards/18.zek:2:8: note: included from here\n"
              "boards/19.zek:2:8: note: included from here\n"
              "boards/20.zek:2:8: note: included from here\n"
              "boards/21.zek:2:8: note: included from here\n"
              "boards/22.zek:2:8: note: included from here\n"
              "boards/23.zek:2:8: note: included from here\n"
              "boards/24.zek:2:8: note: included from here\n"
              "boards/25.zek:2:8: note: included from here\n"
              "boards/26.zek:2:8: note: included from here\n"
              "boards/27.zek:2:8: note: included from here\n"
              "boards/28.zek:2:8: note: included from here\n"
              "boards/29.zek:2:8: note: included from here\n"
              "boards/30.zek:2:8: note: included from here\n"
              "boards/31.zek:2:8: note: included from here\n"
              "boards/32.zek:2:8: note: included from here\n"
              "boards/33.zek:2:8: note: included from here\n"
              "boards/34.zek:2:8: note: included from here\n"
              "boards/35.zek:2:8: note: included from here\n"
              "boards/36.zek:2:8: note: included from here\n"
              "boards/37.zek:2:8: note: included from here\n"
              "boards/38.zek:2:8: note: included from here\n"
              "boards/39.zek:2:8: note: included from here\n"
              "boards/40.zek:2:8: note: included from here\n"
              "boards/41.zek:2:8: note: included from here\n"
              "boards/42.zek:2:8: note: included from here\n"
              "boards/43.zek:2:8: note: included from here\n"
              "boards/44.zek:2:8: note: included from here\n"
              "boards/45.zek:2:8: note: included from here\n"
              "boards/46.zek:2:8: note: included from here\n"
              "boards/47.zek:2:8: note: included from here\n"
              "boards/48.zek:2:8: note: included from here\n"
              "boards/49.zek:2:8: note: included from here\n"
              "boards/50.zek:2:8: note: included from here\n"
              "boards/51.zek:2:8: note: included from here\n"
              "boards/52.zek:2:8: note: included from here\n"
              "boards/53.zek:2:8: note: included from here\n"
              "boards/54.zek:2:8: note: included from here\n"
              "boards/55.zek:2:8: note: included from here\n"
              "boards/56.zek:2:8: note: included from here\n"
              "boards/57.zek:2:8: note: included from here\n"
              "boards/58.zek:2:8: note: included from here\n"
              "boards/59.zek:2:8: note: included from here\n"
              "boards/60.zek:2:8: note: included from here\n"
              "boards/61.zek:2:8: note: included from here\n"
              "boards/62.zek:2:8: note: included from here\n"
              "boards/63.zek:2:8: note: included from here\n"
              "boards/64.zek:2:8: note: included from here\n"
              "boards/65.zek:2:8: note: included from here\n"
              "boards/66.zek:2:8: note: included from here\n"
              "boards/67.zek:2:8: note: included from here\n"
              "boards/68.zek:2:8: note: included from here\n"
              "boards/69.zek:2:8: note: included from here\n"
              "boards/70.zek:2:8: note: included from here\n"
              "boards/71.zek:2:8: note: included from here\n"
              "boards/72.zek:2:8: note: included from here\n"
              "boards/73.zek:2:8: note: included from here\n"
              "boards/74.zek:2:8: note: included from here\n"
              "boards/75.zek:2:8: note: included from here\n"
              "boards/76.zek:2:8: note: included from here\n"
              "boards/77.zek:2:8: note: included from here\n"
              "boards/78.zek:2:8: note: included from here\n"
              "boards/79.zek:2:8: note: included from here\n"
              "boards/80.zek:2:8: note: included from here\n"
              "boards/81.zek:2:8: note: included from here\n"
              "boards/82.zek:2:8: note: included from here\n"
              "boards/83.zek:2:8: note: included from here\n"
              "boards/84.zek:2:8: note: included from here\n"
              "boards/85.zek:2:8: note: included from here\n"
              "boards/86.zek:2:8: note: included from here\n"
              "boards/87.zek:2:8: note: included from here\n"
              "boards/88.zek:2:8: note: included from here\n"
              "boards/89.zek:2:8: note: included from here\n"
              "boards/90.zek:2:8: note: included from here\n"
              "boards/91.zek:2:8: note: included from here\n"
              "boards/92.zek:2:8: note: included from here\n"
              "boards/93.zek:2:8: note: included from here\n"
              "boards/94.zek:2:8: note: included from here\n"
              "boards/95.zek:2:8: note: included from here\n"
              "boards/96.zek:2:8: note: included from here\n"
              "boards/97.zek:2:8: note: included from here\n"
              "boards/98.zek:2:8: note: included from here\n"
              "boards/99.zek:2:8: note: included from here\n"
              "boards/100.zek:2:8: note: included from here\n"
              "boards/101.zek:2:8: note: included from here\n"
              "boards/102.zek:2:8: note: included from here\n"
              "boards/103.zek:2:8: note: included from here\n"
              "boards/104.zek:2:8: note: included from here\n"
              "boards/105.zek:2:8: note: included from here\n"
              "boards/106.zek:2:8: note: included from here\n"
              "boards/107.zek:2:8: note: included from here\n"
              "boards/108.zek:2:8: note: included from here\n"
              "boards/109.zek:2:8: note: included from here\n"
              "boards/110.zek:2:8: note: included from here\n"
              "boards/111.zek:2:8: note: included from here\n"
              "boards/112.zek:2:8: note: included from here\n"
              "boards/113.zek:2:8: note: included from here\n"
              "boards/114.zek:2:8: note: included from here\n"
              "boards/115.zek:2:8: note: included from here\n"
              "boards/116.zek:2:8: note: included from here\n"
              "boards/117.zek:2:8: note: included from here\n"
              "boards/118.zek:2:8: note: included from here\n"
              "boards/119.zek:2:8: note: included from here\n"
              "boards/120.zek:2:8: note: included from here\n"
              "boards/121.zek:2:8: note: included from here\n"
              "boards/122.zek:2:8: note: included from here\n"
              "boards/123.zek:2:8: note: included from here\n"
              "boards/124.zek:2:8: note: included from here\n"
              "boards/125.zek:2:8: note: included from here\n"
              "boards/126.zek:2:8: note: included from here\n"
              "boards/127.zek:2:8: note: included from here\n"
              "boards/128.zek:2:8: note: included from here\n"
              "boards/129.zek:2:8: note: included from here\n"
              "boards/130.zek:2:8: note: included from here\n"
              "boards/131.zek:2:8: note: included from here\n"
              "boards/132.zek:2:8: note: included from here\n"
              "boards/133.zek:2:8: note: included from here\n"
              "boards/134.zek:2:8: note: included from here\n"
              "boards/135.zek:2:8: note: included from here\n"
              "boards/136.zek:2:8: note: included from here\n"
              "boards/137.zek:2:8: note: included from here\n"
              "boards/138.zek:2:8: note: included from here\n"
              "boards/139.zek:2:8: note: included from here\n"
              "boards/140.zek:2:8: note: included from here\n"
              "boards/141.zek:2:8: note: included from here\n"
              "boards/142.zek:2:8: note: included from here\n"
              "boards/143.zek:2:8: note: included from here\n"
              "boards/144.zek:2:8: note: included from here\n"
              "boards/145.zek:2:8: note: included from here\n"
              "boards/146.zek:2:8: note: included from here\n"
              "boards/147.zek:2:8: note: included from here\n"
              "boards/148.zek:2:8: note: included from here\n"
              "boards/149.zek:2:8: note: included from here\n"
              "boards/150.zek:2:8: note: included from here\n"
              "boards/151.zek:2:8: note: included from here\n"
              "boards/152.zek:2:8: note: included from here\n"
              "boards/153.zek:2:8: note: included from here\n"
              "boards/154.zek:2:8: note: included from here\n"
              "boards/155.zek:2:8: note: included from here\n"
              "boards/156.zek:2:8: note: included from here\n"
              "boards/157.zek:2:8: note: included from here\n"
              "boards/158.zek:2:8: note: included from here\n"
              "boards/159.zek:2:8: note: included from here\n"
              "boards/160.zek:2:8: note: included from here\n"
              "boards/161.zek:2:8: note: included from here\n"
              "boards/162.zek:2:8: note: included from here\n"
              "boards/163.zek:2:8: note: included from here\n"
              "boards/164.zek:2:8: note: included from here\n"
              "boards/165.zek:2:8: note: included from here\n"
              "boards/166.zek:2:8: note: included from here\n"
              "boards/167.zek:2:8: note: included from here\n"
              "boards/168.zek:2:8: note: included from here\n"
              "boards/169.zek:2:8: note: included from here\n"
              "boards/170.zek:2:8: note: included from here\n"
              "boards/171.zek:2:8: note: included from here\n"
              "boards/172.zek:2:8: note: included from here\n"
              "boards/173.zek:2:8: note: included from here\n"
              "boards/174.zek:2:8: note: included from here\n"
              "boards/175.zek:2:8: note: included from here\n"
              "boards/176.zek:2:8: note: included from here\n"
              "boards/177.zek:2:8: note: included from here\n"
              "boards/178.zek:2:8: note: included from here\n"
              "boards/179.zek:2:8: note: included from here\n"
              "boards/180.zek:2:8: note: included from here\n"
              "boards/181.zek:2:8: note: included from here\n"
              "boards/182.zek:2:8: note: included from here\n"
              "boards/183.zek:2:8: note: included from here\n"
              "boards/184.zek:2:8: note: included from here\n"
              "boards/185.zek:2:8: note: included from here\n"
              "boards/186.zek:2:8: note: included from here\n"
              "boards/187.zek:2:8: note: included from here\n"
              "boards/188.zek:2:8: note: included from here\n"
              "boards/189.zek:2:8: note: included from here\n"
              "boards/190.zek:2:8: note: included from here\n"
              "boards/191.zek:2:8: note: included from here\n"
              "boards/192.zek:2:8: note: included from here\n"
              "boards/193.zek:2:8: note: included from here\n"
              "boards/194.zek:2:8: note: included from here\n"
              "boards/195.zek:2:8: note: included from here\n"
              "boards/196.zek:2:8: note: included from here\n"
              "boards/197.zek:2:8: note: included from here\n"
              "boards/198.zek:2:8: note: included from here\n"
              "boards/199.zek:2:8: note: included from here\n"
              "boards/200.zek:2:8: note: included from here\n"
              "boards/201.zek:2:8: note: included from here\n"
              "boards/202.zek:2:8: note: included from here\n"
              "boards/203.zek:2:8: note: included from here\n"
              "boards/204.zek:2:8: note: included from here\n"
              "boards/205.zek:2:8: note: included from here\n"
              "boards/206.zek:2:8: note: included from here\n"
              "boards/207.zek:2:8: note: included from here\n"
              "boards/208.zek:2:8: note: included from here\n"
              "boards/209.zek:2:8: note: included from here\n"
              "boards/210.zek:2:8: note: included from here\n"
              "boards/211.zek:2:8: note: included from here\n"
              "boards/212.zek:2:8: note: included from here\n"
              "boards/213.zek:2:8: note: included from here\n"
              "boards/214.zek:2:8: note: included from here\n"
              "boards/215.zek:2:8: note: included from here\n"
              "boards/216.zek:2:8: note: included from here\n"
              "boards/217.zek:2:8: note: included from here\n"
              "boards/218.zek:2:8: note: included from here\n"
              "boards/219.zek:2:8: note: included from here\n"
              "boards/220.zek:2:8: note: included from here\n"
              "boards/221.zek:2:8: note: included from here\n"
              "boards/222.zek:2:8: note: included from here\n"
              "boards/223.zek:2:8: note: included from here\n"
              "boards/224.zek:2:8: note: included from here\n"
              "boards/225.zek:2:8: note: included from here\n"
              "boards/226.zek:2:8: note: included from here\n"
              "boards/227.zek:2:8: note: included from here\n"
              "boards/228.zek:2:8: note: included from here\n"
              "boards/229.zek:2:8: note: included from here\n"
              "boards/230.zek:2:8: note: included from here\n"
              "boards/231.zek:2:8: note: included from here\n"
              "boards/232.zek:2:8: note: included from here\n"
              "boards/233.zek:2:8: note: included from here\n"
              "boards/234.zek:2:8: note: included from here\n"
              "boards/235.zek:2:8: note: included from here\n"
              "boards/236.zek:2:8: note: included from here\n"
              "boards/237.zek:2:8: note: included from here\n"
              "boards/238.zek:2:8: note: included from here\n"
              "boards/239.zek:2:8: note: included from here\n"
              "boards/240.zek:2:8: note: included from here\n"
              "boards/241.zek:2:8: note: included from here\n"
              "boards/242.zek:2:8: note: included from here\n"
              "boards/243.zek:2:8: note: included from here\n"
              "boards/244.zek:2:8: note: included from here\n"
              "boards/245.zek:2:8: note: included from here\n"
              "boards/246.zek:2:8: note: included from here\n"
              "boards/247.zek:2:8: note: included from here\n"
              "boards/248.zek:2:8: note: included from here\n"
              "boards/249.zek:2:8: note: included from here\n"
              "boards/250.zek:2:8: note: included from here\n"
              "boards/251.zek:2:8: note: included from here\n"
              "boards/252.zek:2:8: note: included from here\n"
              "boards/253.zek:2:8: note: included from here\n"
              "boards/254.zek:2:8: note: included from here\n"
              "boards/main.zek: 1 error\n");
}

TEST_F(ZekInclude, SourceIsCompiledFromAnyFolder) {
    Write("boards/main.zek", Include("parts/a.zek"));
    Write("boards/parts/a.zek", Include("../../one/b.zek"));
    WriteSound("one/b.zek");
    const std::string source = std::filesystem::absolute("boards/main.zek");
    std::filesystem::current_path("/");
    EXPECT_EQ(Zek({"compile", source}).err, "");
}

}  // namespace

}  // namespace zek::test
