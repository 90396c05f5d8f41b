#include "debugimage/debug_image.h"

#include <ctime>

#include "debugimage/model_text.h"
#include "debugimage/small_debug_image.h"

namespace zek::test {

using DebugImageFile = ProcessTest;
using DebugImageReading = ProcessTest;

namespace {

constexpr char kSmallModelText[] =
    "QUORZEK@1 main.zek: VERSION=1.0\n"
    "DEFINE@3 main.zek: CONST=0x1\n"
    "GLOBAL@5 main.zek: G_X=CONST,7\n";

/// A section of one kind without entries, as it stands in a file behind its first object.
std::string Empty(unsigned kind, const std::string& name) {
    return SectionRecord(Object(0x20000000 + kind, 2, 1, 0, name), {});
}

/// The same as the first object of a file.
std::string EmptyWithFiles(unsigned kind, const std::string& name, const Texts& files) {
    return SectionRecord(Object(0x20000000 + kind, 2, 1, 0, name) + List(files), {});
}

}  // namespace

TEST_F(DebugImageFile, HasThePublishedVersionAndOffset) {
    EXPECT_EQ(ZEKD_VERSION, 0x01000000U);
    EXPECT_EQ(ZEKD_DATA_OFFSET, 0x80U);
}

TEST_F(DebugImageFile, HoldsTheSmallModelByteForByte) {
    ASSERT_EQ(Check(kSmallModel), 1U);
    const auto before = static_cast<unsigned>(std::time(nullptr));
    EXPECT_EQ(gccOutputD("small.metad"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("small.metad"))), Dump(SmallDebugImage()));
    tagMETAFILEINFO info = {};
    EXPECT_EQ(gdInit("small.metad", &info), 1U);
    EXPECT_EQ(info.dwVersion, 0x01000000U);
    EXPECT_GE(info.dwTime, before);
    EXPECT_LE(info.dwTime, static_cast<unsigned>(std::time(nullptr)));
    EXPECT_EQ(Errors(), "");
}

TEST_F(DebugImageFile, OfAnEmptyModelIsTheHeaderAndTwoCounts) {
    EXPECT_EQ(WriteMetaD("empty.metad"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("empty.metad"))), Dump(DebugHead() + Word(0) + Word(0)));
    EXPECT_EQ(ReadMetaD("empty.metad", nullptr), 1U);
    EXPECT_EQ(ModelText(), "");
}

TEST_F(DebugImageFile, HoldsTheNamesInTheirOrderWhateverTheOrderOfDefinition) {
    AddPredDefineValue("b", 2);
    AddPredDefineValue("B", 0xFFFFFFFF);
    AddPredDefineValue("", 0);
    ASSERT_EQ(WriteMetaD("names.metad"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("names.metad"))), Dump(DebugImage({{"", 0}, {"B", 0xFFFFFFFF}, {"b", 2}}, {})));
}

TEST_F(DebugImageFile, HoldsAGroupForEveryKindThatWasEverMade) {
    Source("[PROPERTY]\n[GLOBAL]\n[PROPERTY]\n");
    ASSERT_EQ(WriteMetaD("first.metad"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("first.metad"))),
              Dump(DebugImage({}, {{SectionRecord(Object(0x20000002, 2, 1, 0, "PROPERTY") + List({"main.zek"}), {}),
                                    SectionRecord(Object(0x20000002, 2, 3, 0, "PROPERTY"), {})},
                                   {SectionRecord(Object(0x2000000a, 2, 2, 0, "GLOBAL"), {})}})));
    gccCompEnd();
    ASSERT_EQ(WriteMetaD("second.metad"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("second.metad"))), Dump(DebugImage({}, {{}, {}})));
}

TEST_F(DebugImageFile, CarriesTheListOfFilesOnlyOncePerProcess) {
    InChild([&] {
        Source("[PROPERTY]\n");
        ASSERT_EQ(gccOutputD("first.metad"), 1U);
        ASSERT_EQ(gccOutputD("second.metad"), 1U);
        EXPECT_EQ(Dump(WithoutTime(Read("second.metad"))), Dump(DebugImage({}, {{Empty(2, "PROPERTY")}})));
    });
    EXPECT_EQ(Outcome([] { return gdInit("second.metad", nullptr); }), kOutOfRangeText)
        << "a fresh process expects the list";
    EXPECT_EQ(gdInit("first.metad", nullptr), 1U);
    EXPECT_EQ(gdInit("second.metad", nullptr), 1U) << "the list has been read";
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, Texts{"main.zek"});
}

