// What can be called without running the program.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "check/messages.h"
#include "failure.h"
#include "frontend/messages.h"
#include "image.h"
#include "image_bytes.h"
#include "known_messages.h"
#include "lint_text.h"
#include "memory_file.h"
#include "messages.h"
#include "model/messages.h"
#include "parser_library.h"
#include "printable.h"
#include "tree_writer.h"
#include "zek/in_process.h"
#include "zekcomp/output.h"

namespace zek::tool {

namespace {

/// A long key may stand in many thousand messages.
TEST(ZekMessageTexts, AreThereOnceForAllMessages) {
    TakeMessages();
    for (const std::string& key : {std::string(1000, 'k'), std::string(1000, 'k')})
        Output(1, "%s:%u\n", key.c_str(), 7u);
    const std::vector<Message> messages = TakeMessages();
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0].Whole(), std::string(1000, 'k') + ":7\n");
    EXPECT_EQ(messages[0].arguments[0].data(), messages[1].arguments[0].data());
    EXPECT_EQ(messages[1].Text(0), std::string(1000, 'k'));
    EXPECT_EQ(messages[1].Number(1), 7U);
}

TEST(ZekKnownMessages, AreTheLibrarysOwn) {
    EXPECT_STREQ(kLoadParserFailed, zek::kLoadParserFailed);
    EXPECT_STREQ(kNoMoreSections, zek::kNoMoreSections);
    EXPECT_STREQ(kAddItemFailed, zek::kAddItemFailed);
    EXPECT_STREQ(kSectionNameFailed, zek::kSectionNameFailed);
    EXPECT_STREQ(kCreateSectionFailed, zek::kCreateSectionFailed);
    EXPECT_STREQ(kFileNotLoaded, zek::kFileNotLoaded);
    EXPECT_STREQ(kNotANumber, zek::kNotANumber);
    EXPECT_STREQ(kEntryMissing, zek::kEntryMissing);
}

TEST(ZekText, IsUtf8OnlyInItsShortestFormAndRange) {
    for (const char* text : {"", "plain", "\xc3\xbc", "\xe2\x82\xac", "\xf0\x9f\x8c\xa1", "\xf4\x8f\xbf\xbf"}) {
        EXPECT_TRUE(IsUtf8(text)) << Hex(text);
    }
    for (const char* text : {"\x80", "\xc3", "\xc3(", "\xc0\xaf", "\xe0\x80\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80",
                             "\xf8\x88", "\xff"}) {
        EXPECT_FALSE(IsUtf8(text)) << Hex(text);
    }
}

TEST(ZekText, ShowsWhatATerminalMayGet) {
    EXPECT_EQ(Printable("gr\xc3\xbcn\t\\ \"x\""), "gr\xc3\xbcn\t\\ \"x\"");
    EXPECT_EQ(Printable("\x1b[0m\n\r\x7f"), "\\x1b[0m\\x0a\\x0d\\x7f");
    EXPECT_EQ(Printable("\xc2\x85\xe2\x80\xae\xff"), "\\xc2\\x85\\xe2\\x80\\xae\\xff");
    EXPECT_EQ(Printable(std::string_view("a\0b", 3)), "a\\x00b");
    EXPECT_EQ(Quoted("a\t\"\\"), "\"a\\x09\\\"\\\\\"");
}

std::string Word(unsigned word) {
    std::string bytes;
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(word >> (8 * i));
    return bytes;
}

/// A debug image with one name and one group of one section of 3 bytes.
std::string SmallDebugImage() {
    return std::string("QUOR ZEK metaD.\0", 16) + Word(0x01000000) + std::string(108, '\0') + Word(1) + Word(2) + "AB" +
           Word(7) + Word(1) + Word(1) + Word(3) + "xyz";
}

/// A compiled image without sections, whose last table is 4 bytes of table data at 512.
std::string SmallCompiledImage() {
    std::string image = std::string("QUOR ZEK meta.\0\0", 16) + Word(0x01000000);
    image.resize(512);
    return image.replace(164, 4, Word(512)) + Word(0x1b000000) + Word(4) + "data";
}

TEST(ZekImageBytes, TellWhetherAnImageIsWhole) {
    for (const auto& [image, isWhole] :
         {std::pair(SmallDebugImage(), &IsWholeDebugImage), std::pair(SmallCompiledImage(), &IsWholeCompiledImage)}) {
        EXPECT_TRUE(isWhole(image));
        EXPECT_FALSE(isWhole(image + '\0'));
        for (std::size_t size = 0; size < image.size(); ++size) EXPECT_FALSE(isWhole(image.substr(0, size))) << size;
    }
    EXPECT_FALSE(IsWholeDebugImage(SmallCompiledImage()));
    EXPECT_FALSE(IsWholeCompiledImage(SmallDebugImage()));
}

TEST(ZekImageBytes, GiveThePredefinedNames) {
    EXPECT_EQ(PredefinedNames(SmallDebugImage()), (std::map<std::string, unsigned>{{"AB", 7}}));
}

