#include <unistd.h>

#include "compile/compile.h"
#include "compile/small_image.h"
#include "interface/queried_image.h"
#include "support/resources.h"

namespace zek::test {

using ImageLoading = ProcessTest;

TEST_F(ImageLoading, IsNotNeededForTheRootGroup) {
    EXPECT_EQ(CodeAfter([] { EXPECT_EQ(gcGetGroupIndex("0"), 0U); }), 0U);
    EXPECT_EQ(CodeAfter([] { EXPECT_EQ(gcGetGroupIndex("A"), 0xFFFFFFFFU); }), 1U);
    EXPECT_EQ(CodeAfter([] { EXPECT_EQ(gcGetSectCount(kSensor), 0U); }), 0U);
    EXPECT_EQ(CodeAfter([] { EXPECT_EQ(gcGetSectByIndex(kSensor, 0), nullptr); }), 1U);
    unsigned char block[256];
    EXPECT_EQ(CodeAfter([&] { EXPECT_EQ(gcGetTableData(0, block), 0U); }), 4U);
}

TEST_F(ImageLoading, SetsCode0OnSuccessAndCode13OnEveryFailure) {
    Write("good.meta", SmallImage());
    Write("magic.meta", "QUOR ZEK metaD." + SmallImage().substr(15));
    Write("version.meta", SmallImage().replace(16, 4, Word(0x01000001)));
    Write("cut.meta", SmallImage().substr(0, 0x387));
    const auto openBefore = OpenFiles();
    tagMETAFILEINFO info = {};
    EXPECT_EQ(CodeAfter([&] { EXPECT_EQ(gcInit("good.meta", &info), 1U); }), 0U);
    EXPECT_EQ(info.dwVersion, 0x01000000U);
    for (const char* file : {"missing.meta", "magic.meta", "version.meta", "cut.meta"}) {
        SCOPED_TRACE(file);
        EXPECT_EQ(CodeAfter([&] { EXPECT_EQ(gcInit(file, nullptr), 0U); }), 13U);
    }
    EXPECT_EQ(Messages(), "");
    EXPECT_EQ(OpenFiles(), openBefore) << "the file is closed, whatever came of it";
}

TEST_F(ImageLoading, ReplacesTheImageBefore) {
    Write("queried.meta", QueriedImage());
    Write("small.meta", SmallImage());
    ASSERT_EQ(gcInit("queried.meta", nullptr), 1U);
    ASSERT_EQ(gcInit("small.meta", nullptr), 1U);
    EXPECT_EQ(gcGetSectCount(kSensor), 0U);
    EXPECT_EQ(gcGetSectCount(0x01000004), 1U);
    EXPECT_EQ(gcGetGroupIndex("A"), 1U);
    EXPECT_EQ(gcGetGroupIndex("B"), 0xFFFFFFFFU);
    EXPECT_EQ(GetTblData(0x12000002).dwKind, 0U);
}

TEST_F(ImageLoading, ThatFailsBeforeTheSectionsKeepsTheImageBefore) {
    Write("small.meta", SmallImage());
    Write("version.meta", SmallImage().replace(16, 4, Word(0x01000001)));
    ASSERT_EQ(gcInit("small.meta", nullptr), 1U);
    const tagGCSECT* group = gcGetSectByName(0x01000004, "A");
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(gcInit("version.meta", nullptr), 0U);
    EXPECT_EQ(gcInit("missing.meta", nullptr), 0U);
    EXPECT_EQ(gcGetSectByName(0x01000004, "A"), group);
}

TEST_F(ImageLoading, ThatFailsInsideLeavesWhatItReadUntilTheNext) {
    Write("small.meta", SmallImage());
    Write("queried.meta", QueriedImage());
    Write("cut.meta", SmallImage().substr(0, 0x13c));
    ASSERT_EQ(gcInit("queried.meta", nullptr), 1U);
    EXPECT_EQ(gcInit("cut.meta", nullptr), 0U);
    EXPECT_EQ(LoadedSections(), "01000002: 03000000(12000000)\n0100000a: 04000000(1e000001 11000000)\n01000004:\n");
    EXPECT_STREQ(GetTblData(0x12000003).pszName, "s3") << "no table of the cut image was reached";
    ASSERT_EQ(gcInit("small.meta", nullptr), 1U);
    EXPECT_EQ(gcGetGroupIndex("A"), 1U);
    EXPECT_EQ(GetTblData(0x12000003).dwKind, 0U);
}

TEST_F(ImageLoading, InOneProcessGivesWhatAnotherCompiled) {
    InChild([&] {
        ASSERT_EQ(Check(kSmallSource), 1U);
        ASSERT_EQ(gccOutput("small.meta"), 1U);
    });
    ASSERT_EQ(gcInit("small.meta", nullptr), 1U);
    tagGCSECT* action = gcGetSectByName(0x01000007, "Do");
    ASSERT_NE(action, nullptr);
    unsigned name = 0;
    tagGCENTRY* value = gcGetEntryByName(action, "", &name);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(name, 0x05000001U);
    EXPECT_EQ(gcGetValueByID(value, 0x10000).qwNumber, 1U);
    EXPECT_STREQ(gcGetValueByID(value, 0x20000).pszName, "X");
    unsigned char block[256];
    ASSERT_EQ(gcGetTableData(0x1c000000, block), 1U);
    EXPECT_EQ(block[3], 9);
    EXPECT_EQ(block[4], 9);
    EXPECT_EQ(block[5], 0);
}

TEST_F(ImageLoading, OverALiveModelLeavesTheModelAlone) {
    Write("queried.meta", QueriedImage());
    ASSERT_EQ(Check(kSmallSource), 1U);
    ASSERT_EQ(gcInit("queried.meta", nullptr), 1U);
    // The tables are now those of the image, and a compilation adds to them.
    EXPECT_EQ(gccOutput("mixed.meta"), 1U);
    EXPECT_EQ(gcGetSectCount(kSensor), 0U) << "the output frees the records, the loaded ones included";
    ASSERT_EQ(gcInit("mixed.meta", nullptr), 1U);
    EXPECT_EQ(gcGetSectCount(kSensor), 3U) << "they were written before the model's";
    EXPECT_EQ(KeysInOrder(g_tblProperty), (Texts{"p0", "p1", "Maker"}));
    EXPECT_EQ(gcGetGroupIndex("A"), 1U);
    EXPECT_EQ(gcGetSectByName(0x0100000a, "X"), g_GCHead.at(13));
}

TEST_F(ImageLoading, OfAHugeFileThatIsNoImageLooksAtItsFirstBytesOnly) {
    Write("huge", "");
    // Larger than any memory, and without a block on the disk.
    std::filesystem::resize_file("huge", std::uintmax_t{1} << 40);
    EXPECT_EQ(CodeAfter([] { EXPECT_EQ(gcInit("huge", nullptr), 0U); }), 13U);
    EXPECT_EQ(gdInit("huge", nullptr), 0U);
    EXPECT_EQ(Messages(), "ERROR: File huge is invalid.\n");
}

TEST_F(ImageLoading, FindsNamesOfAMillionCharactersInNoTimeHoweverManySectionsHaveThem) {
    constexpr unsigned kSections = 100'000;
    const std::string name(4 << 20, 'a');
    const std::string table = Record(kIdGroup, Names({name, name + 'b'}));
    const std::vector<SectionWords> groups(kSections, {0x01000004, {{kIdName, {kIdGroup}}}});
    // A short section and a long one, whose entries all have the same name.
    const std::vector<SectionWords> properties = {{0x01000002, std::vector<EntryWords>(60, {kIdProperty, {}})},
                                                  {0x01000002, std::vector<EntryWords>(kSections, {kIdProperty, {}})}};
    Write("groups.meta", Image(groups, {table}));
    Write("properties.meta", Image(properties, {Record(kIdProperty, Names({name, name + 'b'}))}));
    InChild([&] {
        // Reading the name for every section would take minutes.
        alarm(20);
        ASSERT_EQ(gcInit("groups.meta", nullptr), 1U);
        EXPECT_EQ(gcGetSectByName(0x01000004, name), g_GCHead.front());
        EXPECT_EQ(gcGetSectByName(0x01000004, name + 'b'), nullptr);
        ASSERT_EQ(gcInit("properties.meta", nullptr), 1U);
        EXPECT_EQ(gcGetSectByName(0x01000002, name), g_GCHead.front());
        EXPECT_EQ(gcGetSectByName(0x01000002, name + 'b'), nullptr);
        EXPECT_EQ(gcGetEntryByName(g_GCHead[1], name, nullptr), g_GCHead[1]->vEntries.data());
        for (unsigned i = 0; i < 10'000; ++i) EXPECT_EQ(gcGetEntryByName(g_GCHead[0], "b", nullptr), nullptr);
    });
}

TEST_F(ImageLoading, FindsEachNameOfOneLongSectionInNoTime) {
    constexpr unsigned kNames = 50'000;
    SectionWords properties = {0x01000002, {}};
    std::vector<std::string> names;
    for (unsigned i = 0; i < kNames; ++i) {
        properties.entries.push_back({kIdProperty + i, {}});
        names.push_back("name" + std::to_string(i));
    }
    Write("properties.meta", Image({properties}, {Record(kIdProperty, Names(names))}));
    InChild([&] {
        // Reading the names for every query would take minutes.
        alarm(20);
        ASSERT_EQ(gcInit("properties.meta", nullptr), 1U);
        tagGCSECT* const section = g_GCHead.front();
        for (unsigned i = 0; i < kNames; ++i) {
            ASSERT_EQ(gcGetSectByName(0x01000002, names[i]), section) << i;
            ASSERT_EQ(gcGetEntryByName(section, names[i], nullptr), &section->vEntries[i]) << i;
        }
        EXPECT_EQ(gcGetSectByName(0x01000002, "none"), nullptr);
        // The section's entries have moved, and what is asked for stands no longer among them.
        section->vEntries = {section->vEntries[1], section->vEntries[2]};
        EXPECT_EQ(gcGetSectByName(0x01000002, "name2"), section);
        EXPECT_EQ(gcGetSectByName(0x01000002, "name3"), nullptr);
    });
}

TEST_F(ImageLoading, FindsTheFirstOfTheEntriesWithOneTextInSeveralTables) {
    const std::vector<std::string> tables = {Record(kIdProperty, Names({"other", "a"})),
                                             Record(kIdGlobal, Names({"a"})),
                                             Record(kIdString, Names({"x", "y", "a"}))};
    SectionWords section = {0x01000002, std::vector<EntryWords>(70, {kIdProperty, {}})};
    section.entries[66].name = kIdString + 2;
    section.entries[67].name = kIdGlobal;
    section.entries[68].name = kIdProperty + 1;
    section.entries[69].name = kIdString + 2;
    Write("tables.meta", Image({section}, tables));
    ASSERT_EQ(gcInit("tables.meta", nullptr), 1U);
    std::vector<tagGCENTRY>& entries = g_GCHead.front()->vEntries;
    unsigned id = 0;
    EXPECT_EQ(gcGetEntryByName(g_GCHead.front(), "a", &id), &entries[66]);
    EXPECT_EQ(id, kIdString + 2);
    EXPECT_EQ(gcGetEntryByName(g_GCHead.front(), "other", nullptr), &entries[0]);
    EXPECT_EQ(gcGetEntryByName(g_GCHead.front(), "x", nullptr), nullptr);
    EXPECT_EQ(gcGetEntryByType(g_GCHead.front(), kIdGlobal), &entries[67]);
}

TEST_F(ImageLoading, FindsEntriesOfALongSectionWhoseIdentifiersFallAndHaveGaps) {
    constexpr unsigned kEntries = 100;
    SectionWords section = {0x01000002, {}};
    for (unsigned i = 0; i < kEntries; ++i) section.entries.push_back({kIdProperty + 3 * (kEntries - i), {}});
    section.entries.push_back({kIdProperty + 3, {}});
    Write("gaps.meta", Image({section}, {}));
    ASSERT_EQ(gcInit("gaps.meta", nullptr), 1U);
    std::vector<tagGCENTRY>& entries = g_GCHead.front()->vEntries;
    for (unsigned id = 0; id <= 3 * kEntries + 3; ++id) {
        SCOPED_TRACE(id);
        tagGCENTRY* const entry = id % 3 == 0 && id > 0 && id <= 3 * kEntries ? &entries[kEntries - id / 3] : nullptr;
        EXPECT_EQ(gcGetEntryByType(g_GCHead.front(), kIdProperty + id), entry);
    }
}

TEST_F(ImageLoading, FindsNoEntryByATextWithANul) {
    Write("queried.meta", Image({{0x01000002, {{kIdProperty, {}}}}}, {Record(kIdProperty, Names({"a"}))}));
    ASSERT_EQ(gcInit("queried.meta", nullptr), 1U);
    EXPECT_EQ(gcGetEntryByName(g_GCHead[0], std::string("a\0b", 3), nullptr), nullptr);
    EXPECT_EQ(gcGetEntryByName(g_GCHead[0], std::string("a\0", 2), nullptr), nullptr);
    EXPECT_EQ(gcGetEntryByName(g_GCHead[0], "a", nullptr), g_GCHead[0]->vEntries.data());
}

/// One sensor with an ID, made by hand.
tagGCSECT Sensor(unsigned id) {
    tagGCSECT section;
    section.dwSect = kSensor;
    section.vEntries.push_back({0x02000008, {id}});
    return section;
}

TEST_F(ImageLoading, IsFollowedByTheQueriesWhereAHostChangesAShortList) {
    tagGCSECT section = Sensor(0x1d000007);
    g_GCHead = {&section};
    EXPECT_EQ(gcGetSectByID(kSensor, 7), &section);
    section.vEntries[0].vdwValues[0] = 0x1d000008;
    EXPECT_EQ(gcGetSectByID(kSensor, 7), nullptr);
    EXPECT_EQ(gcGetSectByID(kSensor, 8), &section);
    section.dwSect = 0x01000099;
    EXPECT_EQ(gcGetSectCount(kSensor), 0U);
    EXPECT_EQ(gcGetSectCount(0x01000099), 1U);
    EXPECT_EQ(gcGetSectCount(0x01000098), 0U);
    g_GCHead.clear();
    EXPECT_EQ(gcGetSectCount(0x01000099), 0U);
}

TEST_F(ImageLoading, IsFollowedByTheQueriesWhereAHostChangesTheEndsOfALongList) {
    std::vector<tagGCSECT> sections(1000);
    for (unsigned i = 0; i < 1000; ++i) sections[i] = Sensor(0x1d000000 + i);
    for (tagGCSECT& section : sections) g_GCHead.push_back(&section);
    EXPECT_EQ(gcGetSectCount(kSensor), 1000U);
    EXPECT_EQ(gcGetSectByID(kSensor, 999), &sections[999]);
    tagGCSECT other = Sensor(0x1d000fff);
    g_GCHead.back() = &other;
    EXPECT_EQ(gcGetSectByID(kSensor, 999), nullptr);
    EXPECT_EQ(gcGetSectByID(kSensor, 0xfff), &other);
    g_GCHead.pop_back();
    EXPECT_EQ(gcGetSectCount(kSensor), 999U);
    g_GCHead.clear();
}

TEST_F(ImageLoading, IsFollowedByTheQueriesWhereAHostMakesASectionInThePlaceOfAnother) {
    for (unsigned i = 0; i < 65; ++i) g_GCHead.push_back(CreateGCSect(0x20000005));
    EXPECT_EQ(gcGetSectCount(kSensor), 65U);
    // The next one most often gets the memory of the last.
    delete g_GCHead.back();
    g_GCHead.back() = CreateGCSect(0x20000004);
    EXPECT_EQ(gcGetSectCount(kSensor), 64U);
    EXPECT_EQ(gcGetSectCount(0x01000004), 1U);
    CompDestory();
}

TEST_F(ImageLoading, IsFollowedByTheQueriesWhereAHostMakesOneTableLargerAndAnotherSmaller) {
    std::string source = "[PROPERTY]\n";
    for (int i = 0; i < 100; ++i) source += "key" + std::to_string(i) + " = x" + std::to_string(i) + '\n';
    ASSERT_EQ(Check(source), 1U);
    ASSERT_EQ(gccOutput("long.meta"), 1U);
    ASSERT_EQ(gcInit("long.meta", nullptr), 1U);
    tagGCSECT* const section = gcGetSectByIndex(0x01000002, 0);
    EXPECT_EQ(gcGetEntryByName(section, "key5", nullptr), &section->vEntries[5]);
    EXPECT_EQ(gcGetSectByName(0x01000002, "key5"), section);
    g_tblProperty["alias"] = 0x03000005;
    g_tblProperty.erase("key5");
    g_tblProperty["more"] = 0x03000064;
    g_tblString.erase(g_tblString.begin());
    EXPECT_EQ(gcGetEntryByName(section, "alias", nullptr), &section->vEntries[5]);
    EXPECT_EQ(gcGetEntryByName(section, "key5", nullptr), nullptr);
    EXPECT_EQ(gcGetSectByName(0x01000002, "alias"), section);
    EXPECT_EQ(gcGetSectByName(0x01000002, "key5"), nullptr);
}

TEST_F(ImageLoading, IsFollowedByTheQueriesWhereKeysAreInserted) {
    // The last two groups and entries have names that the tables do not have yet.
    constexpr unsigned kKnown = 100;
    std::vector<std::string> names;
    std::vector<SectionWords> sections;
    SectionWords properties = {0x01000002, {}};
    for (unsigned i = 0; i < kKnown + 2; ++i) {
        if (i < kKnown) names.push_back("name" + std::to_string(i));
        sections.push_back({0x01000004, {{kIdName, {kIdGroup + i}}}});
        properties.entries.push_back({kIdProperty + i, {}});
    }
    sections.push_back(properties);
    Write("inserted.meta", Image(sections, {Record(kIdGroup, Names(names)), Record(kIdProperty, Names(names))}));
    ASSERT_EQ(gcInit("inserted.meta", nullptr), 1U);
    tagGCSECT* const section = g_GCHead.back();
    const auto expectNames = [section](unsigned groups, unsigned entries) {
        SCOPED_TRACE(groups);
        for (unsigned i = 0; i < kKnown + 2; ++i) {
            const std::string name = "name" + std::to_string(i);
            EXPECT_EQ(gcGetSectByName(0x01000004, name), i < groups ? g_GCHead[i] : nullptr) << i;
            EXPECT_EQ(gcGetEntryByName(section, name, nullptr), i < entries ? &section->vEntries[i] : nullptr) << i;
            EXPECT_EQ(gcGetSectByName(0x01000002, name), i < entries ? section : nullptr) << i;
        }
    };
    expectNames(kKnown, kKnown);
    InsertTbl(g_tblAction, g_idxAction, "name100", 1);
    expectNames(kKnown, kKnown);
    InsertTbl(g_tblGroup, g_idxGroup, "name100", 1);
    expectNames(kKnown + 1, kKnown);
    InsertTbl(g_tblProperty, g_idxProperty, "name100", 1);
    expectNames(kKnown + 1, kKnown + 1);
    g_tblGroup["name101"];
    g_tblProperty["name101"];
    expectNames(kKnown + 1, kKnown + 1);
    // Numbered without a change of the sizes.
    InsertTbl(g_tblGroup, g_idxGroup, "name101", 1);
    InsertTbl(g_tblProperty, g_idxProperty, "name101", 1);
    expectNames(kKnown + 2, kKnown + 2);
}

TEST_F(ImageLoading, FindsIDsThatAreInserted) {
    std::vector<SectionWords> sensors;
    for (unsigned i = 0; i < 100; ++i) sensors.push_back({kSensor, {{kIDWord, {kIdNumber + 1 + i}}}});
    Write("ids.meta", Image(sensors, {Record(kIdNumber, Joined({400}))}));
    ASSERT_EQ(gcInit("ids.meta", nullptr), 1U);
    for (unsigned i = 0; i < 100; ++i) {
        EXPECT_EQ(gcGetSectByID(kSensor, 500 + i), nullptr);
        InsertTbl(g_tblDword, g_idxDword, 500 + i, 1);
        EXPECT_EQ(gcGetSectByID(kSensor, 500 + i), g_GCHead[i]);
    }
}

TEST_F(ImageLoading, DoesNotLookForAKindThatIsMissingAtEveryQuery) {
    constexpr std::size_t kSections = 1'000'000;
    std::vector<tagGCSECT> sections(kSections);
    for (tagGCSECT& section : sections) g_GCHead.push_back(&section);
    InChild([&] {
        // Walking the list for every query would take minutes.
        alarm(20);
        for (int i = 0; i < 100'000; ++i) ASSERT_EQ(gcGetSectCount(0x7f000001), 0U);
    });
    g_GCHead.clear();
}

TEST_F(ImageLoading, FindsTheEntriesOfALongSectionAsThoseOfAShortOne) {
    std::string source = "[PROPERTY]\n";
    for (int i = 0; i < 1000; ++i) source += "key " + std::to_string(i) + " = x\n";
    ASSERT_EQ(Check(source), 1U);
    ASSERT_EQ(gccOutput("long.meta"), 1U);
    ASSERT_EQ(gcInit("long.meta", nullptr), 1U);
    tagGCSECT* section = gcGetSectByIndex(0x01000002, 0);
    unsigned name = 0;
    for (unsigned i : {0U, 64U, 999U}) {
        SCOPED_TRACE(i);
        tagGCENTRY* entry = &section->vEntries[i];
        EXPECT_EQ(gcGetEntryByName(section, "key " + std::to_string(i), &name), entry);
        EXPECT_EQ(name, 0x03000000U + i);
        EXPECT_EQ(gcGetEntryByType(section, name), entry);
    }
    EXPECT_EQ(CodeAfter([&] { EXPECT_EQ(gcGetEntryByName(section, "key 1000", &name), nullptr); }), 7U);
    EXPECT_EQ(name, 0x03000000U + 999);
    EXPECT_EQ(CodeAfter([&] { EXPECT_EQ(gcGetEntryByType(section, 0x02000015), nullptr); }), 2U);
    // Entries of one name: the first is found. The section's entries have moved.
    section->vEntries.insert(section->vEntries.begin(), section->vEntries.back());
    EXPECT_EQ(gcGetEntryByName(section, "key 999", &name), &section->vEntries[0]);
    EXPECT_EQ(gcGetEntryByType(section, name), &section->vEntries[0]);
}

}  // namespace zek::test
