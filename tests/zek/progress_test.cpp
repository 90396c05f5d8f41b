// The line that tells on a terminal what a long compilation is at.
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <list>
#include <thread>

#include "zek/command.h"

namespace zek::test {

namespace {

/// What is seen in the end, without blanks at line ends.
std::string Seen(const std::string& written) {
    std::string seen;
    std::string line;
    std::size_t column = 0;
    const auto endLine = [&] { seen += line.erase(line.find_last_not_of(' ') + 1); };
    for (const char byte : written) {
        if (byte == '\r') {
            column = 0;
        } else if (byte == '\n') {
            endLine();
            seen += '\n';
            line.clear();
            column = 0;
        } else {
            if (column == line.size()) line += ' ';
            line[column++] = byte;
        }
    }
    endLine();
    return seen;
}

class ZekProgress : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        Write("a.zek", "[PROPERTY]\nA = 1\n[PROPERTY]\nB = 1\n");
        Write("slow.zek", "[PROPERTY]\nC = 1,2\n");
        Write("board.zek", "[INCLUDE]\nFILE = a.zek\nFILE = slow.zek\n");
    }

    struct OnTerminal {
        int code;
        std::string written;
    };
    static OnTerminal Shown(const Strings& arguments, Setting setting) {
        setting.terminalColumns = 80;
        setting.environment.emplace_back("TERM", "dumb");
        const Result result = Zek(arguments, setting);
        return {result.code, result.err};
    }
};

TEST_F(ZekProgress, IsShownOnATerminalAndErased) {
    const std::string written = Shown({"check", "board.zek"}, Fault("slow")).written;
    EXPECT_NE(written.find("\rzek: board.zek: reading: 2 files, 2 sections"), std::string::npos) << written;
    const Result piped = Zek({"check", "board.zek"}, Fault("slow"));
    EXPECT_NE(piped.err, "");
    EXPECT_EQ(piped.err.find('\r'), std::string::npos);
    EXPECT_EQ(Seen(written), piped.err);
}

TEST_F(ZekProgress, TellsOfTheWritingToo) {
    const auto [code, written] = Shown({"compile", "--no-warn", "W101", "board.zek"}, Fault("slow"));
    EXPECT_EQ(code, 0);
    const std::size_t reading = written.find("\rzek: board.zek: reading: ");
    const std::size_t writing = written.find("\rzek: board.zek: writing the images");
    EXPECT_NE(reading, std::string::npos) << written;
    EXPECT_NE(writing, std::string::npos) << written;
    EXPECT_LT(reading, writing);
    EXPECT_EQ(Seen(written), "");
}

TEST_F(ZekProgress, IsNotShownForQuickWork) {
    using Clock = std::chrono::steady_clock;
    // On a machine with much else to do even this may take a second.
    for (int tries = 0; tries < 20; ++tries) {
        const Clock::time_point begun = Clock::now();
        const std::string written = Shown({"check", "--no-warn", "W101", "board.zek"}, {}).written;
        if (Clock::now() - begun > std::chrono::milliseconds(900)) continue;
        EXPECT_EQ(written, "");
        return;
    }
    FAIL() << "it never was quick";
}

TEST_F(ZekProgress, FitsTheWidthOfTheTerminal) {
    const std::string name(100, 'b');
    std::filesystem::rename("board.zek", name);
    // Whatever is wanted for the lines of the source.
    for (const char* wanted : {"80", "200"}) {
        SCOPED_TRACE(wanted);
        Setting setting = Fault("slow");
        setting.environment.emplace_back("COLUMNS", wanted);
        const std::string written = Shown({"check", "--no-warn", "W101", name}, setting).written;
        EXPECT_NE(written.find("\rzek: reading: 2 files"), std::string::npos) << written;
        EXPECT_EQ(Seen(written), "");
    }
}

TEST_F(ZekProgress, IsErasedBeforeTheCommandGivesUp) {
    Write("slow.zek", "[PROPERTY]\nC = 1\n");
    const Strings arguments = {"compile", "-o", "image", "-g", "board.zkd", "board.zek"};
    const Setting failing = Fault("slow,fchmod");
    Write("image", "x");
    const auto [code, written] = Shown(arguments, failing);
    EXPECT_EQ(code, 2);
    EXPECT_NE(written.find("\rzek: board.zek: "), std::string::npos) << written;
    const Result piped = Zek(arguments, failing);
    EXPECT_NE(piped.err, "");
    EXPECT_EQ(Seen(written), piped.err);
}

