#include <gtest/gtest.h>

#include <map>
#include <set>

#include "model/section.h"
#include "model/section_kinds.h"
#include "view/viewed_image.h"

namespace zek::test {

namespace {

/// What the compiler makes of accepted sources opens, however odd; every case compiles in a fresh process.
class OddImage : public ProcessTest {
protected:
    /// The image of a source that the check accepts.
    std::string Compiled(const std::string& source, const std::string& file = "main.zek") {
        const std::string prefix = "[QUORZEK]\nVERSION=1\n[DEFINE]\nT1=1\nT2=2\nT3=3\nT7=7\nT10=10\nT104=104\n";
        Source(prefix + source, file);
        EXPECT_EQ(gccCheck(), 1U) << Messages();
        EXPECT_EQ(gccOutput(file + ".zki"), 1U);
        gccCompEnd();
        return Read(file + ".zki");
    }
};

TEST_F(OddImage, HasWordsThatANumberCarriedIntoAnotherClass) {
    const std::string image = Compiled(
        "[ACTION]\nNAME=Do\nARGNUMBER=4294967295\nVALUE=T1,ARG4278190080\n"
        "[ACTION]\nNAME=One\nARGNUMBER=1\n"
        "[REPEATER]\nRep=2,One,ARG4261412864\n"
        "[DEFINE]\nHIGH=0xF5000001\n[GLOBAL]\nG_X=HIGH\n");
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view) << Refusal(image);
    std::string words;
    view->ForEachNote([&](const ImageFinding& note) {
        if (note.code != ImageCode::kCarriedWord) return;
        char word[16];
        std::snprintf(word, sizeof word, "%08x ", note.found);
        words += word;
    });
    EXPECT_EQ(words, "1c000000 1b000000 13000001 ");
    EXPECT_EQ(TextOf(view->SectionNamed(kImageAction, "Do")->EntryNamed("")->Value(1)), "-");
    EXPECT_EQ(view->SectionNamed(kImageGlobal, "X")->EntryNamed("X")->ValueType(), std::nullopt);
}

TEST_F(OddImage, HasUnresolvedWords) {
    const std::string image = Compiled(
        "[GROUP]\nPARENT=0\nNAME=G\nCHILDGROUP=0\n[ACTION]\nNAME=Do\nARGNUMBER=1\n[REPEATER]\nRep=2,Do,ARGx\n"
        "[DEVICE]\nNAME=D\nID=word\nINITFLAG=1\nCONTROLMASK=1\n[DEFINE]\nword=0xFFFFFFFF\n");
    EXPECT_NE(Notes(image).find("unresolved at "), std::string::npos) << Notes(image);
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view);
    const auto rep = view->SectionNamed(kImageRepeater, "Rep")->EntryNamed("Rep");
    EXPECT_EQ(rep->Word(2), 0xFFFFFFFFU);
    EXPECT_EQ(TextOf(rep->Value(2)), "-");
    EXPECT_EQ(view->SectionNamed(kImageDevice, "D")->ID(), std::nullopt) << "the number that stands for nothing";
    EXPECT_EQ(view->NoteCount(), 2U);
}

TEST_F(OddImage, HasTwoValuesOfOneName) {
    const std::string image = Compiled(
        "[GROUP]\nPARENT=0\nNAME=G\nCHILDGROUP=0\n"
        "[SENSOR]\nPARENT=G\nNAME=S\nID=1\nTYPE=1\nINITFLAG=1\nCONTROLMASK=1\nVALUE_=T1,5\nVALUE=T1,6\nP_=1\n"
        "[DEVICE]\nNAME=D\nID=1\nINITFLAG=1\nCONTROLMASK=1\nVALUE_=T1,7\nVALUE_INIT=T1,7\n"
        "[ACTION]\nNAME=A\nVALUE_=T1,8\nVALUE=T1,9\n"
        "[GLOBAL]\nG_=T1,1\n"
        "[TAVRGROUP]\nNAME=t\nID=1\nPID=0\nSENSORS=1\nP_=1\n");
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view) << Refusal(image);
    const auto firstOf = [&](unsigned kind, const char* name) {
        return TextOf(view->SectionNamed(kind, name)->EntryNamed("")->Value(1));
    };
    EXPECT_EQ(view->SectionNamed(kImageSensor, "S")->AllEntries().size(), 9U);
    EXPECT_EQ(TextOf(view->SectionNamed(kImageSensor, "S")->EntryWithId(0x05000001)->Value(1)), "6") << "VALUE";
    EXPECT_EQ(firstOf(kImageDevice, "D"), "7");
    EXPECT_EQ(firstOf(kImageAction, "A"), "9");
}

