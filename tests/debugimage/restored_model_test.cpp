#include "debugimage/model_text.h"
#include "debugimage/small_debug_image.h"

namespace zek::test {

using RestoredModel = ProcessTest;

namespace {

/// A valid source with every section kind and every class of entry.
constexpr char kRich[] =
    "[QUORZEK]\nVERSION=2.1\n"
    "[DEFINE]\nONE=1\nSUM=2\nCALL=3\nREAD=4\nREADS=5\nPAIR=6\nFOUR=7\nMAP=10\nSELF=104\nBUSTYPE_SMBUS=1\n"
    "[INCLUDE]\nFILE=groups.zek\n"
    "[IFDEF]\nDEFINEWORD=ONE\nEXTRA=0x20\n"
    "[PROPERTY]\nMaker=us, them\nUnit=\"a,b\"\n"
    "[SYSTEM]\nTYPE=1\nMODEL=m\nFLAG=0\nZEKLOOP=5\nP_Slot=3\n"
    "[GLOBAL]\nG_X=ONE,7\nG_Y=READ,G_X,2,BUSTYPE_SMBUS,0x00\n"
    "[ACTION]\nNAME=Do\nARGNUMBER=1\nVALUE=SUM,+,ARG1,G_X\nVALUE_1=SUM,==,1,2,3,4\nVALUE_2=SELF,VALUE_1\n"
    "[REPEATER]\nRep=2,Do,G_X\n"
    "[TABLE]\nNAME=T\nTYPE=1\n0.3=9\n7=0x1f\n"
    "[TAVRGROUP]\nNAME=tg\nID=1\nPID=0\nSENSORS=0x10,17\n"
    "[DEVICE]\nNAME=d\nID=3\nINITFLAG=0\nCONTROLMASK=0\nP_Slot=4\nVALUE_own=FOUR,1,2,3\nVALUE_two=PAIR,1,2,3\n"
    "[SENSOR]\nPARENT=A\nNAME=s\nID=0x10\nTYPE=ONE\nINITFLAG=0\nCONTROLMASK=0\nTHEORY=5\n"
    "VALUE=CALL,Do,G_X\nVALUE_IPMI=READS,1,2,3,4,5\nVALUE_own=MAP,T,1\nP_Slot=5\n"
    "[SENSOR]\nPARENT=B\nNAME=u\nID=17\nTYPE=2\nINITFLAG=0\nCONTROLMASK=0\nVALUE=EXTRA\n";

constexpr char kGroups[] =
    "[GROUP]\nPARENT=0\nNAME=A\nCHILDGROUP=1\n[GROUP]\nPARENT=A\nNAME=B\nCHILDGROUP=0\n"
    "VALUE_INIT=ONE,ONE\n";

/// The text without the lines of [INCLUDE] sections, which do not come back.
std::string WithoutIncludes(const std::string& model) {
    std::istringstream lines(model);
    std::string kept;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("INCLUDE@")) kept += line + '\n';
    }
    return kept;
}

}  // namespace

TEST_F(RestoredModel, IsTheModelThatWasWrittenAndCompilesToTheSameImage) {
    InChild([&] {
        Write("groups.zek", kGroups);
        ASSERT_EQ(Check(kRich), 1U) << Errors();
        ASSERT_EQ(gccOutputD("rich.metad"), 1U);
        ASSERT_EQ(gccOutput("rich.meta"), 1U);
        Write("model.txt", WithoutIncludes(ModelText()));
        Write("names.txt", NamesText());
    });
    ASSERT_EQ(gdInit("rich.metad", nullptr), 1U);
    EXPECT_EQ(ModelText(), Read("model.txt"));
    EXPECT_EQ(NamesText(), Read("names.txt"));
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, (Texts{"main.zek", "groups.zek"}));
    ASSERT_EQ(gccOutput("again.meta"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("again.meta"))), Dump(WithoutTime(Read("rich.meta"))));
}

TEST_F(RestoredModel, WrittenAgainIsTheSameButForIncludeSections) {
    EXPECT_EQ(Loaded(SmallDebugImage()), "1");
    ASSERT_EQ(gccOutputD("again.metad"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("again.metad"))), Dump(SmallDebugImage()));
}

TEST_F(RestoredModel, FailsTheCheckForItsMissingSubStrings) {
    ASSERT_EQ(Loaded(SmallDebugImage()), "1");
    EXPECT_EQ(gccCheck(), 0U);
    EXPECT_EQ(Messages(),
              "Error[main.zek:2]: [QUORZEK]:VERSION, No sub-string.\n"
              "Error[main.zek:4]: [DEFINE]:CONST, No sub-string.\n"
              "Error[main.zek:6]: [GLOBAL]:G_X, No value type sub-string.\n");
    // The check of a number begins by setting it to 0.
    EXPECT_EQ(ModelText(),
              "QUORZEK@1 main.zek: VERSION=1.0\nDEFINE@3 main.zek: CONST=0x0\nGLOBAL@5 main.zek: G_X=CONST,7\n");
}

TEST_F(RestoredModel, KeepsTheLastValueOfARepeatedKeyInItsDeclaredEntry) {
    InChild([&] {
        EXPECT_EQ(Check("[TABLE]\nNAME=first\nTYPE=1\n1=1\nNAME=second\n2=2\nNAME=third\n"), 0U);
        EXPECT_EQ(ModelText(), "TABLE@1 main.zek: NAME=first TYPE=1 1=1 NAME=second 2=2 NAME=third\n");
        ASSERT_EQ(gccOutputD("repeated.metad"), 1U);
    });
    ASSERT_EQ(gdInit("repeated.metad", nullptr), 1U);
    EXPECT_EQ(ModelText(), "TABLE@1 main.zek: NAME=third TYPE=1 1=1 2=2\n");
}

TEST_F(RestoredModel, OfASourceThatFailedItsCheckHoldsWhatWasConverted) {
    InChild([&] {
        EXPECT_EQ(Check("[GROUP]\nNAME=A\nVALUE_INIT=UNKNOWN,1\n[PROPERTY]\n9bad=x\ngood=y\n"), 0U);
        ASSERT_EQ(gccOutputD("failed.metad"), 1U);
    });
    ASSERT_EQ(gdInit("failed.metad", nullptr), 1U);
    EXPECT_EQ(ModelText(), "GROUP@1 main.zek: NAME=A VALUE_INIT=\nPROPERTY@4 main.zek: 9bad= good=y\n");
    EXPECT_EQ(gdGetSectPName(gdGetSectByIndex(4, 0)), nullptr);
    EXPECT_EQ(gdGetLastError(), 3U) << "PARENT is declared and was never given";
}

TEST_F(RestoredModel, TakesMoreSectionsFromASource) {
    ASSERT_EQ(Loaded(SmallDebugImage()), "1");
    Source("[GLOBAL]\nG_Y=CONST,8\n", "more.zek");
    CZEKSection* section = gdGetSectByIndex(0x0a, 1);
    ASSERT_NE(section, nullptr);
    EXPECT_EQ(section->IsValid(0), 1U);
    EXPECT_EQ(ModelText(),
              "QUORZEK@1 main.zek: VERSION=1.0\nDEFINE@3 main.zek: CONST=0x1\n"
              "GLOBAL@5 main.zek: G_X=CONST,7\nGLOBAL@1 more.zek: G_Y=CONST,8\n");
}

}  // namespace zek::test