/// What a shell runs, with the terminal for standard error; the image comes so slowly that there is time for the line.
TEST_F(ZekProgress, IsShownForImagesToo) {
    WriteSound("a.zek");
    ASSERT_EQ(Zek({"compile", "a.zek"}).code, 0);
    const struct {
        const char* arguments;
        const char* image;
    } rows[] = {{"verify -", "a.zki"},
                {"verify --pair - a.zkd", "a.zki"},
                {"map - a.zkd", "a.zki"},
                {"diff - a.zki", "a.zki"},
                {"decompile -", "a.zki"},
                {"get - SENSOR/#1/TYPE", "a.zki"},
                {"dump -", "a.zkd"},
                {"tree -", "a.zkd"},
                {"origin - SENSOR/#1/TYPE", "a.zkd"}};
    // All at a time, since they mostly wait.
    std::list<Program> programs;
    for (const auto& row : rows) {
        const std::string slowly = std::string("{ sleep 2; cat ") + row.image + "; } | " ZEK_PROGRAM " ";
        programs.emplace_back(Strings{"sh", "-c", slowly + row.arguments}, Setting{.terminalColumns = 80});
    }
    for (const auto& row : rows) {
        SCOPED_TRACE(row.arguments);
        const Result result = programs.front().Finish();
        EXPECT_EQ(result.code, 0);
        EXPECT_NE(result.err.find("\rzek: -: reading"), std::string::npos) << result.err;
        EXPECT_EQ(Seen(result.err), "");
        programs.pop_front();
    }
}

TEST_F(ZekProgress, TellsWhatDecompileIsAt) {
    ASSERT_EQ(Zek({"compile", "-o", "image", "-g", "debug", "slow.zek"}).code, 0);
    const auto [code, written] = Shown({"decompile", "debug", "-o", "made"}, Fault("slow"));
    EXPECT_EQ(code, 0);
    EXPECT_NE(written.find("\rzek: debug: compiling the source"), std::string::npos) << written;
    EXPECT_EQ(Seen(written), "");
}

/// A second and more goes by before somebody types.
TEST_F(ZekProgress, LeavesATerminalToTheOneWhoTypes) {
    std::list<Program> programs;
    for (const char* command : {"check", "fmt"}) {
        programs.emplace_back(Strings{ZEK_PROGRAM, command, "-"}, Setting{.terminalColumns = 80, .keyboard = true});
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    for (Program& program : programs) {
        program.Type("[PROPERTY]\nA=1\n\x04");
        const Result result = program.Finish();
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.err, "[PROPERTY]\nA=1\n");
    }
}

TEST_F(ZekProgress, TellsWhichFileIsLaidOut) {
    for (const char* name : {"a.zek", "b.zek"}) Write(name, "[PROPERTY]\nA=1\n");
    const auto [code, written] = Shown({"fmt", "a.zek", "b.zek"}, Fault("slow"));
    EXPECT_EQ(code, 0);
    EXPECT_NE(written.find("\rzek: b.zek: laying out"), std::string::npos) << written;
    EXPECT_EQ(Seen(written), "");
    EXPECT_EQ(Read("b.zek"), "[PROPERTY]\nA = 1\n");
}

class ZekInterruptedProgress : public ZekProgress, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        ZekProgress::SetUp();
        ASSERT_EQ(mkfifo("pipe", 0600), 0);
        writer_ = open("pipe", O_RDWR | O_CLOEXEC);
    }
    void TearDown() override { close(writer_); }

    /// Of a command that reads a source without end, and is interrupted once it shows the line.
    template <class Interrupt>
    static Result Interrupted(bool keyboard, Interrupt interrupt) {
        Program program({ZEK_PROGRAM, GetParam(), "pipe"}, {.terminalColumns = 80, .keyboard = keyboard});
        EXPECT_TRUE(program.Shows("zek: pipe: reading"));
        interrupt(program);
        Result result = program.Finish();
        EXPECT_EQ(result.signal, SIGINT);
        return result;
    }

private:
    int writer_ = -1;
};

/// The child of `check`, which shows the line, ends with its parent and cannot erase it then.
TEST_P(ZekInterruptedProgress, IsErasedByASignal) {
    const Result result = Interrupted(false, [](Program& program) { ASSERT_EQ(kill(program.Process(), SIGINT), 0); });
    EXPECT_EQ(Seen(result.err), "");
    // What a terminal shows of the key that interrupts, too.
    const std::size_t line = result.err.rfind("\rzek");
    const std::size_t blanks = result.err.rfind("\r ");
    ASSERT_NE(blanks, std::string::npos) << result.err;
    EXPECT_EQ(result.err.size() - blanks, blanks - line + 3) << result.err;
}

/// What the terminal shows of the key comes behind the signal, perhaps when the line is erased already.
TEST_P(ZekInterruptedProgress, IsErasedByTheKeyForIt) {
    const Result result = Interrupted(true, [](Program& program) { program.Type("\x03"); });
    const std::string seen = Seen(result.err);
    EXPECT_TRUE(seen.empty() || seen == "^C") << result.err;
}

INSTANTIATE_TEST_SUITE_P(Of, ZekInterruptedProgress, testing::Values("check", "compile"),
                         [](const auto& row) { return row.param; });

}  // namespace

}  // namespace zek::test
