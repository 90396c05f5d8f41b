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
    std::string fault = GetParam().fault;
    if (fault.ends_with('@')) {
        // Room for both images and nothing else.
        ASSERT_EQ(Zek({"compile", "a.zek", "-o", "o", "-g", "g"}).code, 0);
        fault.replace(fault.size() - 1, 1, std::to_string(Read("o").size() + Read("g").size()));
        for (const char* file : {"o", "g"}) std::filesystem::remove(file);
    }
    const Result result = Zek({"compile", "a.zek"}, Fault(fault));
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, std::string("zek: cannot write ") + GetParam().said + '\n');
    ExpectOldImages();
    EXPECT_EQ(Names(), kUntouched);
}

INSTANTIATE_TEST_SUITE_P(
    In, ZekFault,
    testing::Values(FaultRow{"Write", "write", "a.zki: No space left on device"},
                    FaultRow{"Sync", "fsync", "a.zki: Input/output error"},
                    FaultRow{"Close", "close", "a.zki: Input/output error"},
                    FaultRow{"Mode", "fchmod", "a.zki: Operation not permitted"},
                    FaultRow{"FirstRename", "rename1", "a.zki: Device or resource busy"},
                    FaultRow{"SecondRename", "rename2", "a.zkd: Device or resource busy"},
                    FaultRow{"SecondRenameWithoutLinks", "link,rename2", "a.zkd: Device or resource busy"},
                    FaultRow{"CopyOfTheOldImage", "link,room:@", "a.zki: No space left on device"}),
    RowName());

TEST_F(ZekOutput, ThirdRenameThatFailsPutsBackWhatTheOthersReplaced) {
    Write("a.d", "old dependencies");
    const auto time = std::filesystem::last_write_time("a.zki") - std::chrono::hours(1);
    for (const std::string fault : {"rename3", "link,rename3"}) {
        SCOPED_TRACE(fault);
        for (const char* file : {"a.zki", "a.zkd"}) {
            ASSERT_EQ(chmod(file, 0640), 0);
            std::filesystem::last_write_time(file, time);
        }
        const Result result = Zek({"compile", "a.zek", "--depfile", "a.d"}, Fault(fault));
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.err, "zek: cannot write a.d: Device or resource busy\n");
        ExpectOldImages();
        EXPECT_EQ(Read("a.d"), "old dependencies");
        EXPECT_EQ(Names(), (Strings{"a.d", "a.zek", "a.zkd", "a.zki"}));
        for (const char* file : {"a.zki", "a.zkd"}) {
            EXPECT_EQ(ModeOf(file), 0640u);
            EXPECT_EQ(std::filesystem::last_write_time(file), time) << "a build must not take it for a new one";
        }
    }
}

TEST_F(ZekOutput, OldImageThatCannotBePutBackStaysAndIsNamed) {
    const Result result = Zek({"compile", "a.zek"}, Fault("renames"));
    EXPECT_EQ(result.code, 2);
    EXPECT_TRUE(IsImage("a.zki"));
    EXPECT_EQ(Read("a.zkd"), "old debug image");
    const Strings names = Names();
    ASSERT_EQ(names.size(), 4u);
    EXPECT_EQ(Read(names[0]), "old image");
    EXPECT_EQ(result.err, "zek: the new a.zki cannot be taken back: Device or resource busy; the old one is " +
                              names[0] + "\nzek: cannot write a.zkd: Device or resource busy\n");
}

/// Both images are whole and in their places then: only a failure of the power could still take them back.
TEST_F(ZekOutput, FolderThatCannotBeSyncedIsAWarning) {
    const Result result = Zek({"compile", "a.zek"}, Fault("folder"));
    EXPECT_EQ(result.code, 0);
    const std::string why = " is written, but its folder cannot be synced: Input/output error\n";
    EXPECT_EQ(result.err, "zek: warning: a.zki" + why + "zek: warning: a.zkd" + why);
    EXPECT_TRUE(IsImage("a.zki"));
    EXPECT_EQ(Names(), kUntouched);
}

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
