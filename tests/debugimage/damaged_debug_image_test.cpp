#include "compile/compile.h"
#include "debugimage/model_text.h"
#include "debugimage/small_debug_image.h"
#include "support/resources.h"

namespace zek::test {

using CutDebugImage = ProcessTest;
using DamagedDebugImage = ProcessTest;

namespace {

/// Every section as `last digits of its type: entries/entries with data`.
std::string ShapeOfModel() {
    std::string text;
    char part[32];
    for (const zek::SectionList* list : CZEKSection::m_svpHSection) {
        for (const CZEKSection* section : *list) {
            std::size_t data = 0;
            for (const CZEKEntry* entry : section->m_vpEntry) data += entry->m_ZekEntryData.GetData() != nullptr;
            std::snprintf(part, sizeof part, "%s%x:%zu/%zu", text.empty() ? "" : " ", section->m_dwType & 0xff,
                          section->m_vpEntry.size(), data);
            text += part;
        }
    }
    return text;
}

/// What a file cut anywhere from `from` up to the next row gives.
struct Cut {
    std::size_t from;
    const char* outcome;
    const char* names;
    const char* model;
};

constexpr std::size_t kFirst = 0x09d;   ///< the block of [QUORZEK] in SmallDebugImage
constexpr std::size_t kSecond = 0x10a;  ///< of [DEFINE]
constexpr std::size_t kThird = 0x161;   ///< of [GLOBAL]

constexpr const char* kThrown = kOutOfRangeText;

// A section's missing bytes read as zeros. So it throws where the length of an entry, of its data or of a value is
// missing: a block of length 0 is shorter than what must stand in it.
constexpr Cut kCuts[] = {
    {0, "0", "", ""},                                   // no magic
    {20, "1", "", ""},                                  // no names, no groups
    {0x84, "1", "=0", ""},                              // the one record is cut
    {0x91, "1", "CONST=1", ""},                         // no groups, then a group without sections
    {0x99, kThrown, "CONST=1", ""},                     // a section without its length, then a block of nothing
    {kFirst + 1, "1", "CONST=1", ""},                   // no whole type id: passed over, with an empty list of files
    {kFirst + 8, "1", "CONST=1", "1:1/0"},              // [QUORZEK] declares VERSION
    {kFirst + 48, kThrown, "CONST=1", "1:1/0"},         // the entry's length
    {kFirst + 52, "1", "CONST=1", "1:1/0"},             // no whole type id of the entry: passed over
    {kFirst + 63, kThrown, "CONST=1", "1:1/0"},         // the length of its data
    {kFirst + 87, "1", "CONST=1", "1:1/0"},             // no whole type id of the data
    {kFirst + 94, "1", "CONST=1", "1:1/1"},             // a text; from 0x102 on no second group
    {0x106, kThrown, "CONST=1", "1:1/1"},               // the length of the second section
    {kSecond, "1", "CONST=1", "1:1/1"},                 // the list of files has been read: passed over in silence
    {kSecond + 8, "1", "CONST=1", "1:1/1 c:0/0"},       // [DEFINE] declares nothing
    {kSecond + 31, kThrown, "CONST=1", "1:1/1 c:0/0"},  // the entry's length
    {kSecond + 35, "1", "CONST=1", "1:1/1 c:0/0"},      // passed over
    {kSecond + 46, kThrown, "CONST=1", "1:1/1 c:0/0"},  // the length of its data: the entry is not added
    {kSecond + 68, "1", "CONST=1", "1:1/1 c:1/0"},      // an entry without data
    {kSecond + 75, "1", "CONST=1", "1:1/1 c:1/1"},      // a number; from 0x159 on no third group
    {0x15d, kThrown, "CONST=1", "1:1/1 c:1/1"},         // the length of the third section
    {kThird, "1", "CONST=1", "1:1/1 c:1/1"},            // passed over
    {kThird + 8, "1", "CONST=1", "1:1/1 c:1/1 a:0/0"},  // [GLOBAL]
    {kThird + 31, kThrown, "CONST=1", "1:1/1 c:1/1 a:0/0"},
    {kThird + 35, "1", "CONST=1", "1:1/1 c:1/1 a:0/0"},
    {kThird + 46, kThrown, "CONST=1", "1:1/1 c:1/1 a:0/0"},
    {kThird + 66, "1", "CONST=1", "1:1/1 c:1/1 a:1/0"},
    {kThird + 73, kThrown, "CONST=1", "1:1/1 c:1/1 a:0/0"},  // the length of the value
    {kThird + 74, "1", "CONST=1", "1:1/1 c:1/1 a:1/1"},      // a value, whole at the end
};

const Cut& RowOf(std::size_t length) {
    const Cut* row = kCuts;
    while (row + 1 != std::end(kCuts) && row[1].from <= length) ++row;
    return *row;
}

std::string MessageOf(std::size_t length) {
    if (length >= 20) return "";
    // At 15 bytes the magic stands there without its NUL; the version of a cut header is 0.
    return length < 15 ? "ERROR: File loaded.metad is invalid.\n"
                       : "ERROR: The version of file loaded.metad is not support.\n";
}

std::string QuorzekBlock(const std::string& afterCommon) {
    return Block(Object(0x20000001, 1, 1, 0, "QUORZEK") + List({"f"})) + afterCommon;
}

std::string OneSection(unsigned length, const std::string& present) {
    return DebugHead() + Word(0) + Word(1) + Word(1) + Word(length) + present;
}

/// A [PROPERTY] section whose name has `length` characters, none of them in the file, in a block with room for them.
std::string NameOfZeros(unsigned length) {
    return OneSection(0x01000000, Word(0x00800000) + Joined({0x20000002, 2, 1, 0, length}));
}

}  // namespace

TEST_F(CutDebugImage, GivesTheOutcomeOfItsRow) {
    const std::string image = SmallDebugImage().replace(20, 4, Word(0x11223344));
    for (std::size_t length = 0; length <= image.size(); ++length) {
        SCOPED_TRACE(length);
        const Cut& row = RowOf(length);
        InChild([&] {
            tagMETAFILEINFO info = {5, 6};
            EXPECT_EQ(Loaded(image.substr(0, length), &info), row.outcome);
            EXPECT_EQ(Messages(), MessageOf(length));
            EXPECT_EQ(NamesText(), row.names);
            EXPECT_EQ(ShapeOfModel(), row.model);
            EXPECT_EQ(info.dwVersion, length < 20 ? 5U : 0x01000000U);
            EXPECT_EQ(info.dwTime, length < 20 ? 6U : length < 24 ? 0U : 0x11223344U);
        });
        if (HasFailure()) return;
    }
}

TEST_F(CutDebugImage, FillsTheMissingPartOfATextWithZeros) {
    const std::string image = SmallDebugImage();
    EXPECT_EQ(Loaded(image.substr(0, kFirst + 99)), "1");
    CZEKSection* section = gdGetSectByIndex(1, 0);
    ASSERT_NE(section, nullptr);
    EXPECT_EQ(*static_cast<std::string*>(section->m_vpEntry.at(0)->m_ZekEntryData.GetData()), std::string("1\0\0", 3));
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, Texts{"main.zek"});
}

