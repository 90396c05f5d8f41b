// The verification of debug images that the library writes, and of these with damage.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "failure.h"
#include "image.h"
#include "memory_file.h"
#include "zek/in_process.h"
#include "zek/told_debug_check.h"
#include "zekcomp/zekcomp.h"

namespace zek::tool {

namespace {

/// Every kind of section, every class of data, every value type, and includes.
constexpr char kEverything[] =
    "[DEFINE]\nVT_NONE = 0\nVT_VALUE = 1\nVT_CALC = 2\nVT_CALL = 3\nVT_READ = 4\nVT_WRITE = 5\nVT_RAW = 6\nVT_FOUR = "
    "7\n"
    "VT_READ8 = 8\nVT_WRITE9 = 9\nVT_TABLE = 10\nVT_SEND = 11\nVT_SMBUS = 12\nVT_50 = 50\nVT_101 = 101\nVT_COND = 102\n"
    "VT_103 = 103\nVT_OWN = 104\nVT_500 = 500\nBUSTYPE_SMBUS = 1\n"
    "[IFDEF]\nDEFINEWORD = VT_READ\nSPEED = 3\n"
    "[QUORZEK]\nVERSION = 1.0\n"
    "[PROPERTY]\nColour = light red\n"
    "[SYSTEM]\nTYPE = 1\nMODEL = \"x\"\nFLAG = 0\nZEKLOOP = 5\nP_ROLE = x\n"
    "[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\nVALUE_INIT = VT_VALUE,1\n"
    "[ACTION]\nNAME = Act\nARGNUMBER = 1\nVALUE_1 = VT_VALUE,ARG0\nVALUE = VT_OWN,VALUE_1\n"
    "[TABLE]\nNAME = Curve\nTYPE = 1\n0.255 = 9\n4 = 0x2A\n"
    "[GLOBAL]\nG_A = VT_CALC,+,3,G_B\nG_B = VT_TABLE,Curve,7\nG_C = VT_CALC,==,1,2,3,4\nG_D = VT_CALL,Act,1\n"
    "G_E = VT_READ,1,8,BUSTYPE_SMBUS,2\nG_F = VT_WRITE,1,8,BUSTYPE_SMBUS,2,3\nG_G = VT_RAW,1,2,3\nG_H = VT_FOUR,1,2\n"
    "G_I = VT_READ8,1,8,BUSTYPE_SMBUS,2\nG_J = VT_WRITE9,1,8,BUSTYPE_SMBUS,2,3\nG_K = "
    "VT_SEND,1,8,BUSTYPE_SMBUS,0x00,3\n"
    "G_L = VT_SMBUS,1,8,BUSTYPE_SMBUS,0x00\nG_M = VT_50,1\nG_N = VT_101,1\nG_O = VT_COND,1,Act,2\nG_P = VT_103,1\n"
    "G_Q = VT_500\nG_R = VT_NONE\nG_S = VT_FOUR\n"
    "[REPEATER]\nR = 2,Act,1\n"
    "[DEVICE]\nNAME = Fan\nID = 5\nINITFLAG = 0\nCONTROLMASK = 0\nP_ROLE = y\nVALUE_ON = VT_VALUE,1\n"
    "[SENSOR]\nPARENT = Board\nNAME = S\nID = 1\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 3\nTHEORY = 2\nTHRESHOLD_WH = "
    "40\n"
    "VALUE = VT_VALUE,7\nVALUE_X = VT_VALUE,1\nP_ROLE = z\n"
    "[TAVRGROUP]\nNAME = All\nID = 1\nPID = 0\nSENSORS = 1\nP_ROLE = r\n";

/// Compiles a source in this process and gives its debug image.
std::string Compiled(const MemoryFile& source) {
    const MemoryFile images[2];
    EXPECT_EQ(CompileHere(source, images[0], images[1]), kFine);
    return images[1].Bytes();
}

TEST(ZekDebugCheck, AcceptsWhatTheLibraryWrites) {
    const MemoryFile included(kEverything);
    const MemoryFile source("[INCLUDE]\nFILE = " + included.Name() + "\n[DEFINE]\nLAST = 1\n");
    const std::string image = Compiled(source);
    EXPECT_EQ(Told(image), "15 99 0");
    for (std::size_t size = 0; size < image.size(); ++size) {
        EXPECT_TRUE(CheckDebugImage(image.substr(0, size)).failure) << size;
    }
    EXPECT_EQ(Told(image + '\0'), "15 99 1");
}

/// Only the first image of a process has the list of source files. It is shown all the same.
TEST(ZekDebugCheck, AcceptsTheSecondImageOfAProcess) {
    const MemoryFile source(kEverything);
    const std::string first = Compiled(source);
    const std::string second = Compiled(source);
    EXPECT_EQ(Told(first), "13 97 0");
    EXPECT_EQ(Told(second), "13 97 1");
    const MemoryFile file(second);
    const tool::Image image(file.Name());
    std::vector<std::string> keys;
    image.ForEachSectionOf("REPEATER", [&](const ShownSection& section) {
        for (const ShownEntry& entry : section.entries) keys.push_back(entry.key + '=' + entry.value);
    });
    EXPECT_EQ(keys, std::vector<std::string>{"R=2,Act,1"});
}

/// Whatever one byte is: what the verification lets pass, the library loads.
TEST(ZekDebugCheck, AcceptsNothingThatDoesNotLoad) {
    const MemoryFile source(kEverything);
    const std::string image = Compiled(source);
    unsigned accepted = 0;
    for (std::size_t at = 0; at < image.size(); ++at) {
        for (const char byte : {'\x00', '\x01', '\x7f', '\x80', '\xff'}) {
            const std::string damaged = Replaced(image, at, std::string(1, byte));
            if (CheckDebugImage(damaged).failure) continue;
            ++accepted;
            ASSERT_NO_THROW(EXPECT_EQ(gdInit(MemoryFile(damaged).Name(), nullptr), 1u)) << at;
            gdUnInit();
        }
    }
    // Time stamp, notations, lines, numbers and the characters of texts may be anything.
    EXPECT_GT(accepted, image.size());
    EXPECT_LT(accepted, 5 * image.size() / 2);
}

/// What was restored from an image and written again is an image again.
TEST(ZekDebugCheck, AcceptsWhatWasLoadedAndWrittenAgain) {
    const MemoryFile source(kEverything);
    const MemoryFile file(Compiled(source));
    ASSERT_EQ(gdInit(file.Name(), nullptr), 1u);
    const MemoryFile again;
    ASSERT_EQ(gccOutputD(again.Name()), 1u);
    EXPECT_EQ(Told(again.Bytes()), "13 97 1");
    gdUnInit();
}

/// Of a key that is given again, the last one is in the place of the first once the image is loaded.
TEST(ZekDebugCheck, AcceptsWhatWasLoadedOfASourceWithAKeyGivenAgainAndWrittenAgain) {
    const MemoryFile source("[TABLE]\nNAME = A\nTYPE = 1\nNAME = B\nTYPE = 2\n");
    ASSERT_EQ(gccCompStart(source.Name()), 1u);
    gccParse();
    EXPECT_EQ(gccCheck(), 0u) << "a key is given again";
    const MemoryFile first;
    ASSERT_EQ(gccOutputD(first.Name()), 1u);
    gccCompEnd();
    EXPECT_EQ(Told(first.Bytes()), "1 4 0");
    ASSERT_EQ(gdInit(first.Name(), nullptr), 1u);
    const MemoryFile again;
    ASSERT_EQ(gccOutputD(again.Name()), 1u);
    gdUnInit();
    EXPECT_EQ(Told(again.Bytes()), "1 2 3");
    std::vector<std::string> notes;
    CheckDebugImage(again.Bytes(), [&](const DebugFinding& note) {
        notes.push_back(note.Place() + ": " + note.Sentence() + " (" + NameOf(note.code) + ')');
    });
    const std::string sentence =
        ", notation: is 2, that of a key given again, which took the place of the first when its image was loaded "
        "(restored-key)";
    EXPECT_EQ(notes,
              (std::vector<std::string>{
                  "section 0 [TABLE], list of source files: is not there, since the process that wrote the image "
                  "had written another (no-file-list)",
                  "section 0 [TABLE], entry 0" + sentence, "section 0 [TABLE], entry 1" + sentence}));
}

}  // namespace

}  // namespace zek::tool
