// Memory runs out at the first piece that a call asks for, at the second, and so on, until the call gets all that it
// needs. Whatever it had done by then, the library goes on working, and what the contract does not say stays is freed.
#include <sys/mman.h>

#include <new>

#include "compile/image_bytes.h"
#include "compile/image_file.h"
#include "debugimage/model_text.h"
#include "reliability/all_queries.h"
#include "reliability/everything.h"
#include "reliability/failing_heap.h"

namespace zek::test {

namespace {

/// Runs a call for which the heap fails at a piece of memory; whether it did without that piece. It may also fail as it
/// does for other reasons, or do without what it did not get.
bool IsDoneBefore(std::size_t piece, const std::function<void()>& call) {
    FailHeapAt(piece);
    try {
        call();
    } catch (const std::bad_alloc&) {
        FailHeapAt(0);
        EXPECT_TRUE(HasHeapFailed());
    }
    FailHeapAt(0);
    return piece == 0 || !HasHeapFailed();
}

#if defined(__SANITIZE_ADDRESS__)
/// Under the sanitizer each child takes long to begin.
constexpr std::size_t kStride = 11;
#else
constexpr std::size_t kStride = 1;
#endif

/// Runs `attempt` with 1, 2, 3, ..., or in strides, until it says that all went well.
void WithEverMore(const std::function<bool(std::size_t)>& attempt) {
    std::size_t piece = 1;
    while (!attempt(piece) && !testing::Test::HasFailure()) piece += kStride;
    std::printf("memory ran out at %zu places\n", (piece - 1) / kStride);
    EXPECT_GT(piece, 1U);
}

/// A number that child processes can write.
std::size_t& Shared() {
    void* const memory = mmap(nullptr, sizeof(std::size_t), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return *new (memory) std::size_t(0);
}

class MemoryShortage : public ProcessTest {
protected:
    void SetUp() override {
        ProcessTest::SetUp();
        Write("words.zek", kWords);
        std::string source = kEverything;
        // More names than are walked at once, and so many sections of a kind.
        for (int i = 0; i < 70; ++i) {
            const std::string number = std::to_string(i + 100);
            source +=
                "[DEVICE]\nNAME=D" + number + "\nID=" + number + "\nINITFLAG=0\nCONTROLMASK=0\nP_" + number + "=1\n";
        }
        Write("main.zek", source);
        InChild([] {
            ASSERT_TRUE(IsCompiled()) << Messages();
            ASSERT_EQ(gccOutputD("good.zkd"), 1U);
            ASSERT_EQ(gccOutput("good.zki"), 1U);
        });
    }

    static bool IsCompiled() {
        if (!gccCompStart("main.zek")) return false;
        gccParse();
        return gccCheck() == 1;
    }

    /// The image in this file is the one that a process writes which never ran out of memory.
    static void ExpectTheSame(const std::string& file, const std::string& good) {
        EXPECT_EQ(Dump(WithoutTime(Read(file))), Dump(WithoutTime(Read(good))));
    }

    /// Runs `failing`, then `good`, in a child process for every piece of memory that `failing` asks for. As much must
    /// be left behind as when it gets them all.
    static void ExpectNoLeak(const std::function<void()>& failing, const std::function<void()>& good) {
        std::size_t& live = Shared();
        std::size_t& enough = Shared();
        const auto run = [&](std::size_t piece) {
            InChild([&] {
                const std::ptrdiff_t before = LivePieces();
                enough = IsDoneBefore(piece, failing);
                good();
                const auto added = static_cast<std::size_t>(LivePieces() - before);
                if (piece == 0) live = added;
                EXPECT_EQ(added, live) << "memory ran out at piece " << piece;
            });
            return enough == 1;
        };
        run(0);
        WithEverMore(run);
    }
};

struct Tables {
    std::vector<std::map<std::string, unsigned>> names = {g_tblProperty, g_tblGlobal, g_tblValue,  g_tblRepeater,
                                                          g_tblString,   g_tblGroup,  g_tblAction, g_tblTableName};
    std::map<unsigned, unsigned> numbers = g_tblDword;
    std::vector<unsigned char> data = g_tblTableData;
    std::vector<unsigned> counters = {g_idxProperty, g_idxGlobal, g_idxValue,  g_idxRepeater, g_idxDword,
                                      g_idxString,   g_idxGroup,  g_idxAction, g_idxTableName};

    bool operator==(const Tables&) const = default;
};

}  // namespace

TEST_F(MemoryShortage, WhileTheImageIsCompiledLeavesTheTablesAsTheyWere) {
    ASSERT_TRUE(IsCompiled());
    // A key without a number, a hole in the numbers, and some data, which only a finished output may change.
    g_tblString["later"] = 0;
    g_idxGroup += 3;
    g_tblTableData.assign(7, 1);
    const Tables before;
    WithEverMore([&](std::size_t piece) {
        unsigned written = 2;
        if (IsDoneBefore(piece, [&] { written = gccOutput("out.zki"); })) {
            EXPECT_EQ(written, 1U);
            return true;
        }
        // A stream does without the room that it does not get.
        EXPECT_TRUE(written == 2 ? Tables() == before : written == 1) << piece;
        return written != 2;
    });
    EXPECT_FALSE(Tables() == before);
    EXPECT_EQ(g_idxGroup, kIdGroup + 3 + 3);
}

TEST_F(MemoryShortage, WhileTheImageIsCompiledChangesNothingInTheNextOne) {
    ASSERT_TRUE(IsCompiled());
    WithEverMore([&](std::size_t piece) { return IsDoneBefore(piece, [] { gccOutput("out.zki"); }); });
    ExpectTheSame("out.zki", "good.zki");
}

TEST_F(MemoryShortage, WhileTheDebugImageIsWrittenChangesNothingInTheNextOne) {
    ASSERT_TRUE(IsCompiled());
    WithEverMore([&](std::size_t piece) { return IsDoneBefore(piece, [] { gccOutputD("out.zkd"); }); });
    ExpectTheSame("out.zkd", "good.zkd");
}

TEST_F(MemoryShortage, WhileASourceIsReadAndCheckedEndsWithTheModel) {
    ExpectNoLeak([] { IsCompiled(); },
                 [] {
                     gccCompEnd();
                     ASSERT_TRUE(IsCompiled());
                     ASSERT_EQ(gccOutput("out.zki"), 1U);
                     gccCompEnd();
                     ExpectTheSame("out.zki", "good.zki");
                     Messages();
                 });
}

TEST_F(MemoryShortage, WhileACompiledImageIsLoadedAndAskedLeavesTheNextLoadWhole) {
    ExpectNoLeak(
        [] {
            ASSERT_EQ(gcInit("good.zki", nullptr), 1U) << "a load replaces this one";
            gcInit("good.zki", nullptr);
            AskCompiledImage();
        },
        [] {
            ASSERT_EQ(gcInit("good.zki", nullptr), 1U);
            AskCompiledImage();
            EXPECT_EQ(gcGetSectCount(0x01000006), 71U);
            ASSERT_NE(gcGetSectByName(0x01000006, "D169"), nullptr);
            EXPECT_EQ(gcGetSectByName(0x01000006, "D169"), gcGetSectByIndex(0x01000006, 70));
            EXPECT_EQ(WriteMeta("out.zki"), 1U);
            ExpectTheSame("out.zki", "good.zki");
            gcUnInit();
        });
}

TEST_F(MemoryShortage, WhileADebugImageIsLoadedAndAskedLeavesTheNextLoadWhole) {
    const std::size_t size = std::filesystem::file_size("good.zkd");
    ExpectNoLeak(
        [size] {
            gdInit("good.zkd", nullptr);
            AskDebugImage(size);
        },
        [size] {
            gdUnInit();
            ASSERT_EQ(gdInit("good.zkd", nullptr), 1U);
            AskDebugImage(size);
            EXPECT_EQ(CZEKObj::m_svstrIncFiles, (Texts{"main.zek", "words.zek"}));
            EXPECT_EQ(gccOutput("out.zki"), 1U);
            ExpectTheSame("out.zki", "good.zki");
            gdUnInit();
        });
}

}  // namespace zek::test
