#include "boards/boards.h"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "bench/source_reader.h"
#include "boards/random.h"
#include "boards/source_files.h"
#include "support/process_test.h"

namespace zek::test {
namespace {

using bench::ShapeNames;
using bench::ZekSource;

/// A source and the files that it includes, one behind the other.
std::string WholeSource(std::string_view shape, unsigned size, std::uint64_t seed = 1) {
    std::string text = ZekSource(shape, size, seed);
    for (const bench::IncludedFile& file : bench::IncludedFiles(shape, size, seed)) text += file.text;
    return text;
}

struct ShapeRow {
    std::string name;
    std::string shape;
};

std::vector<ShapeRow> SoundShapes() {
    std::vector<ShapeRow> rows;
    for (const std::string_view shape : ShapeNames()) {
        if (shape == "errors") continue;
        std::string name(shape);
        std::erase(name, '-');
        rows.push_back({name, std::string(shape)});
    }
    return rows;
}

class SoundShape : public ProcessTest, public testing::WithParamInterface<ShapeRow> {};

TEST_P(SoundShape, CompilesWithoutAnyMessage) {
    for (const unsigned size : {10U, 11U, 99U, 700U}) {
        SCOPED_TRACE(size);
        bench::WriteIncluded(".", GetParam().shape, size);
        EXPECT_EQ(Check(ZekSource(GetParam().shape, size)), 1U);
        EXPECT_EQ(gccOutput("image.zki"), 1U);
        EXPECT_EQ(gccOutputD("image.zkd"), 1U);
        EXPECT_EQ(Errors(), "");
        gccCompEnd();
    }
}
INSTANTIATE_TEST_SUITE_P(Shape, SoundShape, testing::ValuesIn(SoundShapes()), RowName());

class FaultyBoard : public ProcessTest {};

TEST_F(FaultyBoard, HasAMessageForEveryTenthSection) {
    const std::string source = ZekSource("errors", 500);
    const std::size_t sections = ReadSource(source).size();
    EXPECT_EQ(Check(source), 0U);
    const std::string messages = Errors();
    const auto lines = static_cast<std::size_t>(std::count(messages.begin(), messages.end(), '\n'));
    EXPECT_GE(lines, sections / 10);
    EXPECT_LE(lines, sections / 5);
}

TEST_F(FaultyBoard, LetsBothPassesReport) {
    Check(ZekSource("errors", 2000));
    const std::string messages = Errors();
    for (const char* text :
         {"Too much sub-strings for value type", "The GLOBAL entry with NAME G_Missing does not exist",
          "The ACTION with NAME MissingAction does not exist", "The TABLE with NAME MissingTable does not exist",
          "MISSING_WORD has not been defined", "The ARG name ARG7 is invalid",
          "The VALUE name VALUE_99 is not valid in this section", "Parent GROUP Missing Group does not exist",
          "Parent TAVRGROUP with ID 2147483647 does not exist", "is redefined."}) {
        EXPECT_NE(messages.find(text), std::string::npos) << text;
    }
}

TEST(BoardValues, AreOfEveryTypeAndOperator) {
    std::set<std::string> types;
    std::set<std::string> used;
    for (const SourceSection& section : ReadSource(ZekSource("board", 1000))) {
        for (const SourceItem& item : section.items) {
            if (!item.values[0].starts_with("VT_")) continue;
            types.insert(item.values[0]);
            if (item.values[0] == "VT_CALC") used.insert(item.values[1]);
        }
    }
    EXPECT_EQ(types, (std::set<std::string>{"VT_CALC", "VT_CALL", "VT_IF", "VT_IPMI", "VT_JUMP", "VT_NONE", "VT_PACK",
                                            "VT_READ", "VT_READ_BITS", "VT_SKIP", "VT_SMBUS_RECEIVE", "VT_SMBUS_SEND",
                                            "VT_TABLE", "VT_VALUE", "VT_WAIT", "VT_WRITE", "VT_WRITE_BITS"}));
    EXPECT_EQ(used, (std::set<std::string>{"+", "-", "*", "/", "|", "&", "%", "^", ">>", "<<", "pow", "==", ">",
                                           ">=", "!=", "<", "<="}));
}

TEST(Board, HasTheSameProportionsAtEverySize) {
    for (const unsigned size : {1000U, 4000U, 20000U}) {
        SCOPED_TRACE(size);
        const std::string source = ZekSource("board", size);
        unsigned sections = 0;
        unsigned items = 0;
        for (const auto& [keyword, counts] : CountKinds(source)) {
            sections += counts.sections;
            items += counts.items;
        }
        EXPECT_NEAR(static_cast<double>(source.size()) / size, 415, 41.5);
        EXPECT_NEAR(static_cast<double>(items) / size, 17, 1.7);
        EXPECT_NEAR(static_cast<double>(sections) / size, 1.4, 0.14);
    }
}

TEST(Board, HasMoreOfEverythingWhenItIsLarger) {
    const std::map<std::string, Counts> small = CountKinds(ZekSource("board", 2000));
    const std::map<std::string, Counts> large = CountKinds(ZekSource("board", 8000));
    EXPECT_EQ(small.size(), 12U);
    for (const auto& [keyword, counts] : small) {
        SCOPED_TRACE(keyword);
        const bool single = keyword == "QUORZEK" || keyword == "SYSTEM";
        const unsigned times = single ? 1 : 4;
        const unsigned sections = large.at(keyword).sections;
        EXPECT_GE(sections, counts.sections * times - (keyword == "DEFINE" ? 3 : 0));
        EXPECT_LE(sections, (counts.sections + (single ? 0 : 1)) * times);
    }
}

TEST(ZekSource, IsTheSameForTheSameSeedOnly) {
    for (const std::string_view shape : ShapeNames()) {
        SCOPED_TRACE(shape);
        EXPECT_EQ(WholeSource(shape, 50, 7), WholeSource(shape, 50, 7));
        EXPECT_NE(WholeSource(shape, 50, 7), WholeSource(shape, 50, 8));
    }
}

TEST(ZekSource, CannotHaveUnknownShapesOrSizes) {
    EXPECT_THROW(ZekSource("cube", 100), std::invalid_argument);
    EXPECT_THROW(ZekSource("board", 9), std::invalid_argument);
    EXPECT_THROW(ZekSource("board", 1'000'001), std::invalid_argument);
    EXPECT_THROW(bench::WhatSizeCounts("cube"), std::invalid_argument);
    EXPECT_THROW(bench::HasIncludedFiles("cube"), std::invalid_argument);
    EXPECT_THROW(bench::IncludedFiles("cube", 100), std::invalid_argument);
    EXPECT_THROW(bench::IncludedFiles("parts", 9), std::invalid_argument);
}

/// The numbers that every machine draws: the first from seed 1, stream 2 and index 3.
TEST(Random, IsTheSameOnEveryMachine) {
    bench::Random random(1, 2, 3);
    EXPECT_EQ(random.Next(), 0x670A03640043582DU);
    EXPECT_EQ(random.Next(), 0x17F78882F7700657U);
    EXPECT_EQ(random.Below(1000), 754U);
}

/// How many sections and items of one kind a shape has.
struct SizeRow {
    const char* shape;
    const char* keyword;
    unsigned sections;
    unsigned items;
};

TEST(ShapeSize, CountsWhatTheShapeHasManyOf) {
    for (const SizeRow& row : {
             SizeRow{"properties", "PROPERTY", 1, 640},
             SizeRow{"long-sections", "PROPERTY", 10, 640},
             SizeRow{"includes", "INCLUDE", 40, 640},
             SizeRow{"action", "ACTION", 1, 640 + 3},
             SizeRow{"sensors-list", "SENSOR", 640, 640 * 7},
             SizeRow{"sensors-list", "TAVRGROUP", 1, 4},
             SizeRow{"tails", "SENSOR", 255, 255 * 7},
             SizeRow{"tails", "GROUP", 128, 128 * 3},
             SizeRow{"tails", "TABLE", 128, 128 * 4},
             SizeRow{"tails", "ACTION", 128, 128 * 3},
             SizeRow{"globals", "GLOBAL", 40, 640},
             SizeRow{"tables", "TABLE", 640, 640 * 4},
             SizeRow{"tables", "GLOBAL", 40, 640},
             SizeRow{"actions", "ACTION", 640, 640 * 3},
             SizeRow{"repeaters", "REPEATER", 40, 640},
             SizeRow{"defines", "DEFINE", 1 + 40, 30 + 640},
             SizeRow{"defines", "GLOBAL", 40, 640},
             SizeRow{"groups", "GROUP", 640, 640 * 3},
             SizeRow{"views", "TAVRGROUP", 640, 640 * 4},
             SizeRow{"rows", "TABLE", 1, 640 + 2},
         }) {
        SCOPED_TRACE(std::string(row.shape) + ' ' + row.keyword);
        const Counts counts = CountKinds(WholeSource(row.shape, 640))[row.keyword];
        EXPECT_EQ(counts.sections, row.sections);
        EXPECT_EQ(counts.items, row.items);
    }
}

TEST(ShapeTails, HasNamesThatDifferAtTheEndOnly) {
    std::set<std::string> names;
    for (const SourceSection& section : ReadSource(ZekSource("tails", 100))) {
        for (const SourceItem& item : section.items) {
            if (item.key == "NAME" && section.keyword == "SENSOR") names.insert(item.values[0]);
        }
    }
    ASSERT_EQ(names.size(), 39U);
    const std::string& first = *names.begin();
    for (const std::string& name : names) {
        EXPECT_EQ(name.size(), first.size());
        EXPECT_EQ(name.substr(0, name.size() - 3), first.substr(0, first.size() - 3));
    }
}

TEST(ShapeRows, HasNoKeyTwice) {
    const std::vector<SourceSection> sections = ReadSource(ZekSource("rows", 100'000));
    std::set<std::string> keys;
    for (const SourceItem& item : sections.back().items) keys.insert(item.key);
    EXPECT_EQ(keys.size(), 100'000U + 2);
}

TEST(ShapeLongSections, HasTenOfOneLength) {
    const std::vector<SourceSection> sections = ReadSource(ZekSource("long-sections", 1005));
    ASSERT_EQ(sections.size(), 10U);
    std::set<std::string> keys;
    for (const SourceSection& section : sections) {
        EXPECT_NEAR(static_cast<double>(section.items.size()), 100.5, 0.5);
        for (const SourceItem& item : section.items) keys.insert(item.key);
    }
    EXPECT_EQ(keys.size(), 1005U);
}

struct SplitRow {
    const char* shape;
    unsigned size;
    unsigned files;
};

/// The sections are those of a board of that size, in their order; only comments and columns are others.
TEST(SplitBoard, IsABoardInItsFiles) {
    for (const SplitRow& row :
         {SplitRow{"parts", 990, 990}, SplitRow{"parts", 3000, 1000}, SplitRow{"includes", 3000, 3000}}) {
        SCOPED_TRACE(std::string(row.shape) + ' ' + std::to_string(row.size));
        const std::vector<bench::IncludedFile> files = bench::IncludedFiles(row.shape, row.size);
        ASSERT_EQ(files.size(), row.files);
        std::string joined;
        for (const bench::IncludedFile& file : files) {
            EXPECT_FALSE(ReadSource(file.text).empty()) << file.path;
            joined += file.text;
        }
        EXPECT_EQ(ReadSource(joined), ReadSource(ZekSource("board", row.size)));
    }
}

TEST(SplitBoard, IncludesEachOfItsFilesOnce) {
    for (const char* shape : {"parts", "includes"}) {
        SCOPED_TRACE(shape);
        std::vector<std::string> asked;
        for (const SourceSection& section : ReadSource(ZekSource(shape, 1100))) {
            EXPECT_EQ(section.keyword, "INCLUDE");
            for (const SourceItem& item : section.items) asked.push_back(item.key + '=' + item.values[0]);
        }
        std::vector<std::string> given;
        for (const bench::IncludedFile& file : bench::IncludedFiles(shape, 1100)) given.push_back("FILE=" + file.path);
        EXPECT_EQ(asked, given);
        EXPECT_EQ(given.front(), "FILE=" + std::string(shape) + "-1100/0.zek");
    }
}

TEST(SplitBoard, IsTheOnlyShapeThatIncludesFiles) {
    for (const std::string_view shape : ShapeNames()) {
        SCOPED_TRACE(shape);
        EXPECT_EQ(bench::HasIncludedFiles(shape), shape == "parts" || shape == "includes");
        EXPECT_EQ(bench::IncludedFiles(shape, 50).empty(), !bench::HasIncludedFiles(shape));
    }
}

TEST(ShapeSensorsList, ListsTheSensorsInAnotherOrder) {
    const std::vector<SourceSection> sections = ReadSource(ZekSource("sensors-list", 100));
    std::vector<unsigned> ids;
    for (const std::string& id : sections.back().items.back().values) {
        ids.push_back(static_cast<unsigned>(std::stoul(id)));
    }
    EXPECT_FALSE(std::is_sorted(ids.begin(), ids.end()));
    std::sort(ids.begin(), ids.end());
    ASSERT_EQ(ids.size(), 100U);
    EXPECT_EQ(std::unique(ids.begin(), ids.end()), ids.end());
    EXPECT_EQ(ids.front(), 1U);
    EXPECT_EQ(ids.back(), 100U);
}

}  // namespace
}  // namespace zek::test
