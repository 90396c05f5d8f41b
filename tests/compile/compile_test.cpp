#include "compile/compile.h"

#include "compile/image_bytes.h"
#include "compile/init_tables.h"
#include "model/section.h"

namespace zek::test {

using Compilation = ProcessTest;

namespace {

/// Gives an entry data of the class of numbers, whatever its own is.
void MakeNumber(CZEKEntry& entry) {
    entry.m_ZekEntryData.Destory();
    entry.m_ZekEntryData.Create(kDefinition);
}

std::string CompiledModel() {
    EXPECT_EQ(InitTblD(), 1U);
    EXPECT_EQ(Compile(), 1U);
    return LoadedSections();
}

}  // namespace

TEST_F(Compilation, OfTheModelFollowsTheRegistryAndTheEntries) {
    EXPECT_EQ(Check("[SENSOR]\nPARENT=A\nNAME=s\nID=1\nTYPE=2\nINITFLAG=0\nCONTROLMASK=0\n"
                    "VALUE=SUM,+,G_X,3\nVALUE_TEMP=SUM,+,G_X,3\n"
                    "P_unit=C\nVALUE_IPMI=WORD,3\n[DEFINE]\nWORD=1\nSUM=2\n[GLOBAL]\nG_X=WORD,5\n"
                    "[SENSOR]\nPARENT=A\nNAME=t\nID=2\nTYPE=2\nINITFLAG=0\nCONTROLMASK=0\nVALUE=WORD,0\n"
                    "[GROUP]\nPARENT=0\nNAME=A\nCHILDGROUP=0\n[TAVRGROUP]\nNAME=G\nID=1\nPID=0\nSENSORS=1,2\n"),
              1U);
    EXPECT_EQ(Errors(), "");
    EXPECT_EQ(
        CompiledModel(),
        "01000005: 02000014(18000001) 02000015(12000000) 02000008(11000000) 02000002(11000001) 02000009(11000002) "
        "0200000a(11000002) 05000001(1e000002 1f000001 04000000 11000003) 05000000(1e000001 11000003) "
        "05000006(1e000002 1f000001 04000000 11000003) 03000000(12000001)\n"
        "01000005: 02000014(18000001) 02000015(12000002) 02000008(11000001) 02000002(11000001) 02000009(11000002) "
        "0200000a(11000002) 05000001(1e000001 11000002)\n"
        "0100000a: 04000000(1e000001 11000004)\n"
        "01000004: 02000014(18000000) 02000015(18000001) 02000007(11000002)\n"
        "01000009: 02000015(12000003) 02000008(11000000) 02000011(11000002) 02000016(11000000 11000001)\n");
    EXPECT_EQ(KeysInOrder(g_tblDword), (std::vector<unsigned>{1, 2, 0, 3, 5}));
    EXPECT_EQ(KeysInOrder(g_tblString), (Texts{"s", "C", "t", "G"}));
}

TEST_F(Compilation, OfKindsThatAreNotCompiledIsEmpty) {
    Write("other.zek", "[DEFINE]\nB=1\n");
    Source("[DEFINE]\nA=1\n[INCLUDE]\nFILE=other.zek\n[IFDEF]\nDEFINEWORD=A\nC=1\n");
    EXPECT_EQ(CompiledModel(), "");
    EXPECT_TRUE(g_GCHead.empty());
}

TEST_F(Compilation, KeepsASectionWithoutEntries) {
    Source("[PROPERTY]\n[DEVICE]\n[QUORZEK]\n");
    EXPECT_EQ(CompiledModel(), "01000002:\n01000006:\n01000001:\n");
}

TEST_F(Compilation, PassesOverEntriesWithoutDataAndStopsAtOneWithoutAName) {
    Source("[TABLE]\nTYPE=3\n1=1\nNAME=late\nNAME=again\n");
    gccCheck();
    EXPECT_EQ(CompiledModel(), "01000008: 02000015(12000000) 02000002(11000000)\n");
    EXPECT_EQ(KeysInOrder(g_tblString), Texts{"late"})
        << "the declared NAME stands before the row, the second one behind it";
}

TEST_F(Compilation, StopsAtAnEntryWithoutANameWhateverItsDataIs) {
    Source("[TABLE]\nTYPE=3\n1=1\nNAME=late\nNAME=again\n");
    gccCheck();
    MakeNumber(*CGSTABLE::m_sHeader.at(0)->m_vpEntry.at(2));
    EXPECT_EQ(CompiledModel(), "01000008: 02000015(12000000) 02000002(11000000)\n");
}

TEST_F(Compilation, PassesOverAnEntryWithDataOfAnotherClass) {
    Source("[DEVICE]\nNAME=D\nINITFLAG=1\nP_own=2\nP_more=3\n");
    gccCheck();
    for (const std::size_t entry : {0U, 4U}) MakeNumber(*CGSDEVICE::m_sHeader.at(0)->m_vpEntry.at(entry));
    EXPECT_EQ(CompiledModel(), "01000006: 02000009(11000000) 03000001(12000000)\n");
}

TEST_F(Compilation, EndsASectionAtAPropertyThatOnlyAGroupOfSensorsHas) {
    Source("[TAVRGROUP]\nNAME=G\nP_shared=1\nP_own=2\nP_shared=3\n[DEVICE]\nP_shared=4\n");
    gccCheck();
    EXPECT_EQ(CompiledModel(), "01000009: 02000015(12000000) 03000000(12000001)\n01000006: 03000000(12000002)\n");
    EXPECT_EQ(g_tblProperty, (std::map<std::string, unsigned>{{"own", 0}, {"shared", 0x03000000}}));
}

TEST_F(Compilation, WithoutNumberingDropsEveryNamedEntry) {
    Source("[PROPERTY]\na=1\n[GLOBAL]\nG_b=1\n[REPEATER]\nc=1,2\n[DEVICE]\nINITFLAG=1\nVALUE_d=1\n");
    EXPECT_EQ(Compile(), 1U);
    EXPECT_EQ(LoadedSections(), "01000002:\n0100000a:\n0100000b:\n01000006: 02000009(11000000)\n");
}

TEST_F(Compilation, KeepsARepeatedKeyAsOneMoreEntry) {
    Source("[QUORZEK]\nVERSION=1\nVERSION=2\n");
    gccCheck();
    EXPECT_EQ(CompiledModel(), "01000001: 02000001(12000000) 02000001(12000001)\n");
}

TEST_F(Compilation, TwiceWithoutATearDownDoublesTheSections) {
    Source("[QUORZEK]\nVERSION=1\n");
    gccCheck();
    EXPECT_EQ(CompiledModel(), "01000001: 02000001(12000000)\n");
    EXPECT_EQ(CompiledModel(), "01000001: 02000001(12000000)\n01000001: 02000001(12000000)\n");
}

TEST_F(Compilation, TearDownFreesTheSectionsAndKeepsTablesAndModel) {
    Source("[QUORZEK]\nVERSION=1\n");
    gccCheck();
    const std::string compiled = CompiledModel();
    CompDestory();
    EXPECT_TRUE(g_GCHead.empty());
    EXPECT_EQ(g_idxString, 0x12000001U);
    EXPECT_EQ(KeysInOrder(g_tblGroup), Texts{"0"});
    EXPECT_EQ(CompiledModel(), compiled);
    CompDestory();
    CompDestory();
    EXPECT_TRUE(g_GCHead.empty());
}

}  // namespace zek::test