TEST_F(CutDebugImage, InsideTheListOfFilesFillsItWithZerosAndCountsAsRead) {
    EXPECT_EQ(Loaded(SmallDebugImage().substr(0, kFirst + 43)), "1");
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, Texts{std::string("main\0\0\0\0", 8)});
    EXPECT_EQ(Loaded(SmallDebugImage()), "1");
    EXPECT_EQ(CZEKObj::m_svstrIncFiles.size(), 1U);
}

TEST_F(CutDebugImage, BetweenTwoSectionsOfAGroupIsOutOfRange) {
    const std::string first = SectionRecord(Object(0x20000002, 2, 1, 0, "PROPERTY") + List({"f"}), {});
    const std::string second = SectionRecord(Object(0x20000002, 2, 2, 0, "PROPERTY"), {});
    const std::string image = DebugImage({}, {{first, second}});
    EXPECT_EQ(Loaded(image.substr(0, image.size() - 4 - second.size())), kOutOfRangeText);
    EXPECT_EQ(ModelText(), "PROPERTY@1 f:\n");
}

TEST_F(CutDebugImage, InsideASectionThatIsNotTheLastOfItsGroupIsOutOfRangeAtTheNext) {
    const std::string first = SectionRecord(Object(0x20000002, 2, 1, 0, "PROPERTY") + List({"f"}), {});
    const std::string image = DebugImage({}, {{first, first}});
    EXPECT_EQ(Loaded(image.substr(0, image.size() - 4 - first.size() - 4)), kOutOfRangeText);
    EXPECT_EQ(ModelText(), "PROPERTY@1 f:\n");
}

