#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "zek/command.h"

namespace zek::test {

namespace {

/// A sound source a.zek in a folder of its own and two old images beside it.
class ZekOutput : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        WriteSound("a.zek", 20);
        Write("a.zki", "old image");
        Write("a.zkd", "old debug image");
    }

    static void ExpectOldImages() {
        EXPECT_EQ(Read("a.zki"), "old image");
        EXPECT_EQ(Read("a.zkd"), "old debug image");
    }

    static mode_t ModeOf(const std::string& file) {
        struct stat info {};
        EXPECT_EQ(stat(file.c_str(), &info), 0);
        return info.st_mode & 07777;
    }

    static bool IsImage(const std::string& file) { return Read(file).starts_with("QUOR ZEK meta."); }
};

const Strings kUntouched = {"a.zek", "a.zkd", "a.zki"};

struct FaultRow {
    const char* name;
    const char* fault;
    const char* said;
};

class ZekFault : public ZekOutput, public testing::WithParamInterface<FaultRow> {};

TEST_P(ZekFault, LeavesBothImagesAsTheyWereAndNothingBehind) {
    const Result result = Zek({"compile", "a.zek"}, Fault(GetParam().fault));
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, std::string("zek: cannot write ") + GetParam().said + '\n');
    ExpectOldImages();
    EXPECT_EQ(Names(), kUntouched);
}

INSTANTIATE_TEST_SUITE_P(In, ZekFault,
                         testing::Values(FaultRow{"Write", "write", "a.zki: No space left on device"},
                                         FaultRow{"Sync", "fsync", "a.zki: Input/output error"},
                                         FaultRow{"Close", "close", "a.zki: Input/output error"},
                                         FaultRow{"Mode", "fchmod", "a.zki: Operation not permitted"},
                                         FaultRow{"FirstRename", "rename1", "a.zki: Device or resource busy"},
                                         FaultRow{"SecondRename", "rename2", "a.zkd: Device or resource busy"}),
                         RowName());

TEST_F(ZekOutput, SecondRenameThatFailsTakesANewFirstImageAway) {
    std::filesystem::remove("a.zki");
    EXPECT_EQ(Zek({"compile", "a.zek"}, Fault("rename2")).code, 2);
    EXPECT_EQ(Names(), (Strings{"a.zek", "a.zkd"}));
}

TEST_F(ZekOutput, ImageLongerThanFilesMayBeIsAnErrorWithTheOldOnesWhole) {
    for (const unsigned long limit : {200ul, 1000ul, 3000ul}) {
        const Result result = Zek({"compile", "a.zek"}, {.fileSizeLimit = limit});
        EXPECT_EQ(result.code, 2) << result.signal;
        EXPECT_EQ(result.err,
                  "zek: cannot hold the image in memory: it was cut short after " + std::to_string(limit) + " bytes\n");
        ExpectOldImages();
        EXPECT_EQ(Names(), kUntouched);
    }
}

TEST_F(ZekOutput, TargetThatCannotBeWrittenIsAnErrorWithTheReason) {
    std::filesystem::create_directory("folder");
    std::filesystem::create_symlink("loop", "loop");
    const struct {
        std::string target;
        std::string reason;
    } rows[] = {{"missing/b", "No such file or directory"},
                {"a.zek/b", "Not a directory"},
                {"folder", "Is a directory"},
                {"new/", "No such file or directory"},
                {"folder/", "Is a directory"},
                {"loop", "Too many levels of symbolic links"},
                {"/proc/zek-test", "No such file or directory"},
                {"/dev/full", "No space left on device"},
                {std::string(300, 'n'), "File name too long"}};
    for (const auto& row : rows) {
        for (const Strings& options : std::vector<Strings>{{"-o", row.target}, {"-g", row.target}}) {
            SCOPED_TRACE(testing::PrintToString(options));
            const Result result = Zek({"compile", "a.zek", options[0], options[1]});
            EXPECT_EQ(result.code, 2);
            EXPECT_EQ(result.err, "zek: cannot write " + row.target + ": " + row.reason + '\n');
            ExpectOldImages();
        }
    }
    EXPECT_EQ(Names(), (Strings{"a.zek", "a.zkd", "a.zki", "folder", "loop"}));
}

TEST_F(ZekOutput, DeviceIsWrittenDirectly) {
    const Result result = Zek({"compile", "a.zek", "-o", "/dev/null", "-g", "/dev/null"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    ExpectOldImages();
}

TEST_F(ZekOutput, PipeIsWrittenDirectly) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    Program reader({"sh", "-c", "cat pipe > got"});
    EXPECT_EQ(Zek({"compile", "a.zek", "-o", "pipe"}).code, 0);
    EXPECT_EQ(reader.Finish().code, 0);
    EXPECT_TRUE(std::filesystem::is_fifo("pipe"));
    ASSERT_EQ(Zek({"compile", "a.zek"}).code, 0);
    EXPECT_EQ(Dump(WithoutTime(Read("got"))), Dump(WithoutTime(Read("a.zki"))));
}

TEST_F(ZekOutput, GoesToStandardOutputByItsDeviceName) {
    const Result result = Program({"sh", "-c", ZEK_PROGRAM " compile a.zek -o /dev/stdout | cat"}).Finish();
    EXPECT_EQ(result.code, 0);
    EXPECT_TRUE(result.out.starts_with("QUOR ZEK meta.")) << result.err;
}

TEST_F(ZekOutput, LinkStaysAndItsFileIsReplaced) {
    std::filesystem::create_directory("folder");
    Write("folder/real", "old");
    std::filesystem::create_symlink("folder/real", "link");
    std::filesystem::create_symlink("folder/new", "dangling");
    ASSERT_EQ(Zek({"compile", "a.zek", "-o", "link", "-g", "dangling"}).code, 0);
    EXPECT_EQ(std::filesystem::read_symlink("link"), "folder/real");
    EXPECT_EQ(std::filesystem::read_symlink("dangling"), "folder/new");
    EXPECT_TRUE(IsImage("folder/real"));
    EXPECT_EQ(Names("folder"), (Strings{"new", "real"}));
}

TEST_F(ZekOutput, ReplacedImageKeepsItsModeAndANewOneFollowsTheMask) {
    ASSERT_EQ(chmod("a.zki", 0640), 0);
    std::filesystem::remove("a.zkd");
    const mode_t before = umask(027);
    EXPECT_EQ(Zek({"compile", "a.zek", "-o", "a.zki"}).code, 0);
    umask(before);
    EXPECT_TRUE(IsImage("a.zki"));
    EXPECT_EQ(ModeOf("a.zki"), 0640u);
    EXPECT_EQ(ModeOf("a.zkd"), 0640u);
    ASSERT_EQ(chmod("a.zki", 0604), 0);
    EXPECT_EQ(Zek({"compile", "a.zek"}).code, 0);
    EXPECT_EQ(ModeOf("a.zki"), 0604u);
}

TEST_F(ZekOutput, ReplacedImageIsANewFile) {
    ASSERT_EQ(link("a.zki", "kept"), 0);
    ASSERT_EQ(Zek({"compile", "a.zek"}).code, 0);
    EXPECT_TRUE(IsImage("a.zki"));
    EXPECT_EQ(Read("kept"), "old image");
    EXPECT_EQ(Names(), (Strings{"a.zek", "a.zkd", "a.zki", "kept"}));
}

}  // namespace

}  // namespace zek::test
