// A process that compiles and loads for a long time keeps its size, but for what only grows.
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "compile/compile.h"
#include "compile/tables.h"
#include "debugimage/small_debug_image.h"
#include "model/section.h"
#include "reliability/all_queries.h"
#include "reliability/everything.h"
#include "reliability/image_file.h"
#include "support/process_test.h"
#include "support/resources.h"
#include "view/viewed_image.h"

namespace zek::test {

namespace {

constexpr unsigned kCycles = 10000;
constexpr unsigned kSettled = 1000;

/// The images of a cycle. Files on a disk would take most of its time.
struct Files {
    ImageFile image;
    ImageFile debug;
    ImageFile cutImage;
    ImageFile cutDebug;
    std::string bytes;  ///< of an image, for views
};

/// What the process takes at one moment.
struct Size {
    std::size_t resident = ResidentMemory();
    std::size_t heap = HeapInUse();
    std::ptrdiff_t openFiles = OpenFiles();

    std::string Text() const {
        return std::to_string(resident >> 10) + " KiB resident, " + std::to_string(heap) + " bytes of heap";
    }
};

void Compile(const std::string& source, const Files& files) {
    EXPECT_EQ(gccCompStart(source), 1U);
    gccParse();
    EXPECT_EQ(gccCheck(), 1U);
    EXPECT_EQ(gccOutputD(files.debug.Name()), 1U);
    EXPECT_EQ(gccOutput(files.image.Name()), 1U);
    gccCompEnd();
}

void CompileAndLoad(const Files& files) {
    Compile("everything.zek", files);
    EXPECT_EQ(gcInit(files.image.Name(), nullptr), 1U);
    AskCompiledImage();
    gcUnInit();
    EXPECT_EQ(gdInit(files.debug.Name(), nullptr), 1U);
    AskDebugImage(1 << 14);
    gdUnInit();
}

/// What cannot be done: a source with mistakes, images that are cut, files that are missing.
void Fail(const Files& files) {
    EXPECT_EQ(gccCompStart("none.zek"), 0U);
    EXPECT_EQ(gccCompStart("mistakes.zek"), 1U);
    gccParse();
    EXPECT_EQ(gccCheck(), 0U);
    EXPECT_EQ(gccOutputD("none/debug"), 0U);
    EXPECT_EQ(gccOutput("none/image"), 0U);
    gccCompEnd();
    EXPECT_EQ(gcInit("none", nullptr), 0U);
    EXPECT_EQ(gcInit(files.cutImage.Name(), nullptr), 0U);
    AskCompiledImage();
    gcUnInit();
    EXPECT_EQ(gdInit("none", nullptr), 0U);
    EXPECT_THROW(gdInit(files.cutDebug.Name(), nullptr), std::out_of_range);
    AskDebugImage(1 << 14);
    gdUnInit();
}

void OpenAndDrop(const Files& files) {
    const std::optional<ImageView> view = ImageView::Open(BytesOf(files.bytes));
    ASSERT_TRUE(view);
    const ImageView copy = *view;
    AskView(copy);
    copy.ForEachNote([](const ImageFinding&) {});
    EXPECT_FALSE(ImageView::Open(BytesOf(files.bytes).first(files.bytes.size() - 1)));
}

/// The allocator counts what it keeps of a thread's freed memory for its next calls as given out. Whether it keeps any
/// is told by the environment alone, so this process begins anew.
void BeginWithoutThreadCache() {
    constexpr char kTunables[] = "GLIBC_TUNABLES";
    constexpr char kNoCache[] = "glibc.malloc.tcache_count=0";
    const char* const told = std::getenv(kTunables);
    if (told && std::string_view(told) == kNoCache) return;
    setenv(kTunables, kNoCache, 1);
    std::ifstream line("/proc/self/cmdline", std::ios::binary);
    std::vector<std::string> words;
    for (std::string word; std::getline(line, word, '\0');) words.push_back(word);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    execv("/proc/self/exe", arguments.data());
    FAIL() << "the test cannot begin anew";
}

/// Every other load fails in the middle.
void LoadOverTheLast(const Files& files) {
    EXPECT_EQ(gcInit(files.image.Name(), nullptr), 1U);
    AskCompiledImage();
    EXPECT_EQ(gcInit(files.cutImage.Name(), nullptr), 0U);
    AskCompiledImage();
}

}  // namespace

class MemoryOfCycles : public ProcessTest {
protected:
    void SetUp() override {
        BeginWithoutThreadCache();
        ProcessTest::SetUp();
        Write("everything.zek", kEverything);
        Write("words.zek", kWords);
        CompileAndLoad(files_);
        files_.bytes = Read(files_.image.Name());
        files_.cutImage.Hold(files_.bytes.substr(0, 700));
        files_.cutDebug.Hold(SmallDebugImage().substr(0, 0x106));
        const std::string sound = kEverything;
        Write("mistakes.zek", sound + "[SENSOR]\nNAME = S\nVALUE = T4,1\n[NONE]\nA = 1\n[INCLUDE]\nFILE = none.zek\n");
    }

