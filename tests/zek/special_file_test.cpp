// Images that come from pipes, and FIFOs from which nothing comes.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <iterator>
#include <memory>

#include "zek/command.h"

namespace zek::test {

namespace {

class ZekSpecialFile : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        WriteSound("a.zek", 2);
        ASSERT_EQ(Zek({"compile", "a.zek"}).code, 0);
        ASSERT_EQ(mkfifo("fifo", 0600), 0);
    }

    static Result Shell(const std::string& command) {
        return Program({"bash", "-c", "zek() { \"" ZEK_PROGRAM "\" \"$@\"; }\n" + command}).Finish();
    }
};

/// Columns, source lines, what lint finds and what comments allow.
TEST_F(ZekSpecialFile, SourceFromAPipeIsCheckedAsAFileIs) {
    Write("b.txt", "[DEFINE]\nA = 12abc\nB = 12abc ; zek: allow L111\n[PROPERTY]\nC = 1, 2\n");
    const auto said = [](const std::string& command, const std::string& name) {
        std::string err = Shell(command).err;
        for (std::size_t at; (at = err.find(name)) != err.npos;) err.replace(at, name.size(), "SOURCE");
        return err;
    };
    const std::string file = said("zek check --no-warn L135 b.txt", "b.txt");
    ASSERT_NE(file.find("    2 | A = 12abc\n      |     ^~~~~\n"), file.npos) << file;
    ASSERT_TRUE(file.ends_with("SOURCE: 2 warnings\n")) << file;
    EXPECT_EQ(said("cat b.txt | zek check --no-warn L135 -", "/dev/stdin"), file);
    EXPECT_EQ(said("(sleep 3; cat b.txt) | zek check --no-warn L135 -", "/dev/stdin"), file);
    EXPECT_EQ(said("cat b.txt > fifo & zek check --no-warn L135 fifo", "fifo"), file);
    EXPECT_EQ(said("(sleep 2.5; cat b.txt) > fifo & zek check --no-warn L135 fifo", "fifo"), file);
    // Read once, though it is included twice.
    Write("c.txt", "[INCLUDE]\nFILE = fifo\nFILE = ./fifo\n");
    EXPECT_EQ(Shell("printf '[DEFINE]\\nA = 12abc\\n' > fifo & zek check --no-warn L135 c.txt").err,
              "fifo:2:5: warning: [DEFINE]:A, 12abc counts as 12: what stands behind the digits is ignored [L111]\n"
              "    2 | A = 12abc\n      |     ^~~~~\n"
              "c.txt:2:8: note: included from here\n"
              "c.txt: 1 warning\n");
}

TEST_F(ZekSpecialFile, SourceFromAPipeThatGivesNothingIsRefused) {
    for (const std::string closed : {"check - <&-", "compile - -o x.zki -g x.zkd <&-"}) {
        const Result result = Shell("zek " + closed);
        EXPECT_EQ(result.code, 2) << closed;
        EXPECT_EQ(result.err, "zek: cannot read /dev/stdin: Bad file descriptor\n") << closed;
    }
    EXPECT_EQ(Shell("true | zek check -").err, "zek: cannot read /dev/stdin: it ended without a byte\n");
    EXPECT_EQ(Shell("zek verify - <&-").err, "zek: cannot read -: Bad file descriptor\n");
    EXPECT_EQ(Shell("zek check - < /dev/null").code, 0);
}

TEST_F(ZekSpecialFile, FifoThatNobodyWritesToEndsWithTwoAfterAWhile) {
    const std::vector<Strings> commands = {
        {"verify", "fifo"},
        {"verify", "--pair", "a.zki", "fifo"},
        {"dump", "fifo"},
        {"tree", "fifo"},
        {"get", "fifo", "SENSOR/#1/VALUE"},
        {"map", "fifo"},
        {"map", "a.zki", "fifo"},
        {"origin", "fifo", "SENSOR/#1/VALUE"},
        {"diff", "a.zki", "fifo"},
        {"diff", "fifo", "fifo"},
        {"origin", "a.zkd", "SENSOR/#1/VALUE", "fifo"},
        {"decompile", "fifo"},
        {"fmt", "fifo"},
    };
    // All at once: each waits for two seconds.
    std::vector<std::unique_ptr<Program>> programs;
    for (Strings words : commands) {
        words.insert(words.begin(), {"timeout", "60", ZEK_PROGRAM});
        programs.push_back(std::make_unique<Program>(words));
    }
    for (std::size_t i = 0; i < commands.size(); ++i) {
        SCOPED_TRACE(testing::PrintToString(commands[i]));
        const Result result = programs[i]->Finish();
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "zek: cannot read fifo: nothing came for two seconds\n");
    }
}

