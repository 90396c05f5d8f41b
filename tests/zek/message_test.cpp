#include <dlfcn.h>

#include <algorithm>

#include "docs/page.h"
#include "note_texts.h"
#include "zek/command.h"

namespace zek::test {

namespace {

class ZekMessages : public ZekTest {
protected:
    static std::string Said(const std::string& text, Strings options = {}) {
        Write("a.zek", text);
        options.insert(options.begin(), {"check", "a.zek"});
        options.insert(options.end(), kUnusedAside.begin(), kUnusedAside.end());
        return WithoutExcerpts(Zek(options).err);
    }
};

constexpr char kGroup[] = "[DEFINE]\nVT_VALUE = 1\n[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\n";

TEST_F(ZekMessages, GiveFileLineAndText) {
    EXPECT_EQ(Said("[DEFINE]\nW = 1\n[GLOBAL]\nG_A = X\nG_B = W\n[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = x\n"),
              "a.zek:4:7: error: [GLOBAL]:G_A, Value operator type(X) is invalid. [E108]\n"
              "a.zek:5:7: error: [GLOBAL]:G_B, Not enough sub-strings for value type W. [E109]\n"
              "a.zek:9:14: error: [GROUP]:CHILDGROUP, x has not been defined and is not a valid number. [E106]\n"
              "a.zek: 3 errors\n");
}

TEST_F(ZekMessages, ShowTheSourceWithWhatTheyAreAbout) {
    Write("b.zek",
          "[INCLUDE]\nFILE = zek/words.zek\n[GLOBAL]\nG_Limit = VT_VALUE,40\nG_Sum = VT_CALC,+,\\\n\tG_Limt,1\n");
    Write("a.zek", "[INCLUDE]\nFILE = b.zek\n[PROPERTY]\nColour = red, blue ; both\n");
    EXPECT_EQ(Zek({"check", "a.zek"}).err,
              "a.zek:4:14: warning: [PROPERTY]:Colour, More than one sub-string and get the first one as sub-string. "
              "[W101]\n"
              "    4 | Colour = red, blue ; both\n"
              "      |              ^~~~~\n"
              "b.zek:6:2: error: [GLOBAL]:G_Sum, The GLOBAL entry with NAME G_Limt does not exist. [E305]\n"
              "    6 | \tG_Limt,1\n"
              "      | \t^~~~~~\n"
              "b.zek:6:2: note: did you mean G_Limit?\n"
              "a.zek:2:8: note: included from here\n"
              "a.zek: 1 error, 1 warning\n");
}

TEST_F(ZekMessages, WithoutKeyOrSectionAreShownWithWhatTheyHave) {
    const std::string text = std::string(kGroup) + "[GROUP]\nPARENT = Later\nNAME = Early\nCHILDGROUP = 0\n" +
                             "[GROUP]\nPARENT = 0\nNAME = Later\nCHILDGROUP = 0\nNAME = again\n";
    EXPECT_EQ(Said(text),
              "a.zek:8:10: error: Parent of this group hasn't been defined. [E206]\n"
              "a.zek:13:8: note: the parent is defined here\n"
              "a.zek:15:1: error: [GROUP], Entry NAME is redefined. [E202]\n"
              "a.zek:13:1: note: it was defined here\n"
              "a.zek: 2 errors\n");
}

TEST_F(ZekMessages, OtherPlaceIsANoteWhereTheyNameOne) {
    EXPECT_EQ(Said("[QUORZEK]\nVERSION = 1\n[QUORZEK]\nVERSION = 1\n[QUORZEK]\nVERSION = 1\n"),
              "a.zek:1:1: error: SECTION QUORZEK is redefined. The MAX number of QUORZEK is one. [E201]\n"
              "a.zek:3:1: note: it is defined again here\n"
              "a.zek:3:1: error: SECTION QUORZEK is redefined. The MAX number of QUORZEK is one. [E201]\n"
              "a.zek:1:1: note: it was defined here\n"
              "a.zek:5:1: error: SECTION QUORZEK is redefined. The MAX number of QUORZEK is one. [E201]\n"
              "a.zek:1:1: note: it was defined here\n"
              "a.zek: 3 errors\n");
    Write("b.zek",
          "[ACTION]\nNAME = \"Two\"\nARGNUMBER = 2\nVALUE = VT_VALUE,ARG2\n[ACTION]\nNAME = None\nVALUE = "
          "VT_VALUE,1\n");
    EXPECT_EQ(Said("[DEFINE]\nVT_VALUE = 1\nVT_CALL = 3\n[INCLUDE]\nFILE = b.zek\n"
                   "[GLOBAL]\nG_A = VT_CALL,Two,1\nG_B = VT_CALL,None,1\n"),
              "a.zek:7:15: error: [GLOBAL]:G_A The ACTION Two needs 2 PARAMS, but total 1 PARAMS here. [E308]\n"
              "b.zek:2:9: note: the action is defined here\n"
              "b.zek:3:13: note: its number of arguments\n"
              "a.zek:8:15: error: [GLOBAL]:G_B The ACTION None needs 0 PARAMS, but total 1 PARAMS here. [E308]\n"
              "b.zek:6:8: note: the action is defined here\n"
              "a.zek: 2 errors\n");
}

TEST_F(ZekMessages, ConditionThatDoesNotComeFirstIsMissing) {
    EXPECT_EQ(Said("[IFDEF]\nDEFINEWORD = A\n[IFDEF]\nB = 1\nDEFINEWORD = A\n[IFDEF]\n"),
              "a.zek:5:14: error: [IFDEF]:DEFINEWORD, A has not been defined and is not a valid number. [E106]\n"
              "a.zek:3:1: error: [IFDEF]:DEFINEWORD, This ENTRY does not exist. [E101]\n"
              "a.zek:6:1: error: [IFDEF]:DEFINEWORD, This ENTRY does not exist. [E101]\n"
              "a.zek: 3 errors\n");
}

TEST_F(ZekMessages, EarlierPlaceIsANote) {
    std::filesystem::create_directory("parts");
    Write("parts/b.zek", "[PROPERTY]\nColour = red\n");
    EXPECT_EQ(Said("[INCLUDE]\nFILE = b.zek\n[PROPERTY]\nColour = blue\n", {"-I", "parts"}),
              "a.zek:4:1: error: [PROPERTY], Entry Colour is redefined.It has been defined in Line[b.zek:2]. [E203]\n"
              "parts/b.zek:2:1: note: it was defined here\n"
              "a.zek: 1 error\n");
}

TEST_F(ZekMessages, ThatDoNotFailAreWarnings) {
    WriteSound("a.zek");
    const std::string text =
        Read("a.zek") + "[DEFINE]\nVT_SEND = 11\nBUSTYPE_SMBUS = 1\nOTHER = 1\n" +
        "[GLOBAL]\nG_A = VT_SEND,1,8,OTHER,0,5\n[TAVRGROUP]\nNAME = More\nID = 2\nPID = 0\nSENSORS = 9,1\n";
    Write("a.zek", text);
    const Result result = Zek({"compile", "a.zek"});
    EXPECT_EQ(WithoutExcerpts(result.err),
              "a.zek:31:11: warning: [TAVRGROUP]:SENSORS, The SENSOR with ID 9 does not exist. [W301]\n"
              "a.zek:26:25: warning: SMBUS address field is wrong! [W302]\n"
              "a.zek:26:19: warning: SMBUS type is wrong! [W303]\n"
              "a.zek: 3 warnings\n");
    EXPECT_EQ(result.code, 0);
}

TEST_F(ZekMessages, DefinitionOfALaterWordIsAWarning) {
    EXPECT_EQ(Said("[DEFINE]\nA = B\nB = 1\n"),
              "a.zek:2:5: warning: [DEFINE]:A, B has not been defined and is not a valid number. [W005]\n"
              "a.zek: 1 warning\n");
    EXPECT_EQ(Zek({"check", "a.zek"}).code, 0);
}

TEST_F(ZekMessages, ComeOnceThoughTheLibraryRepeatsThem) {
    EXPECT_EQ(Said("[DEFINE]\n1A = 1\n"),
              "a.zek:2:1: error: [DEFINE]:1A, Entry name is invalid. [E102]\n"
              "a.zek: 1 error\n");
}

TEST_F(ZekMessages, UnknownSectionIsAnErrorWithItsPlace) {
    std::filesystem::create_directory("parts");
    Write("parts/b.zek", "; a comment\n[GROPU]\nNAME = x\n[DEFINE]\nB = 1\n[B] ]\n");
    Write("a.zek", std::string(kGroup) + "[INCLUDE]\nFILE = parts/b.zek\n[FOO]\n");
    const Result result = Zek({"compile", "a.zek"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(WithoutExcerpts(result.err),
              "parts/b.zek:2:1: error: [GROPU] is no section of the language: Create section(1, GROPU) object failed. "
              "[E002]\n"
              "parts/b.zek:2:2: note: did you mean GROUP?\n"
              "a.zek:8:8: note: included from here\n"
              "parts/b.zek:6:1: error: [[B] ]] is no section of the language: Create section(3, [B] ]) object failed. "
              "[E002]\n"
              "a.zek:9:1: error: [FOO] is no section of the language: Create section(4, FOO) object failed. [E002]\n"
              "a.zek: 3 errors\n");
    EXPECT_EQ(Names(), (Strings{"a.zek", "parts"}));
}

TEST_F(ZekMessages, ItemsBeforeTheFirstSectionAreAnError) {
    EXPECT_EQ(Said("\nA = 1\n[DEFINE]\nB = 1\n"),
              "a.zek:2:1: error: items before the first section: Create section(1, ) object failed. [E002]\n"
              "a.zek: 1 error\n");
}

/// Of the rest of such a file nothing more is said.
TEST_F(ZekMessages, FileThatIsNoSourceIsCalledWhatItIs) {
    WriteSound("a.zek");
    ASSERT_EQ(Zek({"compile", "a.zek"}).code, 0);
    const struct {
        std::string text;
        std::string note;
    } rows[] = {{Read("a.zki"), "this is a compiled image and no source"},
                {Read("a.zkd"), "this is a debug image and no source"},
                {std::string("\xff\xfe[\0A\0]\0\n\0", 10), "this file is in UTF-16, where UTF-8 is wanted"},
                {std::string("\xfe\xff\0[\0A\0]\0\n", 10), "this file is in UTF-16, where UTF-8 is wanted"}};
    for (const auto& row : rows) {
        EXPECT_EQ(Said(row.text),
                  "a.zek:1: error: items before the first section: Create section(1, ) object failed. [E002]\n"
                  "a.zek:1: note: " +
                      row.note + "\na.zek: 1 error\n");
    }
}

TEST_F(ZekMessages, IgnoredEntryIsOneWarning) {
    EXPECT_EQ(Said(std::string(kGroup) + "BOGUS = 1\n"),
              "a.zek:7:1: warning: [GROUP]:BOGUS, This ENTRY is ignored because of invalid entry name. [W004]\n"
              "a.zek: 1 warning\n");
}

TEST_F(ZekMessages, MissingEntriesAreShownAtTheirSections) {
    Write("b.zek", "; comment\n[GROUP]\nPARENT = 0\nNAME = b\n");
    EXPECT_EQ(Said("[INCLUDE]\nFILE = b.zek\n" + std::string(kGroup) + "[GROUP]\nPARENT = 0\nNAME = c\n"),
              "b.zek:2:1: error: [GROUP]:CHILDGROUP, This ENTRY does not exist. [E101]\n"
              "a.zek:2:8: note: included from here\n"
              "a.zek:9:1: error: [GROUP]:CHILDGROUP, This ENTRY does not exist. [E101]\n"
              "a.zek: 2 errors\n");
}

TEST_F(ZekMessages, RawAreAsTheLibrarySentThem) {
    Write("b.zek", "[GROUP]\nPARENT = 0\nNAME = b\n");
    EXPECT_EQ(Said("[FOO]\n[GROUP]\nBOGUS = 1\n[INCLUDE]\nFILE = b.zek\nFILE = c.zek\n[DEFINE]\n1A = 1\n", {"--raw"}),
              "Create section(1, FOO) object failed.\n"
              "Add Item(NO. = 1) of section(GROUP) failed.\n"
              "Warning[a.zek:3]: [GROUP]:BOGUS, This ENTRY is ignored because of invalid entry name.\n"
              "Warning[a.zek:6], [INCLUDE]:FILE FILE c.zek cannot be loaded.\n"
              "Error[a.zek:8]: [DEFINE]:1A, Entry name is invalid.\n"
              "Error[a.zek:0]: [GROUP]:PARENT, This ENTRY does not exist.\n"
              "Error[a.zek:0]: [GROUP]:NAME, This ENTRY does not exist.\n"
              "Error[a.zek:0]: [GROUP]:CHILDGROUP, This ENTRY does not exist.\n"
              "Error[a.zek:0]: [GROUP]:CHILDGROUP, This ENTRY does not exist.\n"
              "Error[a.zek:8]: [DEFINE]:1A, Entry name is invalid.\n"
              "a.zek: 7 errors, 1 warning\n");
}

TEST_F(ZekMessages, VerboseShowsTheReadingToo) {
    // Loaded by the library in this process as in the command's.
    void* installed = dlopen("/usr/tavr/lib/libzekrsparser.so.0", RTLD_LAZY | RTLD_NOLOAD);
    if (installed) dlclose(installed);
    const std::string raw = installed ? "" : "Parse::load rsparsea(/usr/tavr/lib/libzekrsparser.so.0) failed.\n";
    const std::string loading = installed ? "" : "zek: note: " + raw.substr(0, raw.size() - 1) + " [W001]\n";
    // The second time it comes while the first file is being read.
    const std::string loadingAgain = installed ? "" : "a." + loading;
    Write("b.zek", "[DEFINE]\nB = 1\n");
    const std::string text = std::string(kGroup) + "BOGUS = 1\n[INCLUDE]\nFILE = b.zek\n";
    const std::string warning =
        "a.zek:7:1: warning: [GROUP]:BOGUS, This ENTRY is ignored because of invalid entry name. [W004]\n";
    EXPECT_EQ(Said(text, {"--verbose"}), loading + "a.zek: note: Add Item(NO. = 4) of section(GROUP) failed. [W003]\n" +
                                             warning + loadingAgain +
                                             "b.zek: note: Parse::No more sections(total = 1). [W002]\na.zek: note: "
                                             "Parse::No more sections(total = 3). [W002]\n" +
                                             "a.zek: 1 warning\n");
    EXPECT_EQ(Said("[DEFINE]\nB = 1\n", {"--verbose", "--raw"}), raw + "Parse::No more sections(total = 1).\n");
    EXPECT_EQ(Said("[DEFINE]\nB = 1\n"), "");
}

/// Both x/c.zek and y/c.zek are c.zek to the library.
class ZekFilesOfOneName : public ZekMessages {
protected:
    static std::string Said(const std::string& x, const std::string& y) {
        for (const char* folder : {"x", "y"}) {
            std::filesystem::create_directory(folder);
            Write(std::string(folder) + "/part.zek", "[INCLUDE]\nFILE = c.zek\n");
        }
        Write("x/c.zek", x);
        Write("y/c.zek", y);
        return ZekMessages::Said("[INCLUDE]\nFILE = x/part.zek\nFILE = y/part.zek\n");
    }
};

TEST_F(ZekFilesOfOneName, AreToldApartByLineSectionKeyAndValue) {
    EXPECT_EQ(Said("[GLOBAL]\nG_X = no\n", "\n[GLOBAL]\nG_X = no\n"),
              "x/c.zek:2:7: error: [GLOBAL]:G_X, Value operator type(no) is invalid. [E108]\n"
              "a.zek:2:8: note: included from here\n"
              "x/part.zek:2:8: note: included from here\n"
              "y/c.zek:3:7: error: [GLOBAL]:G_X, Value operator type(no) is invalid. [E108]\n"
              "a.zek:3:8: note: included from here\n"
              "y/part.zek:2:8: note: included from here\n"
              "a.zek: 2 errors\n");
    EXPECT_EQ(Said("[PROPERTY]\nG_X = no\n", "[GLOBAL]\nG_X = no\n"),
              "y/c.zek:2:7: error: [GLOBAL]:G_X, Value operator type(no) is invalid. [E108]\n"
              "a.zek:3:8: note: included from here\n"
              "y/part.zek:2:8: note: included from here\n"
              "a.zek: 1 error\n");
    EXPECT_EQ(Said("[GLOBAL]\nG_X = no\n", "[GLOBAL]\nG_Y = no\n"),
              "x/c.zek:2:7: error: [GLOBAL]:G_X, Value operator type(no) is invalid. [E108]\n"
              "a.zek:2:8: note: included from here\n"
              "x/part.zek:2:8: note: included from here\n"
              "y/c.zek:2:7: error: [GLOBAL]:G_Y, Value operator type(no) is invalid. [E108]\n"
              "a.zek:3:8: note: included from here\n"
              "y/part.zek:2:8: note: included from here\n"
              "a.zek: 2 errors\n");
    EXPECT_EQ(Said("[GLOBAL]\nG_X = no\n", "[GLOBAL]\nG_X = nor this\n"),
              "x/c.zek:2:7: error: [GLOBAL]:G_X, Value operator type(no) is invalid. [E108]\n"
              "a.zek:2:8: note: included from here\n"
              "x/part.zek:2:8: note: included from here\n"
              "y/c.zek:2:7: error: [GLOBAL]:G_X, Value operator type(nor this) is invalid. [E108]\n"
              "a.zek:3:8: note: included from here\n"
              "y/part.zek:2:8: note: included from here\n"
              "a.zek: 2 errors\n");
}

TEST_F(ZekFilesOfOneName, ShareTheMessagesWhereEachHasOne) {
    EXPECT_EQ(Said("[GLOBAL]\nG_X = no\n", "[GLOBAL]\nG_X = no\n"),
              "x/c.zek:2:7: error: [GLOBAL]:G_X, Value operator type(no) is invalid. [E108]\n"
              "a.zek:2:8: note: included from here\n"
              "x/part.zek:2:8: note: included from here\n"
              "y/c.zek:2:7: error: [GLOBAL]:G_X, Value operator type(no) is invalid. [E108]\n"
              "a.zek:3:8: note: included from here\n"
              "y/part.zek:2:8: note: included from here\n"
              "a.zek: 2 errors\n");
    // The library comes to the included section first. A file keeps the name by which it was read first.
    EXPECT_EQ(Said("[INCLUDE]\nFILE = ../y/part.zek\n[GLOBAL]\nG_X = no\n", "\n\n[GLOBAL]\nG_X = no\n"),
              "x/../y/c.zek:4:7: error: [GLOBAL]:G_X, Value operator type(no) is invalid. [E108]\n"
              "a.zek:2:8: note: included from here\n"
              "x/part.zek:2:8: note: included from here\n"
              "x/c.zek:2:8: note: included from here\n"
              "x/../y/part.zek:2:8: note: included from here\n"
              "x/c.zek:4:7: error: [GLOBAL]:G_X, Value operator type(no) is invalid. [E108]\n"
              "a.zek:2:8: note: included from here\n"
              "x/part.zek:2:8: note: included from here\n"
              "x/../y/c.zek:4:7: error: [GLOBAL]:G_X, Value operator type(no) is invalid. [E108]\n"
              "a.zek: 3 errors\n");
}

TEST_F(ZekFilesOfOneName, AreAllNamedWhereNothingTellsThemApart) {
    // Only the second lacks something, but the first says the same there.
    EXPECT_EQ(Said("[DEFINE]\nW = 1\n[GLOBAL]\nG_X = W,1\n", "[DEFINE]\nV = 1\n[GLOBAL]\nG_X = W\n"),
              "x/c.zek:4:7: error: [GLOBAL]:G_X, Not enough sub-strings for value type W. [E109]\n"
              "y/c.zek:4:7: note: or here, one of 2 files included as c.zek\n"
              "a.zek:2:8: note: included from here\n"
              "x/part.zek:2:8: note: included from here\n"
              "a.zek: 1 error\n");
}

TEST_F(ZekFilesOfOneName, SomeAreNamedOfMany) {
    std::string includes = "[DEFINE]\nW = 1\n[INCLUDE]\n";
    for (int i = 0; i < 50; ++i) {
        const std::string folder = "d" + std::to_string(i);
        std::filesystem::create_directory(folder);
        Write(folder + "/part.zek", "[INCLUDE]\nFILE = c.zek\n");
        // Only every other one lacks something, but the message has no more of the line than the key and the word.
        Write(folder + "/c.zek",
              "[ACTION]\nNAME = S" + std::to_string(i) + "\nARGNUMBER = 0\nVALUE = W" + (i % 2 ? ",1" : "") + '\n');
        includes += "FILE = " + folder + "/part.zek\n";
    }
    const std::string said = ZekMessages::Said(includes);
    const auto count = [&](const std::string& text) {
        std::size_t found = 0;
        for (std::size_t at = 0; (at = said.find(text, at)) != said.npos; ++at) ++found;
        return found;
    };
    EXPECT_EQ(count(": error: [ACTION]:VALUE, Not enough sub-strings for value type W. [E109]\n"), 25U) << said;
    EXPECT_EQ(count(": note: or here, one of 50 files included as c.zek\n"), 25U * 20) << said;
    EXPECT_EQ(count(": note: or in 29 more of them\n"), 25U) << said;
    EXPECT_TRUE(said.starts_with("d0/c.zek:4:9: error: ")) << said;
}

TEST_F(ZekFilesOfOneName, EarlierPlaceIsTheOtherOne) {
    EXPECT_EQ(Said("[PROPERTY]\nA = 1\n", "[PROPERTY]\nA = 2\n"),
              "y/c.zek:2:1: error: [PROPERTY], Entry A is redefined.It has been defined in Line[c.zek:2]. [E203]\n"
              "x/c.zek:2:1: note: it was defined here\n"
              "a.zek:3:8: note: included from here\n"
              "y/part.zek:2:8: note: included from here\n"
              "a.zek: 1 error\n");
    const std::string first = "[TABLE]\nNAME = A\nTYPE = 1\n";
    const std::string second = "[TABLE]\nNAME = B\nTYPE = 1\n";
    const std::string third = "[TABLE]\nTYPE = 1\nNAME = B\n";
    EXPECT_EQ(Said(first + third, second),
              "y/c.zek:2:8: error: [TABLE], NAME B is redefined.It has been defined in Line[c.zek:6]. [E204]\n"
              "x/c.zek:6:8: note: it was defined here\n"
              "a.zek:3:8: note: included from here\n"
              "y/part.zek:2:8: note: included from here\n"
              "a.zek: 1 error\n");
    EXPECT_EQ(Said(first, second + third),
              "y/c.zek:6:8: error: [TABLE], NAME B is redefined.It has been defined in Line[c.zek:2]. [E204]\n"
              "y/c.zek:2:8: note: it was defined here\n"
              "a.zek:3:8: note: included from here\n"
              "y/part.zek:2:8: note: included from here\n"
              "a.zek: 1 error\n");
}

/// What is said while a file is being read is about that file.
TEST_F(ZekFilesOfOneName, AreKnownWhileTheyAreRead) {
    EXPECT_TRUE(Said("[DEFINE]\nA = 1\n", "[DEFINE]\n1A = 1\n")
                    .starts_with("y/c.zek:2:1: error: [DEFINE]:1A, Entry name is invalid. [E102]\n"));
}

TEST_F(ZekMessages, PageTellsEachNote) {
    const std::string page = SourceFile("docs/language.md");
    const std::size_t begin = page.find("\nIn notes, below a finding:\n");
    ASSERT_NE(begin, page.npos);
    const std::string notes = page.substr(begin, page.find("\nAbout the run, ", begin) - begin);
    for (const tool::NoteRow& row : tool::kNoteRows) {
        EXPECT_NE(notes.find('`' + std::string(row.format) + '`'), notes.npos) << row.format;
    }
    // And none that is not said.
    for (std::size_t at = 0; (at = notes.find("- `", at)) != notes.npos; ++at) {
        const std::string told = notes.substr(at + 3, notes.find('`', at + 3) - at - 3);
        EXPECT_TRUE(std::any_of(tool::kNoteRows.begin(), tool::kNoteRows.end(), [&](const tool::NoteRow& row) {
            return told == row.format;
        })) << told;
    }
}

TEST_F(ZekMessages, AreSafeForATerminal) {
    EXPECT_EQ(Said("[GLOBAL]\nG_\x1b[31m = \xff\xc3\xa9\\\n"),
              "a.zek:2:11: error: [GLOBAL]:G_\\x1b[31m, Value operator type(\\xff\xc3\xa9) is invalid. [E108]\na.zek: "
              "1 error\n");
    EXPECT_EQ(Said("[\x1b]\n"),
              "a.zek:1:1: error: [\\x1b] is no section of the language: Create section(1, \\x1b) object failed. "
              "[E002]\na.zek: 1 error\n");
}

}  // namespace

}  // namespace zek::test
