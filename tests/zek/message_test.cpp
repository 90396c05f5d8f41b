#include <dlfcn.h>

#include "zek/command.h"

namespace zek::test {

namespace {

class ZekMessages : public ZekTest {
protected:
    static std::string Said(const std::string& text, Strings options = {}) {
        Write("a.zek", text);
        options.insert(options.begin(), {"check", "a.zek"});
        return Zek(options).err;
    }
};

constexpr char kGroup[] = "[DEFINE]\nVT_VALUE = 1\n[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\n";

TEST_F(ZekMessages, GiveFileLineAndText) {
    EXPECT_EQ(Said("[DEFINE]\nW = 1\n[GLOBAL]\nG_A = X\nG_B = W\n[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = x\n"),
              "a.zek:4: error: [GLOBAL]:G_A, Value operator type(X) is invalid.\n"
              "a.zek:5: error: [GLOBAL]:G_B, Not enough sub-strings for value type W.\n"
              "a.zek:9: error: [GROUP]:CHILDGROUP, x has not been defined and is not a valid number.\n"
              "a.zek: 3 errors\n");
}

TEST_F(ZekMessages, WithoutKeyOrSectionAreShownWithWhatTheyHave) {
    const std::string text = std::string(kGroup) + "[GROUP]\nPARENT = Later\nNAME = Early\nCHILDGROUP = 0\n" +
                             "[GROUP]\nPARENT = 0\nNAME = Later\nCHILDGROUP = 0\nNAME = again\n";
    EXPECT_EQ(Said(text),
              "a.zek:7: error: Parent of this group hasn't been defined.\n"
              "a.zek:15: error: [GROUP], Entry NAME is redefined.\n"
              "a.zek: 2 errors\n");
}

TEST_F(ZekMessages, EarlierPlaceIsNamedAsItWasOpened) {
    std::filesystem::create_directory("parts");
    Write("parts/b.zek", "[PROPERTY]\nColour = red\n");
    EXPECT_EQ(Said("[INCLUDE]\nFILE = b.zek\n[PROPERTY]\nColour = blue\n", {"-I", "parts"}),
              "a.zek:4: error: [PROPERTY], Entry Colour is redefined.It has been defined in Line[parts/b.zek:2].\n"
              "a.zek: 1 error\n");
}

TEST_F(ZekMessages, ThatDoNotFailAreWarnings) {
    WriteSound("a.zek");
    const std::string text =
        Read("a.zek") + "[DEFINE]\nVT_SEND = 11\nBUSTYPE_SMBUS = 1\nOTHER = 1\n" +
        "[GLOBAL]\nG_A = VT_SEND,1,8,OTHER,0,5\n[TAVRGROUP]\nNAME = More\nID = 2\nPID = 0\nSENSORS = 9,1\n";
    Write("a.zek", text);
    const Result result = Zek({"compile", "a.zek"});
    EXPECT_EQ(result.err,
              "a.zek:31: warning: [TAVRGROUP]:SENSORS, The SENSOR with ID 9 does not exist.\n"
              "a.zek:26: warning: SMBUS address field is wrong!\n"
              "a.zek:26: warning: SMBUS type is wrong!\n"
              "a.zek: 3 warnings\n");
    EXPECT_EQ(result.code, 0);
}

TEST_F(ZekMessages, DefinitionOfALaterWordIsAWarning) {
    Write("a.zek", "[DEFINE]\nA = B\nB = 1\n");
    const Result result = Zek({"check", "a.zek"});
    EXPECT_EQ(result.err,
              "a.zek:2: warning: [DEFINE]:A, B has not been defined and is not a valid number.\na.zek: 1 warning\n");
    EXPECT_EQ(result.code, 0);
}

TEST_F(ZekMessages, ComeAsOftenAsTheLibrarySendsThem) {
    EXPECT_EQ(Said("[DEFINE]\n1A = 1\n"),
              "a.zek:2: error: [DEFINE]:1A, Entry name is invalid.\n"
              "a.zek:2: error: [DEFINE]:1A, Entry name is invalid.\n"
              "a.zek: 2 errors\n");
}

TEST_F(ZekMessages, UnknownSectionIsAnErrorWithItsPlace) {
    std::filesystem::create_directory("parts");
    Write("parts/b.zek", "; a comment\n[GROPU]\nNAME = x\n[DEFINE]\nB = 1\n[B] ]\n");
    Write("a.zek", std::string(kGroup) + "[INCLUDE]\nFILE = parts/b.zek\n[FOO]\n");
    const Result result = Zek({"compile", "a.zek"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err,
              "parts/b.zek:2: error: [GROPU] is no section of the language\n"
              "parts/b.zek:6: error: [[B] ]] is no section of the language\n"
              "a.zek:9: error: [FOO] is no section of the language\n"
              "a.zek: 3 errors\n");
    EXPECT_EQ(Names(), (Strings{"a.zek", "parts"}));
}

TEST_F(ZekMessages, ItemsBeforeTheFirstSectionAreAnError) {
    EXPECT_EQ(Said("\nA = 1\n[DEFINE]\nB = 1\n"), "a.zek:2: error: items before the first section\na.zek: 1 error\n");
}

TEST_F(ZekMessages, IgnoredEntryIsOneWarning) {
    EXPECT_EQ(
        Said(std::string(kGroup) + "BOGUS = 1\n"),
        "a.zek:7: warning: [GROUP]:BOGUS, This ENTRY is ignored because of invalid entry name.\na.zek: 1 warning\n");
}

TEST_F(ZekMessages, MissingEntriesAreFollowedByTheirSections) {
    Write("b.zek", "; comment\n[GROUP]\nPARENT = 0\nNAME = b\n");
    EXPECT_EQ(Said("[INCLUDE]\nFILE = b.zek\n" + std::string(kGroup) + "[GROUP]\nPARENT = 0\nNAME = c\n"),
              "a.zek:0: error: [GROUP]:CHILDGROUP, This ENTRY does not exist.\n"
              "b.zek:2: note: the section without CHILDGROUP begins here\n"
              "a.zek:0: error: [GROUP]:CHILDGROUP, This ENTRY does not exist.\n"
              "a.zek:9: note: the section without CHILDGROUP begins here\n"
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
              "a.zek: 8 errors, 1 warning\n");
}

TEST_F(ZekMessages, VerboseShowsTheReadingToo) {
    // Loaded by the library in this process as in the command's.
    void* installed = dlopen("/usr/tavr/lib/libzekrsparser.so.0", RTLD_LAZY | RTLD_NOLOAD);
    if (installed) dlclose(installed);
    const std::string loading = installed ? "" : "Parse::load rsparsea(/usr/tavr/lib/libzekrsparser.so.0) failed.\n";
    Write("b.zek", "[DEFINE]\nB = 1\n");
    const std::string text = std::string(kGroup) + "BOGUS = 1\n[INCLUDE]\nFILE = b.zek\n";
    const std::string warning =
        "a.zek:7: warning: [GROUP]:BOGUS, This ENTRY is ignored because of invalid entry name.\n";
    EXPECT_EQ(Said(text, {"--verbose"}),
              loading + "Add Item(NO. = 4) of section(GROUP) failed.\n" + warning + loading +
                  "Parse::No more sections(total = 1).\nParse::No more sections(total = 3).\n" + "a.zek: 1 warning\n");
    EXPECT_EQ(Said("[DEFINE]\nB = 1\n", {"--verbose", "--raw"}), loading + "Parse::No more sections(total = 1).\n");
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
              "x/c.zek:2: error: [GLOBAL]:G_X, Value operator type(no) is invalid.\n"
              "y/c.zek:3: error: [GLOBAL]:G_X, Value operator type(no) is invalid.\n"
              "a.zek: 2 errors\n");
    EXPECT_EQ(Said("[PROPERTY]\nG_X = no\n", "[GLOBAL]\nG_X = no\n"),
              "y/c.zek:2: error: [GLOBAL]:G_X, Value operator type(no) is invalid.\na.zek: 1 error\n");
    EXPECT_EQ(Said("[GLOBAL]\nG_X = no\n", "[GLOBAL]\nG_Y = no\n"),
              "x/c.zek:2: error: [GLOBAL]:G_X, Value operator type(no) is invalid.\n"
              "y/c.zek:2: error: [GLOBAL]:G_Y, Value operator type(no) is invalid.\n"
              "a.zek: 2 errors\n");
    EXPECT_EQ(Said("[GLOBAL]\nG_X = no\n", "[GLOBAL]\nG_X = nor this\n"),
              "x/c.zek:2: error: [GLOBAL]:G_X, Value operator type(no) is invalid.\n"
              "y/c.zek:2: error: [GLOBAL]:G_X, Value operator type(nor this) is invalid.\n"
              "a.zek: 2 errors\n");
}

TEST_F(ZekFilesOfOneName, ShareTheMessagesWhereEachHasOne) {
    EXPECT_EQ(Said("[GLOBAL]\nG_X = no\n", "[GLOBAL]\nG_X = no\n"),
              "x/c.zek:2: error: [GLOBAL]:G_X, Value operator type(no) is invalid.\n"
              "y/c.zek:2: error: [GLOBAL]:G_X, Value operator type(no) is invalid.\n"
              "a.zek: 2 errors\n");
    // The library comes to the included section first.
    EXPECT_EQ(Said("[INCLUDE]\nFILE = ../y/part.zek\n[GLOBAL]\nG_X = no\n", "\n\n[GLOBAL]\nG_X = no\n"),
              "x/../y/c.zek:4: error: [GLOBAL]:G_X, Value operator type(no) is invalid.\n"
              "x/c.zek:4: error: [GLOBAL]:G_X, Value operator type(no) is invalid.\n"
              "y/c.zek:4: error: [GLOBAL]:G_X, Value operator type(no) is invalid.\n"
              "a.zek: 3 errors\n");
}

TEST_F(ZekFilesOfOneName, AreAllNamedWhereNothingTellsThemApart) {
    // Only the second lacks something, but the first says the same there.
    EXPECT_EQ(Said("[DEFINE]\nW = 1\n[GLOBAL]\nG_X = W,1\n", "[DEFINE]\nV = 1\n[GLOBAL]\nG_X = W\n"),
              "x/c.zek:4: error: [GLOBAL]:G_X, Not enough sub-strings for value type W.\n"
              "y/c.zek:4: note: or here; both files were included as c.zek\n"
              "a.zek: 1 error\n");
}

TEST_F(ZekFilesOfOneName, EarlierPlaceIsTheOtherOne) {
    EXPECT_EQ(Said("[PROPERTY]\nA = 1\n", "[PROPERTY]\nA = 2\n"),
              "y/c.zek:2: error: [PROPERTY], Entry A is redefined.It has been defined in Line[x/c.zek:2].\n"
              "a.zek: 1 error\n");
    const std::string first = "[TABLE]\nNAME = A\nTYPE = 1\n";
    const std::string second = "[TABLE]\nNAME = B\nTYPE = 1\n";
    const std::string third = "[TABLE]\nTYPE = 1\nNAME = B\n";
    EXPECT_EQ(Said(first + third, second),
              "y/c.zek:2: error: [TABLE], NAME B is redefined.It has been defined in Line[x/c.zek:6].\n"
              "a.zek: 1 error\n");
    EXPECT_EQ(Said(first, second + third),
              "y/c.zek:6: error: [TABLE], NAME B is redefined.It has been defined in Line[y/c.zek:2].\n"
              "a.zek: 1 error\n");
}

/// What is said while a file is being read is about that file.
TEST_F(ZekFilesOfOneName, AreKnownWhileTheyAreRead) {
    EXPECT_TRUE(Said("[DEFINE]\nA = 1\n", "[DEFINE]\n1A = 1\n")
                    .starts_with("y/c.zek:2: error: [DEFINE]:1A, Entry name is invalid.\n"));
}

TEST_F(ZekMessages, AreSafeForATerminal) {
    EXPECT_EQ(Said("[GLOBAL]\nG_\x1b[31m = \xff\xc3\xa9\\\n"),
              "a.zek:2: error: [GLOBAL]:G_\\x1b[31m, Value operator type(\\xff\xc3\xa9) is invalid.\na.zek: 1 error\n");
    EXPECT_EQ(Said("[\x1b]\n"), "a.zek:1: error: [\\x1b] is no section of the language\na.zek: 1 error\n");
}

}  // namespace

}  // namespace zek::test
