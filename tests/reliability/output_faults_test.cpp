// What the output calls themselves promise when files cannot be written: whether the file could be created, and that
// neither the process nor what it has read suffers. They replace the file in place; safe replacing is their caller's.
#include <signal.h>
#include <sys/resource.h>

#include "compile/compile.h"
#include "reliability/everything.h"
#include "support/process_test.h"
#include "support/resources.h"

namespace zek::test {

namespace {

/// While it lives, no file of the process grows beyond so many bytes: as on a full disk, what goes beyond is refused.
class ShortFiles {
public:
    explicit ShortFiles(rlim_t most) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit few = before_;
        few.rlim_cur = most;
        setrlimit(RLIMIT_FSIZE, &few);
    }
    ~ShortFiles() { setrlimit(RLIMIT_FSIZE, &before_); }
    ShortFiles(const ShortFiles&) = delete;
    ShortFiles& operator=(const ShortFiles&) = delete;

private:
    rlimit before_{};
};

struct OutputRow {
    const char* name;
    unsigned (*output)(const std::string&);
    bool tells;  ///< of a file that cannot be created
};

}  // namespace

class OutputFault : public ProcessTest, public testing::WithParamInterface<OutputRow> {
protected:
    /// A model, and its image as every call but the first writes it: only the first has the list of source files.
    void SetUp() override {
        ProcessTest::SetUp();
        Write("words.zek", kWords);
        Source(kEverything);
        ASSERT_EQ(gccCheck(), 1U);
        Messages();
        ASSERT_EQ(GetParam().output("first"), 1U);
        ASSERT_EQ(GetParam().output("image"), 1U);
        whole_ = WithoutTime(Read("image"));
    }

    std::string whole_;
};

TEST_P(OutputFault, LeavesAsMuchOfTheImageAsFindsRoomAndTheModelWhole) {
    // The limit sends a signal, too; a host of which it is not the business ignores it.
    signal(SIGXFSZ, SIG_IGN);
    const auto before = OpenFiles();
    for (rlim_t most = 0; most < whole_.size(); most += 97) {
        {
            const ShortFiles few(most);
            EXPECT_EQ(GetParam().output("image"), 1U) << "it could be created";
        }
        ASSERT_EQ(Dump(WithoutTime(Read("image"))), Dump(WithoutTime(whole_.substr(0, most))));
    }
    EXPECT_EQ(OpenFiles(), before);
    EXPECT_EQ(GetParam().output("image"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("image"))), Dump(whole_));
    EXPECT_EQ(Messages(), "");
}

TEST_P(OutputFault, GivesZeroForAFileThatCannotBeCreatedAndLeavesTheModelWhole) {
    std::filesystem::create_directory("folder");
    std::filesystem::create_symlink("loop", "loop");
    for (const std::string& file : {std::string("folder"), std::string("none/image"), std::string("image/below"),
                                    std::string("loop"), std::string(300, 'n'), std::string()}) {
        EXPECT_EQ(GetParam().output(file), 0U) << file;
        EXPECT_EQ(Messages(), GetParam().tells ? "ERROR: Create debug file " + file + " failed.\n" : "");
    }
    EXPECT_TRUE(std::filesystem::is_empty("folder"));
    EXPECT_EQ(GetParam().output("image"), 1U);
    EXPECT_EQ(Dump(WithoutTime(Read("image"))), Dump(whole_));
}

INSTANTIATE_TEST_SUITE_P(Of, OutputFault,
                         testing::Values(OutputRow{"CompiledImage", gccOutput, false},
                                         OutputRow{"DebugImage", gccOutputD, true}),
                         RowName());

}  // namespace zek::test
