#include "interface/queried_image.h"

namespace zek::test {

namespace {

/// A loaded QueriedImage.
class ImageQuery : public ProcessTest {
protected:
    void SetUp() override {
        ProcessTest::SetUp();
        Write("queried.meta", QueriedImage());
        ASSERT_EQ(gcInit("queried.meta", nullptr), 1U);
    }

    static tagGCSECT* Section(std::size_t position) { return g_GCHead.at(position); }

    /// What a search gave: the section's position in the image, or its code as "code N".
    template <class Search>
    static std::string Found(Search&& search) {
        tagGCSECT* section = nullptr;
        const unsigned code = CodeAfter([&] { section = search(); });
        if (!section) return "code " + std::to_string(code);
        EXPECT_EQ(code, 0U);
        for (std::size_t i = 0; i < g_GCHead.size(); ++i) {
            if (g_GCHead[i] == section) return std::to_string(i);
        }
        return "no section of the image";
    }
    static std::string ByIndex(unsigned kind, unsigned index) {
        return Found([=] { return gcGetSectByIndex(kind, index); });
    }
    static std::string ByName(unsigned kind, const std::string& name) {
        return Found([&] { return gcGetSectByName(kind, name); });
    }
    static std::string ByID(unsigned kind, unsigned number) {
        return Found([=] { return gcGetSectByID(kind, number); });
    }
};

}  // namespace

TEST_F(ImageQuery, CountsSectionsOfAKind) {
    unsigned count = 99;
    EXPECT_EQ(CodeAfter([&] { count = gcGetSectCount(kSensor); }), 0U);
    EXPECT_EQ(count, 3U);
    EXPECT_EQ(CodeAfter([&] { count = gcGetSectCount(0x01000009); }), 0U);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(gcGetSectCount(5), 0U) << "the identifier is taken as it stands";
}

TEST_F(ImageQuery, GivesSectionsOfAKindByPosition) {
    EXPECT_EQ(ByIndex(kSensor, 0), "0");
    EXPECT_EQ(ByIndex(kSensor, 1), "2");
    EXPECT_EQ(ByIndex(kSensor, 2), "3");
    EXPECT_EQ(ByIndex(kSensor, 3), "code 4");
    EXPECT_EQ(ByIndex(kSensor, 0xFFFFFFFF), "code 4");
    EXPECT_EQ(ByIndex(0x01000009, 0), "code 1");
}

TEST_F(ImageQuery, FindsASectionByItsName) {
    EXPECT_EQ(ByName(kSensor, "s0"), "0");
    EXPECT_EQ(ByName(kSensor, "s1"), "2") << "the first of two, at its second NAME";
    EXPECT_EQ(ByName(kSensor, "s2"), "code 7") << "only the first word of a NAME is a name";
    EXPECT_EQ(ByName(kSensor, "S0"), "code 7");
    EXPECT_EQ(ByName(kSensor, ""), "code 7");
    EXPECT_EQ(ByName(kSensor, "p0"), "code 7") << "a property is no name of its sensor";
    EXPECT_EQ(ByName(kDevice, "s0"), "code 8") << "no entries";
    EXPECT_EQ(ByName(0x01000008, "s0"), "code 8") << "a NAME without words and an entry that is none";
    EXPECT_EQ(ByName(0x01000007, "10"), "code 7") << "a NAME that is no text counts as examined";
    EXPECT_EQ(ByName(0x01000009, "s0"), "code 1");
}

TEST_F(ImageQuery, FindsPropertiesGlobalsAndRepeatersByTheNameOfAnyEntry) {
    EXPECT_EQ(ByName(0x01000002, "p0"), "1");
    EXPECT_EQ(ByName(0x01000002, "p1"), "1") << "an entry without words offers its name too";
    EXPECT_EQ(ByName(0x01000002, "s0"), "code 7");
    EXPECT_EQ(ByName(0x0100000a, "g0"), "7");
    EXPECT_EQ(ByName(0x0100000a, "s2"), "7") << "by a NAME that has words";
    EXPECT_EQ(ByName(0x0100000b, "r0"), "8");
    EXPECT_EQ(ByName(0x01000001, "p9"), "code 8") << "not in other kinds";
}

TEST_F(ImageQuery, CountsAnEntryNameThatIsNoTextAsExamined) {
    Write("odd.meta", Image({{0x01000002, {{0x03000009, {}}}}, {0x0100000a, {{kNameWord, {}}}}, {0x0100000b, {}}}, {}));
    ASSERT_EQ(gcInit("odd.meta", nullptr), 1U);
    EXPECT_EQ(ByName(0x01000002, "x"), "code 7");
    EXPECT_EQ(ByName(0x0100000a, "x"), "code 7");
    EXPECT_EQ(ByName(0x0100000b, "x"), "code 8");
}

TEST_F(ImageQuery, FindsASectionByItsID) {
    EXPECT_EQ(ByID(kSensor, 10), "0");
    EXPECT_EQ(ByID(kSensor, 20), "2") << "the first of two, at its second ID";
    EXPECT_EQ(ByID(kSensor, 30), "code 5");
    EXPECT_EQ(ByID(0x01000007, 0), "code 5") << "an ID that is no number counts as examined";
    EXPECT_EQ(ByID(kDevice, 10), "code 6");
    EXPECT_EQ(ByID(0x01000002, 10), "code 6");
    EXPECT_EQ(ByID(0x01000009, 10), "code 1");
}

TEST_F(ImageQuery, TakesTheFirstWordOfAnIDOnly) {
    Write("ids.meta",
          Image({{kSensor, {{kIDWord, {0x11000000, 0x11000001}}}}}, {Record(0x11000000, Joined({10, 20}))}));
    ASSERT_EQ(gcInit("ids.meta", nullptr), 1U);
    EXPECT_EQ(ByID(kSensor, 10), "0");
    EXPECT_EQ(ByID(kSensor, 20), "code 5");
}

TEST_F(ImageQuery, CountsTheEntriesOfASection) {
    unsigned count = 99;
    EXPECT_EQ(CodeAfter([&] { count = gcGetEntryCount(Section(2)); }), 0U);
    EXPECT_EQ(count, 4U);
    EXPECT_EQ(CodeAfter([&] { count = gcGetEntryCount(Section(4)); }), 0U);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(CodeAfter([&] { count = gcGetEntryCount(nullptr); }), 1U);
    EXPECT_EQ(count, 0xFFFFFFFFU);
}

TEST_F(ImageQuery, GivesEntriesByPositionWithTheirNames) {
    unsigned name = 99;
    tagGCENTRY* entry = nullptr;
    EXPECT_EQ(CodeAfter([&] { entry = gcGetEntryByIndex(Section(0), 2, &name); }), 0U);
    EXPECT_EQ(entry, &Section(0)->vEntries[2]);
    EXPECT_EQ(name, 0x03000000U);
    name = 99;
    EXPECT_EQ(CodeAfter([&] { entry = gcGetEntryByIndex(Section(0), 3, &name); }), 4U);
    EXPECT_EQ(entry, nullptr);
    EXPECT_EQ(CodeAfter([&] { entry = gcGetEntryByIndex(Section(4), 0, &name); }), 4U);
    EXPECT_EQ(entry, nullptr);
    EXPECT_EQ(CodeAfter([&] { entry = gcGetEntryByIndex(nullptr, 0, &name); }), 1U);
    EXPECT_EQ(entry, nullptr);
    EXPECT_EQ(name, 99U) << "untouched on failure";
}

TEST_F(ImageQuery, GivesEntriesByTheNameThatTheyResolveTo) {
    unsigned name = 99;
    tagGCENTRY* entry = nullptr;
    EXPECT_EQ(CodeAfter([&] { entry = gcGetEntryByName(Section(1), "p1", &name); }), 0U);
    EXPECT_EQ(entry, &Section(1)->vEntries[1]);
    EXPECT_EQ(name, 0x03000001U);
    name = 99;
    for (const char* missing : {"p2", "P1", "", "s0", "NAME"}) {
        SCOPED_TRACE(missing);
        EXPECT_EQ(CodeAfter([&] { entry = gcGetEntryByName(Section(0), missing, &name); }), 7U);
        EXPECT_EQ(entry, nullptr);
    }
    EXPECT_EQ(CodeAfter([&] { entry = gcGetEntryByName(Section(4), "p1", &name); }), 2U);
    EXPECT_EQ(entry, nullptr);
    EXPECT_EQ(CodeAfter([&] { entry = gcGetEntryByName(nullptr, "p1", &name); }), 1U);
    EXPECT_EQ(entry, nullptr);
    EXPECT_EQ(name, 99U) << "untouched on failure";
    EXPECT_EQ(gcGetEntryByName(Section(7), "g0", &name), &Section(7)->vEntries[0]);
    EXPECT_EQ(gcGetEntryByName(Section(8), "r0", &name), &Section(8)->vEntries[0]);
}

TEST_F(ImageQuery, GivesEntriesByTheirNameIdentifier) {
    tagGCENTRY* entry = nullptr;
    EXPECT_EQ(CodeAfter([&] { entry = gcGetEntryByType(Section(2), kIDWord); }), 0U);
    EXPECT_EQ(entry, &Section(2)->vEntries[1]) << "the first of two";
    EXPECT_EQ(CodeAfter([&] { entry = gcGetEntryByType(Section(2), 0x02000016); }), 2U);
    EXPECT_EQ(entry, nullptr);
    EXPECT_EQ(CodeAfter([&] { entry = gcGetEntryByType(Section(4), kIDWord); }), 2U);
    EXPECT_EQ(CodeAfter([&] { entry = gcGetEntryByType(nullptr, kIDWord); }), 1U);
    EXPECT_EQ(entry, nullptr);
}

TEST_F(ImageQuery, CountsTheWordsOfAnEntry) {
    unsigned count = 99;
    EXPECT_EQ(CodeAfter([&] { count = gcGetValueCount(&Section(3)->vEntries[0]); }), 0U);
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(CodeAfter([&] { count = gcGetValueCount(&Section(2)->vEntries[0]); }), 0U);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(CodeAfter([&] { count = gcGetValueCount(nullptr); }), 2U);
    EXPECT_EQ(count, 0xFFFFFFFFU);
}

TEST_F(ImageQuery, ResolvesTheWordsOfAnEntryByPosition) {
    tagGCENTRY entry{kNameWord, {0x12000002, 0x11000001, 0x1d000003, 0xFFFFFFFF, 0x12000009, 0, 0x11000002}};
    tagGCVALUE value = {};
    EXPECT_EQ(CodeAfter([&] { value = gcGetValueByIndex(&entry, 0); }), 0U);
    EXPECT_EQ(value.dwKind, 2U);
    EXPECT_EQ(value.dwID, 0x12000002U);
    EXPECT_STREQ(value.pszName, "s2");
    EXPECT_EQ(CodeAfter([&] { value = gcGetValueByIndex(&entry, 1); }), 0U);
    EXPECT_EQ(value.dwKind, 1U);
    EXPECT_EQ(value.qwNumber, 20U);
    EXPECT_EQ(CodeAfter([&] { value = gcGetValueByIndex(&entry, 2); }), 0U);
    EXPECT_EQ(value.qwNumber, 3U);
    for (unsigned i = 3; i < 7; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(CodeAfter([&] { value = gcGetValueByIndex(&entry, i); }), 10U);
        EXPECT_EQ(value.dwKind, 0U);
        EXPECT_EQ(value.dwID, entry.vdwValues[i]);
        EXPECT_EQ(value.qwNumber, 0U);
    }
}

TEST_F(ImageQuery, GivesNoWordWithoutOneAtThePosition) {
    const struct {
        tagGCENTRY* entry;
        unsigned index;
        unsigned code;
    } rows[] = {{nullptr, 0, 2},
                {&Section(2)->vEntries[0], 0, 3},
                {&Section(3)->vEntries[0], 2, 4},
                {&Section(3)->vEntries[0], 0xFFFFFFFF, 4}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.code);
        tagGCVALUE value = {};
        EXPECT_EQ(CodeAfter([&] { value = gcGetValueByIndex(row.entry, row.index); }), row.code);
        EXPECT_EQ(value.dwKind, 0U);
        EXPECT_EQ(value.dwID, 0xFFFFFFFFU);
        EXPECT_EQ(value.qwNumber, 0U);
    }
}

