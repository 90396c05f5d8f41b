#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <iostream>
#include <random>
#include <thread>

#include "zek/command.h"

namespace zek::test {

namespace {

class ZekInterrupted : public ZekTest {
protected:
    static bool HasTemporary() {
        for (const std::string& name : Names()) {
            if (name.starts_with(".zek-")) return true;
        }
        return false;
    }

    /// Waits for a program that hangs in the middle of its writing.
    static bool HasBegunToWrite() {
        for (int i = 0; i < 2000 && !HasTemporary(); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(5));
        return HasTemporary();
    }
};

struct SignalRow {
    const char* name;
    int signal;
};

class ZekSignal : public ZekInterrupted, public testing::WithParamInterface<SignalRow> {};

TEST_P(ZekSignal, RemovesTheTemporaryFileAndEndsTheProgram) {
    WriteSound("a.zek");
    Write("a.zki", "old");
    Program program({ZEK_PROGRAM, "compile", "a.zek"}, Fault("hang"));
    ASSERT_TRUE(HasBegunToWrite());
    ASSERT_EQ(kill(program.Process(), GetParam().signal), 0);
    const Result result = program.Finish();
    EXPECT_EQ(result.signal, GetParam().signal);
    EXPECT_EQ(Read("a.zki"), "old");
    EXPECT_EQ(Names(), (Strings{"a.zek", "a.zki"}));
}

TEST_P(ZekSignal, RemovesTheSourcesThatAreNotCompared) {
    std::filesystem::create_directories("source/sub");
    Write("source/a.zek", "[INCLUDE]\nFILE = sub/b.zek\n[PROPERTY]\na = b\n");
    Write("source/sub/b.zek", "[PROPERTY]\nc = d\n");
    ASSERT_EQ(Zek({"compile", "source/a.zek", "-o", "a.zki", "-g", "a.zkd"}).code, 0);
    std::filesystem::create_directories("folder/source");
    Write("folder/source/other", "stays");
    Program program({ZEK_PROGRAM, "decompile", "a.zkd", "-o", "folder"}, Fault("wait"));
    const std::string last = "folder/sub/b.zek";
    for (int i = 0; i < 2000 && !std::filesystem::exists(last); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    ASSERT_TRUE(std::filesystem::exists(last));
    ASSERT_EQ(Names("folder/source"), (Strings{"a.zek", "other"}));
    ASSERT_EQ(kill(program.Process(), GetParam().signal), 0);
    EXPECT_EQ(program.Finish().signal, GetParam().signal);
    EXPECT_EQ(Names("folder/source"), Strings{"other"});
    EXPECT_EQ(Names("folder"), Strings{"source"});
}

INSTANTIATE_TEST_SUITE_P(By, ZekSignal,
                         testing::Values(SignalRow{"Interrupt", SIGINT}, SignalRow{"Terminate", SIGTERM},
                                         SignalRow{"HangUp", SIGHUP}),
                         RowName());

TEST_F(ZekInterrupted, SignalThatWasIgnoredStaysIgnored) {
    WriteSound("a.zek");
    signal(SIGHUP, SIG_IGN);
    Program program({ZEK_PROGRAM, "compile", "a.zek"}, Fault("hang"));
    ASSERT_TRUE(HasBegunToWrite());
    ASSERT_EQ(kill(program.Process(), SIGHUP), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_TRUE(HasTemporary());
    ASSERT_EQ(kill(program.Process(), SIGTERM), 0);
    EXPECT_EQ(program.Finish().signal, SIGTERM);
    EXPECT_FALSE(HasTemporary());
}

/// The source is a pipe that goes on for as long as somebody reads it.
TEST_F(ZekInterrupted, CheckEndsWithItsChild) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    signal(SIGPIPE, SIG_IGN);
    Program program({ZEK_PROGRAM, "check", "pipe"});
    const int pipe = open("pipe", O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(write(pipe, "; \n", 3), 3);
    ASSERT_EQ(kill(program.Process(), SIGTERM), 0);
    EXPECT_EQ(program.Finish().signal, SIGTERM);
    bool isRead = true;
    for (int i = 0; i < 400 && isRead; ++i) {
        isRead = write(pipe, "; \n", 3) == 3;
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
    }
    close(pipe);
    EXPECT_FALSE(isRead);
}

/// Two images of an old source, under the names that the compilation of a new one writes.
class ZekKilled : public ZekInterrupted {
protected:
    struct Pair {
        std::string image;
        std::string debug;
        bool operator==(const Pair&) const = default;
    };

    void SetUp() override {
        ZekInterrupted::SetUp();
        WriteSound("old.zek", 5);
        WriteSound("new.zek", 20);
        ASSERT_EQ(Program(kCompile).Finish().code, 0);
        new_ = Images();
        ASSERT_EQ(Zek({"compile", "old.zek", "-o", "old.zki", "-g", "old.zkd"}).code, 0);
        PutOldImages();
        old_ = Images();
    }

    static void PutOldImages() {
        std::filesystem::copy_file("old.zki", "image", std::filesystem::copy_options::overwrite_existing);
        std::filesystem::copy_file("old.zkd", "debug", std::filesystem::copy_options::overwrite_existing);
    }
    static Pair Images() { return {WithoutTime(Read("image")), WithoutTime(Read("debug"))}; }

    void ExpectWholeImages() const {
        const Pair images = Images();
        EXPECT_TRUE(images.image == old_.image || images.image == new_.image) << images.image.size();
        EXPECT_TRUE(images.debug == old_.debug || images.debug == new_.debug) << images.debug.size();
    }

    static bool HasEnded(const Program& program) {
        siginfo_t info = {};
        return waitid(P_PID, static_cast<id_t>(program.Process()), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
               info.si_pid != 0;
    }

    /// How many temporary files there were.
    static unsigned RemoveTemporaries() {
        unsigned removed = 0;
        for (const std::string& name : Names()) removed += name.starts_with(".zek-") && std::filesystem::remove(name);
        return removed;
    }

    static inline const Strings kCompile = {ZEK_PROGRAM, "compile", "new.zek", "-o", "image", "-g", "debug"};
    Pair old_;
    Pair new_;
};

class ZekKilledAtAMoment : public ZekKilled, public testing::WithParamInterface<unsigned> {};

TEST_P(ZekKilledAtAMoment, LeavesWholeImages) {
    constexpr int kCompiles = 250;
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_EQ(Program(kCompile).Finish().code, 0);
    const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin);
    std::mt19937 random(GetParam());
    std::uniform_int_distribution<long> moment(0, whole.count() + whole.count() / 4);
    int killed = 0;
    int whileWriting = 0;
    for (int i = 0; i < kCompiles; ++i) {
        PutOldImages();
        const bool mayCleanUp = i % 2 == 0;
        Program program(kCompile);
        // Chance alone hits the writing too seldom where the start of the program takes long.
        if (i % 5 == 0) {
            while (!HasTemporary() && !HasEnded(program)) continue;
        } else {
            std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
        }
        kill(program.Process(), mayCleanUp ? SIGTERM : SIGKILL);
        killed += program.Finish().signal != 0;
        ExpectWholeImages();
        const unsigned left = RemoveTemporaries();
        whileWriting += left > 0;
        if (!mayCleanUp) continue;
        EXPECT_EQ(left, 0U);
        EXPECT_TRUE(Images() == old_ || Images() == new_) << "one of each";
    }
    std::cout << kCompiles << " compiled, " << killed << " killed, " << whileWriting << " of them while writing\n";
    EXPECT_GT(killed, 0);
    EXPECT_GT(whileWriting, 0);
}

INSTANTIATE_TEST_SUITE_P(Seed, ZekKilledAtAMoment, testing::Range(1U, 1U + ShardsOfPrograms(4)));

TEST_F(ZekKilled, BeforeAnyStepOfTheWritingLeavesWholeImages) {
    unsigned step = 1;
    for (;; ++step) {
        SCOPED_TRACE(step);
        PutOldImages();
        const Result result = Program(kCompile, Fault("kill:" + std::to_string(step))).Finish();
        ExpectWholeImages();
        if (result.signal == 0) break;
        ASSERT_EQ(result.signal, SIGKILL);
    }
    EXPECT_EQ(Images(), new_);
    EXPECT_GT(step, 20U) << "there is more to writing two images";
}

}  // namespace

}  // namespace zek::test
