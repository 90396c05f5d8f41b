#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>
#include <utility>

#include "parser_test.h"
#include "support/passing_time.h"
#include "support/resources.h"

namespace {

class SpecialFile : public ParserTest {
protected:
    std::string MakeFifo() const {
        const std::string path = Path("fifo");
        EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
        return path;
    }

    static void WriteTo(int descriptor, const std::string& text) {
        ASSERT_EQ(write(descriptor, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
};

TEST_F(SpecialFile, DirectoryIsRefused) {
    EXPECT_EQ(DumpFile(Path("")), "refused");
    EXPECT_EQ(DumpFile("/"), "refused");
    EXPECT_EQ(DumpFile("."), "refused");
}

TEST_F(SpecialFile, StaysOpenNoLongerThanItIsRead) {
    const std::string path = Write("a.ini", "[A]\n");
    const OpenedFile outer(path);
    outer.Section(0);
    const auto before = zek::test::OpenFiles();
    for (const std::string& name : {path, Path(""), MakeFifo(), std::string("/dev/null"), Path("none")}) {
        SCOPED_TRACE(name);
        const OpenedFile file(name);
        EXPECT_EQ(zek::test::OpenFiles(), before);
    }
    const OpenedFile other(Write("b.ini", "[B]\n"));
    EXPECT_TRUE(other);
    EXPECT_EQ(zek::test::OpenFiles(), before);
}

TEST_F(SpecialFile, MissingFileIsRefused) { EXPECT_EQ(DumpFile(Path("none")), "refused"); }

TEST_F(SpecialFile, ReadErrorIsRefused) { EXPECT_EQ(DumpFile("/proc/self/mem"), "refused"); }

TEST_F(SpecialFile, SocketIsRefused) {
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = Path("socket");
    ASSERT_LT(path.size(), sizeof address.sun_path);
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    ASSERT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(DumpFile(path), "refused");
    close(descriptor);
}

TEST_F(SpecialFile, NullDeviceIsAnEmptyFile) { EXPECT_EQ(DumpFile("/dev/null"), ""); }

TEST_F(SpecialFile, EndlessDeviceIsRefused) { EXPECT_EQ(DumpFile("/dev/zero"), "refused"); }

TEST_F(SpecialFile, FileWithoutALengthIsRead) {
    EXPECT_NE(DumpFile("/proc/self/status").find("1 []\n1 <Name:"), std::string::npos);
}

TEST_F(SpecialFile, FileTooLongForItsOffsetsIsRefused) {
    const std::string path = Write("huge", "");
    for (const std::uintmax_t size : {std::uintmax_t{0xFFFFFFFF}, std::uintmax_t{1} << 40}) {
        SCOPED_TRACE(size);
        std::filesystem::resize_file(path, size);
        EXPECT_EQ(DumpFile(path), "refused");
    }
}

TEST_F(SpecialFile, FifoThatNobodyWritesToIsRefusedAtOnce) {
    const std::string path = MakeFifo();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(DumpFile(path), "refused");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
}

TEST_F(SpecialFile, FifoWithASilentWriterIsRefusedAfterAWhile) {
    const std::string path = MakeFifo();
    const int writer = open(path.c_str(), O_RDWR);
    ASSERT_GE(writer, 0);
    WriteTo(writer, "[A]\n");
    EXPECT_EQ(DumpFile(path), "refused");
    close(writer);
}

TEST_F(SpecialFile, FifoThatDripsIsWaitedForAMinuteInAll) {
    const std::string path = MakeFifo();
    const int writer = open(path.c_str(), O_RDWR);
    ASSERT_GE(writer, 0);
    const zek::test::PassingTime time(std::chrono::milliseconds(1800), [&] { WriteTo(writer, ";"); });
    EXPECT_EQ(DumpFile(path), "refused");
    EXPECT_LE(time.Passed(), std::chrono::seconds(60));
    EXPECT_GE(time.Passed(), std::chrono::seconds(58)) << "the time that the test takes counts, too";
    close(writer);
}

TEST_F(SpecialFile, FifoThatCannotBeWaitedForIsRefusedAtOnce) {
    const std::string path = MakeFifo();
    const int writer = open(path.c_str(), O_RDWR);
    ASSERT_GE(writer, 0);
    const zek::test::FailingPoll poll(ENOMEM);
    EXPECT_EQ(DumpFile(path), "refused");
    EXPECT_EQ(poll.Calls(), 1U);
    close(writer);
}

TEST_F(SpecialFile, WaitThatASignalInterruptsGoesOn) {
    const std::string path = MakeFifo();
    int writer = open(path.c_str(), O_RDWR);
    ASSERT_GE(writer, 0);
    const zek::test::FailingPoll poll(EINTR, 3);
    const zek::test::PassingTime time(std::chrono::milliseconds(100), [&] {
        if (writer < 0) return;
        WriteTo(writer, "[A]\n");
        close(std::exchange(writer, -1));
    });
    EXPECT_EQ(DumpFile(path), "1 [A]\n");
    EXPECT_EQ(poll.Calls(), 3U);
}

TEST_F(SpecialFile, FifoIsReadUntilItsWriterCloses) {
    const std::string path = MakeFifo();
    const int writer = open(path.c_str(), O_RDWR);
    ASSERT_GE(writer, 0);
    std::thread late([&] {
        for (const char* text : {"[A", "]\nk=", "v\n"}) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            WriteTo(writer, text);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        close(writer);
    });
    EXPECT_EQ(DumpFile(path), "1 [A]\n2 <k> <v>\n");
    late.join();
}

TEST_F(SpecialFile, LongPipeIsReadWhole) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const std::string text = "[A]\nk=" + std::string(1 << 20, 'v') + "\n";
    std::thread source([&] {
        std::size_t done = 0;
        while (done < text.size()) {
            const ssize_t count = write(ends[1], text.data() + done, text.size() - done);
            if (count <= 0) break;
            done += static_cast<std::size_t>(count);
        }
        close(ends[1]);
    });
    EXPECT_EQ(DumpFile("/dev/fd/" + std::to_string(ends[0])), "1 [A]\n2 <k> <" + std::string(1 << 20, 'v') + ">\n");
    source.join();
    close(ends[0]);
}

TEST_F(SpecialFile, PipeWhoseWriterHasGoneIsRead) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    WriteTo(ends[1], "[A]\n");
    close(ends[1]);
    EXPECT_EQ(DumpFile("/dev/fd/" + std::to_string(ends[0])), "1 [A]\n");
    close(ends[0]);
}

}  // namespace