TEST_F(DebugImageFile, OfAnEmptyModelLeavesTheListToTheNextImage) {
    ASSERT_EQ(gccOutputD("empty.metad"), 1U);
    ASSERT_EQ(Check(kSmallModel), 1U);
    ASSERT_EQ(gccOutputD("small.metad"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("small.metad"))), Dump(SmallDebugImage()));
}

TEST_F(DebugImageFile, ThatCannotBeCreatedIsReported) {
    Source("[PROPERTY]\n");
    Messages();
    gcSetLastError(77);
    gdSetLastError(88);
    EXPECT_EQ(gccOutputD("no-such-folder/x.metad"), 0U);
    EXPECT_EQ(Messages(), "ERROR: Create debug file no-such-folder/x.metad failed.\n");
    EXPECT_EQ(gcGetLastError(), 77U);
    EXPECT_EQ(gdGetLastError(), 88U);
    ASSERT_EQ(gccOutputD("x.metad"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("x.metad"))), Dump(DebugImage({}, {{EmptyWithFiles(2, "PROPERTY", {"main.zek"})}})))
        << "the list of files has not been used up";
}

TEST_F(DebugImageFile, ReplacesWhatTheFileHeld) {
    Write("small.metad", std::string(5000, 'x'));
    ASSERT_EQ(Check(kSmallModel), 1U);
    ASSERT_EQ(gccOutputD("small.metad"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("small.metad"))), Dump(SmallDebugImage()));
}

TEST_F(DebugImageFile, LeavesTheModelAsItIs) {
    ASSERT_EQ(Check(kSmallModel), 1U);
    const std::string model = ModelText();
    EXPECT_EQ(model, kSmallModelText);
    ASSERT_EQ(gccOutputD("small.metad"), 1U);
    EXPECT_EQ(ModelText(), model);
    EXPECT_EQ(NamesText(), "CONST=1");
}

TEST_F(DebugImageReading, RestoresTheSmallModel) {
    EXPECT_EQ(Loaded(SmallDebugImage()), "1");
    EXPECT_EQ(ModelText(), kSmallModelText);
    EXPECT_EQ(NamesText(), "CONST=1");
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, Texts{"main.zek"});
    EXPECT_EQ(Messages(), "");
    for (const zek::SectionList* list : CZEKSection::m_svpHSection) {
        for (const CZEKSection* section : *list) {
            for (const CZEKEntry* entry : section->m_vpEntry) EXPECT_TRUE(entry->m_vstrSubStr.empty());
        }
    }
}

TEST_F(DebugImageReading, OfAMissingFileIsReported) {
    tagMETAFILEINFO info = {5, 6};
    EXPECT_EQ(gdInit("missing.metad", &info), 0U);
    EXPECT_EQ(Messages(), "ERROR: Open debug file missing.metad failed.\n");
    EXPECT_EQ(info.dwVersion, 5U);
    EXPECT_EQ(info.dwTime, 6U);
}

TEST_F(DebugImageReading, OfAnotherMagicIsReported) {
    tagMETAFILEINFO info = {5, 6};
    const std::string magics[] = {std::string("QUOR ZEK metaD.x"), std::string("QUOR ZEK metaD\0.", 16),
                                  std::string("QUOR ZEK meta.\0\0", 16), std::string(16, '\0'),
                                  std::string("quor ZEK metaD.\0", 16)};
    for (const std::string& magic : magics) {
        SCOPED_TRACE(magic);
        EXPECT_EQ(Loaded(SmallDebugImage().replace(0, 16, magic), &info), "0");
        EXPECT_EQ(Messages(), "ERROR: File loaded.metad is invalid.\n");
    }
    EXPECT_EQ(info.dwVersion, 5U);
    EXPECT_EQ(ModelText(), "");
    EXPECT_EQ(NamesText(), "");
}

TEST_F(DebugImageReading, OfAnotherVersionIsReported) {
    tagMETAFILEINFO info = {5, 6};
    for (const unsigned version : {0U, 1U, 0x01000001U, 0x02000000U}) {
        SCOPED_TRACE(version);
        EXPECT_EQ(Loaded(SmallDebugImage().replace(16, 4, Word(version)), &info), "0");
        EXPECT_EQ(Messages(), "ERROR: The version of file loaded.metad is not support.\n");
    }
    EXPECT_EQ(info.dwVersion, 5U);
    EXPECT_EQ(info.dwTime, 6U);
    EXPECT_EQ(ModelText(), "");
}

TEST_F(DebugImageReading, EndsBehindTheLastGroup) {
    const std::string more = Word(1) + Block(EmptyWithFiles(3, "SYSTEM", {"f"}));
    EXPECT_EQ(Loaded(DebugImage({}, {}) + more), "1");
    EXPECT_EQ(ModelText(), "");
    EXPECT_EQ(Loaded(DebugImage({}, {{EmptyWithFiles(2, "PROPERTY", {"f"})}}) + more), "1");
    EXPECT_EQ(ModelText(), "PROPERTY@1 f:\n");
}