TEST_F(ImageQuery, CopiesTheBlockOfATableByOrdinalOrIdentifier) {
    const auto data = TableData(600);
    for (const unsigned table : {0U, 1U, 0x1c000000U, 0x1c000001U, 0x01000001U, 0xFF000000U}) {
        SCOPED_TRACE(table);
        std::vector<unsigned char> block(258, 0xee);
        unsigned result = 99;
        EXPECT_EQ(CodeAfter([&] { result = gcGetTableData(table, block.data() + 1); }), 0U);
        EXPECT_EQ(result, 1U);
        std::vector<unsigned char> expected(data.begin() + (table & 1) * 256, data.begin() + (table & 1) * 256 + 256);
        expected.insert(expected.begin(), 0xee);
        expected.push_back(0xee);
        EXPECT_EQ(block, expected);
    }
}

TEST_F(ImageQuery, RefusesATableBeyondTheData) {
    // The third block is not whole; the last ones would wrap if their ends were computed in 32 bits.
    for (const unsigned table : {2U, 3U, 0x1c000002U, 0x00FFFFFFU, 0x1cFFFFFFU, 0xFFFFFFFFU}) {
        SCOPED_TRACE(table);
        std::vector<unsigned char> block(256, 0xee);
        unsigned result = 99;
        EXPECT_EQ(CodeAfter([&] { result = gcGetTableData(table, block.data()); }), 4U);
        EXPECT_EQ(result, 0U);
        EXPECT_EQ(block, std::vector<unsigned char>(256, 0xee));
    }
}

