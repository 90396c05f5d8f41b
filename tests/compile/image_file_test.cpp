#include "compile/image_file.h"

#include <ctime>

#include "compile/init_tables.h"
#include "compile/small_image.h"

namespace zek::test {

using ImageFile = ProcessTest;

namespace {

/// The directory of an image.
WordList Directory(const std::string& image) {
    WordList words;
    for (std::size_t at = 128; at < 256; at += 4) {
        unsigned word = 0;
        for (std::size_t i = 4; i > 0; --i) word = word << 8 | static_cast<unsigned char>(image[at + i - 1]);
        if (word == 0) break;
        words.push_back(word);
    }
    return words;
}

}  // namespace

TEST_F(ImageFile, HasThePublishedVersion) { EXPECT_EQ(ZEK_VERSION, 0x01000000U); }

TEST_F(ImageFile, HoldsTheSmallSourceByteForByte) {
    ASSERT_EQ(Check(kSmallSource), 1U);
    const auto before = static_cast<unsigned>(std::time(nullptr));
    EXPECT_EQ(gccOutput("small.meta"), 1U);
    const auto after = static_cast<unsigned>(std::time(nullptr));
    const std::string image = Read("small.meta");
    EXPECT_EQ(Dump(WithoutTime(image)), Dump(SmallImage()));
    unsigned time = 0;
    for (std::size_t i = 4; i > 0; --i) time = time << 8 | static_cast<unsigned char>(image[19 + i]);
    EXPECT_GE(time, before);
    EXPECT_LE(time, after);
    EXPECT_TRUE(g_GCHead.empty()) << "the compiled records are freed";
    EXPECT_EQ(Errors(), "");
}

TEST_F(ImageFile, OfAnEmptyModelHoldsNoSectionAndTenRecords) {
    EXPECT_EQ(gccOutput("empty.meta"), 1U);
    const std::string values = Names({"IPMI", "", "INIT", "DEINIT", "ENTRY", "EXIT"});
    EXPECT_EQ(Dump(WithoutTime(Read("empty.meta"))),
              Dump(WithoutTime(Image({}, {Record(0x03000000, ""), Record(0x04000000, ""), Record(0x05000000, values),
                                          Record(0x06000000, ""), Record(0x11000000, ""), Record(0x12000000, ""),
                                          Record(0x18000000, Names({"0"})), Record(0x1a000000, ""),
                                          Record(0x1c000000, ""), Record(0x1b000000, "")}))));
    EXPECT_EQ(Directory(Read("empty.meta")),
              (WordList{0x110, 0x120, 0x130, 0x160, 0x170, 0x180, 0x190, 0x1a0, 0x1b0, 0x1c0}));
}

TEST_F(ImageFile, LeavesSixteenZerosBehindAnEndOnABoundary) {
    // 4 + 28 bytes of sections end at 0x120; the first record of 16 bytes ends at 0x140.
    g_GCHead.push_back(new tagGCSECT{0x01000005, {tagGCENTRY{0x02000015, {1, 2, 3}}}});
    InsertTbl(g_tblProperty, g_idxProperty, "1234567", 1);
    ASSERT_EQ(WriteMeta("aligned.meta"), 1U);
    const std::string image = Read("aligned.meta");
    EXPECT_EQ(Directory(image), (WordList{0x130, 0x150, 0x160, 0x170, 0x180, 0x190, 0x1a0, 0x1b0, 0x1c0, 0x1d0}));
    EXPECT_EQ(Dump(image.substr(0x100)),
              Dump(Word(1) + SectionBytes({0x01000005, {{0x02000015, {1, 2, 3}}}}) + std::string(16, '\0') +
                   Record(0x03000000, Names({"1234567"})) + std::string(16, '\0') + Record(0x04000000, "") +
                   std::string(8, '\0') + Record(0x05000000, "") + std::string(8, '\0') + Record(0x06000000, "") +
                   std::string(8, '\0') + Record(0x11000000, "") + std::string(8, '\0') + Record(0x12000000, "") +
                   std::string(8, '\0') + Record(0x18000000, "") + std::string(8, '\0') + Record(0x1a000000, "") +
                   std::string(8, '\0') + Record(0x1c000000, "") + std::string(8, '\0') + Record(0x1b000000, "")));
    CompDestory();
}

TEST_F(ImageFile, PutsTheNextRecordBehindTheWrittenEndNotBehindTheLength) {
    InsertTbl(g_tblProperty, g_idxProperty, "a", 1);
    g_tblProperty["a name that is not numbered"];
    ASSERT_EQ(WriteMeta("surplus.meta"), 1U);
    const std::string image = Read("surplus.meta");
    EXPECT_EQ(Dump(image.substr(0x110, 0x18)),
              Dump(Joined({0x03000000, 30}) + Names({"a"}) + std::string(6, '\0') + Joined({0x04000000, 0})));
    EXPECT_EQ(Directory(image)[1], 0x120U);
}

TEST_F(ImageFile, ReplacesWhatTheFileHeld) {
    Write("small.meta", std::string(5000, 'x'));
    ASSERT_EQ(Check(kSmallSource), 1U);
    EXPECT_EQ(gccOutput("small.meta"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("small.meta"))), Dump(SmallImage()));
}

