#include <dlfcn.h>

#include "check/vocabulary.h"
#include "compile/compile.h"
#include "model/section.h"
#include "support/process_test.h"
#include "support/resources.h"

namespace zek::test {

namespace {

/// A sound source: what a compilation needs, and a [PROPERTY] section with this item.
std::string SourceWith(const std::string& item) {
    return "[QUORZEK]\nVERSION=1\n"
           "[SYSTEM]\nTYPE=1\nMODEL=m\nFLAG=0\nZEKLOOP=ONE\n"
           "[TAVRGROUP]\nNAME=view\nID=1\nPID=0\nSENSORS=\n"
           "[DEFINE]\nONE=1\n[PROPERTY]\n" +
           item + '\n';
}

using Names = std::map<std::string, unsigned>;

}  // namespace

using CompilerCall = ProcessTest;

TEST_F(CompilerCall, StartsWithAFileThatIsThere) {
    Write("main.zek", "[GROUP]\n");
    EXPECT_EQ(gccCompStart("none.zek"), 0U);
    EXPECT_EQ(gccCompStart(""), 0U);
    EXPECT_EQ(gccCompStart("main.zek"), 1U);
    EXPECT_TRUE(CZEKSection::m_svpHSection.empty()) << "nothing is read before gccParse";
    EXPECT_EQ(Messages(), "");
}

TEST_F(CompilerCall, ReadsNothingWithoutAStart) {
    gccParse();
    EXPECT_EQ(Messages(), "Parse::No more sections(total = 0).\n");
    EXPECT_TRUE(CZEKSection::m_svpHSection.empty());
    EXPECT_TRUE(CZEKObj::m_svstrIncFiles.empty());
}

TEST_F(CompilerCall, TellsASoundSourceFromAnUnsoundOne) {
    EXPECT_EQ(Check(SourceWith("A=1")), 1U);
    EXPECT_EQ(Errors(), "");
    gccCompEnd();
    EXPECT_EQ(Check(SourceWith("1A=1")), 0U);
    EXPECT_EQ(Errors(), "Error[main.zek:16]: [PROPERTY]:1A, Entry name is invalid.\n");
}

TEST_F(CompilerCall, WritesBothImagesInEitherOrder) {
    const auto compile = [this](const std::vector<std::string>& order) {
        EXPECT_EQ(Check(SourceWith("A=1")), 1U);
        for (const std::string& call : order) {
            EXPECT_EQ(call == "debug" ? gccOutputD("debug.image") : gccOutput("compiled.image"), 1U);
            EXPECT_EQ(CGSPROPERTY::m_sHeader.size(), 1U) << "the model stays";
            EXPECT_EQ(g_tblPreDefine, (Names{{"ONE", 1}}));
            EXPECT_TRUE(g_GCHead.empty()) << "the compiled records do not";
        }
    };
    InChild([&] {
        compile({"debug", "compiled", "debug"});
        std::filesystem::rename("compiled.image", "compiled.second");
    });
    InChild([&] { compile({"debug"}); });
    std::filesystem::rename("debug.image", "debug.first");
    compile({"compiled", "debug"});
    EXPECT_EQ(Dump(WithoutTime(Read("compiled.image"))), Dump(WithoutTime(Read("compiled.second"))));
    EXPECT_EQ(Dump(WithoutTime(Read("debug.image"))), Dump(WithoutTime(Read("debug.first"))));
}

TEST_F(CompilerCall, ReportsAnImageThatCannotBeCreated) {
    ASSERT_EQ(Check(SourceWith("A=1")), 1U);
    EXPECT_EQ(gccOutputD("none/debug.image"), 0U);
    EXPECT_EQ(gccOutput("none/compiled.image"), 0U);
    EXPECT_EQ(CGSPROPERTY::m_sHeader.size(), 1U);
}

TEST_F(CompilerCall, DoesNotExamineWhatBecomesOfTheBytesOfAnImage) {
    ASSERT_EQ(Check(SourceWith("A=1")), 1U);
    const auto before = OpenFiles();
    EXPECT_EQ(gccOutputD("/dev/full"), 1U);
    EXPECT_EQ(gccOutput("/dev/full"), 1U);
    EXPECT_EQ(Errors(), "");
    EXPECT_EQ(OpenFiles(), before);
}

TEST_F(CompilerCall, EndsWithTheModelAndThePredefinedNames) {
    ASSERT_EQ(Check(SourceWith("A=1")), 1U);
    gccCompEnd();
    for (const zek::SectionList* list : CZEKSection::m_svpHSection) EXPECT_TRUE(list->empty());
    EXPECT_EQ(CZEKSection::m_svpHSection.size(), 5U);
    EXPECT_TRUE(g_tblPreDefine.empty());
    gccCompEnd();
    EXPECT_EQ(Errors(), "");
}

TEST_F(CompilerCall, OfASecondCompilationStartsAfreshButForFilesAndTables) {
    ASSERT_EQ(Check(SourceWith("A=1")), 1U);
    ASSERT_EQ(gccOutput("first.image"), 1U);
    EXPECT_EQ(g_idxProperty, 0x03000001U);
    gccCompEnd();

    Source("[PROPERTY]\nB=1\nA=1\n[SYSTEM]\nZEKLOOP=ONE\n", "second.zek");
    EXPECT_EQ(gccCheck(), 0U) << "ONE was defined by the first source only";
    EXPECT_NE(Errors().find("[SYSTEM]:ZEKLOOP, ONE has not been defined and is not a valid number.\n"),
              std::string::npos);
    EXPECT_EQ(CGSPROPERTY::m_sHeader.size(), 1U);
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, std::vector<std::string>({"main.zek", "second.zek"}));
    gccOutput("second.image");
    EXPECT_EQ(g_idxProperty, 0x03000002U) << "A keeps its number";
    EXPECT_STREQ(GetTblData(0x03000000).pszName, "A");
    EXPECT_STREQ(GetTblData(0x03000001).pszName, "B");
}

TEST_F(CompilerCall, AddsASecondSourceToAModelThatWasNotEnded) {
    ASSERT_EQ(Check(SourceWith("A=1")), 1U);
    Source("[PROPERTY]\nB=ONE\n", "second.zek");
    EXPECT_EQ(CGSPROPERTY::m_sHeader.size(), 2U);
    EXPECT_EQ(g_tblPreDefine, (Names{{"ONE", 1}}));
}

TEST_F(CompilerCall, LeavesBothErrorSlotsAlone) {
    gcSetLastError(77);
    gdSetLastError(78);
    const auto expectSlots = [](const char* after) {
        EXPECT_EQ(gcGetLastError(), 77U) << after;
        EXPECT_EQ(gdGetLastError(), 78U) << after;
    };
    gccCompStart("none.zek");
    expectSlots("a failed start");
    gccParse();
    expectSlots("a parse without a file");
    Source(SourceWith("A=1"));
    expectSlots("a parse");
    gccCheck();
    expectSlots("a check");
    gccOutputD("debug.image");
    gccOutputD("none/debug.image");
    expectSlots("the debug image");
    gccOutput("compiled.image");
    gccOutput("none/compiled.image");
    expectSlots("the compiled image");
    gccCompEnd();
    gccCheck();
    expectSlots("a failed check");
}

TEST_F(CompilerCall, HasAPlainSymbolName) {
    for (const char* name :
         {"gccCompStart", "gccParse", "gccCheck", "gccOutputD", "gccOutput", "gccCompEnd", "g_Parse"}) {
        EXPECT_NE(dlsym(RTLD_DEFAULT, name), nullptr) << name;
    }
}

}  // namespace zek::test