    Size SizeAfter(unsigned cycles, void (*cycle)(const Files&)) {
        for (unsigned i = 0; i < cycles; ++i) {
            cycle(files_);
            TakeMessages();
        }
        return {};
    }

    void ExpectTheSameSizeAfter(void (*cycle)(const Files&)) {
        SizeAfter(kSettled, cycle);
        // The first measurement takes memory itself.
        const Size settled;
        const Size last = SizeAfter(kCycles - kSettled, cycle);
        std::cout << "cycle " << kSettled << ": " << settled.Text() << "; cycle " << kCycles << ": " << last.Text()
                  << '\n';
        // A block that is taken anew may keep 16 bytes that are too few to be a block of their own: up to 32 bytes in
        // all, no more after 30,000 cycles than after 3,000. What leaks with each cycle would be thousands of times as
        // much.
        EXPECT_LE(last.heap, settled.heap + 32);
        EXPECT_EQ(last.openFiles, settled.openFiles);
#if !defined(__SANITIZE_ADDRESS__)
        // AddressSanitizer keeps what was freed for a while.
        EXPECT_LT(last.resident, settled.resident + (64 << 10));
#endif
    }

    Files files_;
};

TEST_F(MemoryOfCycles, ThatCompileAndLoadStaysAsItIs) {
    ExpectTheSameSizeAfter(CompileAndLoad);
    // Once as compiled and once as the first debug image lists them.
    EXPECT_EQ(CZEKObj::m_svstrIncFiles,
              (std::vector<std::string>{"everything.zek", "words.zek", "everything.zek", "words.zek"}));
    EXPECT_EQ(CZEKSection::m_svpHSection.size(), 14U);
}

TEST_F(MemoryOfCycles, ThatFailStaysAsItIs) { ExpectTheSameSizeAfter(Fail); }

TEST_F(MemoryOfCycles, ThatOpenAndDropViewsStaysAsItIs) { ExpectTheSameSizeAfter(OpenAndDrop); }

TEST_F(MemoryOfCycles, ThatLoadOverALoadedImageStaysAsItIs) { ExpectTheSameSizeAfter(LoadOverTheLast); }

/// Every cycle brings a name and a number that no other has, in a file of its own.
TEST_F(MemoryOfCycles, WithNewNamesGrowsByTheirTablesAndTheListOfFiles) {
    constexpr unsigned kNew = 2000;
    const std::size_t properties = g_tblProperty.size();
    const std::size_t numbers = g_tblDword.size();
    const std::size_t listed = CZEKObj::m_svstrIncFiles.size();
    const Size before;
    for (unsigned i = 0; i < kNew; ++i) {
        const std::string number = std::to_string(1000000 + i);
        const std::string source = "source" + number + ".zek";
        Write(source,
              "[PROPERTY]\nP" + number + " = text\n[TAVRGROUP]\nNAME = N\nID = " + number + "\nPID = 0\nSENSORS =\n");
        Compile(source, files_);
        TakeMessages();
    }
    const Size after;
    std::cout << kNew << " new names, numbers and files: " << (after.heap - before.heap) / kNew << " bytes each\n";
    EXPECT_EQ(g_tblProperty.size(), properties + kNew);
    EXPECT_EQ(g_tblDword.size(), numbers + kNew);
    EXPECT_EQ(CZEKObj::m_svstrIncFiles.size(), listed + kNew);
    EXPECT_LT(after.heap, before.heap + kNew * 512);
    EXPECT_EQ(after.openFiles, before.openFiles);
}

}  // namespace zek::test
