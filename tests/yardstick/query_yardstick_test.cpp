// The queries of generated sources, against the plain ones.
#include "compile/compile.h"
#include "compile/image_stamp.h"
#include "compile/init_tables.h"
#include "compile/tables.h"
#include "model/keyword_table.h"
#include "yardstick/expected_answers.h"
#include "yardstick/generated_source.h"
#include "yardstick/plain_model.h"
#include "yardstick/plain_queries.h"

namespace zek::test {

namespace {

const std::vector<std::string> kNames = {"Group0",  "Group1", "A",     "B",    "a",    "0",  "Sensor0", "Device2",
                                         "Action1", "Table0", "Tavr1", "none", "",     "k0", "k2",      "own1",
                                         "1",       "INIT",   "G_0",   "IPMI", "NAME", "s",  "text",    "Group",
                                         "Group69", "k66",    "own68", "67",   "69"};

constexpr unsigned kNothing = 0xDEADBEEF;

/// An entry asked for, with the name slot, which is left alone when nothing is found.
void ExpectEntry(tagGCENTRY* entry, unsigned name, const plain::Answer<tagGCENTRY*>& expected) {
    Expect(entry, expected);
    EXPECT_EQ(name, expected.result ? expected.result->dwName : kNothing);
}

void CompareEntry(tagGCENTRY& entry, Random& random) {
    EXPECT_EQ(gcGetValueCount(&entry), entry.vdwValues.size());
    for (unsigned i = 0; i <= entry.vdwValues.size(); ++i) {
        ExpectValue(gcGetValueByIndex(&entry, i), plain::ValueByIndex(entry, i));
    }
    // Of the many fields that there may be, some of each base.
    for (unsigned base = 0; base <= 0x1b; ++base) {
        const unsigned field = (base << 16) + (random.Chance(50) ? 0 : random.Below(8));
        SCOPED_TRACE("field " + std::to_string(field));
        ExpectValue(gcGetValueByID(&entry, field), plain::ValueById(entry, field));
    }
}

void CompareSection(tagGCSECT& section, Random& random) {
    EXPECT_EQ(gcGetEntryCount(&section), section.vEntries.size());
    for (unsigned i = 0; i <= section.vEntries.size(); ++i) {
        unsigned name = kNothing;
        tagGCENTRY* entry = gcGetEntryByIndex(&section, i, &name);
        ExpectEntry(entry, name, plain::EntryByIndex(section, i));
        if (entry) CompareEntry(*entry, random);
    }
    for (const std::string& text : kNames) {
        unsigned name = kNothing;
        tagGCENTRY* entry = gcGetEntryByName(&section, text, &name);
        ExpectEntry(entry, name, plain::EntryByName(section, text));
    }
    for (unsigned type = 0x02000000; type < 0x02000019; ++type) {
        Expect(gcGetEntryByType(&section, type), plain::EntryByType(section, type));
    }
    for (const tagGCENTRY& entry : section.vEntries) {
        for (const unsigned type : {entry.dwName - 1, entry.dwName, entry.dwName + 1}) {
            Expect(gcGetEntryByType(&section, type), plain::EntryByType(section, type));
        }
    }
}

std::vector<unsigned> Counters() {
    return {g_idxProperty, g_idxGlobal, g_idxValue,  g_idxRepeater, g_idxDword,
            g_idxString,   g_idxGroup,  g_idxAction, g_idxTableName};
}

/// Every identifier that a table has given out, and two beyond.
void CompareIdentifiers() {
    std::vector<unsigned> ends = Counters();
    ends.insert(ends.end(), {0x1b000001, 0x1d000003, 0x1e000068, 0x1f000065, 0});
    for (const unsigned end : ends) {
        for (unsigned id = end & 0xFF000000; id <= end + 1; ++id) ExpectValue(GetTblData(id), plain::Resolved(id));
    }
    for (unsigned id = g_idxGroup & 0xFF000000; id <= g_idxGroup; ++id) {
        const tagGCVALUE expected = plain::Resolved(id);
        EXPECT_EQ(GetTblData(g_tblGroup, id), expected.dwKind == 2 ? expected.pszName : nullptr);
    }
}

void CompareImage(Random& random) {
    for (unsigned kind = 0x01000000; kind <= 0x0100000c; ++kind) {
        SCOPED_TRACE("kind " + std::to_string(kind & 0xFF));
        const auto sections = plain::ImageSections(kind);
        EXPECT_EQ(gcGetSectCount(kind), sections.size());
        EXPECT_EQ(gcGetLastError(), 0U);
        for (unsigned i = 0; i <= sections.size(); ++i)
            Expect(gcGetSectByIndex(kind, i), plain::SectionByIndex(kind, i));
        for (const std::string& name : kNames) Expect(gcGetSectByName(kind, name), plain::SectionByName(kind, name));
        for (const unsigned id : {0U, 1U, 2U, 3U, 7U, 300U})
            Expect(gcGetSectByID(kind, id), plain::SectionById(kind, id));
        for (tagGCSECT* section : sections) CompareSection(*section, random);
    }
    for (const std::string& name : kNames) Expect(gcGetGroupIndex(name), plain::GroupIndex(name));
    CompareIdentifiers();
}

/// FindEntry for one type: an entry that is of no family stands in for all of its type from where it stands.
void CompareEntriesOf(CZEKSection& section, unsigned type) {
    std::vector<CZEKEntry*> families;
    CZEKEntry* single = nullptr;
    for (CZEKEntry* entry : section.m_vpEntry) {
        if (entry->m_dwType != type || single) continue;
        if (entry->m_eNotation & 8) {
            families.push_back(entry);
        } else {
            single = entry;
        }
    }
    for (unsigned i = 0; i <= families.size(); ++i) {
        unsigned index = i;
        EXPECT_EQ(FindEntry(&section, type, index), i < families.size() ? families[i] : single);
        EXPECT_EQ(index, i);
    }
    unsigned count = 0xFFFFFFFF;
    EXPECT_EQ(FindEntry(&section, type, count), single);
    EXPECT_EQ(count, single ? 0xFFFFFFFF : families.size());
}

std::vector<CZEKEntry*> EntriesWithData(const CZEKSection& section) {
    std::vector<CZEKEntry*> entries;
    std::copy_if(section.m_vpEntry.begin(), section.m_vpEntry.end(), std::back_inserter(entries), plain::HoldsData);
    return entries;
}

/// Entries by position, of one section after the other, and of all of them in turn.
void CompareEntriesByPosition(const std::vector<CZEKSection*>& sections, Random& random) {
    for (CZEKSection* section : sections) {
        const std::vector<CZEKEntry*> entries = EntriesWithData(*section);
        for (unsigned i = 0; i < entries.size(); ++i) EXPECT_EQ(gdGetEntryByIndex(section, i), entries[i]);
        EXPECT_EQ(gdGetEntryByIndex(section, static_cast<unsigned>(entries.size())), nullptr);
    }
    for (CZEKSection* section : sections) {
        const std::vector<CZEKEntry*> entries = EntriesWithData(*section);
        const unsigned position = random.Below(entries.size() + 1);
        EXPECT_EQ(gdGetEntryByIndex(section, position), position < entries.size() ? entries[position] : nullptr);
    }
}

/// The queries of the source model.
void CompareModel(Random& random) {
    for (unsigned kind = 1; kind <= 15; ++kind) {
        const auto sections = plain::Sections(0x20000000 + kind);
        CompareEntriesByPosition(sections, random);
        for (unsigned i = 0; i <= sections.size(); ++i) {
            CZEKSection* section = gdGetSectByIndex(kind, i);
            ASSERT_EQ(section, i < sections.size() ? sections[i] : nullptr);
            if (!section) continue;
            const std::string* name = plain::Text(plain::Entry(*section, kName));
            const std::string* parent = plain::Text(plain::Entry(*section, kParent));
            EXPECT_EQ(gdGetSectName(section), name ? name->c_str() : nullptr);
            EXPECT_EQ(gdGetSectPName(section), parent ? parent->c_str() : nullptr);
            for (const tagNTMAP& row : g_NTMapEntry) CompareEntriesOf(*section, row.dwID);
        }
    }
}

/// Numbers keys one by one. Without a step several names have one identifier, and it may be one that the counter has
/// not passed.
void InsertKeys() {
    for (const char* name : {"zz", "aa", "mm", "nn"}) {
        InsertTbl(g_tblValue, g_idxValue, name, name[0] >= 'm');
        InsertTbl(g_tblString, g_idxString, name, 1);
        CompareIdentifiers();
    }
    for (const unsigned number : {9001U, 8001U}) InsertTbl(g_tblDword, g_idxDword, number, 0);
}

/// How much of what was asked about is more than 64, so that an index answers.
struct Crowds {
    unsigned longModelSections = 0;
    unsigned longSections = 0;
    unsigned longLists = 0;
    unsigned longTables = 0;

