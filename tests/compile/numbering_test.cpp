#include "compile/init_tables.h"

#include "compile/image_bytes.h"
#include "model/section.h"

namespace zek::test {

using Numbering = ProcessTest;

namespace {

using Keys = std::vector<std::string>;

const Keys kFixedValues = {"IPMI", "", "INIT", "DEINIT", "ENTRY", "EXIT"};

}  // namespace

TEST_F(Numbering, OfPropertiesTakesPropertySectionsFirstThenSensorsDevicesAndSystems) {
    Source(
        "[TAVRGROUP]\nP_Tavr=1\n[SYSTEM]\nP_Y=1\nP_S=1\n[DEVICE]\nP_D=1\nD_own=1\nP_=1\n[SENSOR]\nP_S=1\nP_S2=1\n"
        "[PROPERTY]\nMaker=1\nP_S=1\n[SENSOR]\nP_Maker=1\nP_S3=1\n[PROPERTY]\nModel=1\nMaker=1\n");
    EXPECT_EQ(InitPropertyD(), 1U);
    EXPECT_EQ(KeysInOrder(g_tblProperty), (Keys{"Maker", "P_S", "Model", "S", "S2", "S3", "D", "", "Y"}));
    EXPECT_EQ(g_tblProperty.at("Maker"), 0x03000000U);
    EXPECT_EQ(g_idxProperty, 0x03000009U);
    EXPECT_EQ(g_tblProperty.size(), 9U);
}

TEST_F(Numbering, OfAFamilyEndsBehindAnEntryWithoutTheFamilyBit) {
    Source("[DEVICE]\nP_a=1\nP_b=1\nP_c=1\n");
    // A debug image can bring such an entry. A look-up by position finds it from there on.
    for (CZEKEntry* entry : CGSDEVICE::m_sHeader.at(0)->m_vpEntry) {
        if (entry->m_strName == "P_b") entry->m_eNotation = static_cast<tagNOTATION>(2);
    }
    EXPECT_EQ(InitPropertyD(), 1U);
    EXPECT_EQ(KeysInOrder(g_tblProperty), (Keys{"a", "b"}));
}

TEST_F(Numbering, OfGlobalsTakesTheKeysWithoutTheirPrefix) {
    Source("[GLOBAL]\nG_b=1\nG_a=1\n[GLOBAL]\nG_b=1\nX1=1\n");
    EXPECT_EQ(InitGlobalD(), 1U);
    EXPECT_EQ(KeysInOrder(g_tblGlobal), (Keys{"b", "a", ""}));
    EXPECT_EQ(g_tblGlobal.at("b"), 0x04000000U);
    EXPECT_EQ(g_idxGlobal, 0x04000003U);
}

TEST_F(Numbering, OfGlobalsFailsWithoutAGlobalSectionAndIsIgnored) {
    EXPECT_EQ(InitGlobalD(), 0U);
    EXPECT_EQ(g_idxGlobal, 0x04000000U);
    EXPECT_EQ(InitTblD(), 1U);
}

TEST_F(Numbering, OfGlobalsSucceedsForAGlobalSectionWithoutEntries) {
    Source("[GLOBAL]\n");
    EXPECT_EQ(InitGlobalD(), 1U);
    EXPECT_TRUE(g_tblGlobal.empty());
}

TEST_F(Numbering, OfValuesTakesTheFixedNamesThenSensorsDevicesAndActions) {
    Source(
        "[ACTION]\nVALUE_9=1\nVALUE_IPMI=1\nVALUE=1\n[DEVICE]\nVALUE_D=1\nVALUE_S=1\n"
        "[SENSOR]\nVALUE_S=1\nVALUE_INIT=1\nP_No=1\n[GROUP]\nVALUE_EXIT=1\n[SENSOR]\nVALUE_T=1\n"
        "[ACTION]\nVALUE_D=1\nVALUE_10=1\n");
    EXPECT_EQ(InitValueD(), 1U);
    Keys expected = kFixedValues;
    expected.insert(expected.end(), {"S", "T", "D", "9", "10"});
    EXPECT_EQ(KeysInOrder(g_tblValue), expected);
    EXPECT_EQ(g_tblValue.at("IPMI"), 0x05000000U);
    EXPECT_EQ(g_tblValue.at("EXIT"), 0x05000005U);
    EXPECT_EQ(g_idxValue, 0x0500000bU);
}

TEST_F(Numbering, OfRepeatersTakesTheWholeKeys) {
    Source("[REPEATER]\nRep=1\nG_x=1\n[REPEATER]\nA=1\nRep=1\n");
    EXPECT_EQ(InitRepeaterD(), 1U);
    EXPECT_EQ(KeysInOrder(g_tblRepeater), (Keys{"Rep", "G_x", "A"}));
    EXPECT_EQ(g_tblRepeater.at("Rep"), 0x06000000U);
    EXPECT_EQ(g_idxRepeater, 0x06000003U);
}

TEST_F(Numbering, OfGroupsTakesTheRootThenTheFirstNameOfEverySectionThatHasOne) {
    Source("[GROUP]\nNAME=z\nNAME=second\n[GROUP]\nCHILDGROUP=1\n[GROUP]\nNAME=0\n[GROUP]\nNAME=a\n[GROUP]\nNAME=z\n");
    gccCheck();
    EXPECT_EQ(InitGroupD(), 1U);
    EXPECT_EQ(KeysInOrder(g_tblGroup), (Keys{"0", "z", "a"}));
    EXPECT_EQ(g_tblGroup.at("0"), 0x18000000U);
    EXPECT_EQ(g_idxGroup, 0x18000003U);
}

TEST_F(Numbering, OfActionsTakesTheFirstNameOfEverySectionThatHasOne) {
    Source("[ACTION]\nNAME=z\n[ACTION]\nARGNUMBER=1\n[ACTION]\nNAME=a\nNAME=second\n[DEVICE]\nNAME=d\n");
    gccCheck();
    EXPECT_EQ(InitActionD(), 1U);
    EXPECT_EQ(KeysInOrder(g_tblAction), (Keys{"z", "a"}));
    EXPECT_EQ(g_tblAction.at("z"), 0x1a000000U);
    EXPECT_EQ(g_idxAction, 0x1a000002U);
}

TEST_F(Numbering, OfTablesGivesEveryNamedSectionABlock) {
    Source("[TABLE]\nNAME=z\nTYPE=1\n1=1\n[TABLE]\nTYPE=1\n2=2\n[TABLE]\nNAME=a\nTYPE=1\n3=3\n");
    gccCheck();
    g_tblTableData.assign(7, 7);
    EXPECT_EQ(InitTableDataD(), 1U);
    EXPECT_EQ(KeysInOrder(g_tblTableName), (Keys{"z", "a"}));
    EXPECT_EQ(g_tblTableName.at("z"), 0x1c000000U);
    EXPECT_EQ(g_idxTableName, 0x1c000002U);
    std::vector<unsigned char> expected(512);
    expected[1] = expected[256 + 1] = 1;
    expected[256 + 3] = 3;
    EXPECT_EQ(g_tblTableData, expected);
}

TEST_F(Numbering, OfAnEmptyModelNumbersTheFixedValuesAndTheRootGroup) {
    EXPECT_EQ(InitTblD(), 1U);
    EXPECT_EQ(KeysInOrder(g_tblValue), kFixedValues);
    EXPECT_EQ(KeysInOrder(g_tblGroup), Keys{"0"});
    EXPECT_TRUE(g_tblProperty.empty() && g_tblGlobal.empty() && g_tblRepeater.empty() && g_tblDword.empty() &&
                g_tblString.empty() && g_tblAction.empty() && g_tblTableName.empty() && g_tblTableData.empty());
}

TEST_F(Numbering, ThroughAllStepsNumbersEveryTable) {
    Source(
        "[PROPERTY]\nMaker=1\n[GLOBAL]\nG_g=1\n[DEVICE]\nVALUE_v=1\n[REPEATER]\nr=1\n"
        "[GROUP]\nNAME=A\n[ACTION]\nNAME=Do\n[TABLE]\nNAME=T\n");
    gccCheck();
    EXPECT_EQ(InitTblD(), 1U);
    EXPECT_EQ(KeysInOrder(g_tblProperty), Keys{"Maker"});
    EXPECT_EQ(KeysInOrder(g_tblGlobal), Keys{"g"});
    EXPECT_EQ(g_tblValue.at("v"), 0x05000006U);
    EXPECT_EQ(KeysInOrder(g_tblRepeater), Keys{"r"});
    EXPECT_EQ(KeysInOrder(g_tblGroup), (Keys{"0", "A"}));
    EXPECT_EQ(KeysInOrder(g_tblAction), Keys{"Do"});
    EXPECT_EQ(KeysInOrder(g_tblTableName), Keys{"T"});
    EXPECT_EQ(g_tblTableData.size(), 256U);
}

TEST_F(Numbering, ThroughAllStepsKeepsTheOrderOfEachTable) {
    Source(
        "[SENSOR]\nVALUE_S=1\nP_S=1\n[ACTION]\nVALUE_9=1\n[SYSTEM]\nP_Y=1\n[DEVICE]\nVALUE_D=1\nP_D=1\n"
        "[SENSOR]\nP_T=1\nVALUE_T=1\n[PROPERTY]\nMaker=1\n[ACTION]\nVALUE_D=1\nVALUE_10=1\n");
    EXPECT_EQ(InitTblD(), 1U);
    EXPECT_EQ(KeysInOrder(g_tblProperty), (Keys{"Maker", "S", "T", "D", "Y"}));
    Keys values = kFixedValues;
    values.insert(values.end(), {"S", "T", "D", "9", "10"});
    EXPECT_EQ(KeysInOrder(g_tblValue), values);
}

TEST_F(Numbering, OfASecondCompilationContinuesWhereTheFirstEnded) {
    Source("[PROPERTY]\nb=1\na=1\n");
    InitTblD();
    gccCompEnd();
    Source("[PROPERTY]\nc=1\na=1\n");
    InitTblD();
    EXPECT_EQ(KeysInOrder(g_tblProperty), (Keys{"b", "a", "c"}));
    EXPECT_EQ(g_idxProperty, 0x03000003U);
    EXPECT_EQ(g_idxValue, 0x05000006U);
    EXPECT_EQ(g_idxGroup, 0x18000001U);
}

}  // namespace zek::test