TEST_F(DamagedDebugImage, WithACountOfNamesBeyondTheFileInsertsOneEmptyName) {
    EXPECT_EQ(Loaded(DebugHead() + Word(0xFFFFFFFF) + Str("a") + Word(1)), "1");
    EXPECT_EQ(NamesText(), "=0 a=1");
    EXPECT_EQ(Loaded(DebugHead() + Word(2) + Word(0xFFFFFFFF) + "b"), "1");
    EXPECT_EQ(NamesText(), "=0 a=1");
    EXPECT_EQ(ModelText(), "");
}

TEST_F(DamagedDebugImage, KeepsAnEmptyNameThatIsAlreadyDefined) {
    AddPredDefineValue("", 7);
    EXPECT_EQ(Loaded(DebugHead() + Word(1)), "1");
    EXPECT_EQ(NamesText(), "=7");
}

TEST_F(DamagedDebugImage, WithACountOfGroupsBeyondTheFileReadsThoseThatAreThere) {
    std::string image = DebugImage({}, {{SectionRecord(Object(0x20000002, 2, 1, 0, "PROPERTY") + List({"f"}), {})}});
    image.replace(0x84, 4, Word(0xFFFFFFFF));
    EXPECT_EQ(Loaded(image), "1");
    EXPECT_EQ(ModelText(), "PROPERTY@1 f:\n");
}

TEST_F(DamagedDebugImage, WithACountOfSectionsBeyondTheFileIsOutOfRangeBehindTheLast) {
    std::string image = DebugImage({}, {{SectionRecord(Object(0x20000002, 2, 1, 0, "PROPERTY") + List({"f"}), {})}});
    image.replace(0x88, 4, Word(0xFFFFFFFF));
    EXPECT_EQ(Loaded(image), kOutOfRangeText);
    EXPECT_EQ(ModelText(), "PROPERTY@1 f:\n");
}

TEST_F(DamagedDebugImage, WithASectionShorterThanEightBytesIsOutOfRange) {
    for (std::size_t length = 0; length < 8; ++length) {
        SCOPED_TRACE(length);
        EXPECT_EQ(Loaded(DebugImage({}, {{std::string(length, '\1')}})), kOutOfRangeText);
    }
    EXPECT_EQ(ModelText(), "");
}