TEST_F(ZekSpecialFile, FifoWhoseWriterFallsSilentEndsWithTwo) {
    const int fifo = open("fifo", O_RDWR);
    ASSERT_GE(fifo, 0);
    ASSERT_EQ(write(fifo, "QUOR", 4), 4);
    const Result result = Zek({"verify", "fifo"});
    close(fifo);
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, "zek: cannot read fifo: nothing came for two seconds\n");
}

TEST_F(ZekSpecialFile, FifoMayHaveAWriterThatComesLater) {
    const Result result = Shell("(sleep 0.3; cat a.zki > fifo) & zek verify fifo; wait");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "fifo: ok: compiled image, 4 sections, 23 entries, 0 notes\n") << result.err;
}

TEST_F(ZekSpecialFile, PipesOfTheShellAreRead) {
    const struct {
        const char* command;
        int code;
        std::string out;
    } rows[] = {
        {"zek diff <(cat a.zki) <(sleep 0.3; cat a.zki)", 0, ""},
        {"cat a.zkd | zek get /dev/stdin 'SENSOR/#2/NAME'", 0, "Sensor 2\n"},
        {"cat a.zkd | zek get - 'SENSOR/#2/NAME'", 0, "Sensor 2\n"},
        {"(sleep 2.5; cat a.zkd) | zek get - 'SENSOR/#2/NAME'", 0, "Sensor 2\n"},
        {"zek get - 'SENSOR/#2/NAME' < a.zkd", 0, "Sensor 2\n"},
        {"zek verify /dev/zero", 2, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.command);
        const Result result = Shell(row.command);
        EXPECT_EQ(result.code, row.code) << result.err;
        EXPECT_EQ(result.out, row.out);
    }
    EXPECT_EQ(Zek({"verify", "/dev/zero"}).err,
              "zek: cannot read /dev/zero: what is no regular file may give 256 MiB\n");
}

TEST_F(ZekSpecialFile, SourceOfAShellThatTakesItsTimeIsWaitedFor) {
    const Result result = Shell("zek fmt --check <(sleep 2.5; echo '[A]')");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
}

TEST_F(ZekSpecialFile, ImageForAFifoWithoutAReaderEndsWithTwoAfterAWhile) {
    const auto files = [] { return std::distance(std::filesystem::directory_iterator("."), {}); };
    const auto before = files();
    const std::string debug = Read("a.zkd");
    const Result result = Program({"timeout", "60", ZEK_PROGRAM, "compile", "a.zek", "-o", "fifo"}).Finish();
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, "zek: cannot write fifo: nobody reads from it\n");
    EXPECT_EQ(Read("a.zkd"), debug);
    EXPECT_EQ(files(), before);
}

TEST_F(ZekSpecialFile, ImageForAFifoIsNotWrittenWhereTheOtherFifoHasNoReader) {
    ASSERT_EQ(mkfifo("other", 0600), 0);
    Write("source", Read("a.zek"));
    for (const std::string outputs : {"-o fifo -g other", "-o other -g fifo"}) {
        SCOPED_TRACE(outputs);
        const Result result =
            Shell("timeout 5 cat fifo > got & zek compile source " + outputs + "; code=$?; wait; exit $code");
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.err, "zek: cannot write other: nobody reads from it\n");
        EXPECT_EQ(Read("got"), "");
    }
}

TEST_F(ZekSpecialFile, ReaderOfAFifoThatTakesItsTimeIsWaitedFor) {
    WriteSound("large.zek", 700);
    ASSERT_EQ(Zek({"compile", "large.zek"}).code, 0);
    const std::string image = Read("large.zki");
    // More than the system keeps for who reads later.
    ASSERT_GT(image.size(), std::size_t{1} << 16);
    Write("source", Read("large.zek"));
    const Result result = Shell("(sleep 2.5; cat > got) < fifo & zek compile source -o fifo && wait");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_TRUE(WithoutTime(Read("got")) == WithoutTime(image));
}

TEST_F(ZekSpecialFile, ImageForAFifoOrADeviceIsWritten) {
    Write("source", Read("a.zek"));
    for (const std::string command : {"(sleep 0.3; cat fifo > got) & zek compile source -o fifo && wait",
                                      "zek compile source -o /dev/stdout -g /dev/null | cat > got",
                                      "zek compile source -o /dev/stdout -g /dev/null > got"}) {
        SCOPED_TRACE(command);
        Write("got", "");
        EXPECT_EQ(Shell("set -o pipefail; " + command).code, 0);
        EXPECT_EQ(Dump(WithoutTime(Read("got"))), Dump(WithoutTime(Read("a.zki"))));
    }
    const Result full = Shell("zek compile source -o /dev/full");
    EXPECT_EQ(full.code, 2);
    EXPECT_EQ(full.err, "zek: cannot write /dev/full: No space left on device\n");
}

}  // namespace

}  // namespace zek::test