TEST_F(DebugImageReading, KeepsTheNamesThatAreAlreadyDefined) {
    AddPredDefineValue("b", 7);
    EXPECT_EQ(Loaded(DebugImage({{"a", 1}, {"b", 2}, {"a", 3}, {"c", 4}}, {})), "1");
    EXPECT_EQ(NamesText(), "a=1 b=7 c=4");
}

TEST_F(DebugImageReading, TwiceAddsEverySectionAgain) {
    EXPECT_EQ(Loaded(SmallDebugImage()), "1");
    EXPECT_EQ(gdInit("loaded.metad", nullptr), 1U);
    EXPECT_EQ(ModelText(),
              "QUORZEK@1 main.zek: VERSION=1.0\nQUORZEK@1 main.zek: VERSION=1.0\n"
              "DEFINE@3 main.zek: CONST=0x1\nDEFINE@3 main.zek: CONST=0x1\n"
              "GLOBAL@5 main.zek: G_X=CONST,7\nGLOBAL@5 main.zek: G_X=CONST,7\n");
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, Texts{"main.zek"});
    gdUnInit();
    EXPECT_EQ(ModelText(), "");
    EXPECT_EQ(NamesText(), "");
}

TEST_F(DebugImageReading, AddsToAModelThatWasReadFromSource) {
    Source("[GLOBAL]\nG_Y=ONE,8\n[DEFINE]\nONE=1\nCONST=2\n", "live.zek");
    gccCheck();
    EXPECT_EQ(Loaded(SmallDebugImage()), "1");
    // The restored objects index the list as their process had it.
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, (Texts{"live.zek", "main.zek"}));
    EXPECT_EQ(ModelText(),
              "GLOBAL@1 live.zek: G_Y=ONE,8\nGLOBAL@5 live.zek: G_X=CONST,7\n"
              "DEFINE@3 live.zek: ONE=0x1 CONST=0x2\nDEFINE@3 live.zek: CONST=0x1\n"
              "QUORZEK@1 live.zek: VERSION=1.0\n");
    EXPECT_EQ(NamesText(), "CONST=2 ONE=1");
}

TEST_F(DebugImageReading, RestoresTheThirteenKindsAndPassesOverTheRest) {
    const Texts names = {"QUORZEK", "PROPERTY",  "SYSTEM", "GROUP",    "SENSOR", "DEVICE", "ACTION",
                         "TABLE",   "TAVRGROUP", "GLOBAL", "REPEATER", "DEFINE", "IFDEF",  "INCLUDE"};
    std::vector<Texts> groups = {{EmptyWithFiles(15, "FIRST", {"f"}), Empty(0, "NONE"), std::string(8, 'x')}};
    std::string expected;
    for (unsigned kind = 14; kind >= 1; --kind) {
        groups.push_back({Empty(kind, names[kind - 1])});
        if (kind < 14) expected += names[kind - 1] + "@1 f:\n";
    }
    EXPECT_EQ(Loaded(DebugImage({}, groups)), "1");
    EXPECT_EQ(ModelText(), expected);
    EXPECT_EQ(Messages(), "");
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, Texts{"f"});
}

TEST_F(DebugImageReading, GivesTheListOfFilesOfAnIncludeSectionThatComesFirst) {
    InChild([&] {
        Write("other.zek", "[PROPERTY]\na=1\n");
        Check("[INCLUDE]\nFILE=other.zek\n[PROPERTY]\nb=2\n");
        ASSERT_EQ(gccOutputD("include.metad"), 1U);
    });
    EXPECT_EQ(gdInit("include.metad", nullptr), 1U);
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, (Texts{"main.zek", "other.zek"}));
    EXPECT_EQ(ModelText(), "PROPERTY@1 other.zek: a=1\nPROPERTY@3 main.zek: b=2\n");
    gdSetLastError(88);
    EXPECT_EQ(gdGetSectByIndex(0x2000000e, 0), nullptr);
    EXPECT_EQ(gdGetLastError(), 1U);
}

TEST_F(DebugImageReading, LeavesTheInfoAloneThatIsNotAskedFor) {
    EXPECT_EQ(Loaded(DebugHead(0x01000000, 0x11223344)), "1");
    tagMETAFILEINFO info = {};
    EXPECT_EQ(Loaded(DebugHead(0x01000000, 0x11223344), &info), "1");
    EXPECT_EQ(info.dwTime, 0x11223344U);
}

}  // namespace zek::test
