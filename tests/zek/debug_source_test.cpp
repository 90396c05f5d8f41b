// The bytes of a debug image field by field, and what they say of the source.
#include <gtest/gtest.h>

#include "debug_check.h"
#include "debug_fields.h"
#include "debug_source.h"
#include "zek/in_process.h"

namespace zek::tool {

namespace {

std::string GoldenDebugImage() { return ReadFile(ZEK_SOURCE_DIR "/tests/golden/server-board.zkd"); }

/// The offset behind the last field; every field begins where the one before it ends.
std::size_t EndOfFields(const std::string& image) {
    std::size_t end = 0;
    ForEachDebugField(image, [&](const DebugFieldSeen& seen) {
        EXPECT_EQ(seen.offset, end) << NameOf(seen.field);
        EXPECT_GT(seen.size, 0u) << NameOf(seen.field);
        end = seen.offset + seen.size;
    });
    return end;
}

TEST(ZekDebugFields, TakeEachByteOnce) {
    const std::string image = GoldenDebugImage();
    EXPECT_EQ(EndOfFields(image), image.size());
    EXPECT_EQ(EndOfFields(image + "behind"), image.size() + 6);
}

/// The verification and the walk agree on every image that the first one accepts.
TEST(ZekDebugFields, FollowWhateverIsValid) {
    const MemoryFile source("[DEFINE]\nVT_VALUE = 1\n[PROPERTY]\nA = b\n[GLOBAL]\nG_X = VT_VALUE,7\n");
    const MemoryFile compiled;
    const MemoryFile debug;
    ASSERT_EQ(CompileHere(source, compiled, debug), 0);
    const std::string image = debug.Bytes();
    std::size_t valid = 0;
    for (std::size_t at = 24; at < image.size(); ++at) {
        for (const char change : {'\x01', '\x02', '\x10'}) {
            const std::string changed = std::string(image).replace(at, 1, 1, static_cast<char>(image[at] ^ change));
            if (CheckDebugImage(changed).failure) continue;
            ++valid;
            EXPECT_EQ(EndOfFields(changed), changed.size()) << at;
        }
    }
    EXPECT_GT(valid, 100u);
}

TEST(ZekDebugSource, SaysWhereEverythingStood) {
    const MemoryFile included("[DEFINE]\nVT_CALC = 2\n");
    const MemoryFile source("[INCLUDE]\nFILE = " + included.Name() +
                            "\n[PROPERTY]\n\nColour = light red\n[GLOBAL]\nG_X = VT_CALC,+,3,7\n");
    const MemoryFile compiled;
    const MemoryFile debug;
    ASSERT_EQ(CompileHere(source, compiled, debug), 0);
    const std::string image = debug.Bytes();
    const DebugSource read = ReadDebugSource(image);
    std::string told;
    for (const DebugSection& section : read.sections) {
        told +=
            std::string(section.keyword) + ' ' + std::to_string(section.kind) + ' ' + read.Told(section.spot) + '\n';
        for (const DebugEntry& entry : section.entries) {
            told += "  " + std::string(entry.key) + ' ' + read.Told(entry.spot) + ' ' + std::to_string(entry.number);
            for (const std::string_view text : entry.texts) told += " (" + std::string(text) + ')';
            told += '\n';
        }
    }
    EXPECT_EQ(read.files, (std::vector<std::string_view>{source.Name(), included.Name()}));
    const std::string main = source.Name() + ':';
    const std::string other = included.Name() + ':';
    EXPECT_EQ(told, "INCLUDE 14 " + main + "1\n  FILE " + main + "2 0 (" + included.Name() + ")\nDEFINE 12 " + other +
                        "1\n  VT_CALC " + other + "2 2\nPROPERTY 2 " + main + "3\n  Colour " + main +
                        "5 0 (light red)\nGLOBAL 10 " + main + "6\n  G_X " + main +
                        "7 2 (VT_CALC) (+) (3) (7) () ()\n");
}

}  // namespace

}  // namespace zek::tool
