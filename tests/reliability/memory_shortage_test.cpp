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
#include "view/viewed_image.h"

namespace zek::test {

namespace {

/// Lets memory fail at a piece of it: FailHeapAt or FailMappingAt.
using FailAt = void (*)(std::size_t piece);

/// Runs a call for which memory fails at a piece of it; whether it did without that piece. It may also fail as it does
/// for other reasons, or do without what it did not get.
bool IsDoneBefore(std::size_t piece, const std::function<void()>& call, FailAt failAt = FailHeapAt) {
    failAt(piece);
    try {
        call();
    } catch (const std::bad_alloc&) {
        failAt(0);
        EXPECT_TRUE(HasHeapFailed());
    }
    failAt(0);
    return piece == 0 || !HasHeapFailed();
}

#if defined(__SANITIZE_ADDRESS__)
/// Under the sanitizer each child takes long to begin.
constexpr std::size_t kStride = 11;
#else
constexpr std::size_t kStride = 1;
#endif

/// Runs `attempt` with 1, 2, 3, ..., or in strides, until it says that all went well.
void WithEverMore(const std::function<bool(std::size_t)>& attempt, std::size_t stride = kStride) {
    std::size_t piece = 1;
    while (!attempt(piece) && !testing::Test::HasFailure()) piece += stride;
    std::printf("memory ran out at %zu places\n", (piece - 1) / stride);
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
    static void ExpectNoLeak(const std::function<void()>& failing, const std::function<void()>& good,
                             FailAt failAt = FailHeapAt) {
        std::size_t& live = Shared();
        std::size_t& enough = Shared();
        const auto run = [&](std::size_t piece) {
            InChild([&] {
                const std::ptrdiff_t before = LivePieces();
                enough = IsDoneBefore(piece, failing, failAt);
                good();
                const auto added = static_cast<std::size_t>(LivePieces() - before);
                if (piece == 0) live = added;
                EXPECT_EQ(added, live) << "memory ran out at piece " << piece;
            });
            return enough == 1;
        };
        run(0);
        WithEverMore(run, failAt == FailHeapAt ? kStride : 1);
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

TEST_F(MemoryShortage, WhileADebugImageIsLoadedLeavesPredefinedNamesThatAreFound) {
    WithEverMore([](std::size_t piece) {
        std::size_t& done = Shared();
        InChild([&] {
            for (int i = 0; i < 100; ++i) AddPredDefineValue("NAME" + std::to_string(i), 1);
            unsigned value = 0;
            for (int i = 0; i < 100; ++i) EXPECT_EQ(GetPreDefinedValue("NAME0", &value), 1U);
            g_tblPreDefine.erase("NAME5");
            done = IsDoneBefore(piece, [] { gdInit("good.zkd", nullptr); });
            for (const auto& [name, defined] : g_tblPreDefine) {
                EXPECT_EQ(GetPreDefinedValue(name, &value), 1U) << name;
                EXPECT_EQ(value, defined) << name;
            }
            EXPECT_EQ(GetPreDefinedValue("NAME5", &value), 0U);
        });
        return done == 1;
    });
}

TEST_F(MemoryShortage, WhileTheImageIsCompiledLeavesTheTablesAsTheyWere) {
    ASSERT_TRUE(IsCompiled());
    // A key without a number, a hole in the numbers, and some data, which only a finished output may change.
    g_tblString["later"] = 0;
    g_idxGroup += 3;
    g_tblTableData.assign(7, 1);
    const Tables before;
    WithEverMore([&](std::size_t piece) {
        std::filesystem::remove("out.zki");
        unsigned written = 2;
        const bool done = IsDoneBefore(piece, [&] { written = gccOutput("out.zki"); });
        // A stream does without the room that it does not get, and a file that gets none cannot be created.
        EXPECT_EQ(std::filesystem::exists("out.zki"), written == 1) << piece;
        EXPECT_TRUE(written != 2 || Tables() == before) << piece;
        EXPECT_TRUE(!done || written == 1) << piece;
        return written == 1;
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

TEST_F(MemoryShortage, WhileASourceIsReadLosesNoSectionInSilence) {
    std::size_t& enough = Shared();
    const std::string cannotLoad = "cannot be loaded";
    WithEverMore([&](std::size_t piece) {
        InChild([&] {
            bool isRead = false;
            enough = IsDoneBefore(piece, [&] {
                if (!gccCompStart("main.zek")) return;
                gccParse();
                isRead = true;
            });
            if (!isRead || Messages().find(cannotLoad) != std::string::npos) return;
            EXPECT_EQ(CGSDEVICE::m_sHeader.size(), 71U) << piece;
            EXPECT_EQ(CGSREPEATER::m_sHeader.at(0)->m_vpEntry.size(), 1U) << "the last item of the file, " << piece;
        });
        return enough == 1;
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

TEST_F(MemoryShortage, WhileAnImageIsOpenedAsAViewLeavesNothing) {
    const std::string image = Read("good.zki");
    ExpectNoLeak([&] { ImageView::Open(BytesOf(image)); },
                 [&] {
                     const std::optional<ImageView> view = ImageView::Open(BytesOf(image));
                     ASSERT_TRUE(view);
                     EXPECT_EQ(view->SectionNamed(kImageDevice, "D169")->ID(), 169U);
                     AskView(*view);
                 });
}

TEST_F(MemoryShortage, IsNoMatterForTheQueriesOfAView) {
    std::string source = "[PROPERTY]\n";
    for (int i = 0; i < 100; ++i) source += "p" + std::to_string(i) + " = 1\n";
    Write("long.zek", source);
    InChild([] {
        ASSERT_EQ(gccCompStart("long.zek"), 1U);
        gccParse();
        ASSERT_EQ(gccCheck(), 1U);
        ASSERT_EQ(gccOutput("long.zki"), 1U);
    });
    for (const std::string file : {"good.zki", "long.zki"}) {
        SCOPED_TRACE(file);
        const std::string image = Read(file);
        const std::optional<ImageView> view = ImageView::Open(BytesOf(image));
        ASSERT_TRUE(view);
        FailHeapAt(1);
        AskView(*view);
        EXPECT_FALSE(HasHeapFailed());
        EXPECT_THROW(view->ForEachNote([](const ImageFinding&) {}), std::bad_alloc) << "this opens the image again";
        EXPECT_TRUE(HasHeapFailed());
        FailHeapAt(0);
    }
}

#if !defined(__SANITIZE_ADDRESS__)
// Under the sanitizer nothing is known of what is mapped, and the model is one of many pieces.

namespace {

/// A description so long that entries, values that wait for the check, names and what identifiers stand for are in
/// large pages.
class MappingShortage : public MemoryShortage {
protected:
    void SetUp() override {
        ProcessTest::SetUp();
        std::string source;
        for (int i = 0; i < 3000; ++i) source += "[PROPERTY]\n";
        for (int i = 0; i < kKeys; ++i) source += "Key" + std::to_string(i) + " = value " + std::to_string(i) + "\n";
        Write("main.zek", source);
        InChild([] {
            ASSERT_TRUE(IsCompiled()) << Messages();
            ASSERT_EQ(gccOutputD("good.zkd"), 1U);
            ASSERT_EQ(gccOutput("good.zki"), 1U);
        });
    }

    static constexpr int kKeys = 140'000;
    static inline const std::string kLastKey = "Key" + std::to_string(kKeys - 1);
};

}  // namespace

TEST_F(MappingShortage, WhileASourceIsReadCheckedAndWrittenEndsWithTheModel) {
    ExpectNoLeak(
        [] {
            if (IsCompiled()) gccOutput("out.zki");
        },
        [] {
            gccCompEnd();
            ASSERT_TRUE(IsCompiled());
            ASSERT_EQ(gccOutput("out.zki"), 1U);
            gccCompEnd();
            EXPECT_TRUE(WithoutTime(Read("out.zki")) == WithoutTime(Read("good.zki")));
            Messages();
        },
        FailMappingAt);
}

TEST_F(MappingShortage, WhileACompiledImageIsLoadedAndAskedLeavesTheNextLoadWhole) {
    const auto ask = [] {
        tagGCENTRY* const entry = gcGetEntryByName(gcGetSectByIndex(0x01000002, 2999), kLastKey, nullptr);
        return entry && gcGetValueByIndex(entry, 0).pszName == "value " + std::to_string(kKeys - 1);
    };
    ExpectNoLeak(
        [ask] {
            gcInit("good.zki", nullptr);
            ask();
        },
        [ask] {
            ASSERT_EQ(gcInit("good.zki", nullptr), 1U);
            EXPECT_TRUE(ask());
            gcUnInit();
        },
        FailMappingAt);
}

TEST_F(MappingShortage, WhileADebugImageIsLoadedLeavesTheNextLoadWhole) {
    ExpectNoLeak([] { gdInit("good.zkd", nullptr); },
                 [] {
                     gdUnInit();
                     ASSERT_EQ(gdInit("good.zkd", nullptr), 1U);
                     EXPECT_STREQ(gdGetEntryName(gdGetEntryByIndex(gdGetSectByIndex(2, 2999), kKeys - 1)),
                                  kLastKey.c_str());
                     gdUnInit();
                 },
                 FailMappingAt);
}
#endif

}  // namespace zek::test
