// Sources made of images, each compiled again and compared.
#include <sstream>

#include "compile/tables.h"
#include "zek/compiled_sources.h"

namespace zek::test {

namespace {

class DecompileTest : public CompiledSources {
protected:
    /// The image whose source was decompiled from `from` and compiled again as `to`, against the one that there was.
    static void ExpectSameAgain(const std::string& from, const std::string& extension) {
        std::filesystem::remove_all("again");
        const std::string main = Decompiled(from + extension, "again");
        ASSERT_NE(main, "");
        ASSERT_TRUE(Compile("again", main, "made"));
        ASSERT_EQ(WithoutTime(Read("made.zki")), WithoutTime(Read(from + ".zki")));
    }

    /// Where a word was defined again, the debug image keeps the numbers of the definitions before.
    static void ExpectSameButForDefinitions() {
        EXPECT_EQ(Read("made.zkd").size(), Read("first.zkd").size());
        std::istringstream lines(Zek({"diff", "first.zkd", "made.zkd"}).out);
        for (std::string line; std::getline(lines, line);) {
            EXPECT_TRUE(line.starts_with("changed DEFINE/") || line.starts_with("changed IFDEF/")) << line;
        }
    }

    static void ExpectSameOfBoth(const std::string& stem) {
        ExpectSameAgain(stem, ".zkd");
        ExpectSameAgain(stem, ".zki");
    }

