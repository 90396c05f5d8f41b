#include <gtest/gtest.h>

#include "view/viewed_image.h"

namespace zek::test {

namespace {

struct Change {
    std::size_t offset;
    std::string bytes;
    std::string refusal;
};

/// The small image with some bytes written over.
std::string Changed(std::size_t offset, const std::string& bytes) {
    return SmallImage().replace(offset, bytes.size(), bytes);
}

void ExpectRefusals(const std::vector<Change>& changes) {
    for (const Change& change : changes) {
        SCOPED_TRACE(change.refusal);
        EXPECT_EQ(Refusal(Changed(change.offset, change.bytes)), change.refusal);
    }
}

TEST(RefusedImage, IsWholeInTheFirstPlace) { EXPECT_EQ(Refusal(SmallImage()), ""); }

TEST(RefusedImage, TellsWhatIsWrongWithTheHeader) {
    ExpectRefusals({
        {0, "X", "bad-magic at 0, image: does not begin as a compiled image does"},
        {13, "D", "bad-magic at 0, image: does not begin as a compiled image does"},
        {15, "x", "reserved-byte at 15, image: a byte that is always 0 is 120"},
        {16, Word(0x01000001), "bad-version at 16, image: the format version is 0x01000001, only 0x01000000 is known"},
        {24, "\1", "reserved-byte at 24, image: a byte that is always 0 is 1"},
        {127, "\1", "reserved-byte at 127, image: a byte that is always 0 is 1"},
        {172, "\1", "reserved-byte at 172, image: a byte that is always 0 is 1"},
        {255, "\1", "reserved-byte at 255, image: a byte that is always 0 is 1"},
    });
    EXPECT_EQ(Refusal(""), "bad-magic at 0, image: does not begin as a compiled image does");
    EXPECT_EQ(Refusal(SmallImage().substr(0, 259)),
              "too-short at 259, image: the image has 259 bytes, its header alone takes 260");
}

TEST(RefusedImage, TellsWhatIsWrongWithTheDirectory) {
    const std::string where = " is not a multiple of 16 behind the table before and within the image";
    ExpectRefusals({
        {128, Word(0), "missing-table at 128, directory, slot 0: the directory has no offset there"},
        {132, Word(0x1d1), "misplaced-table at 132, directory, slot 1: the offset 465" + where},
        {132, Word(0x1c0), "misplaced-table at 132, directory, slot 1: the offset 448" + where},
        {128, Word(0x100), "misplaced-table at 128, directory, slot 0: the offset 256" + where},
        {164, Word(0x390), "misplaced-table at 164, directory, slot 9: the offset 912" + where},
        {164, Word(0xFFFFFFF0), "misplaced-table at 164, directory, slot 9: the offset 4294967280" + where},
        {168, Word(0x10),
         "extra-table at 168, directory, slot 10: the directory goes on behind its ten tables, with "
         "0x00000010"},
    });
}

TEST(RefusedImage, TellsWhatIsWrongWithATable) {
    ExpectRefusals({
        {0x1c0, Word(0x04000000), "wrong-table at 448, table of properties: the tag is 0x04000000"},
        {0x224, Word(0x18), "table-length at 548, table of numbers: a length of 24 bytes cannot be, there are 24"},
        {0x224, Word(0xFFFFFFFF),
         "table-length at 548, table of numbers: a length of 4294967295 bytes cannot be, there are 24"},
        {0x224, Word(0xb), "table-length at 548, table of numbers: a length of 11 bytes cannot be, there are 24"},
        {0x224, Word(8), "reserved-byte at 560, table of numbers: a byte that is always 0 is 1"},
        {0x1cd, "x", "unended-name at 461, table of properties: the last name has no end"},
        {0x1c4, Word(0x100) + std::string(8, 'x'),
         "unended-name at 463, table of properties: the last name has no end"},
        {0x1c4, Word(0x100) + std::string("xxxxxxx\0", 8),
         "unended-name at 462, table of properties: the last name has no end"},
        {0x1ce, "x", "reserved-byte at 462, table of properties: a byte that is always 0 is 120"},
        {0x284, Word(0x200),
         "table-length at 644, table of table data: a length of 512 bytes cannot be, there are 256"},
        {0x284, Word(0xff), "table-length at 644, table of table data: a length of 255 bytes cannot be, there are 256"},
    });
    EXPECT_EQ(Refusal(SmallImage().substr(0, 0x387)),
              "table-length at 644, table of table data: a length of 256 bytes cannot be, there are 255");
    EXPECT_EQ(Refusal(ViewedImage({}, {.tables = {"T"}, .blocks = std::string(512, '\0')})),
              "block-count at 420, table of table data: there are 2 blocks, but only 1 names of tables");
}

TEST(RefusedImage, HasATableWhoseLengthWasCut) {
    const std::string image =
        ViewedImage({}, {.numbers = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, .texts = {"first", "second", "third", "fourth"}});
    ASSERT_EQ(Refusal(image), "");
    const auto cut = [&](std::size_t offset, unsigned length) {
        return Refusal(std::string(image).replace(offset, 4, Word(length)));
    };
    EXPECT_EQ(cut(0x154, 0), "table-length at 340, table of numbers: a length of 0 bytes cannot be, there are 56");
    EXPECT_EQ(cut(0x194, 0), "table-length at 404, table of texts: a length of 0 bytes cannot be, there are 40");
    EXPECT_EQ(cut(0x194, 6), "table-length at 404, table of texts: a length of 6 bytes cannot be, there are 40");
}

TEST(RefusedImage, TellsWhatIsWrongWithTheSections) {
    ExpectRefusals({
        {0x100, Word(24), "section-count at 256, image: 24 sections are announced, there is room for 23"},
        {0x100, Word(7), "unknown-section at 440, section 6: 0x00000000 is no kind of section"},
        {0x100, Word(5), "section-end at 408, image: the tables should begin at byte 416, but begin at 448"},
        {0x104, Word(0x0100000c), "unknown-section at 260, section 0: 0x0100000c is no kind of section"},
        {0x104, Word(0x01000000), "unknown-section at 260, section 0: 0x01000000 is no kind of section"},
        {0x108, Word(0x80000000),
         "entry-count at 264, section 0 [PROPERTY]: 2147483648 entries are announced, there is room for 22"},
        {0x110, Word(0x40000000),
         "word-count at 272, section 0 [PROPERTY], entry 0: 1073741824 words are announced, there is room for 43"},
        {0x1b8, "\1", "reserved-byte at 440, image: a byte that is always 0 is 1"},
    });
}

TEST(RefusedImage, TellsWhatIsWrongWithAnEntry) {
    ExpectRefusals({
        {0x10c, Word(0), "unknown-entry at 268, section 0 [PROPERTY], entry 0: 0x00000000 names no entry"},
        {0x10c, Word(0x03000001),
         "beyond-table at 268, section 0 [PROPERTY], entry 0: 0x03000001 is not in its table, which has 1"},
        {0x138, Word(0x02000012), "unknown-entry at 312, section 2 [GROUP], entry 0: 0x02000012 names no entry"},
        {0x138, Word(0x02000017), "unknown-entry at 312, section 2 [GROUP], entry 0: 0x02000017 names no entry"},
        {0x138, Word(0x07000000), "unknown-entry at 312, section 2 [GROUP], entry 0: 0x07000000 names no entry"},
    });
}

TEST(RefusedImage, TellsWhatIsWrongWithAWord) {
    ExpectRefusals({
        {0x114, Word(0x11000000),
         "wrong-class at 276, section 0 [PROPERTY], entry 0, word 0: 0x11000000 is of a class that cannot stand here"},
        {0x114, Word(0x12000002),
         "beyond-table at 276, section 0 [PROPERTY], entry 0, word 0: 0x12000002 is not in its table, which has 2"},
        {0x128, Word(0x11000000),
         "wrong-class at 296, section 1 [GLOBAL], entry 0, word 0: 0x11000000 is of a class that cannot stand here"},
        {0x128, Word(0x1e000004),
         "wrong-word-count at 292, section 1 [GLOBAL], entry 0: the entry has 2 words, it should have 5"},
        {0x128, Word(0x1e00000d),
         "wrong-word-count at 292, section 1 [GLOBAL], entry 0: the entry has 2 words, it should have 1"},
        {0x128, Word(0x1e000002),
         "unknown-operator at 300, section 1 [GLOBAL], entry 0, word 1: 0x11000000 is no operator"},
        {0x12c, Word(0x11000003),
         "beyond-table at 300, section 1 [GLOBAL], entry 0, word 1: 0x11000003 is not in its table, which has 3"},
        {0x12c, Word(0x12000000),
         "wrong-class at 300, section 1 [GLOBAL], entry 0, word 1: 0x12000000 is of a class that cannot stand here"},
        {0x16c, Word(0xFFFFFFFF),
         "wrong-class at 364, section 3 [ACTION], entry 0, word 0: 0xffffffff is of a class that cannot stand here"},
        {0x190, Word(0),
         "wrong-class at 400, section 4 [REPEATER], entry 0, word 0: 0x00000000 is of a class that cannot stand here"},
    });
}

TEST(RefusedImage, NeedsTheWordsOfItsOperators) {
    const auto operation = [](const WordList& words) {
        return Refusal(ViewedImage({{kImageSensor, {{0x05000001, words}}}}, {.numbers = {1}}));
    };
    constexpr unsigned kOne = 0x11000000;
    EXPECT_EQ(operation({0x1e000002, 0x1f000001, kOne, kOne}), "");
    EXPECT_EQ(operation({0x1e000002, 0x1f000065, kOne, kOne, kOne, kOne}), "");
    const std::string at = " at 272, section 0 [SENSOR], entry 0";
    EXPECT_EQ(operation({0x1e000002, 0x1f000001, kOne, kOne, kOne, kOne}),
              "wrong-word-count" + at + ": the entry has 6 words, it should have 4");
    EXPECT_EQ(operation({0x1e000002, 0x1f000065, kOne, kOne}),
              "wrong-word-count" + at + ": the entry has 4 words, it should have 6");
    EXPECT_EQ(operation({0x1e000002}), "wrong-word-count" + at + ": the entry has 1 words, it should have 4");
    EXPECT_EQ(operation({0x1e000002, 0x1f00000b, kOne, kOne}),
              "unknown-operator at 280, section 0 [SENSOR], entry 0, word 1: 0x1f00000b is no operator");
    EXPECT_EQ(operation({}), "wrong-word-count" + at + ": the entry has 0 words, it should have 1");
}

TEST(RefusedImage, NeedsItsParents) {
    const auto groups = [](unsigned first, unsigned second) {
        return Refusal(ViewedImage({{kImageGroup, {{kIdParent, {first}}, {kIdName, {0x18000001}}}},
                                    {kImageGroup, {{kIdParent, {second}}, {kIdName, {0x18000002}}}}},
                                   {.groups = {"0", "A", "B", "C"}}));
    };
    EXPECT_EQ(groups(0x18000000, 0x18000001), "");
    EXPECT_EQ(groups(0x18000003, 0x18000000),
              "missing-parent at 276, section 0 [GROUP]: no group has the name of the parent, 0x18000003");
    EXPECT_EQ(groups(0x18000002, 0x18000001), "parent-cycle at 276, section 0 [GROUP]: the group is its own ancestor");
    const std::string sensor = ViewedImage({{kImageSensor, {{kIdParent, {0x18000000}}}}}, {.groups = {"0"}});
    EXPECT_EQ(Refusal(sensor),
              "missing-parent at 276, section 0 [SENSOR]: no group has the name of the parent, 0x18000000");
}

}  // namespace

}  // namespace zek::test
