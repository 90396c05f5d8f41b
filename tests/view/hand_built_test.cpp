// Models that a host has put together itself: what the check accepts is compiled into an image that opens as a view,
// and the view answers as the loaded image does.
#include <gtest/gtest.h>

#include "compile/tables.h"
#include "model/section_kinds.h"
#include "view/compiled_model.h"

namespace zek::test {

namespace {

class HandBuilt : public CompiledModel {
protected:
    void SetUp() override {
        CompiledModel::SetUp();
        Source(kSound);
    }

    template <class Kind>
    static void Add(CZEKSection& section, unsigned type, const std::string& key, const std::string& value) {
        section.m_vpEntry.push_back(Made<Kind>(type, kHostNotation, key, value));
    }
};

TEST_F(HandBuilt, ModelMayHaveKeysThatNoSourceHasThere) {
    CZEKSection& property = *CGSPROPERTY::m_sHeader.at(0);
    Add<CGESTRING>(property, kName, "NAME", "Called");
    Add<CGEVALUE>(property, kGlobal, "G_X", "T1,4");
    Add<CGESTRING>(*CGSGLOBAL::m_sHeader.at(0), kID, "ID", "9");
    CZEKSection& device = *CGSDEVICE::m_sHeader.at(0);
    Add<CGESTRING>(device, kParent, "PARENT", "nobody");
    Add<CGESTRINGLIST>(device, kSensors, "SENSORS", "7,8");
    Add<CGEREPEATER>(*CGSQUORZEK::m_sHeader.at(0), 0x10100001, "Rep", "4,Do,6");
    Add<CGEVALUE>(*CGSGROUP::m_sHeader.at(0), 0x10080008, "VALUE_own", "T1,5");
    Add<CGESTRING>(*CGSGROUP::m_sHeader.at(0), kType, "TYPE", "12");
    const std::string image = Compiled();
    EXPECT_EQ(NotesOfView(image),
              "foreign-entry: section 0 [QUORZEK], entry 1\n"
              "foreign-entry: section 1 [PROPERTY], entry 1\n"
              "foreign-entry: section 1 [PROPERTY], entry 2\n"
              "foreign-entry: section 2 [GROUP], entry 3\n"
              "foreign-entry: section 2 [GROUP], entry 4\n"
              "foreign-entry: section 4 [GLOBAL], entry 1\n"
              "foreign-entry: section 8 [DEVICE], entry 4\n"
              "foreign-entry: section 8 [DEVICE], entry 5\n");
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view);
    EXPECT_EQ(view->SectionNamed(kImageProperty, "Called")->Index(), 1U);
    EXPECT_EQ(view->SectionNamed(kImageProperty, "X")->Index(), 1U) << "by the name of a global";
    EXPECT_EQ(view->SectionNamed(kImageProperty, "Maker")->Index(), 1U);
    EXPECT_EQ(view->SectionWithID(kImageGlobal, 9)->Index(), 4U);
    const auto own = view->SectionNamed(kImageGroup, "A")->EntryNamed("own");
    EXPECT_EQ(TextOf(own->Value(1)), "5");
    EXPECT_EQ(TextOf(view->SectionNamed(kImageDevice, "D")->EntryWithId(kIdParent)->Value(0)), "\"nobody\"");
    EXPECT_FALSE(view->SectionNamed(kImageDevice, "D")->Parent());
    EXPECT_EQ(TextOf(view->AllSections()[0].EntryNamed("Rep")->Field(0x180001)), "6");
}

TEST_F(HandBuilt, ModelMayHaveTwoKeysOfOneIdentifier) {
    Add<CGESTRING>(*CGSPROPERTY::m_sHeader.at(0), 0x10020018, "P_Maker", "them");
    CZEKSection& first = *CGSGROUP::m_sHeader.at(0);
    Add<CGESTRING>(first, kName, "NAME2", "B");
    CZEKSection& sensor = *CGSSENSOR::m_sHeader.at(0);
    Add<CGESTRING>(sensor, kParent, "PARENT2", "A");
    CZEKSection& device = *CGSDEVICE::m_sHeader.at(0);
    Add<CGESTRING>(device, kName, "NAME2", "E");
    Add<CGESTRING>(device, kID, "ID2", "12");
    const std::string image = Compiled();
    EXPECT_EQ(NotesOfView(image),
              "repeated-entry: section 1 [PROPERTY], entry 1\n"
              "repeated-entry: section 2 [GROUP], entry 3\n"
              "repeated-entry: section 7 [SENSOR], entry 8\n"
              "repeated-entry: section 8 [DEVICE], entry 4\n"
              "repeated-entry: section 8 [DEVICE], entry 5\n");
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view);
    EXPECT_EQ(view->SectionNamed(kImageDevice, "E")->Name(), "D") << "found by any, called by the first";
    EXPECT_EQ(view->SectionWithID(kImageDevice, 12)->ID(), 3U);
    EXPECT_EQ(view->GroupIndex("B"), 1U) << "the first section that says so is group A";
    EXPECT_EQ(view->SectionNamed(kImageSensor, "S")->Parent()->Name(), "A") << "which is found as B";
}

