// Images that come from pipes, and FIFOs from which nothing comes.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>
#include <utility>

#include "compile/image_file.h"
#include "compile/small_image.h"
#include "debugimage/debug_bytes.h"
#include "interface/queried_image.h"
#include "support/passing_time.h"
#include "support/resources.h"

namespace zek::test {

namespace {

class SpecialImageFile : public ProcessTest {
protected:
    void SetUp() override {
        ProcessTest::SetUp();
        ASSERT_EQ(mkfifo("fifo", 0600), 0);
    }

    /// Writes bytes to the FIFO in pieces, after a while; waits for a reader first.
    static void Feed(const std::string& bytes) {
        const int fifo = open("fifo", O_WRONLY);
        ASSERT_GE(fifo, 0);
        for (std::size_t at = 0; at < bytes.size(); at += 10) {
            if (at < 100) std::this_thread::sleep_for(std::chrono::milliseconds(20));
            const std::string piece = bytes.substr(at, 10);
            EXPECT_EQ(write(fifo, piece.data(), piece.size()), static_cast<ssize_t>(piece.size()));
        }
        close(fifo);
    }

    /// Writes an image and zeros up to a size to the FIFO, as far as it is read.
    static void Flood(const std::string& image, std::size_t size) {
        signal(SIGPIPE, SIG_IGN);
        const int fifo = open("fifo", O_WRONLY);
        ASSERT_GE(fifo, 0);
        std::string piece = image;
        piece.resize(1 << 20);
        while (size > 0) {
            const std::size_t count = std::min(size, piece.size());
            if (write(fifo, piece.data(), count) != static_cast<ssize_t>(count)) break;
            size -= count;
            piece.assign(piece.size(), '\0');
        }
        close(fifo);
    }

    /// What `load` gives while the FIFO is fed, or flooded when a size is given.
    template <class Load>
    static unsigned Fed(const std::string& bytes, Load load, std::size_t size = 0) {
        std::thread feeder = size > 0 ? std::thread(Flood, bytes, size) : std::thread(Feed, bytes);
        const unsigned result = load();
        feeder.join();
        return result;
    }
};

unsigned LoadCompiled() { return gcInit("fifo", nullptr); }
unsigned LoadDebug() { return gdInit("fifo", nullptr); }

TEST_F(SpecialImageFile, FolderIsAFileThatCannotBeRead) {
    const auto openBefore = OpenFiles();
    EXPECT_EQ(CodeAfter([] { EXPECT_EQ(gcInit(".", nullptr), 0U); }), 13U);
    EXPECT_EQ(CodeAfter([] { EXPECT_EQ(ReadMeta(".", nullptr), 0U); }), 12U);
    EXPECT_EQ(gdInit(".", nullptr), 0U);
    EXPECT_EQ(Messages(), "ERROR: Open debug file . failed.\n");
    EXPECT_EQ(OpenFiles(), openBefore);
}

TEST_F(SpecialImageFile, FifoThatNobodyWritesToIsAFileThatCannotBeRead) {
    const auto openBefore = OpenFiles();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(CodeAfter([] { EXPECT_EQ(LoadCompiled(), 0U); }), 13U);
    EXPECT_EQ(CodeAfter([] { EXPECT_EQ(ReadMeta("fifo", nullptr), 0U); }), 12U);
    EXPECT_EQ(LoadDebug(), 0U);
    EXPECT_EQ(Messages(), "ERROR: Open debug file fifo failed.\n");
    const auto waited = std::chrono::steady_clock::now() - begin;
    EXPECT_GE(waited, std::chrono::milliseconds(3 * 1900)) << "a writer may come within two seconds";
    EXPECT_LT(waited, std::chrono::seconds(30));
    EXPECT_EQ(OpenFiles(), openBefore);
}

TEST_F(SpecialImageFile, FifoIsReadToItsEndHoweverItsPiecesCome) {
    EXPECT_EQ(Fed(SmallImage(), LoadCompiled), 1U);
    EXPECT_EQ(gcGetGroupIndex("A"), 1U);
    EXPECT_EQ(Fed(DebugHead() + Joined({0, 0}), LoadDebug), 1U);
    EXPECT_EQ(Messages(), "");
}

TEST_F(SpecialImageFile, FifoMayGive256MebibytesAndNoMore) {
    constexpr std::size_t kMost = std::size_t{256} << 20;
    EXPECT_EQ(Fed(SmallImage(), LoadCompiled, kMost), 1U);
    EXPECT_EQ(CodeAfter([] { EXPECT_EQ(Fed(SmallImage(), LoadCompiled, kMost + 1), 0U); }), 13U);
    EXPECT_EQ(gcGetGroupIndex("A"), 1U) << "the image before stays";
    EXPECT_EQ(Fed(DebugHead() + Joined({0, 0}), LoadDebug, 2 * kMost), 0U);
    EXPECT_EQ(Messages(), "ERROR: Open debug file fifo failed.\n");
}

TEST_F(SpecialImageFile, FifoWhoseWriterFallsSilentIsRefused) {
    const std::string image = SmallImage();
    const int fifo = open("fifo", O_RDWR);
    ASSERT_GE(fifo, 0);
    ASSERT_EQ(write(fifo, image.data(), 300), 300);
    EXPECT_EQ(CodeAfter([] { EXPECT_EQ(LoadCompiled(), 0U); }), 13U);
    close(fifo);
    EXPECT_EQ(Fed(image, LoadCompiled), 1U) << "a good image loads right after";
}

/// Gives the FIFO some bytes at each wait, and ends behind the last of them.
class Dripping {
public:
    Dripping(const std::string& bytes, std::size_t piece) : bytes_(bytes), piece_(piece), fifo_(open("fifo", O_RDWR)) {
        EXPECT_GE(fifo_, 0);
    }
    ~Dripping() { close(fifo_); }
    Dripping(const Dripping&) = delete;
    Dripping& operator=(const Dripping&) = delete;

