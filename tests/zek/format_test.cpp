// The layout of sources: what it changes, and that neither the parser library nor a compilation sees it.
#include "format.h"

#include "parser/parser_test.h"
#include "yardstick/generated_source.h"

namespace zek::test {

namespace {

struct Layout {
    const char* name;
    std::string from;
    std::string to;
};

class FormattedText : public testing::TestWithParam<Layout> {};

TEST_P(FormattedText, IsLaidOut) {
    EXPECT_EQ(tool::Formatted(GetParam().from), GetParam().to);
    EXPECT_EQ(tool::Formatted(GetParam().to), GetParam().to);
}

INSTANTIATE_TEST_SUITE_P(
    Case, FormattedText,
    testing::Values(
        Layout{"AlignsWithinASection", "[A]\nNAME=x\n  ID\t=  1 ; one \n[B]\nTYPE=2",  //
               "[A]\nNAME = x\nID   = 1 ; one\n[B]\nTYPE = 2"},
        Layout{"KeepsCommentsAndBlankLines", "\t; first \n \t\n[ A B ] # head\n\n", "; first\n\n[ A B ] # head\n\n"},
        Layout{"TakesOnlyTheFirstEquals", "[A]\nX =a = b==c\n", "[A]\nX = a = b==c\n"},
        Layout{"KeepsBlanksAtCommas", "[A]\nX=a , b,\" c \"  \n", "[A]\nX = a , b,\" c \"\n"},
        Layout{"KeepsBlanksInKeys", "[A]\na  b=1\n", "[A]\na  b = 1\n"},
        Layout{"KeepsItemsWithoutEquals", "[A]\n lone \n= x =  y\n", "[A]\nlone\n= x =  y\n"},
        Layout{"LeavesNothingBehindAnEmptyValue", "[A]\nX=  \nLONG =\n", "[A]\nX    =\nLONG =\n"},
        Layout{"CountsCharacters", "[A]\n\xc3\xbc=1\nab=2\n", "[A]\n\xc3\xbc  = 1\nab = 2\n"},
        Layout{"LeavesOutLongKeys", "[A]\nX=1\n" + std::string(64, 'k') + "=2\n" + std::string(65, 'l') + "=3\n",
               "[A]\nX" + std::string(63, ' ') + " = 1\n" + std::string(64, 'k') + " = 2\n" + std::string(65, 'l') +
                   " = 3\n"},
        Layout{"KeepsLineEnds", "[A]\r\nX=1 \r\n", "[A]\r\nX = 1\r\n"},
        Layout{"KeepsAByteOrderMark", "\xEF\xBB\xBF [A]\nX=1\n", "\xEF\xBB\xBF[A]\nX = 1\n"},
        Layout{"LetsNoByteOrderMarkMoveToTheFront", " \xEF\xBB\xBFX=1\n \xEF\xBB\xBFX=1\n",
               " \xEF\xBB\xBFX=1\n\xEF\xBB\xBFX = 1\n"},
        Layout{"LeavesJoinedLines", "[A]\nX=1,\\\n   2  \nY=3\n", "[A]\nX=1,\\\n   2  \nY = 3\n"},
        Layout{"LeavesAJoinedHeader", "[A]\nX=1,\\\n[B]\nLONG=3\nY=4\n", "[A]\nX=1,\\\n[B]\nLONG = 3\nY    = 4\n"},
        Layout{"LeavesABackslashAtTheEnd", "[A]\nX=1\\ ", "[A]\nX=1\\ "},
        Layout{"KnowsABackslashInQuotes", "[A]\nX=\"1\\\nY=2\n", "[A]\nX = \"1\\\nY = 2\n"},
        Layout{"MakesNoComment", "[A]\nX=;1\nY=#2\nZ= ;3\nLONG=4\n", "[A]\nX=;1\nY=#2\nZ    = ;3\nLONG = 4\n"},
        Layout{"KnowsACommentBeforeTheEquals", "[A]\na ;b=1\na;=1\n", "[A]\na ;b=1\na; = 1\n"},
        Layout{"LeavesACarriageReturn", "[A]\nX=1 \r \nY=2\n", "[A]\nX=1 \r \nY = 2\n"},
        Layout{"LeavesANul", std::string("[A]\nX=\0 \nY=2\n", 14), std::string("[A]\nX=\0 \nY = 2\n", 16)},
        Layout{"IsNothingOfNothing", "", ""}),
    RowName());

/// The sections and items of a text as the parser library gives them, with their lines.
std::string Seen(const std::string& text) {
    std::ofstream("text.zek", std::ios::binary) << text;
    const OpenedFile file("text.zek");
    EXPECT_TRUE(file);
    EXPECT_EQ(RSParse(file.Get()), 1u);
    return ::Dump(file.Get());
}

/// A text of everything that means something to the parser library.
std::string RandomText(Random& random) {
    static const std::vector<std::string> kPieces = {" ",
                                                     " ",
                                                     "\t",
                                                     "=",
                                                     "=",
                                                     ";",
                                                     "#",
                                                     "\"",
                                                     "\\",
                                                     "\r",
                                                     "\n",
                                                     "\n",
                                                     "\r\n",
                                                     std::string(1, '\0'),
                                                     "[PROPERTY]\n",
                                                     "[A]",
                                                     "[",
                                                     "]",
                                                     "a",
                                                     "key",
                                                     ",",
                                                     "\xEF\xBB\xBF",
                                                     "\xc3\xbc",
                                                     " = ",
                                                     "=;",
                                                     "\\\n"};
    std::string text;
    for (unsigned left = random.Below(40); left > 0; --left) text += random.Pick(kPieces);
    return text;
}

using Files = std::map<std::string, std::string>;

/// A shard of seeds.
class FormattedShard : public ProcessTest, public testing::WithParamInterface<unsigned> {
protected:
    /// The images and messages of the files, as one text.
    static std::string Compiled(const Files& files) {
        for (const auto& [name, text] : files) Write(name, text);
        InChild([] {
            gccCompStart("main.zek");
            gccParse();
            std::string all = "check " + std::to_string(gccCheck()) + '\n';
            gccOutputD("debug");
            gccOutput("image");
            Write("all", all + Messages() + Dump(WithoutTime(Read("debug"))) + Dump(WithoutTime(Read("image"))));
        });
        return Read("all");
    }
};

using FormattedAnyText = FormattedShard;

TEST_P(FormattedAnyText, IsTheSameToParserAndCompiler) {
    constexpr unsigned kTexts = 600;
    constexpr unsigned kCompiled = 5;  // every so manyth
    unsigned changed = 0;
    for (unsigned seed = GetParam() * kTexts; seed < (GetParam() + 1) * kTexts; ++seed) {
        Random random(seed);
        const std::string text = RandomText(random);
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + testing::PrintToString(text));
        const std::string formatted = tool::Formatted(text);
        changed += formatted != text;
        ASSERT_EQ(Seen(formatted), Seen(text)) << testing::PrintToString(formatted);
        ASSERT_EQ(tool::Formatted(formatted), formatted);
        ASSERT_EQ(std::count(formatted.begin(), formatted.end(), '\n'), std::count(text.begin(), text.end(), '\n'));
        if (seed % kCompiled != 0) continue;
        ASSERT_EQ(Compiled({{"main.zek", formatted}}), Compiled({{"main.zek", text}}));
    }
    EXPECT_GT(changed, kTexts / 4);
}

INSTANTIATE_TEST_SUITE_P(Shard, FormattedAnyText, testing::Range(0U, 4U));

/// A text with white space, comments and odd bytes put in here and there.
std::string Spoiled(const std::string& text, Random& random) {
    static const std::vector<std::string> kPieces = {" ",  "\t", "  ; note", "#", ";",    "\"",  "\\",
                                                     "\r", "\n", " = ",      "=", "\\\n", "\r\n"};
    std::string spoiled;
    for (const char c : text) {
        if (c == '=' && random.Chance(50)) spoiled += random.OneOf({" ", "\t", "   "});
        if (c == '\n' && random.Chance(20)) spoiled += random.OneOf({" ", "\t ", " ; note", "\r"});
        spoiled += c;
        if ((c == '=' || c == '\n') && random.Chance(30)) spoiled += random.OneOf({" ", "\t"});
        if (random.Below(2000) == 0) spoiled += random.Pick(kPieces);
    }
    return spoiled;
}

using FormattedSource = FormattedShard;

TEST_P(FormattedSource, CompilesToTheSameImagesAndMessages) {
    std::filesystem::create_directory("dir");
    constexpr unsigned kSources = 60;
    unsigned valid = 0;
    for (unsigned seed = GetParam() * kSources; seed < (GetParam() + 1) * kSources; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(seed);
        Files files = FilesToWrite(seed);
        for (auto& [name, text] : files) text = seed % 2 ? Spoiled(text, random) : text;
        const std::string before = Compiled(files);
        valid += before.starts_with("check 1");
        for (auto& [name, text] : files) {
            const std::string formatted = tool::Formatted(text);
            EXPECT_EQ(tool::Formatted(formatted), formatted) << name;
            text = formatted;
        }
        ASSERT_EQ(Compiled(files), before);
    }
    EXPECT_GT(valid, 0U);
}

INSTANTIATE_TEST_SUITE_P(Shard, FormattedSource, testing::Range(0U, 4U));

}  // namespace

}  // namespace zek::test