/// The check of a group looks at its first two entries; those that are called PARENT and NAME are others here.
TEST_F(HandBuilt, ModelWhoseGroupsAreInACircleIsRefused) {
    for (CZEKSection* group : CGSGROUP::m_sHeader) {
        group->m_vpEntry.insert(group->m_vpEntry.begin(), Made<CGESTRING>(kModel, 1, "MODEL", "0"));
    }
    CGSGROUP::m_sHeader.at(0)->m_vpEntry.at(1)->m_vstrSubStr = {"B"};
    EXPECT_TRUE(NotesOfView(Compiled()).starts_with("parent-cycle at "));
}

/// An entry without a name identifier ends its section, and the NAME stands behind it.
TEST_F(HandBuilt, ModelWhoseGroupLosesItsNameIsRefused) {
    std::vector<CZEKEntry*>& entries = CGSGROUP::m_sHeader.at(1)->m_vpEntry;
    entries.insert(entries.begin() + 1, Made<CGESTRING>(0x10020016, 1, "DEFINEWORD", "T1"));
    EXPECT_TRUE(NotesOfView(Compiled()).starts_with("missing-parent at "));
}

/// A section of a kind that the image does not have ends the list in which it stands.
TEST_F(HandBuilt, ModelWhoseGroupStandsBehindADefinitionIsRefused) {
    SectionList& groups = CGSGROUP::m_sHeader;
    groups.insert(groups.begin() + 1, CZEKSection::Create("host", "DEFINE", 100));
    CGSDEFINE::m_sHeader.pop_back();
    EXPECT_TRUE(NotesOfView(Compiled()).starts_with("missing-parent at "));
}

/// The tag of a table is the class of its counter, which is the next one when all identifiers are given out.
TEST_F(HandBuilt, ModelWithMoreTextsThanIdentifiersIsRefused) {
    g_idxString = kIdString | kIdOrdinalMask;
    EXPECT_EQ(NotesOfView(Compiled()).substr(0, 14), "wrong-table at");
}

// An identifier that is left out takes a byte of its table that its length does not count, so the length leaves out
// what is last: an empty name, and the number 0, cannot be told from the gap before the next table.

TEST_F(HandBuilt, ModelMayLeaveOutIdentifiersBeforeTheEmptyName) {
    for (const char* name : {"IPMI", "INIT", "DEINIT", "ENTRY", "EXIT", "own"}) {
        InsertTbl(g_tblValue, g_idxValue, name, name == std::string("EXIT") ? 2 : 1);
    }
    EXPECT_EQ(NotesOfView(Compiled()),
              "beyond-length: section 5 [ACTION], entry 2\n"
              "beyond-length: section 7 [SENSOR], entry 6\n");
}

TEST_F(HandBuilt, ModelMayLeaveOutIdentifiersBeforeTheNumberZero) {
    for (const unsigned number : {1U, 2U, 3U, 5U, 7U}) InsertTbl(g_tblDword, g_idxDword, number, number == 5 ? 2 : 1);
    EXPECT_TRUE(NotesOfView(Compiled()).starts_with("beyond-length: section 2 [GROUP], entry 2, word 0\n"));
}

TEST_F(HandBuilt, ModelWhoseIdentifiersAreGivenOutTwiceIsRefused) {
    for (const unsigned number : {51U, 52U, 53U, 54U}) InsertTbl(g_tblDword, g_idxDword, number, 0);
    EXPECT_TRUE(NotesOfView(Compiled()).starts_with("table-length at "));
}

}  // namespace

}  // namespace zek::test