    std::chrono::milliseconds Passed() const { return time_.Passed(); }

private:
    void Drip() {
        if (given_ == bytes_.size()) {
            close(std::exchange(fifo_, -1));
            return;
        }
        const std::string_view piece = std::string_view(bytes_).substr(given_, piece_);
        EXPECT_EQ(write(fifo_, piece.data(), piece.size()), static_cast<ssize_t>(piece.size()));
        given_ += piece.size();
    }

    std::string bytes_;
    std::size_t piece_;
    std::size_t given_ = 0;
    int fifo_;
    // The silence before each piece is nearly as long as one may be.
    PassingTime time_{std::chrono::milliseconds(1800), [this] { Drip(); }};
};

TEST_F(SpecialImageFile, FifoThatDripsIsWaitedForAMinuteInAll) {
    const std::string image = SmallImage();
    const auto expectAMinute = [](const Dripping& dripping) {
        EXPECT_LE(dripping.Passed(), std::chrono::seconds(60));
        EXPECT_GE(dripping.Passed(), std::chrono::seconds(58)) << "the time that the test takes counts, too";
    };
    const auto refused = [&](const std::string& bytes, const auto& load) {
        const Dripping dripping(bytes, 1);
        load();
        expectAMinute(dripping);
    };
    refused(image, [] { EXPECT_EQ(CodeAfter([] { EXPECT_EQ(LoadCompiled(), 0U); }), 13U); });
    refused(image, [] { EXPECT_EQ(CodeAfter([] { EXPECT_EQ(ReadMeta("fifo", nullptr), 0U); }), 12U); });
    refused(DebugHead(), [] { EXPECT_EQ(LoadDebug(), 0U); });
    EXPECT_EQ(Messages(), "ERROR: Open debug file fifo failed.\n");
    const Dripping dripping(image, 100);
    EXPECT_EQ(LoadCompiled(), 1U) << "what ends within the minute is read";
    EXPECT_GT(dripping.Passed(), std::chrono::seconds(10));
}

TEST_F(SpecialImageFile, FifoThatCannotBeWaitedForIsRefusedAtOnce) {
    const FailingPoll poll(ENOMEM);
    EXPECT_EQ(CodeAfter([] { EXPECT_EQ(ReadMeta("fifo", nullptr), 0U); }), 12U);
    EXPECT_EQ(LoadDebug(), 0U);
    EXPECT_EQ(Messages(), "ERROR: Open debug file fifo failed.\n");
    EXPECT_EQ(poll.Calls(), 2U);
}

TEST_F(SpecialImageFile, WaitThatASignalInterruptsGoesOn) {
    const FailingPoll poll(EINTR, 3);
    EXPECT_EQ(Fed(SmallImage(), LoadCompiled), 1U);
    EXPECT_EQ(poll.Calls(), 3U);
}

}  // namespace

}  // namespace zek::test
