#include <sys/stat.h>

#include "zek/command.h"

namespace zek::test {

namespace {

/// Another file stands in for the one in the compiler's own folder.
Setting Installed(const std::string& parser) {
    Setting setting = Fault("none");
    setting.environment.emplace_back("ZEK_TEST_PARSER", parser);
    return setting;
}

class ZekParserChoice : public ZekTest {};

TEST_F(ZekParserChoice, InstalledCopyGetsTheHook) {
    // A copy of its own file, so that the loader takes it for another library than the linked one.
    std::filesystem::copy_file(ZEK_OWN_PARSER, "parser.so");
    std::filesystem::create_directory("parts");
    Write("a.zek", "[INCLUDE]\nFILE = b.zek\n[FOO]\n");
    Write("parts/b.zek", "[PROPERTY]\nMark = a,b\n");
    const Result result =
        Zek({"check", "a.zek", "-I", "parts", "--verbose"}, Installed(std::filesystem::absolute("parser.so")));
    EXPECT_EQ(WithoutExcerpts(result.err),
              "parts/b.zek: note: Parse::No more sections(total = 1). [W002]\n"
              "a.zek:3:1: error: [FOO] is no section of the language: Create section(2, FOO) object failed. [E002]\n"
              "a.zek: note: Parse::No more sections(total = 2). [W002]\n"
              "parts/b.zek:2:10: warning: [PROPERTY]:Mark, More than one sub-string and get the first one as "
              "sub-string. [W101]\n"
              "a.zek:2:8: note: included from here\n"
              "a.zek: 1 error, 1 warning\n");
}

/// What the library says of a copy that it cannot load is not lost where the command ends early.
TEST_F(ZekParserChoice, FailedLoadIsToldBeforeTheCommandGivesUp) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    const Setting setting = Installed("/missing");
    const std::string loading = "Parse::load rsparsea(/usr/tavr/lib/libzekrsparser.so.0) failed.\n";
    const Result plain = Zek({"check", "pipe"}, setting);
    EXPECT_EQ(plain.code, 2);
    EXPECT_TRUE(plain.err.starts_with("zek: cannot read pipe: ")) << plain.err;
    EXPECT_EQ(WithoutExcerpts(Zek({"check", "pipe", "--verbose"}, setting).err),
              "zek: note: Parse::load rsparsea(/usr/tavr/lib/libzekrsparser.so.0) failed. [W001]\n" + plain.err);
    EXPECT_EQ(WithoutExcerpts(Zek({"check", "pipe", "--verbose", "--raw"}, setting).err), loading + plain.err);
}

TEST_F(ZekParserChoice, AnotherMakersLibraryServesWithANote) {
    WriteSound("part.zek");
    std::string text;
    for (const char byte : Read("part.zek")) {
        if (byte != ' ') text += byte;
    }
    Write("part.zek", text);
    Write("a.zek", "[INCLUDE]\nFILE=part.zek\n");
    const std::string note =
        std::string("zek: note: ") + ZEK_FOREIGN_PARSER +
        " is another maker's parser library, without search folders and hook: includes are found in its "
        "own way, -I, --max-files and the built-in folder do not count, and file names in messages are those of the "
        "source\n";
    const Result compiled = Zek({"compile", "a.zek"}, Installed(ZEK_FOREIGN_PARSER));
    EXPECT_EQ(compiled.code, 0);
    EXPECT_EQ(compiled.err, note);
    EXPECT_TRUE(Read("a.zki").starts_with("QUOR ZEK meta."));
    Write("b.zek", "[INCLUDE]\nFILE=missing.zek\nFILE=part.zek\n[FOO]\n[GLOBAL]\nG_X=no\n");
    const Result checked = Zek({"check", "b.zek"}, Installed(ZEK_FOREIGN_PARSER));
    EXPECT_EQ(checked.code, 1);
    EXPECT_EQ(WithoutExcerpts(checked.err),
              note +
                  "b.zek:2:6: error: [INCLUDE]:FILE FILE missing.zek cannot be loaded. [E003]\n"
                  "b.zek: error: [FOO] is no section of the language: Create section(2, FOO) object failed. [E002]\n"
                  "b.zek:6:5: error: [GLOBAL]:G_X, Value operator type(no) is invalid. [E108]\n"
                  "b.zek: 3 errors\n");
    EXPECT_EQ(Zek({"compile", "a.zek", "-o", "a.zek"}, Installed(ZEK_FOREIGN_PARSER)).code, 2);

    const Result depends = Zek({"compile", "a.zek", "--depfile", "d"}, Installed(ZEK_FOREIGN_PARSER));
    EXPECT_EQ(depends.code, 2);
    EXPECT_TRUE(
        depends.err.ends_with("zek: --depfile: another maker's parser library does not tell which files it reads\n"))
        << depends.err;
    EXPECT_FALSE(std::filesystem::exists("d"));
}

}  // namespace

}  // namespace zek::test
