// Where keys, sub-strings and comments stand in a source.
#include "source_text.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "memory_file.h"
#include "parser_library.h"
#include "source_index.h"

namespace zek::tool {

namespace {

/// What stands at a place.
std::string At(const Place& place, SourceText& text) {
    if (place.column == 0) return "line " + std::to_string(place.line);
    return std::to_string(place.line) + ":" + std::to_string(place.column) + " " +
           std::string(text.Line(place.path, place.line).substr(place.column - 1, place.length));
}

TEST(SourceText, TellsWhereKeysAndSubStringsStand) {
    const MemoryFile file(
        "\xef\xbb\xbf  [ GROUP ] ; a comment\r\n"
        "\tKEY = a,\"b, c\" , d \\ ; joined\n"
        "   e,,f # the end\n"
        "BARE\n"
        "= 5\n"
        "LAST = \"open, text");
    const std::string path = file.Name();
    SourceText text;
    EXPECT_EQ(text.CountLines(path), 6U);
    EXPECT_EQ(text.Line(path, 1), "  [ GROUP ] ; a comment");
    EXPECT_EQ(text.Line(path, 7), "");
    const struct {
        Place place;
        std::string at;
    } rows[] = {
        {text.Head(path, 1), "1:3 [ GROUP ]"},
        {text.Value(path, 1), "1:3 [ GROUP ]"},
        {text.Head(path, 2), "2:2 KEY"},
        {text.Value(path, 2), "2:8 a,\"b, c\" , d"},
        {text.SubString(path, 2, 0), "2:8 a"},
        {text.SubString(path, 2, 1), "2:11 b, c"},
        {text.SubString(path, 2, 2), "2:18  d"},
        {text.SubString(path, 2, 3), "3:6 ,"},
        {text.SubString(path, 2, 4), "3:7 f"},
        {text.SubString(path, 2, 5), "2:2 KEY"},
        {text.SubString(path, 2, "de"), "2:18  d"},
        {text.SubString(path, 2, "f"), "3:7 f"},
        {text.SubString(path, 2, "absent"), "2:2 KEY"},
        {text.Head(path, 4), "4:1 BARE"},
        {text.SubString(path, 4, 0), "4:1 BARE"},
        {text.Head(path, 5), "5:1 = 5"},
        {text.SubString(path, 6, 0), "6:9 open, text"},
        {text.Head(path, 7), "line 7"},
        {text.Head(path, 0), "line 0"},
    };
    for (const auto& row : rows) EXPECT_EQ(At(row.place, text), row.at);
    EXPECT_EQ(text.FirstOfJoined(path, 3), 2U);
    EXPECT_EQ(text.FirstOfJoined(path, 4), 4U);
    EXPECT_EQ(text.FirstOfJoined(path, 9), 9U);
}

TEST(SourceText, ShowsCommentsAndWhetherTheyStandAlone) {
    const MemoryFile file("A = \"x ; no comment\" ;one\n  # two\nB = a;b\nC = \"joined \\\n ; in quotes\" ; three\n");
    SourceText text;
    std::vector<std::string> shown;
    text.ForEachComment(file.Name(), [&](const Comment& comment) {
        shown.push_back(std::to_string(comment.line) + ":" + std::to_string(comment.column) + " " +
                        std::string(comment.text) + (comment.alone ? " alone" : ""));
    });
    // A backslash in quotes joins nothing, so the last comment is what follows the blank.
    EXPECT_EQ(shown, (std::vector<std::string>{"1:22 ;one", "2:3 # two alone", "5:2 ; in quotes\" ; three alone"}));
}

TEST(SourceText, TakesNoItemApartThatIsTooLongOrHoldsANul) {
    SourceText text;
    const MemoryFile longItem("KEY = " + std::string(5000, 'x') + "\n");
    EXPECT_EQ(At(text.Head(longItem.Name(), 1), text), "line 1");
    const MemoryFile nul(std::string("KEY\0 = a\n", 9));
    EXPECT_EQ(At(text.SubString(nul.Name(), 1, 0), text), "line 1");
}

TEST(SourceText, HasNoLinesOfWhatIsNoFileOnDisk) {
    SourceText text;
    EXPECT_EQ(text.CountLines("/dev/null"), 0U);
    EXPECT_EQ(text.CountLines("missing.zek"), 0U);
    EXPECT_EQ(At(text.Head("missing.zek", 3), text), "line 3");
}

/// Every source that comes with the project or was found by the fuzzers.
std::vector<std::string> Sources() {
    std::vector<std::string> sources;
    for (const char* folder : {"/examples", "/share", "/fuzz", "/tests/golden"}) {
        for (const auto& file : std::filesystem::recursive_directory_iterator(std::string(ZEK_SOURCE_DIR) + folder)) {
            if (file.is_regular_file() && file.file_size() < 100'000) sources.push_back(file.path().string());
        }
    }
    return sources;
}

/// The parser library is the judge of what the key of an item and the name of a section is.
TEST(SourceText, FindsTheHeadsThatTheParserLibraryReads) {
    SourceIndex index(ParserBehind(nullptr));
    SourceText text;
    std::size_t items = 0;
    for (const std::string& path : Sources()) {
        SCOPED_TRACE(path);
        const auto expectHead = [&](unsigned line, const std::string& name) {
            const Place place = text.Head(path, line);
            const std::string_view written = text.Line(path, line).substr(0, place.column - 1 + place.length);
            if (place.column == 0 || text.FirstOfJoined(path, line + 1) == line) return;
            ++items;
            EXPECT_EQ(written.substr(place.column - 1), name) << line;
        };
        for (const SourceSection& section : index.Sections(path)) {
            for (const SourceItem& item : section.items) expectHead(item.line, item.key);
        }
    }
    EXPECT_GT(items, 500U);
}

}  // namespace

}  // namespace zek::tool
