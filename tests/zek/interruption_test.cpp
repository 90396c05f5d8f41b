#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
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

TEST_F(ZekInterrupted, LeavesWholeImagesWheneverItComes) {
    WriteSound("old.zek", 500);
    WriteSound("new.zek", 1500);
    const Strings compile = {ZEK_PROGRAM, "compile", "new.zek", "-o", "image", "-g", "debug"};
    ASSERT_EQ(Zek({"compile", "new.zek"}).code, 0);
    ASSERT_EQ(Zek({"compile", "old.zek"}).code, 0);
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_EQ(Program(compile).Finish().code, 0);
    const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin);
    const std::string images[] = {WithoutTime(Read("old.zki")), WithoutTime(Read("new.zki"))};
    const std::string debugImages[] = {WithoutTime(Read("old.zkd")), WithoutTime(Read("new.zkd"))};
    std::mt19937 random(20240229);
    std::uniform_int_distribution<long> moment(0, whole.count() + whole.count() / 4);
    int interrupted = 0;
    for (int i = 0; i < 60; ++i) {
        std::filesystem::copy_file("old.zki", "image", std::filesystem::copy_options::overwrite_existing);
        std::filesystem::copy_file("old.zkd", "debug", std::filesystem::copy_options::overwrite_existing);
        const bool mayCleanUp = i % 2 == 0;
        Program program(compile);
        std::this_thread::sleep_for(std::chrono::microseconds(moment(random)));
        kill(program.Process(), mayCleanUp ? SIGTERM : SIGKILL);
        const Result result = program.Finish();
        interrupted += result.signal != 0;
        const std::string image = WithoutTime(Read("image"));
        const std::string debug = WithoutTime(Read("debug"));
        EXPECT_TRUE(image == images[0] || image == images[1]) << image.size();
        EXPECT_TRUE(debug == debugImages[0] || debug == debugImages[1]) << debug.size();
        if (mayCleanUp) {
            EXPECT_EQ(image == images[0], debug == debugImages[0]);
            EXPECT_FALSE(HasTemporary());
        }
        for (const std::string& name : Names()) {
            if (name.starts_with(".zek-")) std::filesystem::remove(name);
        }
    }
    EXPECT_GT(interrupted, 0);
}

}  // namespace

}  // namespace zek::test
