// The map of the images of many sources: no gap, each section and item with the line where it stands.
#include <algorithm>
#include <fstream>

#include "zek/compiled_sources.h"
#include "zek/map_tiling.h"

namespace zek::test {

namespace {

/// The lines of the files in the folder `source`, each read when it is first asked for.
class SourceLines {
public:
    /// Empty for a line that is not there. The name is one of the debug image.
    std::string Line(std::string file, unsigned number) {
        std::replace(file.begin(), file.end(), '\\', '/');
        std::vector<std::string>& lines = files_[file];
        if (lines.empty()) {
            std::ifstream in("source/" + file);
            for (std::string line; std::getline(in, line);) lines.push_back(line);
        }
        return number > 0 && number <= lines.size() ? lines[number - 1] : "";
    }

private:
    std::map<std::string, std::vector<std::string>> files_;
};

/// What must stand in the source line of a range: the header of a section, the key of an entry; nothing for others.
std::string WrittenAs(const tool::MapRange& range) {
    if (range.depth == 0 && range.what.starts_with('[')) return range.what.substr(0, range.what.find(']') + 1);
    const std::size_t id = range.what.find(" (0x");
    return range.depth == 1 && id != std::string::npos ? range.what.substr(0, id) : "";
}

/// Maps first.zki and first.zkd; gives how many sections and entries have their line.
unsigned ExpectMapped(const std::string& image, const std::string& debug) {
    const tool::DebugSource source = tool::ReadDebugSource(debug);
    SourceLines lines;
    unsigned placed = 0;
    const auto look = [&](const tool::MapRange& range) {
        const std::string written = WrittenAs(range);
        if (written.empty()) {
            EXPECT_EQ(range.spot.line, 0U) << range.what;
            return;
        }
        ++placed;
        ASSERT_LT(range.spot.file, source.files.size());
        const std::string line = lines.Line(std::string(source.files[range.spot.file]), range.spot.line);
        EXPECT_NE(line.find(written), std::string::npos) << written << " in " << line;
    };
    EXPECT_EQ(tool::Tile(image, &source, look), true);
    EXPECT_EQ(tool::Tile(debug), true);
    return placed;
}

using MapOfGeneratedSources = GeneratedSources;

TEST_P(MapOfGeneratedSources, HasEveryByteOnceAndEveryLine) {
    unsigned placed = 0;
    const unsigned valid =
        ForEachValid(GetParam(), [&] { placed += ExpectMapped(Read("first.zki"), Read("first.zkd")); });
    std::cout << valid << " sources, " << placed << " sections and entries\n";
    EXPECT_GE(valid, 20U);
    EXPECT_GE(placed, valid);
}

INSTANTIATE_TEST_SUITE_P(Shard, MapOfGeneratedSources, testing::Range(0U, ShardsOfPrograms(4)));

using MapOfBoardShapes = BoardShapes;

TEST_P(MapOfBoardShapes, HasEveryByteOnceAndEveryLine) {
    ASSERT_TRUE(CompileShape(GetParam()));
    EXPECT_GT(ExpectMapped(Read("first.zki"), Read("first.zkd")), 0U);
}

INSTANTIATE_TEST_SUITE_P(Shape, MapOfBoardShapes, testing::ValuesIn(SoundShapes()), ShapeName);

}  // namespace

}  // namespace zek::test
