#include <algorithm>
#include <cstring>

#include "compile/image_file.h"
#include "compile/small_image.h"
#include "support/resources.h"

namespace zek::test {

using ImageReading = ProcessTest;
using CutImage = ProcessTest;

namespace {

/// How many of these ends lie within the first `length` bytes.
std::size_t Within(std::size_t length, const std::vector<std::size_t>& ends) {
    return static_cast<std::size_t>(
        std::count_if(ends.begin(), ends.end(), [&](std::size_t end) { return end <= length; }));
}

/// What is loaded: sections, entries, then the counters' ordinals and the bytes of table data.
std::vector<std::size_t> Loaded() {
    std::size_t entries = 0;
    for (const tagGCSECT* section : g_GCHead) entries += section->vEntries.size();
    std::vector<std::size_t> sizes = {g_GCHead.size(), entries};
    for (unsigned counter : {g_idxProperty, g_idxGlobal, g_idxValue, g_idxRepeater, g_idxDword, g_idxString, g_idxGroup,
                             g_idxAction, g_idxTableName}) {
        sizes.push_back(counter & 0xFFFFFF);
    }
    sizes.push_back(g_tblTableData.size());
    return sizes;
}

/// The same for the first `length` bytes of SmallImage, from the offsets in its dump. A section counts from the end of
/// its identifier, an entry from its end, a name from its first byte, numbers and table data from the end of their
/// record.
std::vector<std::size_t> LoadedOfCut(std::size_t length) {
    return {Within(length, {0x108, 0x11c, 0x134, 0x160, 0x184, 0x19c}),
            Within(length, {0x118, 0x130, 0x144, 0x150, 0x15c, 0x170, 0x180, 0x198, 0x1ac, 0x1b8}),
            Within(length, {0x1c9}),
            Within(length, {0x1d9}),
            Within(length, {0x1e9, 0x1ee, 0x1ef, 0x1f4, 0x1fb, 0x201}),
            Within(length, {0x219}),
            length >= 0x234 ? 3U : 0U,
            Within(length, {0x249, 0x24c}),
            Within(length, {0x259, 0x25b}),
            Within(length, {0x269}),
            Within(length, {0x279}),
            length >= 0x388 ? 256U : 0U};
}

struct ReadResult {
    unsigned result;
    unsigned code;
    bool operator==(const ReadResult&) const = default;
};

void PrintTo(const ReadResult& reading, std::ostream* out) { *out << reading.result << " with code " << reading.code; }

ReadResult ReadBytes(const std::string& image, tagMETAFILEINFO* info = nullptr) {
    std::ofstream("image.meta", std::ios::binary) << image;
    gcSetLastError(77);
    const unsigned result = ReadMeta("image.meta", info);
    return {result, gcGetLastError()};
}

/// The same after the sections loaded before are freed, which reading does not do.
ReadResult ReadAfterFreeing(const std::string& image) {
    CompDestory();
    return ReadBytes(image);
}

constexpr ReadResult kRead = {1, 77};
constexpr ReadResult kNotAnImage = {0, 13};
constexpr ReadResult kOtherVersionOrCut = {0, 14};

const SectionWords kOneSection = {0x01000005, {{0x02000015, {0x12000000}}}};

}  // namespace

TEST_F(ImageReading, OfAMissingFileLeavesCode12) {
    tagMETAFILEINFO info = {5, 6};
    gcSetLastError(77);
    EXPECT_EQ(ReadMeta("missing.meta", &info), 0U);
    EXPECT_EQ(gcGetLastError(), 12U);
    EXPECT_EQ(info.dwVersion, 5U);
    EXPECT_EQ(info.dwTime, 6U);
    EXPECT_EQ(Messages(), "");
}

TEST_F(ImageReading, OfAnotherMagicLeavesCode13AndTouchesNothing) {
    ASSERT_EQ(ReadBytes(Image({kOneSection}, {})), kRead);
    const std::string before = LoadedSections();
    tagMETAFILEINFO info = {5, 6};
    std::string image = SmallImage();
    for (const char* magic : {"", "QUOR ZEK metaD.", "QUOR ZEK meta", "QUOR ZEK meta,", "quor ZEK meta."}) {
        SCOPED_TRACE(magic);
        image.replace(0, 16, std::string(magic) + std::string(16 - std::strlen(magic), '\0'));
        EXPECT_EQ(ReadBytes(image, &info), kNotAnImage);
    }
    EXPECT_EQ(info.dwVersion, 5U);
    EXPECT_EQ(LoadedSections(), before);
}

TEST_F(ImageReading, IgnoresTheByteBehindTheMagic) {
    std::string image = SmallImage();
    image[15] = 'x';
    EXPECT_EQ(ReadBytes(image), kRead);
}

TEST_F(ImageReading, OfAnotherVersionLeavesCode14AndTouchesNothing) {
    ASSERT_EQ(ReadBytes(Image({kOneSection}, {})), kRead);
    const std::string before = LoadedSections();
    tagMETAFILEINFO info = {5, 6};
    for (const unsigned version : {0x01000001U, 0U, 1U, 0x02000000U}) {
        SCOPED_TRACE(version);
        EXPECT_EQ(ReadBytes(SmallImage().replace(16, 4, Word(version)), &info), kOtherVersionOrCut);
    }
    EXPECT_EQ(info.dwVersion, 5U);
    EXPECT_EQ(info.dwTime, 6U);
    EXPECT_EQ(LoadedSections(), before);
}

TEST_F(ImageReading, ReportsVersionAndTimeStamp) {
    tagMETAFILEINFO info = {};
    EXPECT_EQ(ReadBytes(Image({}, {}), &info), kRead);
    EXPECT_EQ(info.dwVersion, 0x01000000U);
    EXPECT_EQ(info.dwTime, 0x5f5e1234U);
}

TEST_F(ImageReading, LeavesTablesWithoutARecordAsTheyWere) {
    InsertTbl(g_tblGlobal, g_idxGlobal, "kept", 1);
    InsertTbl(g_tblString, g_idxString, "replaced", 1);
    g_tblTableData.assign(256, 7);
    EXPECT_EQ(ReadBytes(Image({}, {Record(0x12000000, Names({"new"}))})), kRead);
    EXPECT_EQ(KeysInOrder(g_tblGlobal), Texts{"kept"});
    EXPECT_EQ(KeysInOrder(g_tblString), Texts{"new"});
    EXPECT_EQ(g_tblTableData.size(), 256U);
}

TEST_F(ImageReading, EmptiesTheListOfSectionsWithoutFreeingThem) {
    ASSERT_EQ(ReadBytes(Image({kOneSection}, {})), kRead);
    const tagGCSECT* before = g_GCHead.at(0);
    ASSERT_EQ(ReadBytes(Image({kOneSection, kOneSection}, {})), kRead);
    EXPECT_EQ(g_GCHead.size(), 2U);
    EXPECT_EQ(before->vEntries.at(0).vdwValues, WordList{0x12000000});
    delete before;
}

TEST_F(ImageReading, FollowsTheDirectoryWhateverItsOrderAndItsLength) {
    // Twelve records, the strings among them twice: the last one counts.
    const std::string empty = Record(0x06000000, "");
    EXPECT_EQ(ReadBytes(Image({}, {Record(0x1b000000, "d"), Record(0x12000000, Names({"first", "one"})), empty, empty,
                                   empty, empty, empty, empty, empty, empty, Record(0x12000000, Names({"last"})),
                                   Record(0x03000000, Names({"p"}))})),
              kRead);
    EXPECT_EQ(KeysInOrder(g_tblString), Texts{"last"});
    EXPECT_EQ(g_idxString, 0x12000001U);
    EXPECT_EQ(KeysInOrder(g_tblProperty), Texts{"p"});
    EXPECT_EQ(g_tblTableData.size(), 1U);
}

TEST_F(ImageReading, PassesOverRecordsOfUnknownTags) {
    EXPECT_EQ(ReadBytes(Image({}, {Record(0x1d000000, "body"), Joined({0x02000000, 0xFFFFFFFF}), Word(0),
                                   Record(0x12000000, Names({"s"}))})),
              kRead);
    EXPECT_EQ(KeysInOrder(g_tblString), Texts{"s"});
}

TEST_F(ImageReading, TakesARecordWhereverTheDirectoryPoints) {
    // Into the header, and twice into the same record.
    std::string image = ImageWithDirectory({24, 0x104, 0x104}, {}, Record(0x11000000, Joined({5})));
    image.replace(24, 10, Record(0x12000000, Names({"h"})));
    EXPECT_EQ(ReadBytes(image), kRead);
    EXPECT_EQ(KeysInOrder(g_tblString), Texts{"h"});
    EXPECT_EQ(KeysInOrder(g_tblDword), WordList{5});
    EXPECT_EQ(g_idxDword, 0x11000001U);
}

TEST_F(ImageReading, OfADirectoryWithoutAnEndGoesOnIntoTheBody) {
    const std::string record = Record(0x12000000, Names({"s"}));
    const auto withoutEnd = [](std::string image) {
        for (std::size_t at = 132; at < 256; at += 4) image.replace(at, 4, Word(16));
        return image;
    };
    // The count of no sections ends it; a count of 1 is an offset, and the section's identifier one beyond the file.
    EXPECT_EQ(ReadBytes(withoutEnd(ImageWithDirectory({0x104}, {}, record))), kRead);
    EXPECT_EQ(KeysInOrder(g_tblString), Texts{"s"});
    ForgetEverything();
    EXPECT_EQ(ReadBytes(withoutEnd(ImageWithDirectory({0x10c}, {{0x01000005, {}}}, record))), kOtherVersionOrCut);
    EXPECT_EQ(KeysInOrder(g_tblString), Texts{"s"}) << "what it named until then stays";
    EXPECT_EQ(LoadedSections(), "01000005:\n");
}

TEST_F(ImageReading, OfAnOffsetThatLeavesNoRoomForATagFails) {
    for (const unsigned offset : {0x10dU, 0x10eU, 0x10fU, 0x110U, 0x111U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(offset);
        ForgetEverything();
        EXPECT_EQ(ReadBytes(ImageWithDirectory({0x104, offset, 0x104}, {}, Record(0x11000000, Joined({9})))),
                  kOtherVersionOrCut);
        EXPECT_EQ(KeysInOrder(g_tblDword), WordList{9}) << "what was read until then stays";
    }
}

TEST_F(ImageReading, OfALengthBeyondTheFileFailsForNumbersAndTableDataWithoutTakingMemoryForIt) {
    const ScarceMemory scarce(64 << 20);
    for (const unsigned length : {5U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        SCOPED_TRACE(length);
        EXPECT_EQ(ReadBytes(Image({}, {Joined({0x11000000, length}) + "1234"})), kOtherVersionOrCut);
        EXPECT_EQ(ReadBytes(Image({}, {Joined({0x1b000000, length}) + "1234"})), kOtherVersionOrCut);
        EXPECT_EQ(ReadBytes(Image({}, {Joined({0x12000000, length}) + "1234"})), kRead);
        EXPECT_EQ(KeysInOrder(g_tblString), Texts{"1234"});
    }
}

TEST_F(ImageReading, OfTableDataThatTheBytesCutKeepsThatOfAnEarlierRecord) {
    for (const std::string& cut : {Joined({0x1b000000, 5}) + "1234", Word(0x1b000000) + "12"}) {
        ForgetEverything();
        EXPECT_EQ(ReadBytes(Image({}, {Record(0x1b000000, "whole"), cut})), kOtherVersionOrCut);
        EXPECT_EQ(std::string(g_tblTableData.begin(), g_tblTableData.end()), "whole");
    }
    // A map is emptied before the rest of its record is read.
    EXPECT_EQ(ReadBytes(Image({}, {Record(0x11000000, Joined({9})), Joined({0x11000000, 5}) + "1234"})),
              kOtherVersionOrCut);
    EXPECT_EQ(g_tblDword.size(), 0U);
}

TEST_F(ImageReading, OfACountBeyondTheFileFailsWithoutTakingMemoryForIt) {
    const std::string image = Image({kOneSection, kOneSection}, {});
    const ScarceMemory scarce(64 << 20);
    for (const unsigned count : {1000U, 0x40000001U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(count);
        EXPECT_EQ(ReadAfterFreeing(std::string(image).replace(0x100, 4, Word(count))), kOtherVersionOrCut);
        EXPECT_EQ(LoadedSections(), "01000005: 02000015(12000000)\n01000005: 02000015(12000000)\n");
        EXPECT_EQ(ReadAfterFreeing(std::string(image).replace(0x108, 4, Word(count))), kOtherVersionOrCut);
        // What follows is read as more entries: name 01000005 with the one word 02000015, then a cut one.
        EXPECT_EQ(LoadedSections(), "01000005: 02000015(12000000) 01000005(02000015)\n");
        EXPECT_EQ(ReadAfterFreeing(std::string(image).replace(0x110, 4, Word(count))), kOtherVersionOrCut);
        EXPECT_EQ(LoadedSections(), "01000005:\n");
    }
}

TEST_F(ImageReading, OfFewerSectionsThanTheFileHoldsTakesThoseThatAreCounted) {
    EXPECT_EQ(ReadBytes(Image({kOneSection, kOneSection}, {}).replace(0x100, 4, Word(1))), kRead);
    EXPECT_EQ(g_GCHead.size(), 1U);
}

TEST_F(ImageReading, TakesTheZerosBehindATableWithUnnumberedNamesForMoreNames) {
    InsertTbl(g_tblTableName, g_idxTableName, "T", 1);
    g_tblTableName["lost"];
    InsertTbl(g_tblAction, g_idxAction, "a", 1);
    ASSERT_EQ(WriteMeta("surplus.meta"), 1U);
    ForgetEverything();
    ASSERT_EQ(ReadMeta("surplus.meta", nullptr), 1U);
    EXPECT_EQ(g_tblTableName, (std::map<std::string, unsigned>{{"T", 0x1c000000}, {"", 0x1c000001}}));
    EXPECT_EQ(g_idxTableName, 0x1c000006U);
    EXPECT_EQ(KeysInOrder(g_tblAction), Texts{"a"}) << "the records around it are where the directory says";
}

TEST_F(CutImage, GivesWhatStandsBeforeTheCutAndFails) {
    const std::string image = SmallImage();
    for (std::size_t length = 0; length <= image.size(); ++length) {
        SCOPED_TRACE(length);
        ForgetEverything();
        tagMETAFILEINFO info = {5, 6};
        Write("cut.meta", image.substr(0, length));
        const bool whole = length == image.size();
        EXPECT_EQ(gcInit("cut.meta", &info), whole ? 1U : 0U);
        EXPECT_EQ(gcGetLastError(), whole ? 0U : 13U);
        EXPECT_EQ(info.dwVersion, length < 24 ? 5U : 0x01000000U);
        EXPECT_EQ(info.dwTime, length < 24 ? 6U : 0U);
        EXPECT_EQ(Loaded(), LoadedOfCut(length));
    }
}

TEST_F(CutImage, LeavesCode13BeforeTheEndOfTheMagicAndCode14BehindIt) {
    const std::string image = SmallImage();
    for (std::size_t length = 0; length < image.size(); ++length) {
        SCOPED_TRACE(length);
        // At 14 bytes the magic stands there without its NUL.
        EXPECT_EQ(ReadAfterFreeing(image.substr(0, length)), length < 14 ? kNotAnImage : kOtherVersionOrCut);
    }
}

TEST_F(CutImage, InsideItsLastNameTableIsSound) {
    const std::string image = Image({kOneSection}, {Record(0x12000000, Names({"ab", "c"}))});
    const std::size_t body = image.size() - 5;
    const std::vector<Texts> expected = {{}, {"a"}, {"ab"}, {"ab"}, {"ab", "c"}, {"ab", "c"}};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(ReadAfterFreeing(image.substr(0, body + i)), kRead);
        EXPECT_EQ(KeysInOrder(g_tblString), expected[i]);
        EXPECT_EQ(g_idxString, 0x12000000 + expected[i].size());
    }
    EXPECT_EQ(ReadAfterFreeing(image.substr(0, body - 1)), kOtherVersionOrCut);
}

}  // namespace zek::test