TEST_F(OddImage, HasALengthThatCountsNamesThatAreNotThere) {
    // The key of the TAVRGROUP has no identifier, but is counted.
    const std::string image =
        Compiled("[PROPERTY]\nA=1\n[TAVRGROUP]\nNAME=t\nID=1\nPID=0\nSENSORS=\nP_" + std::string(90, 'x') + "=1\n");
    EXPECT_EQ(Notes(image),
              "surplus-length at 372, table of properties: the length, 93 bytes, counts names that are not there\n");
    EXPECT_EQ(ImageView::Open(BytesOf(image))->IdentifierOf(kIdProperty, "x"), std::nullopt);
}

TEST_F(OddImage, HasNamesOfTablesOfAnEarlierCompilation) {
    Compiled("[TABLE]\nNAME=First\nTYPE=1\n1=1\n[TABLE]\nNAME=Second\nTYPE=1\n1=1\n", "first.zek");
    const std::string image = Compiled("[TABLE]\nNAME=Third\nTYPE=1\n1=1\n", "second.zek");
    EXPECT_NE(Notes(image).find("table-without-block at "), std::string::npos) << Notes(image);
    EXPECT_NE(Notes(image).find("3 tables have a name, 1 have a block"), std::string::npos);
}

TEST_F(OddImage, HasAGroupThatIsItsOwnParent) {
    const std::string image =
        Compiled("[GROUP]\nPARENT=0\nNAME=A\nCHILDGROUP=0\n[GROUP]\nPARENT=0\nNAME=0\nCHILDGROUP=0\n");
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view) << Refusal(image);
    EXPECT_NE(Notes(image).find("own-parent at "), std::string::npos) << Notes(image);
    EXPECT_FALSE(view->SectionNamed(kImageGroup, "0")->Parent());
    EXPECT_FALSE(view->SectionNamed(kImageGroup, "A")->Parent());
}

TEST_F(OddImage, HasAGroupNamed0BelowAnother) {
    const std::string image =
        Compiled("[GROUP]\nPARENT=0\nNAME=A\nCHILDGROUP=0\n[GROUP]\nPARENT=A\nNAME=0\nCHILDGROUP=0\n");
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view) << Refusal(image);
    EXPECT_EQ(view->SectionNamed(kImageGroup, "0")->Parent()->Name(), "A");
    EXPECT_FALSE(view->SectionNamed(kImageGroup, "A")->Parent()) << "the parent 0 is the root";
}

TEST_F(OddImage, WasWrittenAfterAnImageWithRepeatedNamesWasLoaded) {
    // The loaded table has two identifiers of one name; the writer fills the place of the second and does not count it.
    std::vector<std::string> names = {"IPMI", "", "INIT", "DEINIT", "ENTRY", "EXIT"};
    for (int i = 0; i < 60; ++i) names.push_back("");
    Write("loaded.zki", ViewedImage({}, {.values = names}));
    ASSERT_EQ(gcInit("loaded.zki", nullptr), 1U);
    gcUnInit();
    const std::string image = Compiled("[ACTION]\nNAME=Do\nVALUE_77=T1,1\nVALUE=T104,VALUE_77\n");
    EXPECT_NE(Notes(image).find("short-length at "), std::string::npos) << Notes(image);
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view) << Refusal(image);
    const ImageView::Section action = *view->SectionNamed(kImageAction, "Do");
    EXPECT_EQ(TextOf(action.EntryWithId(0x05000001)->Value(1)), "-") << "its name lies behind the length";
}

TEST_F(OddImage, WasWrittenAfterAnImageWithOneRepeatedNameAndNumberWasLoaded) {
    // What the lengths lack stands in the gap before the next table.
    Write("loaded.zki",
          ViewedImage({}, {.values = {"IPMI", "", "INIT", "DEINIT", "ENTRY", "EXIT", ""}, .numbers = {5, 5}}));
    ASSERT_EQ(gcInit("loaded.zki", nullptr), 1U);
    gcUnInit();
    const std::string image = Compiled("[ACTION]\nNAME=Do\nVALUE_77=T1,6\nVALUE=T104,VALUE_77\n");
    EXPECT_EQ(
        Notes(image),
        "short-length at 372, table of values: the length, 32 bytes, leaves keys out\n"
        "short-length at 436, table of numbers: the length, 8 bytes, leaves keys out\n"
        "beyond-length at 328, section 1 [ACTION], entry 2, word 1: the key lies behind the length that its table "
        "says, so this identifier means nothing\n");
}

