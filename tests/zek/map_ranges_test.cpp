// The ranges of a map take each byte of an image once, whatever valid image it is.
#include <gtest/gtest.h>

#include <filesystem>

#include "zek/in_process.h"
#include "zek/map_tiling.h"

namespace zek::tool {

namespace {

std::vector<std::string> FilesIn(const std::string& folder) {
    std::vector<std::string> files;
    for (const auto& file : std::filesystem::directory_iterator(ZEK_SOURCE_DIR "/" + folder)) {
        files.push_back(file.path());
    }
    return files;
}

TEST(ZekMapRanges, TakeEachByteOfEveryTestImageOnce) {
    std::size_t valid = 0;
    for (const char* folder : {"tests/golden", "fuzz/corpus/compiled_image", "fuzz/corpus/debug_image"}) {
        for (const std::string& file : FilesIn(folder)) {
            if (std::filesystem::is_directory(file)) continue;
            const std::optional<bool> tile = Tile(ReadFile(file));
            valid += tile.has_value();
            EXPECT_TRUE(tile.value_or(true)) << file;
        }
    }
    EXPECT_GT(valid, 5u);
}

TEST(ZekMapRanges, TakeEachByteOfADamagedImageOnce) {
    const MemoryFile source(
        "[DEFINE]\nVT_CALC = 2\n[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\n[PROPERTY]\nA = b\n"
        "[TABLE]\nNAME = Curve\nTYPE = 1\n0.255 = 9\n[GLOBAL]\nG_X = VT_CALC,+,3,7\n");
    const MemoryFile compiled;
    const MemoryFile debug;
    ASSERT_EQ(CompileHere(source, compiled, debug), 0);
    for (const std::string& image : {compiled.Bytes(), debug.Bytes()}) {
        std::size_t valid = 0;
        for (std::size_t at = 20; at < image.size(); ++at) {
            for (const char change : {'\x01', '\x04', '\x10', '\x7f'}) {
                const std::optional<bool> tile =
                    Tile(std::string(image).replace(at, 1, 1, static_cast<char>(image[at] ^ change)));
                valid += tile.has_value();
                EXPECT_TRUE(tile.value_or(true)) << at;
            }
        }
        EXPECT_GT(valid, 100u);
        EXPECT_EQ(Tile(image + "behind"), true);
    }
}

}  // namespace

}  // namespace zek::tool