/// The texts of the sections that an image shows for a keyword.
std::vector<std::string> ShownOf(const Image& image, std::string_view keyword) {
    std::vector<std::string> shown;
    image.ForEachSectionOf(keyword, [&](const ShownSection& section) {
        shown.push_back(std::string(section.keyword) + ' ' + section.name.value_or("-"));
    });
    return shown;
}

TEST(ZekImage, GivesTheSectionsOfOneKind) {
    const MemoryFile source("[DEFINE]\nA = 1\n[TABLE]\nNAME = One\nTYPE = 1\n[TABLE]\nNAME = Two\nTYPE = 1\n");
    const MemoryFile images[2];
    ASSERT_EQ(CompileHere(source, images[0], images[1]), kFine);
    for (const MemoryFile& file : images) {
        const Image image(file.Name());
        EXPECT_EQ(ShownOf(image, "TABLE"), (std::vector<std::string>{"TABLE One", "TABLE Two"}));
        EXPECT_EQ(ShownOf(image, "SENSOR"), std::vector<std::string>());
        const bool debug = image.Kind() == ImageKind::kDebug;
        EXPECT_EQ(ShownOf(image, "DEFINE").size(), debug ? 1u : 0u);
    }
}

TEST(ZekParserLibrary, LinkedCopyServesWhereNoneIsInstalled) {
    const ParserLibrary library = ParserBehind(nullptr);
    EXPECT_TRUE(library.Serves());
    EXPECT_TRUE(library.HasHook());
    EXPECT_NE(library.path.find("libzekrsparser.so.0"), std::string::npos) << library.path;
}

TEST(ZekParserLibrary, AnotherMakersHasNoHookAlthoughTheLinkedOneHas) {
    void* handle = dlopen(ZEK_FOREIGN_PARSER, RTLD_LAZY);
    ASSERT_NE(handle, nullptr) << dlerror();
    const ParserLibrary library = ParserBehind(handle);
    EXPECT_TRUE(library.Serves());
    EXPECT_FALSE(library.HasHook());
    EXPECT_EQ(library.path, ZEK_FOREIGN_PARSER);
    dlclose(handle);
}

/// What a view lists, by the positions of the sensors; nothing for those that are not there.
class NotedMembers : public TreeWriter {
public:
    explicit NotedMembers(const Hardware& hardware) : hardware_(hardware) {}
    void Group(const ShownGroup&, std::size_t, ParentFault, const std::vector<const ShownSensor*>&) override {}
    void Homeless(const std::vector<const ShownSensor*>&) override {}
    void View(const ShownView&, std::size_t, ParentFault, const std::vector<const ShownSensor*>& sensors) override {
        for (const ShownSensor* sensor : sensors) {
            positions.push_back(sensor ? std::optional(sensor - hardware_.sensors.data()) : std::nullopt);
        }
    }

    std::vector<std::optional<std::ptrdiff_t>> positions;

private:
    const Hardware& hardware_;
};

TEST(ZekTreeWalk, TakesTheFirstOfSeveralSensorsWithAnID) {
    Hardware hardware;
    for (const unsigned id : {7, 5, 7, 6, 5}) hardware.sensors.push_back({"G", "S", id, {}});
    hardware.views.push_back({"V", 1, "1", 0, "0", {{"7", 7}, {"5", 5}, {"8", 8}, {"W", std::nullopt}}});
    NotedMembers noted(hardware);
    WalkTree(hardware, noted);
    EXPECT_EQ(noted.positions, (std::vector<std::optional<std::ptrdiff_t>>{0, 1, std::nullopt, std::nullopt}));
}

/// These IDs all have one remainder by the number of places that a table of hashes has at that size.
TEST(ZekTreeWalk, FindsSensorsWhoseIDsMeetInATableOfHashes) {
    constexpr unsigned kSensors = 50'000;
    constexpr unsigned kPlaces = 85'229;
    Hardware hardware;
    hardware.views.push_back({"V", 1, "1", 0, "0", {}});
    for (unsigned i = 0; i < kSensors; ++i) {
        hardware.sensors.push_back({"G", "S", i * kPlaces, {}});
        hardware.views[0].sensors.push_back({"", i * kPlaces});
    }
    NotedMembers noted(hardware);
    WalkTree(hardware, noted);
    ASSERT_EQ(noted.positions.size(), kSensors);
    for (unsigned i = 0; i < kSensors; ++i) ASSERT_EQ(noted.positions[i], i);
}

TEST(ZekLintText, CutsALongList) {
    std::string list = "\"a\",b";
    for (int i = 0; i < 2'000'000; ++i) list += ",1";
    EXPECT_EQ(CutValue(list).size(), 2'000'002U);
    EXPECT_EQ(CutValue(list + ",\"x,y\"z")[2'000'002].after, "z");
}

}  // namespace

}  // namespace zek::tool