TEST_F(ImageFile, ThatCannotBeCreatedFailsSilentlyAndStillFreesTheRecords) {
    ASSERT_EQ(Check(kSmallSource), 1U);
    Errors();
    gcSetLastError(77);
    EXPECT_EQ(gccOutput("no-such-folder/small.meta"), 0U);
    EXPECT_EQ(gcGetLastError(), 77U);
    EXPECT_EQ(Messages(), "");
    EXPECT_TRUE(g_GCHead.empty());
    EXPECT_EQ(gccOutput("small.meta"), 1U) << "the model is untouched";
    EXPECT_EQ(Dump(WithoutTime(Read("small.meta"))), Dump(SmallImage()));
}

TEST_F(ImageFile, ReadsBackAsTheSectionsAndTablesThatWereWritten) {
    ASSERT_EQ(Check(kSmallSource), 1U);
    ASSERT_EQ(gccOutput("small.meta"), 1U);
    InitTblD();
    Compile();
    const std::string sections = LoadedSections();
    const auto names = g_tblValue;
    const auto numbers = g_tblDword;
    const auto strings = g_tblString;
    const auto data = g_tblTableData;
    ForgetEverything();
    ASSERT_EQ(ReadMeta("small.meta", nullptr), 1U);
    EXPECT_EQ(LoadedSections(), sections);
    EXPECT_EQ(g_tblValue, names);
    EXPECT_EQ(g_tblDword, numbers);
    EXPECT_EQ(g_tblString, strings);
    EXPECT_EQ(g_tblTableData, data);
    EXPECT_EQ(KeysInOrder(g_tblProperty), Texts{"Maker"});
    EXPECT_EQ(KeysInOrder(g_tblGlobal), Texts{"X"});
    EXPECT_EQ(KeysInOrder(g_tblRepeater), Texts{"Rep"});
    EXPECT_EQ(KeysInOrder(g_tblGroup), (Texts{"0", "A"}));
    EXPECT_EQ(KeysInOrder(g_tblAction), Texts{"Do"});
    EXPECT_EQ(KeysInOrder(g_tblTableName), Texts{"T"});
    EXPECT_EQ((WordList{g_idxProperty, g_idxGlobal, g_idxValue, g_idxRepeater, g_idxDword, g_idxString, g_idxGroup,
                        g_idxAction, g_idxTableName}),
              (WordList{0x03000001, 0x04000001, 0x05000006, 0x06000001, 0x11000003, 0x12000002, 0x18000002, 0x1a000001,
                        0x1c000001}));
}

TEST_F(ImageFile, WrittenAgainFromWhatWasReadIsTheSame) {
    Write("small.meta", SmallImage());
    ASSERT_EQ(ReadMeta("small.meta", nullptr), 1U);
    ASSERT_EQ(WriteMeta("again.meta"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("again.meta"))), Dump(SmallImage()));
}

}  // namespace zek::test