TEST_F(OddImage, WasWrittenWithALengthThatCutsAName) {
    // Each repeated name takes a byte off the length: here it ends within EXIT, which the entry is named.
    Write("loaded.zki", ViewedImage({}, {.values = {"x", "x", "x"}}));
    ASSERT_EQ(gcInit("loaded.zki", nullptr), 1U);
    gcUnInit();
    const std::string image = Compiled("[GROUP]\nPARENT=0\nNAME=A\nCHILDGROUP=0\nVALUE_EXIT=T1,1\n");
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view) << Refusal(image);
    EXPECT_NE(Notes(image).find("short-length at "), std::string::npos) << Notes(image);
    EXPECT_TRUE(view->SectionNamed(kImageGroup, "A")->EntryNamed("EXI"));
    EXPECT_FALSE(view->SectionNamed(kImageGroup, "A")->EntryNamed("EXIT"));
}

TEST(OddBytes, FollowTheLastTable) {
    EXPECT_EQ(Notes(SmallImage() + "abc"),
              "trailing-bytes at 904, table of table data: 3 bytes follow the last table\n");
}

TEST(OddBytes, RepeatAKey) {
    const std::string image = ViewedImage({{kImageSensor, {{kIdName, {0x12000001}}, {kIdID, {0x11000001}}}}},
                                          {.numbers = {5, 5}, .texts = {"a", "a"}});
    EXPECT_EQ(Notes(image),
              "repeated-key at 380, table of numbers, key 1: the key stands in its table before, so this identifier "
              "means nothing\n"
              "repeated-key at 410, table of texts, key 1: the key stands in its table before, so this identifier "
              "means nothing\n"
              "repeated-key at 276, section 0 [SENSOR], entry 0, word 0: the key stands in its table before, so this "
              "identifier means nothing\n"
              "repeated-key at 288, section 0 [SENSOR], entry 1, word 0: the key stands in its table before, so this "
              "identifier means nothing\n");
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view);
    EXPECT_FALSE(view->SectionNamed(kImageSensor, "a"));
    EXPECT_FALSE(view->SectionWithID(kImageSensor, 5));
}

TEST(OddBytes, HaveMoreKeysThanIdentifiers) {
    constexpr unsigned kMost = 1U << 24;
    const std::string image = ViewedImage({}, {.texts = std::vector<std::string>(kMost + 2)});
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view);
    EXPECT_EQ(view->IdentifierCount(kIdString), kMost);
    std::string text;
    view->ForEachNote([&](const ImageFinding& note) {
        if (note.code == ImageCode::kTooManyKeys) text += TextOf(note);
    });
    EXPECT_EQ(text,
              "too-many-keys at 356, table of texts: there are 16777218 keys, those behind the first 16777216 "
              "have no identifier");
}

TEST(OddBytes, LeaveANameUnnumbered) {
    const std::string image =
        ViewedImage({{kImageGroup, {{kIdParent, {0}}, {kIdName, {0x18000001}}}}}, {.groups = {"0", "A"}});
    EXPECT_EQ(Notes(image), "unnumbered at 276, section 0 [GROUP], entry 0, word 0: a name without an identifier\n");
}

/// An image of one section with one entry, whose word is of the class that can stand there.
std::string WithEntry(unsigned kind, unsigned name) {
    std::string image;
    for (const unsigned word : {kIdNumber, kIdString, kIdGroup, kIdAction}) {
        image = ViewedImage({{kind, {{name, {word}}}}, {kImageGroup, {{kIdName, {kIdGroup}}}}},
                            {.numbers = {1}, .texts = {"a"}, .actions = {"a"}});
        if (Refusal(image).empty()) break;
    }
    return image;
}

using OddKeyword = ProcessTest;