TEST_F(ImageQuery, GivesTheOrdinalOfAGroup) {
    const struct {
        const char* name;
        unsigned index;
        unsigned code;
    } rows[] = {{"A", 1, 0},          {"B", 2, 0},         {"0", 0, 0},
                {"C", 0xFFFFFFFF, 1}, {"", 0xFFFFFFFF, 1}, {"00", 0xFFFFFFFF, 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        unsigned index = 99;
        EXPECT_EQ(CodeAfter([&] { index = gcGetGroupIndex(row.name); }), row.code);
        EXPECT_EQ(index, row.index);
    }
}

TEST_F(ImageQuery, GivesTheOrdinalOfAGroupsFirstNameWhicheverNameItWasFoundBy) {
    // The last group's name is a string that reads "0": a group that is there comes before the root that is not.
    Write("names.meta", Image({{0x01000004, {{kNameWord, {0x18000002}}, {kNameWord, {0x18000001}}}},
                               {0x01000004, {{kNameWord, {0x12000001}}}}},
                              {Record(0x12000000, Names({"s", "0"})), Record(0x18000000, Names({"-", "A", "B"}))}));
    ASSERT_EQ(gcInit("names.meta", nullptr), 1U);
    for (const auto& [name, index] : {std::pair("A", 2U), std::pair("B", 2U), std::pair("0", 1U)}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(CodeAfter([&, group = name, ordinal = index] { EXPECT_EQ(gcGetGroupIndex(group), ordinal); }), 0U);
    }
}

TEST_F(ImageQuery, FollowsWhatAHostChangesInTheListAndTheTables) {
    EXPECT_EQ(ByName(kDevice, "new"), "code 8");
    g_GCHead.push_back(new tagGCSECT{kDevice, {tagGCENTRY{kNameWord, {0x12000004}}}});
    EXPECT_EQ(ByName(kDevice, "new"), "code 7");
    g_tblString["new"] = 0x12000004;
    EXPECT_EQ(ByName(kDevice, "new"), "12");
    EXPECT_EQ(gcGetSectCount(kDevice), 2U);
}

TEST_F(ImageQuery, AfterTheTearDownFindsNoSectionsAndStillResolves) {
    gcSetLastError(77);
    EXPECT_EQ(gcUnInit(), 1U);
    EXPECT_EQ(gcGetLastError(), 77U) << "the slot is left alone";
    EXPECT_EQ(gcGetSectCount(kSensor), 0U);
    EXPECT_EQ(ByIndex(kSensor, 0), "code 1");
    EXPECT_EQ(ByName(kSensor, "s0"), "code 1");
    EXPECT_EQ(ByID(kSensor, 10), "code 1");
    EXPECT_STREQ(GetTblData(0x12000000).pszName, "s0");
    EXPECT_EQ(gcGetGroupIndex("0"), 0U);
    EXPECT_EQ(gcUnInit(), 1U);
}

}  // namespace zek::test
