// The programs in docs/host.md are those in examples/hosts, and they print what the page says.
#include <sstream>

#include "docs/page.h"
#include "docs/run.h"
#include "support/process_test.h"

namespace zek::test {
namespace {

constexpr char kPage[] = "docs/host.md";

/// Writes the page's source and compiles it by the page's compiler host.
class Hosts : public ProcessTest {
protected:
    void SetUp() override {
        ProcessTest::SetUp();
        Write("fan.zek", Block(kPage, "zek fan.zek"));
        ASSERT_EQ(Run("compile_host fan.zek fan.zki fan.zkd"), 0) << Read("stderr");
    }

    static int Run(const std::string& command) { return RunCommand(ZEK_HOSTS_DIR "/" + command); }

    /// What a host printed as messages, without those that tell which parser library serves.
    static std::string Printed() {
        std::istringstream all(Read("stderr"));
        std::string rest;
        for (std::string line; std::getline(all, line);) {
            if (!line.starts_with("Parse::load ")) rest += line + '\n';
        }
        return rest;
    }
};

struct ProgramRow {
    const char* name;
    std::string program;
    std::string words;
    std::string messages;
};

class HostPage : public Hosts, public testing::WithParamInterface<ProgramRow> {};

TEST_P(HostPage, ShowsTheProgramWordForWord) {
    const std::string file = GetParam().program + ".cpp";
    EXPECT_EQ(Block(kPage, "cpp " + file), SourceFile("examples/hosts/" + file));
}

TEST_P(HostPage, ShowsWhatTheProgramPrints) {
    const ProgramRow& row = GetParam();
    EXPECT_EQ(Run(row.program + row.words), 0);
    EXPECT_EQ(Read("stdout"), Block(kPage, "text " + row.program));
    EXPECT_EQ(Printed(), row.messages);
}

INSTANTIATE_TEST_SUITE_P(Program, HostPage,
                         testing::Values(ProgramRow{"Compiler", "compile_host", " fan.zek fan.zki fan.zkd",
                                                    "Parse::No more sections(total = 5).\n"},
                                         ProgramRow{"Runtime", "runtime_host", " fan.zki", ""},
                                         ProgramRow{"Verifying", "view_host", " fan.zki", ""},
                                         ProgramRow{"Inspection", "inspect_host", " fan.zkd", ""}),
                         RowName());

TEST_F(Hosts, LookForIncludedFilesInTheFoldersThatTheyAreGiven) {
    std::filesystem::create_directory("words");
    Write("words/small.zek", "[DEFINE]\nONE = 1\n");
    Write("main.zek", "[INCLUDE]\nFILE = small.zek\n");
    EXPECT_EQ(Run("compile_host main.zek main.zki main.zkd"), 0);
    EXPECT_EQ(Printed(),
              "Warning[main.zek:2], [INCLUDE]:FILE FILE small.zek cannot be loaded.\n"
              "Parse::No more sections(total = 1).\n");
    EXPECT_EQ(Run("compile_host main.zek main.zki main.zkd words"), 0);
    EXPECT_EQ(Printed(), "Parse::No more sections(total = 1).\nParse::No more sections(total = 1).\n");
}

TEST_F(Hosts, CompileTheExampleOfTheReadmeWithoutAMessage) {
    Write("first.zek", Block("README.md", "zek first.zek"));
    EXPECT_EQ(Run("compile_host first.zek first.zki first.zkd " ZEK_SOURCE_DIR "/share/zek/include"), 0);
    EXPECT_EQ(Printed(), "Parse::No more sections(total = 1).\nParse::No more sections(total = 4).\n");
}

TEST_F(Hosts, TellThatASourceHasErrors) {
    Write("bad.zek", "[QUORZEK]\n");
    EXPECT_EQ(Run("compile_host bad.zek bad.zki bad.zkd"), 1);
    EXPECT_EQ(Read("stdout"), "bad.zek not compiled\n");
    EXPECT_EQ(Printed(),
              "Parse::No more sections(total = 1).\n"
              "Error[bad.zek:0]: [QUORZEK]:VERSION, This ENTRY does not exist.\n");
    EXPECT_FALSE(std::filesystem::exists("bad.zki"));
}

TEST_F(Hosts, TellThatAFileIsNoImage) {
    EXPECT_EQ(Run("runtime_host fan.zek"), 1);
    EXPECT_EQ(Printed(), "no compiled image, code 13\n");
    EXPECT_EQ(Run("inspect_host fan.zki"), 1);
    EXPECT_EQ(Printed(), "ERROR: File fan.zki is invalid.\n");
}

TEST_F(Hosts, KeepTheSoundImageWhenTheNextOneIsDamaged) {
    std::string damaged = Read("fan.zki");
    damaged[0x100] = '\x7f';
    Write("damaged.zki", damaged);
    EXPECT_EQ(Run("view_host fan.zki damaged.zki"), 0);
    EXPECT_EQ(Read("stdout"), Block(kPage, "text view_host"));
    EXPECT_TRUE(Printed().starts_with("damaged.zki: byte 256, image: 127 sections are announced, there is room for "))
        << Printed();
    EXPECT_EQ(Run("view_host damaged.zki missing.zki"), 1);
    EXPECT_TRUE(
        Printed().ends_with("missing.zki: byte 0, image: does not begin as a compiled image does [bad-magic]\n"))
        << Printed();
}

TEST(HostPageOfViews, ListsEveryCodeOfAFinding) {
    const std::string page = SourceFile(kPage);
    for (unsigned number = 1; number < 200; ++number) {
        const std::string name = NameOf(static_cast<ImageCode>(number));
        if (name == "none") continue;
        EXPECT_NE(page.find("| " + std::to_string(number) + " " + name + " |"), std::string::npos) << name;
    }
}

TEST_F(Hosts, TellThatADebugImageIsDamaged) {
    // The first section's length says that four bytes follow, which is less than a section has.
    Write("cut.zkd", Read("fan.zkd").substr(0, 0x80) + Word(0) + Word(1) + Word(1) + Word(4) + Word(0));
    EXPECT_EQ(Run("inspect_host cut.zkd"), 1);
    EXPECT_EQ(Printed(), "cut.zkd is damaged\n");
}

}  // namespace
}  // namespace zek::test