TEST_F(OddKeyword, IsOneThatItsKindDoesNotDeclare) {
    std::set<unsigned> known;
    std::map<unsigned, std::set<unsigned>> declared;
    for (unsigned ordinal = 1; ordinal <= 11; ++ordinal) {
        for (const CZEKEntry* entry : CZEKSection::Create("file", g_NTMapSect[ordinal - 1].pszName, 1)->m_vpEntry) {
            known.insert(GetEntryName(entry->m_dwType, ""));
            declared[ordinal].insert(GetEntryName(entry->m_dwType, ""));
        }
    }
    for (unsigned ordinal = 1; ordinal <= 11; ++ordinal) {
        for (unsigned name = kIdKeyword; name < kIdKeyword + 0x20; ++name) {
            const std::string keyword = g_NTMapSect[ordinal - 1].pszName;
            SCOPED_TRACE(keyword + " " + std::to_string(name - kIdKeyword));
            const std::string place = " at 268, section 0 [" + keyword + "], entry 0: ";
            const std::string notes = Notes(WithEntry(kImageSectionClass + ordinal, name));
            if (!known.contains(name)) {
                EXPECT_TRUE(notes.starts_with("refused: unknown-entry" + place)) << notes;
            } else {
                EXPECT_EQ(notes.starts_with("foreign-entry" + place), !declared[ordinal].contains(name)) << notes;
                EXPECT_EQ(notes.empty(), declared[ordinal].contains(name)) << notes;
            }
        }
    }
}

TEST(OddEntry, IsAValueThatItsKindDoesNotHave) {
    const std::vector<std::string> values = {"IPMI", "", "INIT", "DEINIT", "ENTRY", "EXIT", "own", "7", "0x1f"};
    const auto noted = [&](unsigned kind) {
        std::string names;
        for (unsigned i = 0; i < values.size(); ++i) {
            const std::string word = "0x0500000" + std::to_string(i);
            const std::string notes = Notes(ViewedImage({{kind, {{kIdValue + i, {0x1e000000}}}}}, {.values = values}));
            if (notes.empty()) continue;
            EXPECT_TRUE(notes.ends_with("], entry 0: no source gives " + word + " to such a section\n")) << notes;
            EXPECT_TRUE(notes.starts_with("foreign-entry at 268, section 0 [")) << notes;
            names += values[i] + ' ';
        }
        return names;
    };
    EXPECT_EQ(noted(kImageGroup), "IPMI  own 7 0x1f ");
    EXPECT_EQ(noted(kImageAction), "INIT DEINIT ENTRY EXIT own ");
    EXPECT_EQ(noted(kImageSensor), "");
    EXPECT_EQ(noted(kImageDevice), "");
    EXPECT_EQ(noted(kImageTable), "IPMI  INIT DEINIT ENTRY EXIT own 7 0x1f ");
}

TEST(OddEntry, HasTheNameOfOneBefore) {
    const auto notes = [](unsigned kind, const std::vector<EntryWords>& entries) {
        return Notes(ViewedImage({{kind, {entries.front()}}, {kind, entries}}, {.numbers = {1}, .texts = {"a"}}));
    };
    const EntryWords name = {kIdName, {0x12000000}};
    const EntryWords id = {kIdID, {0x11000000}};
    EXPECT_EQ(notes(kImageDevice, {name, id}), "");
    EXPECT_EQ(
        notes(kImageDevice, {name, id, name}),
        "repeated-entry at 312, section 1 [DEVICE], entry 2: 0x02000015 names an entry of the section before, too\n");
    const EntryWords value = {0x05000001, {0x1e000000}};
    EXPECT_EQ(
        notes(kImageSensor, {value, value, value}),
        "repeated-entry at 300, section 1 [SENSOR], entry 1: 0x05000001 names an entry of the section before, too\n"
        "repeated-entry at 312, section 1 [SENSOR], entry 2: 0x05000001 names an entry of the section before, too\n");
}

TEST(OddEntry, HasTheNameOfOneBeforeInALongSection) {
    std::vector<std::string> names;
    SectionWords section = {kImageProperty, {}};
    for (unsigned i = 0; i < 100; ++i) {
        names.push_back("p" + std::to_string(i));
        section.entries.push_back({kIdProperty + i, {0x12000000}});
    }
    EXPECT_EQ(Notes(ViewedImage({section}, {.properties = names, .texts = {"a"}})), "");
    section.entries[99].name = kIdProperty + 3;
    const std::string image = ViewedImage({section}, {.properties = names, .texts = {"a"}});
    EXPECT_EQ(Notes(image),
              "repeated-entry at 1456, section 0 [PROPERTY], entry 99: 0x03000003 names an entry of the section "
              "before, too\n");
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view);
    EXPECT_EQ(view->AllSections()[0].EntryWithId(kIdProperty + 3)->Offset(), 268U + 3 * 12) << "the first one";
    EXPECT_EQ(view->AllSections()[0].EntryNamed("p3")->Offset(), 268U + 3 * 12);
}

}  // namespace

}  // namespace zek::test