TEST_F(DamagedDebugImage, WithASectionLengthBeyondTheFileReadsZerosBehindItsEndWithoutTakingMemoryForThem) {
    const ScarceMemory scarce(64 << 20);
    for (const unsigned length : {100U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        SCOPED_TRACE(length);
        EXPECT_EQ(Loaded(OneSection(length, QuorzekBlock(""))), "1");
        EXPECT_EQ(ShapeOfModel(), "1:1/0");
        gdUnInit();
    }
}

TEST_F(DamagedDebugImage, WithACountOfEntriesBeyondItsSectionIsOutOfRange) {
    EXPECT_EQ(Loaded(OneSection(0xFFFFFFFF, QuorzekBlock(Word(0xFFFFFFFF)))), kOutOfRangeText);
    EXPECT_EQ(ShapeOfModel(), "1:1/0");
}

TEST_F(DamagedDebugImage, TakesATextOfUpToOneMebibyteOfMissingZeros) {
    EXPECT_EQ(Loaded(NameOfZeros(1 << 20)), "1");
    ASSERT_EQ(gdGetSectByIndex(2, 0)->m_strName, std::string(1 << 20, '\0'));
    EXPECT_EQ(Loaded(NameOfZeros((1 << 20) + 1)), kOutOfRangeText);
    EXPECT_EQ(gdGetSectByIndex(2, 1)->m_strName, "") << "the broken section stays listed";
}

TEST_F(DamagedDebugImage, WithAnEndlessListOfFilesIsOutOfRange) {
    EXPECT_EQ(Loaded(OneSection(0xFFFFFFFF, Word(0xFFFFFFF0) + Joined({0x20000002, 2, 1, 0, 0, 0xFFFFFFFF}))),
              kOutOfRangeText);
}

TEST_F(DamagedDebugImage, HidesAListThatBeginsWithASectionWithoutAType) {
    // The common part overruns the section, so not even the type id is taken.
    const std::string broken = Word(100) + Word(0x20000002);
    const std::string good = SectionRecord(Object(0x20000002, 2, 1, 0, "PROPERTY") + List({"f"}), {});
    EXPECT_EQ(Loaded(DebugImage({}, {{broken}})), kOutOfRangeText);
    EXPECT_EQ(ShapeOfModel(), "0:0/0");
    EXPECT_EQ(Loaded(DebugImage({}, {{good}})), "1");
    EXPECT_EQ(ShapeOfModel(), "0:0/0 2:0/0");
    EXPECT_EQ(gdGetSectByIndex(2, 1), nullptr);
    EXPECT_EQ(gdGetLastError(), 1U);
    Compile();
    EXPECT_TRUE(g_GCHead.empty()) << "what is not compiled ends its list";
    gdUnInit();
    EXPECT_EQ(ShapeOfModel(), "");
    EXPECT_EQ(gdInit("loaded.metad", nullptr), 1U);
    EXPECT_EQ(ModelText(), "PROPERTY@1 f:\n");
    EXPECT_NE(gdGetSectByIndex(2, 0), nullptr);
}

TEST_F(DamagedDebugImage, IsSilentAboutASectionThatIsNotRestoredOnlyOnceTheListIsRead) {
    const std::string include = Word(100) + Word(0x2000000e);
    const std::string good = SectionRecord(Object(0x20000002, 2, 1, 0, "PROPERTY") + List({"f"}), {});
    EXPECT_EQ(Loaded(DebugImage({}, {{include}, {good}})), kOutOfRangeText);
    EXPECT_EQ(ModelText(), "");
    EXPECT_EQ(Loaded(DebugImage({}, {{good}, {include}})), "1");
    EXPECT_EQ(ModelText(), "PROPERTY@1 f:\n");
}

TEST_F(DamagedDebugImage, StaysLoadedUntilTheTearDown) {
    std::string image = SmallDebugImage();
    image.replace(kSecond + 67, 4, Word(7));  // the data of CONST is a byte short
    EXPECT_EQ(Loaded(image), kOutOfRangeText);
    EXPECT_EQ(NamesText(), "CONST=1");
    EXPECT_EQ(ModelText(), "QUORZEK@1 main.zek: VERSION=1.0\nDEFINE@3 main.zek:\n");
    EXPECT_EQ(Loaded(SmallDebugImage()), "1");
    EXPECT_EQ(ShapeOfModel(), "1:1/1 1:1/1 c:0/0 c:1/1 a:1/1");
    gdUnInit();
    EXPECT_EQ(ShapeOfModel(), "");
    EXPECT_EQ(NamesText(), "");
}

}  // namespace zek::test