    void CountModel() {
        for (const auto* list : CZEKSection::m_svpHSection) {
            for (const CZEKSection* section : *list) longModelSections += section->m_vpEntry.size() > kWalkedAtOnce;
        }
    }
    void CountImage() {
        longLists += g_GCHead.size() > kWalkedAtOnce;
        for (const tagGCSECT* section : g_GCHead) longSections += section->vEntries.size() > kWalkedAtOnce;
        for (const unsigned counter : Counters()) longTables += (counter & 0xFFFFFF) > kWalkedAtOnce;
    }
};

}  // namespace

using QueriesOfGeneratedSource = GeneratedSource;

TEST_P(QueriesOfGeneratedSource, AnswerAsThePlainOnesDo) {
    unsigned sections = 0;
    Crowds crowds;
    ForEachSeed([&](unsigned seed) {
        Random random(seed);
        ASSERT_TRUE(Parse());
        gccCheck();
        CompareModel(random);
        crowds.CountModel();
        if (random.Chance(30)) {
            SCOPED_TRACE("compiled, not written");
            InitTblD();
            Compile();
            CompareImage(random);
            CompDestory();
        }
        ASSERT_EQ(gccOutput("image"), 1U);
        gccCompEnd();
        {
            SCOPED_TRACE("written");
            CompareImage(random);
        }
        ASSERT_EQ(gcInit("image", nullptr), 1U);
        {
            SCOPED_TRACE("read");
            CompareImage(random);
        }
        crowds.CountImage();
        if (random.Chance(30)) {
            SCOPED_TRACE("with more keys");
            InsertKeys();
            CompareImage(random);
        }
        sections += static_cast<unsigned>(g_GCHead.size());
        if (random.Chance(70)) gcUnInit();
    });
    EXPECT_GE(sections, kSeedsInShard * 5) << "the images are worth asking";
    EXPECT_GE(crowds.longModelSections, 2U);
    EXPECT_GE(crowds.longSections, 2U);
    EXPECT_GE(crowds.longLists, 2U);
    EXPECT_GE(crowds.longTables, 2U);
    std::cout << sections << " sections; above 64: " << crowds.longModelSections << " sections of the model, "
              << crowds.longSections << " of the images, " << crowds.longLists << " lists, " << crowds.longTables
              << " tables\n";
}

INSTANTIATE_TEST_SUITE_P(Shard, QueriesOfGeneratedSource, testing::Range(0U, 20U));

}  // namespace zek::test
