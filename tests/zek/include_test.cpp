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
        arguments.insert(arguments.end(), kUnusedAside.begin(), kUnusedAside.end());
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

TEST_F(ZekInclude, PipeThatIsRefusedIsToldWithTheReason) {
    const std::string silent = ": nothing came for two seconds\n";
    // Nobody writes to it.
    ASSERT_EQ(mkfifo("boards/pipe", 0600), 0);
    Write("boards/main.zek", Include("pipe"));
    EXPECT_EQ(Said(),
              "boards/main.zek:2:8: error: [INCLUDE]:FILE FILE pipe cannot be loaded. [E003]\n"
              "boards/main.zek:2:8: note: pipe cannot be read: boards/pipe" +
                  silent + "boards/main.zek: 1 error\n");
    const Result result = Zek({"check", "boards/pipe"});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, "zek: cannot read boards/pipe" + silent);
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

/// What a pipe gave is kept, so that it is known where its items stand.
TEST_F(ZekInclude, ChainThroughAPipeHasItsLines) {
    Write("boards/a.zek", Include("a.zek"));
    const Result result =
        Program({"sh", "-c", "printf '[INCLUDE]\\nFILE=boards/a.zek\\n' | " ZEK_PROGRAM " check /dev/stdin"}).Finish();
    EXPECT_EQ(WithoutExcerpts(result.err),
              "boards/a.zek:2:8: error: [INCLUDE]:FILE FILE a.zek cannot be loaded. [E003]\n"
              "boards/a.zek:2:8: note: a.zek includes itself: boards/a.zek -> boards/a.zek\n"
              "/dev/stdin:2:6: note: included from here\n"
              "/dev/stdin: 1 error\n");
}

/// The notes of a chain from the main source through files that are called by their numbers, from 1 on.
std::string ChainFromMain(unsigned last) {
    const std::string note = ".zek:2:8: note: included from here\n";
    std::string notes = "boards/main" + note;
    for (unsigned i = 1; i <= last; ++i) notes += "boards/" + std::to_string(i) + note;
    return notes;
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
              std::string(
                  "boards/38.zek:2:8: error: [INCLUDE]:FILE FILE 39.zek cannot be loaded. [E003]\n"
                  "boards/38.zek:2:8: note: 39.zek is not read: 10000 files were read, as many as --max-files allows\n"
                  "boards/38.zek:2:8: note: includes not read for the same reason: 32 more\n") +
                  ChainFromMain(37) + "boards/main.zek: 1 error\n");
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
              "boards/b.zek:2:8: note: includes not read for the same reason: 2 more\n"
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

/// What it includes lies beside it, so each link is a file of its own; another spelling of the way to one is not.
TEST_F(ZekInclude, FileOfManyLinksIsReadByEachOfThem) {
    Write("f.zek", Include("g.zek"));
    std::string main;
    std::string said;
    for (unsigned i = 100; i < 400; ++i) {
        const std::string folder = "boards/" + std::to_string(i);
        std::filesystem::create_directory(folder);
        std::filesystem::create_hard_link("f.zek", folder + "/f.zek");
        Write(folder + "/g.zek", "[DEFINE]\nA" + std::to_string(i) + " = 1x\n");
        const std::string name = std::to_string(i) + "/f.zek";
        main += Include(name) + "FILE = ../boards/" + name + '\n';
        said += folder + "/g.zek:2:8: warning: [DEFINE]:A" + std::to_string(i) +
                ", 1x counts as 1: what stands behind the digits is ignored [L111]\nboards/main.zek:" +
                std::to_string(3 * (i - 100) + 2) + ":8: note: included from here\n" + folder +
                "/f.zek:2:8: note: included from here\n";
    }
    Write("boards/main.zek", main);
    EXPECT_EQ(Said(), said + "boards/main.zek: 300 warnings\n");
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
    EXPECT_EQ(
        Said(),
        std::string("boards/255.zek:2:8: error: [INCLUDE]:FILE FILE 256.zek cannot be loaded. [E003]\n"
                    "boards/255.zek:2:8: note: 256.zek is included too deep: 256 files are open inside one another\n") +
            ChainFromMain(254) + "boards/main.zek: 1 error\n");
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