    /// A source that has what every valid one needs, and more.
    static std::string Sound(const std::string& more) { return "[DEFINE]\nCALL = 3\nNO = 0\nFIVE = 5\n" + more; }
    static std::string Group(const std::string& name, const std::string& parent) {
        return "[GROUP]\nPARENT = " + parent + "\nNAME = " + name + "\nCHILDGROUP = 0\n";
    }
    static std::string Sensor(const std::string& name, const std::string& id) {
        return "[SENSOR]\nPARENT = g\nNAME = " + name + "\nID = " + id +
               "\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 0\nVALUE = NO\n";
    }
    static std::string View(const std::string& id, const std::string& pid, const std::string& sensors,
                            const std::string& more = "") {
        return "[TAVRGROUP]\nNAME = v" + id + "\nID = " + id + "\nPID = " + pid + "\nSENSORS = " + sensors + '\n' +
               more;
    }
};

class DecompiledSource : public DecompileTest, public testing::WithParamInterface<unsigned> {};

TEST_P(DecompiledSource, CompilesToTheSameImages) {
    unsigned lossless = 0;
    unsigned sameBytes = 0;
    const unsigned valid = ForEachValid(GetParam(), [&] {
        ExpectSameAgain("first", ".zkd");
        const bool same = WithoutTime(Read("made.zkd")) == WithoutTime(Read("first.zkd"));
        if (!same) ExpectSameButForDefinitions();
        ExpectSameAgain("first", ".zki");
        lossless += !HasFailure();
        sameBytes += same;
    });
    std::cout << valid << " sources, " << lossless << " lossless both ways, " << sameBytes
              << " with the same bytes of the debug image\n";
    EXPECT_EQ(lossless, valid);
    EXPECT_GE(valid, 20U);
    EXPECT_GE(sameBytes, valid / 2);
}

INSTANTIATE_TEST_SUITE_P(Shard, DecompiledSource, testing::Range(0U, ShardsOfPrograms(8)));

class DecompiledShape : public DecompileTest, public testing::WithParamInterface<std::string> {};

TEST_P(DecompiledShape, CompilesToTheSameImages) {
    ASSERT_TRUE(CompileShape(GetParam()));
    ExpectSameOfBoth("first");
    ExpectSameAgain("first", ".zkd");
    EXPECT_EQ(WithoutTime(Read("made.zkd")), WithoutTime(Read("first.zkd")));
}

INSTANTIATE_TEST_SUITE_P(Shape, DecompiledShape, testing::ValuesIn(SoundShapes()), ShapeName);

class ZekDecompile : public DecompileTest {};

TEST_F(ZekDecompile, PutsEverythingOnItsLineOfItsFile) {
    std::filesystem::create_directory("source");
    Write("source/main.zek", "; words\n\n[INCLUDE]\nFILE = sub\\words.zek\n[PROPERTY]\n\na=b ; c\nc = 1,\" x\"\n");
    std::filesystem::create_directory("source/sub");
    Write("source/sub/words.zek", "[DEFINE]\nA = 0x10\n[INCLUDE]\nFILE = empty.zek\n");
    Write("source/sub/empty.zek", "; nothing\n");
    ASSERT_TRUE(Compile("source", "main.zek", "first"));
    EXPECT_EQ(Decompiled("first.zkd", "made"), "main.zek");
    EXPECT_EQ(Read("made/main.zek"), "\n\n[INCLUDE]\nFILE = \"sub\\words.zek\"\n[PROPERTY]\n\na = \"b\"\nc = \"1\"\n");
    EXPECT_EQ(Read("made/sub/words.zek"), "[DEFINE]\nA = \"16\"\n[INCLUDE]\nFILE = \"empty.zek\"\n");
    EXPECT_EQ(Read("made/sub/empty.zek"), "");
    ASSERT_TRUE(Compile("made", "main.zek", "again"));
    EXPECT_EQ(Dump(WithoutTime(Read("again.zkd"))), Dump(WithoutTime(Read("first.zkd"))));
}

TEST_F(ZekDecompile, ShowsASingleFile) {
    Write("a.zek", "[PROPERTY]\na = b\n");
    ASSERT_TRUE(Compile(".", "a.zek", "a"));
    const Result debug = Zek({"decompile", "a.zkd"});
    EXPECT_EQ(debug.code, 0);
    EXPECT_EQ(debug.out, "[PROPERTY]\na = \"b\"\n");
    EXPECT_EQ(debug.err, "");
    Setting setting;
    setting.in = "a.zki";
    const Result image = Zek({"decompile", "-"}, setting);
    EXPECT_EQ(image.code, 0);
    EXPECT_TRUE(image.out.starts_with("; Made of a compiled image")) << image.out;
    EXPECT_TRUE(image.out.ends_with("\n\n[PROPERTY]\na = \"b\"\n")) << image.out;
    EXPECT_EQ(image.err, "");
}

TEST_F(ZekDecompile, SourceWithoutSectionsIsEmpty) {
    Write("a.zek", "; nothing\n");
    ASSERT_TRUE(Compile(".", "a.zek", "a"));
    const Result result = Zek({"decompile", "a.zkd"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "");
    ExpectSameOfBoth("a");
}

TEST_F(ZekDecompile, SeveralFilesNeedAFolder) {
    Write("a.zek", "[INCLUDE]\nFILE = b.zek\n");
    Write("b.zek", "");
    ASSERT_TRUE(Compile(".", "a.zek", "a"));
    const Result result = Zek({"decompile", "a.zkd"});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "zek: the source has 2 files and needs a folder for them: -o DIR\n");
}

TEST_F(ZekDecompile, TakesTheValueThatAWordHadWhenItWasRead) {
    // A is 1 in the table; the check converts its text again, when B is 2.
    Write("a.zek", "[DEFINE]\nB = 1\nA = B\n[DEFINE]\nB = 2\n");
    ASSERT_TRUE(Compile(".", "a.zek", "a"));
    EXPECT_EQ(Zek({"decompile", "a.zkd"}).out, "[DEFINE]\nB = \"1\"\nA = \"1\"\n[DEFINE]\nB = \"2\"\n");
}

TEST_F(ZekDecompile, PutsParentsThatStandBehindTheirChildrenInFilesOfTheirOwn) {
    Write("a.zek", std::string(30, '\n') + Group("child", "middle") + Group("other", "0") +
                       "[INCLUDE]\nFILE = middle.zek\n[INCLUDE]\nFILE = top.zek\n" + Group("last", "child"));
    Write("middle.zek", std::string(10, '\n') + Group("middle", "top") + Group("second", "middle"));
    Write("top.zek", Group("top", "0"));
    ASSERT_TRUE(Compile(".", "a.zek", "a"));
    ExpectSameOfBoth("a");
    EXPECT_EQ(Names("again"), (Strings{"a.zek", "a.zek.groups-1", "a.zek.groups-2"}));
}

TEST_F(ZekDecompile, MakesUpForNamesThatAreCountedOnly) {
    for (const std::string name : {"", "x", "lost_name"}) {
        SCOPED_TRACE(name);
        Write("a.zek", Sound(Group("g", "0") + Sensor("s", "1") + View("1", "0", "1", "P_" + name + " = 1\nP_y = 2\n") +
                             View("2", "0", "1", "P_z = 1\n")));
        ASSERT_TRUE(Compile(".", "a.zek", "a"));
        ExpectSameOfBoth("a");
    }
}

TEST_F(ZekDecompile, WritesNumbersAsWordsWhereTheirTextsAreCompared) {
    const std::string action = "[ACTION]\nNAME = act\nARGNUMBER = FIVE\nVALUE = CALL,act\n";
    Write("a.zek", Sound(Group("g", "0") + Sensor("s", "1") + Sensor("t", "FIVE") + Sensor("u", "0x1") +
                         View("1", "FIVE", "1,NO") + View("2", "1", "1") + action));
    EXPECT_FALSE(Compile(".", "a.zek", "a"));  // u has the ID of s
    Write("a.zek", Sound(Group("g", "0") + Sensor("s", "1") + Sensor("t", "FIVE") + "[DEFINE]\nONE = 1\n" +
                         Sensor("u", "ONE") + View("1", "FIVE", "1,NO") + View("2", "1", "1") + action));
    ASSERT_TRUE(Compile(".", "a.zek", "a"));
    ExpectSameOfBoth("a");
}

TEST_F(ZekDecompile, FindsArgumentsThatWereCarriedIntoOtherClasses) {
    Write("a.zek",
          "[DEFINE]\nVT_PACK = 7\nVT_FAR = 16777217\n[ACTION]\nNAME = act\nARGNUMBER = 0xFFFFFFFF\n"
          "VALUE_1 = VT_PACK,ARG16777216,ARG4093640704,ARG3808428031,ARG4093640709\nVALUE_2 = VT_FAR\n"
          "VALUE_3 = VT_PACK,5,6\n");
    ASSERT_TRUE(Compile(".", "a.zek", "a"));
    ExpectSameOfBoth("a");
}

/// Words come before names, so the jumps go to numbers, and only names that no operand means can be such words.
TEST_F(ZekDecompile, DefinesNamesOfValuesThatJumpsGoTo) {
    const auto action = [](const std::string& name, const std::string& items) {
        return "[ACTION]\nNAME = " + name + "\nARGNUMBER = 0\n" + items;
    };
    Write("a.zek", Sound("JUMP = 104\nSUM = 2\nVALUE_1 = 5\nVALUE_3 = 0xFFFFFFFF\n" +
                         action("a",
                                "VALUE_1 = JUMP,VALUE_2\nVALUE_2 = JUMP,VALUE_1\nVALUE_3 = SUM,+,VALUE_3,VALUE_1\n"
                                "VALUE_4 = JUMP,VALUE_3\n") +
                         action("b", "VALUE_1 = JUMP,VALUE_1\n")));
    ASSERT_TRUE(Compile(".", "a.zek", "a"));
    ExpectSameOfBoth("a");
    EXPECT_NE(Read("again/a.zek").find("\nVALUE_1 = \"5\"\n"), std::string::npos) << Read("again/a.zek");
}

/// A process that has numbered another group before makes such an image; for a source of its own, "0" comes first. The
/// debug image tells nothing of it.
TEST_F(ZekDecompile, TellsThatNoSourceHasAnotherGroupBeforeTheRoot) {
    InsertTbl(g_tblGroup, g_idxGroup, "g", 1);
    ASSERT_EQ(Check(Sound(Group("g", "0") + Group("h", "g") + Sensor("s", "1") + View("1", "0", "1"))), 1U);
    ASSERT_EQ(gccOutputD("a.zkd"), 1U);
    ASSERT_EQ(gccOutput("a.zki"), 1U);
    const std::string image = Read("a.zki");
    const std::size_t parent = image.find(Word(kIdParent) + Word(1) + Word(kIdGroup + 1));
    ASSERT_NE(parent, image.npos) << "the first group has the parent \"0\", which is the second name";
    const Result result = Zek({"decompile", "a.zki", "-o", "made"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "zek: the compiled image of the source that was made differs at byte " +
                              std::to_string(parent + 8) + '\n');
    EXPECT_FALSE(std::filesystem::exists("made"));
    ASSERT_EQ(Decompiled("a.zkd", "again"), "main.zek");
    EXPECT_TRUE(Compile("again", "main.zek", "made"));
    EXPECT_EQ(Zek({"diff", "a.zki", "made.zki"}).code, 0);
}

TEST_F(ZekDecompile, TellsWhatTheLanguageCannotExpress) {
    Write("a.zek", "[PROPERTY]\na = bcd\n");
    ASSERT_TRUE(Compile(".", "a.zek", "a"));
    std::string image = Read("a.zkd");
    image.replace(image.find("bcd"), 3, "b\"d");
    Write("a.zkd", image);
    const Result result = Zek({"decompile", "a.zkd", "-o", "made"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "zek: a.zek:2: no item of a source has the key \"a\" and such a value\n");
    EXPECT_FALSE(std::filesystem::exists("made"));
}

/// Compiles with words of the command line that no item defines, and one that an item defines.
TEST_F(ZekDecompile, TellsTheWordsThatOnlyTheCommandLineDefined) {
    const struct {
        std::string source;
        std::string decompiled;
    } rows[] = {{"[DEFINE]\nA = B\n[GLOBAL]\nG_X = VT,C\n", "[DEFINE]\nA = \"3\"\n[GLOBAL]\nG_X = \"VT\",\"C\"\n"},
                {"", ""}};
    const Strings words = {"-DVT=1", "-DA=9", "-DB=3", "-DC=0xFFFFFFFF"};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.source);
        Write("a.zek", row.source);
        ASSERT_EQ(Zek({"compile", "a.zek", words[0], words[1], words[2], words[3]}).code, 0);
        const Result result = Zek({"decompile", "a.zkd"});
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.out, row.decompiled);
        Strings again = {"compile", "made.zek"};
        std::string notes;
        for (const std::string word : {"A=9", "B=3", "C=4294967295", "VT=1"}) {
            if (word == "A=9" && !row.source.empty()) continue;
            notes += "zek: note: no item of the source defines this word: compile it with -D " + word + '\n';
            again.push_back("-D" + word);
        }
        EXPECT_EQ(result.err, notes);
        Write("made.zek", result.out);
        ASSERT_EQ(Zek(again).code, 0);
        EXPECT_EQ(WithoutTime(Read("made.zki")), WithoutTime(Read("a.zki")));
    }
}

TEST_F(ZekDecompile, TellsItsMainSourceOnOneLine) {
    Write("a\nb.zek", "[PROPERTY]\na = b\n");
    ASSERT_TRUE(Compile(".", "a\nb.zek", "a"));
    EXPECT_EQ(Zek({"decompile", "a.zkd", "-o", "made"}).out, "made/a_b.zek\n");
    EXPECT_EQ(Zek({"decompile", "a.zkd", "-o", "made"}).code, 0);
}

/// Found in two folders, but by one name: the image does not tell which section stood in which.
TEST_F(ZekDecompile, RefusesTwoFilesOfOneName) {
    std::filesystem::create_directory("inc");
    Write("a.zek", "[INCLUDE]\nFILE = part.zek\nFILE = pins.zek\n");
    Write("inc/part.zek", "[INCLUDE]\nFILE = pins.zek\n");
    Write("inc/pins.zek", "[PROPERTY]\na = b\n");
    const std::string two = ": two files were read under this name, and the image does not tell them apart";
    const struct {
        const char* pins;
        std::string why;
    } rows[] = {
        {"[PROPERTY]\nc = d\n", "pins.zek:2: two different things stand there" + two},
        {"\n\n[PROPERTY]\nc = d\n", "pins.zek:1: this section was not read each time that the file was" + two},
    };
    for (const auto& row : rows) {
        Write("pins.zek", row.pins);
        ASSERT_EQ(Zek({"compile", "a.zek", "-I", "inc"}).code, 0);
        const Result result = Zek({"decompile", "a.zkd", "-o", "made"});
        EXPECT_EQ(result.code, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "zek: " + row.why + '\n');
        EXPECT_FALSE(std::filesystem::exists("made"));
    }
}

TEST_F(ZekDecompile, MakesNoFileOfAFolder) {
    std::filesystem::create_directory("sub");
    Write("sub/b.zek", "[PROPERTY]\na = b\n");
    Write("a.zek", "[INCLUDE]\nFILE = sub\n[INCLUDE]\nFILE = sub/b.zek\n");
    // The library goes on where a file cannot be loaded.
    InChild([] {
        ASSERT_EQ(gccCompStart("a.zek"), 1U);
        gccParse();
        ASSERT_EQ(gccCheck(), 1U);
        ASSERT_EQ(gccOutputD("a.zkd"), 1U);
    });
    const Result result = Zek({"decompile", "a.zkd", "-o", "made"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "zek: sub would be a file and the folder of sub/b.zek\n");
    EXPECT_FALSE(std::filesystem::exists("made"));
}

TEST_F(ZekDecompile, NamesTheFirstDifference) {
    Write("a.zek", "[DEFINE]\nA = 1\n[PROPERTY]\na = b\n");
    ASSERT_TRUE(Compile(".", "a.zek", "a"));
    std::string image = Read("a.zkd");
    // A word that nothing defines: neither an item, nor can the command line.
    // The time of the image may hold the character, too, so it is looked for behind its length.
    const std::string word("\1\0\0\0A", 5);
    image.replace(image.find(word) + word.size() - 1, 1, "1");
    Write("a.zkd", image);
    const Result result = Zek({"decompile", "a.zkd"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "zek: no item defines the word \"1\", nor can -D: a word must not begin with a digit\n");
    image = Read("a.zki") + std::string(1, '\0');
    Write("a.zki", image);
    const Result compiled = Zek({"decompile", "a.zki", "-o", "made"});
    EXPECT_EQ(compiled.code, 1);
    EXPECT_EQ(compiled.err, "zek: the compiled image of the source that was made differs at byte " +
                                std::to_string(image.size() - 1) + '\n');
    EXPECT_FALSE(std::filesystem::exists("made"));
}

TEST_F(ZekDecompile, EndsWithTheCodesOfEveryCommand) {
    Write("a.zek", "no image");
    EXPECT_EQ(Zek({"decompile", "a.zek"}).code, 3);
    EXPECT_EQ(Zek({"decompile", "missing"}).code, 2);
    EXPECT_EQ(Zek({"decompile"}).code, 2);
}

}  // namespace

}  // namespace zek::test
