#include "check/vocabulary.h"
#include "model/section.h"
#include "model/section_text.h"
#include "support/process_test.h"

namespace zek::test {

namespace {

using Registry = std::vector<SectionList*>;

CZEKSection* Create(const std::string& keyword) { return CZEKSection::Create("main.zek", keyword, 1); }

/// Counts how many of its kind are destroyed.
class CountedEntry : public CGESTRING {
public:
    CountedEntry(unsigned type, unsigned notation, unsigned& destroyed)
        : CGESTRING(type, static_cast<tagNOTATION>(notation)), destroyed_(destroyed) {}
    ~CountedEntry() override { ++destroyed_; }

private:
    unsigned& destroyed_;
};

/// Counts how many of its kind are destroyed.
class CountedTable : public CGSTABLE {
public:
    explicit CountedTable(unsigned& destroyed) : destroyed_(destroyed) {}
    ~CountedTable() override { ++destroyed_; }

private:
    unsigned& destroyed_;
};

}  // namespace

using SectionRegistry = ProcessTest;

TEST_F(SectionRegistry, IsInTheOrderInWhichTheKindsFirstAppear) {
    EXPECT_EQ(CZEKSection::m_svpHSection, Registry());
    Source("[GROUP]\n[SYSTEM]\n[GROUP]\n[DEFINE]\n");
    EXPECT_EQ(CZEKSection::m_svpHSection,
              Registry({&CGSGROUP::m_sHeader, &CGSSYSTEM::m_sHeader, &CGSDEFINE::m_sHeader}));
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 2U);
    gccCompEnd();
    Source("[QUORZEK]\n[DEFINE]\n", "second.zek");
    EXPECT_EQ(CZEKSection::m_svpHSection,
              Registry({&CGSGROUP::m_sHeader, &CGSSYSTEM::m_sHeader, &CGSDEFINE::m_sHeader, &CGSQUORZEK::m_sHeader}));
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 0U);
}

TEST_F(SectionRegistry, GivesTheListOfAKindThatHasSections) {
    EXPECT_EQ(FindSectHead(0x20000004), nullptr);
    Create("GROUP");
    CZEKSection::Destory();
    Create("TABLE");
    EXPECT_EQ(FindSectHead(0x20000004), nullptr);
    EXPECT_EQ(FindSectHead(0x20000008), &CGSTABLE::m_sHeader) << "the empty list before it is passed over";
    EXPECT_EQ(FindSectHead(0), nullptr);
    EXPECT_EQ(FindSectHead(8), nullptr);
}

TEST_F(SectionRegistry, KeepsADestroyedSectionUntilItIsTornDown) {
    CZEKSection* kept = Create("TABLE");
    const CZEKSection* deleted = Create("TABLE");
    delete deleted;
    EXPECT_EQ(CGSTABLE::m_sHeader.size(), 2U);
    CGSTABLE::m_sHeader = {kept};
}

using ModelTearDown = ProcessTest;

TEST_F(ModelTearDown, DestroysEverySectionWithItsEntriesAndForgetsThePredefinedNames) {
    unsigned destroyed = 0;
    for (const char* keyword : {"GROUP", "TABLE", "GROUP"}) {
        Create(keyword)->m_vpEntry.push_back(new CountedEntry(0x10020015, 2, destroyed));
    }
    AddPredDefineValue("A", 1);
    CZEKSection::Destory();
    EXPECT_EQ(destroyed, 3U);
    EXPECT_TRUE(g_tblPreDefine.empty());
    EXPECT_EQ(CZEKSection::m_svpHSection, Registry({&CGSGROUP::m_sHeader, &CGSTABLE::m_sHeader}));
    EXPECT_TRUE(CGSGROUP::m_sHeader.empty());
    EXPECT_TRUE(CGSTABLE::m_sHeader.empty());
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, std::vector<std::string>({"main.zek"}));
    CZEKSection::Destory();
    EXPECT_EQ(destroyed, 3U);
}

TEST_F(ModelTearDown, DestroysASectionAsWhatItIs) {
    unsigned destroyed = 0;
    EXPECT_EQ(CGSTABLE::m_sHeader, zek::SectionList({new CountedTable(destroyed)}));
    CZEKSection::Destory();
    EXPECT_EQ(destroyed, 1U);
}

using FoundEntry = ProcessTest;

/// A table with the rows "1", "2" and "3" and two NAMEs.
CZEKSection* TableWithRows() {
    CZEKSection* table = Create("TABLE");
    for (const char* key : {"1", "NAME", "2", "NAME", "3"}) table->SetEntry("main.zek", key, "v", 1);
    return table;
}

TEST_F(FoundEntry, IsTheFirstOfItsTypeWhateverTheIndex) {
    CZEKSection* table = TableWithRows();
    for (const unsigned asked : {0U, 1U, 7U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(asked);
        unsigned index = asked;
        EXPECT_EQ(FindEntry(table, 0x10020015, index), table->m_vpEntry[0]);
        EXPECT_EQ(index, asked);
    }
}

TEST_F(FoundEntry, IsTheFamilyEntryAtThePositionAskedFor) {
    CZEKSection* table = TableWithRows();
    for (unsigned position = 0; position < 3; ++position) {
        unsigned index = position;
        const CZEKEntry* entry = FindEntry(table, 0x10020012, index);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(entry->m_strName, std::to_string(position + 1));
        EXPECT_EQ(index, position);
    }
    unsigned past = 3;
    EXPECT_EQ(FindEntry(table, 0x10020012, past), nullptr);
    EXPECT_EQ(past, 3U);
}

TEST_F(FoundEntry, IsCountedForTheIndexOfAllOnes) {
    CZEKSection* table = TableWithRows();
    const auto countOf = [table](unsigned type) {
        unsigned index = 0xFFFFFFFF;
        EXPECT_EQ(FindEntry(table, type, index), nullptr);
        return index;
    };
    EXPECT_EQ(countOf(0x10020012), 3U);
    EXPECT_EQ(countOf(0x10020018), 0U);
    unsigned index = 5;
    EXPECT_EQ(FindEntry(table, 0x10020018, index), nullptr);
    EXPECT_EQ(index, 5U);
}

TEST_F(FoundEntry, IsTheOneWithoutTheFamilyBitWhenTheWalkReachesIt) {
    unsigned destroyed = 0;
    CZEKSection section;
    for (const unsigned notation : {8U, 46U, 55U, 2U, 10U}) {
        section.m_vpEntry.push_back(new CountedEntry(0x10020018, notation, destroyed));
    }
    const auto foundAt = [&section](unsigned index) { return FindEntry(&section, 0x10020018, index); };
    EXPECT_EQ(foundAt(0), section.m_vpEntry[0]);
    EXPECT_EQ(foundAt(1), section.m_vpEntry[1]);
    for (const unsigned index : {2U, 3U, 0xFFFFFFFFU}) EXPECT_EQ(foundAt(index), section.m_vpEntry[2]) << index;
}

}  // namespace zek::test
