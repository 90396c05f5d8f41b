// What is read from pipes: images for as long as the library waits for them, sources for as long as they take.
#include "memory_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <optional>
#include <utility>

#include "failure.h"
#include "support/passing_time.h"

namespace zek::tool {

namespace {

using std::chrono::seconds;
using test::FailingPoll;
using test::PassingTime;

/// A pipe that can be opened by its name.
class Pipe {
public:
    Pipe() { EXPECT_EQ(pipe(ends_), 0); }
    ~Pipe() {
        Close();
        close(ends_[0]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    std::string Name() const { return "/dev/fd/" + std::to_string(ends_[0]); }
    void Write(const std::string& bytes) const {
        EXPECT_EQ(write(ends_[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    void Close() {
        if (ends_[1] >= 0) close(std::exchange(ends_[1], -1));
    }

private:
    int ends_[2] = {-1, -1};
};

/// The bytes, or why there are none.
std::string Source(const std::string& name) {
    std::string why;
    return ReadSource(name, why).value_or(why);
}

std::string Image(const std::string& name) {
    try {
        return ReadFile(name);
    } catch (const Failure& failure) {
        const std::string told = failure.what();
        return told.substr(told.rfind(": ") + 2);
    }
}

TEST(ZekPipe, OfASourceIsReadHoweverSlowItsWriterIs) {
    Pipe pipe;
    int step = 0;
    const PassingTime time(seconds(50), [&] {
        if (++step == 3) pipe.Write("[A]\n");
        if (step == 5) pipe.Write("B=1\n");
        if (step == 7) pipe.Close();
    });
    EXPECT_EQ(Source(pipe.Name()), "[A]\nB=1\n");
    EXPECT_GT(time.Passed(), seconds(100));
}

TEST(ZekPipe, OfASourceThatNobodyWritesIsGivenUpAfterTwoSeconds) {
    const std::string fifo = testing::TempDir() + "zek-fifo-" + std::to_string(getpid());
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const PassingTime time(seconds(50), [] {});
    EXPECT_EQ(Source(fifo), "nothing came for two seconds");
    EXPECT_LE(time.Passed(), seconds(2));
    EXPECT_GT(time.Passed(), seconds(1));
    unlink(fifo.c_str());
}

TEST(ZekPipe, OfAnImageIsGivenUpAfterTwoSecondsOfSilenceOrAMinute) {
    Pipe pipe;
    {
        const PassingTime time(seconds(50), [] {});
        EXPECT_EQ(Image(pipe.Name()), "nothing came for two seconds");
        EXPECT_LE(time.Passed(), seconds(2));
    }
    const PassingTime time(std::chrono::milliseconds(1800), [&] { pipe.Write("x"); });
    EXPECT_EQ(Image(pipe.Name()), "it has not ended after a minute");
    EXPECT_LE(time.Passed(), seconds(60));
    EXPECT_GT(time.Passed(), seconds(58));
}

TEST(ZekPipe, ThatCannotBeWaitedForIsGivenUpAtOnce) {
    Pipe pipe;
    const FailingPoll poll(ENOMEM);
    EXPECT_EQ(Image(pipe.Name()), "Cannot allocate memory");
    EXPECT_EQ(Source(pipe.Name()), "Cannot allocate memory");
    EXPECT_EQ(poll.Calls(), 2U);
}

TEST(ZekPipe, ThatCallsItselfReadyWithoutBytesIsAskedAgainAfterAPause) {
    Pipe pipe;
    const int standard = open(pipe.Name().c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_EQ(dup2(standard, STDIN_FILENO), STDIN_FILENO);
    close(standard);
    int pauses = 0;
    const PassingTime time(seconds(1), [&] {
        if (++pauses != 500) return;
        pipe.Write("bytes");
        pipe.Close();
    });
    {
        const FailingPoll poll(0);
        EXPECT_EQ(Image(pipe.Name()), "nothing came for two seconds");
        EXPECT_LE(time.Passed(), seconds(2));
        EXPECT_GT(pauses, 0);
        EXPECT_EQ(poll.Calls(), pauses + 1U);
    }
    const FailingPoll poll(0);
    const int before = pauses;
    EXPECT_EQ(Source("-"), "bytes");
    EXPECT_EQ(pauses, 500);
    EXPECT_EQ(poll.Calls(), static_cast<unsigned>(500 - before) + 2);
}

TEST(ZekPipe, IsReadThoughSignalsInterruptTheWait) {
    Pipe pipe;
    pipe.Write("bytes");
    pipe.Close();
    const FailingPoll poll(EINTR, 3);
    EXPECT_EQ(Image(pipe.Name()), "bytes");
    EXPECT_EQ(poll.Calls(), 3U);
}

}  // namespace

}  // namespace zek::tool
