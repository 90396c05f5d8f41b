#include "parser_test.h"
#include "support/resources.h"

namespace {

class HostileText : public ParserTest {
protected:
    static std::string Repeat(const std::string& text, std::size_t times) {
        std::string all;
        all.reserve(text.size() * times);
        for (std::size_t i = 0; i < times; ++i) all += text;
        return all;
    }
    static std::string Numbered(const std::string& text, unsigned number) { return text + std::to_string(number); }
};

TEST_F(HostileText, OneVeryLongLine) {
    const std::string value(64 << 20, 'v');
    EXPECT_TRUE(DumpText("k=" + value) == "1 []\n1 <k> <" + value + ">\n");
}

TEST_F(HostileText, OneLineOfQuotes) {
    const std::string line(4 << 20, '"');
    EXPECT_TRUE(DumpText(line + " ; c") == "1 []\n1 <" + line + "> <>\n");
}

TEST_F(HostileText, OneLineOfBackslashes) {
    EXPECT_TRUE(DumpText(std::string(4 << 20, '\\')) == "1 []\n1 <" + std::string((4 << 20) - 1, '\\') + "> <>\n");
}

TEST_F(HostileText, OneLineOfWhiteSpace) { EXPECT_EQ(DumpText(std::string(4 << 20, ' ') + "k"), "1 []\n1 <k> <>\n"); }

TEST_F(HostileText, OneLineOfNuls) { EXPECT_EQ(DumpText(std::string(4 << 20, '\0')), "1 []\n1 <> <>\n"); }

TEST_F(HostileText, MillionsOfJoinedLines) {
    EXPECT_TRUE(DumpText(Repeat("ab \\\n", 2'000'000) + "\nk\n") ==
                "1 []\n1 <" + Repeat("ab", 2'000'000) + "> <>\n2000002 <k> <>\n");
}

TEST_F(HostileText, MillionsOfEmptyLines) {
    EXPECT_EQ(DumpText(Repeat("\n", 2'000'000) + "[A]"), "2000001 [A]\n");
    EXPECT_EQ(DumpText(Repeat("\\\n", 2'000'000) + "[A]"), "1 [A]\n");
    EXPECT_EQ(DumpText(Repeat(" ;\n", 2'000'000) + "[A]"), "2000001 [A]\n");
}

TEST_F(HostileText, ManySections) {
    constexpr unsigned kCount = 500'000;
    const OpenedFile file(Write("text.ini", Repeat("[A]\nk\n", kCount)));
    ASSERT_EQ(RSParse(file.Get()), 1u);
    unsigned sections = 0;
    while (void* section = file.Section(sections)) {
        std::string name;
        std::string key;
        std::string value;
        unsigned line = 0;
        ASSERT_TRUE(ReadSection(section, name, line));
        ASSERT_EQ(Numbered(name, line), Numbered("A", 2 * sections + 1));
        ASSERT_TRUE(ReadItem(section, 0, key, value, line));
        ASSERT_EQ(Numbered(key, line), Numbered("k", 2 * sections + 2));
        ASSERT_FALSE(ReadItem(section, 1, key, value, line));
        ++sections;
    }
    EXPECT_EQ(sections, kCount);
}

TEST_F(HostileText, ManyItemsInAnyOrder) {
    std::string text = "[A]\n";
    constexpr unsigned kCount = 500'000;
    for (unsigned i = 0; i < kCount; ++i) text += Numbered("k", i) + Numbered("=v", i) + "\n";
    const OpenedFile file(Write("text.ini", text));
    ASSERT_EQ(RSParse(file.Get()), 1u);
    void* const section = file.Section(0);
    for (unsigned i = 0; i < kCount; ++i) {
        const unsigned index = static_cast<unsigned>(i * 7919ULL % kCount);
        std::string key;
        std::string value;
        unsigned line = 0;
        ASSERT_TRUE(ReadItem(section, index, key, value, line));
        ASSERT_EQ(key, Numbered("k", index));
        ASSERT_EQ(value, Numbered("v", index));
        ASSERT_EQ(line, index + 2);
    }
}

#if !defined(__SANITIZE_ADDRESS__)
// Where memory can be made scarce at all.
TEST_F(HostileText, IsRefusedWhereItDoesNotFitTheMemory) {
    const std::string path = Write("text.ini", "");
    std::filesystem::resize_file(path, 64 << 20);
    const zek::test::ScarceMemory scarce(16 << 20);
    EXPECT_EQ(DumpFile(path), "refused");
}

TEST_F(HostileText, IsRefusedWhereItsItemsDoNotFitTheMemory) {
    // 8 MB of text, 48 MB of items.
    const std::string path = Write("text.ini", "[A]\n" + Repeat("k\n", 4'000'000));
    {
        const zek::test::ScarceMemory scarce(32 << 20);
        EXPECT_EQ(DumpFile(path), "refused");
    }
    const OpenedFile file(path);
    ASSERT_TRUE(file);
    EXPECT_EQ(RSParse(file.Get()), 1u);
    EXPECT_NE(file.Section(0), nullptr);
    EXPECT_EQ(DumpFile(Write("other.ini", "[B]\n")), "1 [B]\n");
}
#endif

}  // namespace
