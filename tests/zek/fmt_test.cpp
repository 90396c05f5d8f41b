#include <sys/stat.h>

#include "zek/command.h"

namespace zek::test {

namespace {

class ZekFmt : public ZekTest {
protected:
    static constexpr char kLoose[] = "[GROUP]\nPARENT=0\n NAME  = a \nCHILDGROUP=0\n";
    static constexpr char kLaid[] = "[GROUP]\nPARENT     = 0\nNAME       = a\nCHILDGROUP = 0\n";
};

TEST_F(ZekFmt, LaysOutFilesInTheirPlace) {
    Write("a.zek", kLoose);
    Write("b.zek", kLaid);
    std::filesystem::permissions("a.zek", std::filesystem::perms(0640));
    const Result result = Zek({"fmt", "a.zek", "b.zek"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(Read("a.zek"), kLaid);
    EXPECT_EQ(Read("b.zek"), kLaid);
    EXPECT_EQ(std::filesystem::status("a.zek").permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(Names(), (Strings{"a.zek", "b.zek"}));
}

TEST_F(ZekFmt, LeavesAFileThatIsLaidOutUntouched) {
    Write("a.zek", kLaid);
    struct stat before {};
    struct stat after {};
    ASSERT_EQ(stat("a.zek", &before), 0);
    ASSERT_EQ(Zek({"fmt", "a.zek"}).code, 0);
    ASSERT_EQ(stat("a.zek", &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(ZekFmt, CheckTellsWhatWouldChangeAndWritesNothing) {
    Write("a.zek", kLoose);
    Write("b.zek", kLaid);
    const Result result = Zek({"fmt", "--check", "a.zek", "b.zek"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "a.zek\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(Read("a.zek"), kLoose);
    const Result fine = Zek({"fmt", "--check", "b.zek"});
    EXPECT_EQ(fine.code, 0);
    EXPECT_EQ(fine.out, "");
}

TEST_F(ZekFmt, FileThatCannotBeReadDoesNotKeepTheOthersBack) {
    Write("a.zek", kLoose);
    const Result result = Zek({"fmt", "missing.zek", "a.zek"});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, "zek: cannot read missing.zek: No such file or directory\n");
    EXPECT_EQ(Read("a.zek"), kLaid);
    EXPECT_EQ(Zek({"fmt", "--check", "missing.zek", "a.zek"}).code, 2);
}

TEST_F(ZekFmt, StandardInputGoesToStandardOutput) {
    Write("a.zek", kLoose);
    for (const Strings& words : {Strings{"fmt"}, Strings{"fmt", "-"}}) {
        Setting setting;
        setting.in = "a.zek";
        const Result result = Zek(words, setting);
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.out, kLaid);
        EXPECT_EQ(result.err, "");
    }
    Setting setting;
    setting.in = "a.zek";
    const Result check = Zek({"fmt", "--check"}, setting);
    EXPECT_EQ(check.code, 1);
    EXPECT_EQ(check.out, "-\n");
}

}  // namespace

}  // namespace zek::test
