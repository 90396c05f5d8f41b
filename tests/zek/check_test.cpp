#include "zek/command.h"

namespace zek::test {

namespace {

class ZekCheck : public ZekTest {};

TEST_F(ZekCheck, SoundSourceSaysNothingAndWritesNothing) {
    WriteSound("a.zek");
    const Result result = Zek({"check", "a.zek"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(Names(), Strings{"a.zek"});
}

/// The order of the kinds and the list of files, which outlive a compilation, would show in the messages of the second.
TEST_F(ZekCheck, EverySourceIsCheckedAsIfItWereTheOnlyOne) {
    Write("a.zek", "[SYSTEM]\nTYPE = x\n[GROUP]\nPARENT = 0\n");
    Write("b.zek", "[GROUP]\nPARENT = 0\n[SYSTEM]\nTYPE = x\n");
    const Result a = Zek({"check", "a.zek"});
    const Result b = Zek({"check", "b.zek"});
    ASSERT_NE(a.err.find("a.zek:2:8: error: [SYSTEM]:TYPE, x has not been defined"), std::string::npos) << a.err;
    ASSERT_NE(b.err.find("b.zek:4:8: error: [SYSTEM]:TYPE, x has not been defined"), std::string::npos) << b.err;
    const Result both = Zek({"check", "a.zek", "b.zek", "a.zek"});
    EXPECT_EQ(both.code, 1);
    EXPECT_EQ(both.err, a.err + b.err + a.err);
}

TEST_F(ZekCheck, ExitCodeIsTheWorst) {
    WriteSound("sound.zek");
    Write("wrong.zek", "[GROUP]\n");
    const struct {
        Strings sources;
        int code;
    } rows[] = {{{"sound.zek", "sound.zek"}, 0},
                {{"wrong.zek", "sound.zek"}, 1},
                {{"missing.zek", "sound.zek"}, 2},
                {{"missing.zek", "wrong.zek", "sound.zek"}, 2}};
    for (const auto& row : rows) {
        Strings arguments = {"check"};
        arguments.insert(arguments.end(), row.sources.begin(), row.sources.end());
        EXPECT_EQ(Zek(arguments).code, row.code) << testing::PrintToString(row.sources);
    }
}

/// A word that only one of the boards defines before.
TEST_F(ZekCheck, CommentOfAnIncludedFileServesAnySourceOfTheRun) {
    Write("common.zek", "[DEFINE]\nLIMIT = 2 ; zek: allow L141\n");
    Write("a.zek", "[INCLUDE]\nFILE = common.zek\n[PROPERTY]\nA = 1\n");
    Write("b.zek", "[DEFINE]\nLIMIT = 1\n[INCLUDE]\nFILE = common.zek\n");
    Write("c.zek", Read("a.zek"));
    const std::string unused =
        "common.zek:2:24: warning: nothing is found here that 'zek: allow L141' would allow [L001]\n"
        "a.zek:2:8: note: included from here\n";
    const auto said = [](Strings sources) {
        sources.insert(sources.begin(), {"check", "--no-warn", "L135"});
        return WithoutExcerpts(Zek(sources).err);
    };
    EXPECT_EQ(said({"a.zek"}), unused + "a.zek: 1 warning\n");
    EXPECT_EQ(said({"b.zek"}), "");
    EXPECT_EQ(said({"a.zek", "b.zek", "c.zek"}), "");
    EXPECT_EQ(said({"a.zek", "c.zek"}), unused + "common.zek: 1 warning\n");
    EXPECT_EQ(said({"a.zek", "c.zek", "missing.zek"}), "zek: cannot read missing.zek: No such file or directory\n");
    EXPECT_EQ(Zek({"check", "--error", "L001", "a.zek", "c.zek"}).code, 1);
    EXPECT_EQ(Zek({"check", "--error", "L001", "a.zek", "b.zek"}).code, 0);
}

TEST_F(ZekCheck, MissingSourceDoesNotKeepTheOthersFromBeingChecked) {
    Write("wrong.zek", "[FOO]\n");
    const Result result = Zek({"check", "missing.zek", "wrong.zek"});
    EXPECT_EQ(
        WithoutExcerpts(result.err),
        "zek: cannot read missing.zek: No such file or directory\n"
        "wrong.zek:1:1: error: [FOO] is no section of the language: Create section(1, FOO) object failed. [E002]\n"
        "wrong.zek: 1 error\n");
}

}  // namespace

}  // namespace zek::test
