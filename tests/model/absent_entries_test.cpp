#include <vector>

#include "support/large_model.h"
#include "support/process_test.h"

namespace zek::test {

/// Two groups that were read from a source into a large model and lack everything but their names.
class AbsentEntry : public ProcessTest {
protected:
    void SetUp() override {
        ProcessTest::SetUp();
        MakeModelLarge("main.zek");
        Source("[GROUP]\nNAME=A\n[GROUP]\nNAME=B\n");
    }
    CZEKSection& A() { return *CGSGROUP::m_sHeader.at(0); }
    CZEKSection& B() { return *CGSGROUP::m_sHeader.at(1); }
};

TEST_F(AbsentEntry, IsSharedByTheSectionsOfAKindOnceTheyAreRead) {
    EXPECT_EQ(A().m_vpEntry[0], B().m_vpEntry[0]);
    EXPECT_NE(A().m_vpEntry[1], B().m_vpEntry[1]) << "the name was given";
    EXPECT_EQ(A().m_vpEntry[6], B().m_vpEntry[6]);
    const CZEKSection* made = CZEKSection::Create("host.zek", "GROUP", 1);
    EXPECT_NE(A().m_vpEntry[0], made->m_vpEntry[0]) << "a host may fill the entries of a section that it made";
    EXPECT_EQ(A().m_vpEntry[0]->m_dwType, unsigned{kParent});
    EXPECT_EQ(A().m_vpEntry[0]->m_eNotation, 1U);
}

TEST_F(AbsentEntry, IsTheSectionsOwnInASmallModel) {
    gccCompEnd();
    Source("[GROUP]\nNAME=A\n[GROUP]\nNAME=B\n");
    EXPECT_NE(A().m_vpEntry[0], B().m_vpEntry[0]);
}

TEST_F(AbsentEntry, IsFoundWhereItStands) {
    unsigned index = 0;
    EXPECT_EQ(FindEntry(&A(), kParent, index), A().m_vpEntry[0]);
}

TEST_F(AbsentEntry, IsTheSectionsOwnWhenItsKeyIsMet) {
    EXPECT_EQ(A().SetEntry("main.zek", "PARENT", "0", 9), 1U);
    EXPECT_EQ(A().m_vpEntry[0]->m_vstrSubStr, TextList{"0"});
    EXPECT_EQ(B().m_vpEntry[0]->m_strName, "");
}

TEST_F(AbsentEntry, IsTheSectionsOwnWhenBytesAreRead) {
    std::vector<unsigned char> bytes;
    EXPECT_EQ(A().SetEntry("main.zek", "PARENT", "0", 9), 1U);
    A().GetBuffer(bytes);
    B().SetBuffer(bytes);
    EXPECT_EQ(B().m_vpEntry[0]->m_strName, "PARENT");
    EXPECT_EQ(B().m_vpEntry[0]->m_dwLine, 9U);
    const CZEKSection* other = CZEKSection::Create("main.zek", "GROUP", 20);
    EXPECT_EQ(other->m_vpEntry[0]->m_strName, "");
}

TEST_F(AbsentEntry, IsNotSharedByTheBytesOfOneSection) {
    CZEKSection* made = CZEKSection::Create("host.zek", "GROUP", 1);
    const std::vector<CZEKEntry*> before = made->m_vpEntry;
    std::vector<unsigned char> bytes;
    made->GetBuffer(bytes);
    made->SetBuffer(bytes);
    EXPECT_EQ(made->m_vpEntry, before) << "a host may hold these";
}

TEST_F(AbsentEntry, OutlivesAHostThatDeletesIt) {
    delete A().m_vpEntry[2];
    A().m_vpEntry.erase(A().m_vpEntry.begin() + 2);
    EXPECT_EQ(A().SetEntry("main.zek", "CHILDGROUP", "0", 9), 0U);
    EXPECT_EQ(B().SetEntry("main.zek", "CHILDGROUP", "0", 9), 1U);
}

TEST_F(AbsentEntry, IsReportedInEverySectionThatLacksIt) {
    EXPECT_EQ(gccCheck(), 0U);
    EXPECT_EQ(Errors(),
              "Error[main.zek:0]: [GROUP]:PARENT, This ENTRY does not exist.\n"
              "Error[main.zek:0]: [GROUP]:CHILDGROUP, This ENTRY does not exist.\n"
              "Error[main.zek:0]: [GROUP]:PARENT, This ENTRY does not exist.\n"
              "Error[main.zek:0]: [GROUP]:CHILDGROUP, This ENTRY does not exist.\n");
}

TEST_F(AbsentEntry, IsSharedAgainWhenADebugImageIsRead) {
    ASSERT_EQ(gccOutputD("image"), 1U);
    gccCompEnd();
    ASSERT_EQ(gdInit("image", nullptr), 1U);
    EXPECT_EQ(A().m_vpEntry[0], B().m_vpEntry[0]);
    EXPECT_NE(A().m_vpEntry[1], B().m_vpEntry[1]);
}

}  // namespace zek::test
