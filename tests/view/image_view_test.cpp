#include <gtest/gtest.h>

#include <iterator>
#include <thread>

#include "view/viewed_image.h"

namespace zek::test {

namespace {

static_assert(std::forward_iterator<ImageView::Sections::Iterator>);
static_assert(std::forward_iterator<ImageView::Entries::Iterator>);

/// Every section, entry and word of a view as text.
std::string Listing(const ImageView& view) {
    std::string text;
    for (const ImageView::Section section : view.AllSections()) {
        text += std::to_string(section.Kind() - kImageSectionClass) + " at " + std::to_string(section.Offset());
        if (section.Name()) text += " " + std::string(*section.Name());
        text += ":";
        for (const ImageView::Entry entry : section.AllEntries()) {
            text += " " + std::string(entry.Name()) + "(";
            for (unsigned i = 0; i < entry.WordCount(); ++i) text += (i ? " " : "") + TextOf(entry.Value(i));
            text += ")";
        }
        text += "\n";
    }
    return text;
}

TEST(ImageView, ShowsEverySectionWithItsEntriesAndValues) {
    const std::string image = SmallImage();
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view);
    EXPECT_EQ(Listing(*view),
              "2 at 260: Maker(\"us\")\n"
              "10 at 280: X(1 7)\n"
              "4 at 304 A: (\"0\") (\"A\") (2)\n"
              "7 at 348 Do: (\"Do\") (1 \"X\")\n"
              "11 at 384: Rep(2 \"Do\")\n"
              "8 at 408 T: (\"T\") (1)\n");
    EXPECT_EQ(view->Version(), 0x01000000U);
    EXPECT_EQ(view->Time(), 0U);
    EXPECT_EQ(view->NoteCount(), 0U);
    EXPECT_EQ(view->Bytes().data(), BytesOf(image).data());
}

TEST(ImageView, FindsSectionsByKindNameAndID) {
    const std::string image = ViewedImage({{kImageSensor, {{kIdName, {0x12000000}}, {kIdID, {0x11000001}}}},
                                           {kImageDevice, {{kIdName, {0x12000000}}}},
                                           {kImageSensor, {{kIdName, {0x12000001}}, {kIdID, {0x11000000}}}},
                                           {kImageSensor, {{kIdName, {0x12000000}}, {kIdID, {0x11000001}}}},
                                           {kImageProperty, {{kIdProperty, {0x12000001}}}}},
                                          {.properties = {"p"}, .numbers = {7, 8}, .texts = {"a", "b"}});
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view) << Refusal(image);
    EXPECT_EQ(view->SectionsOf(kImageSensor).size(), 3U);
    EXPECT_EQ(view->SectionsOf(kImageSensor)[1].Index(), 2U);
    EXPECT_TRUE(view->SectionsOf(kImageGroup).empty());
    EXPECT_TRUE(view->SectionsOf(0x01000000).empty());
    EXPECT_TRUE(view->SectionsOf(0x0100000c).empty());
    EXPECT_EQ(view->SectionNamed(kImageSensor, "a")->Index(), 0U);
    EXPECT_EQ(view->SectionNamed(kImageSensor, "b")->Index(), 2U);
    EXPECT_EQ(view->SectionNamed(kImageDevice, "a")->Index(), 1U);
    EXPECT_EQ(view->SectionNamed(kImageProperty, "p")->Index(), 4U) << "by the name of an entry";
    EXPECT_FALSE(view->SectionNamed(kImageDevice, "b"));
    EXPECT_FALSE(view->SectionNamed(kImageSensor, "c"));
    EXPECT_FALSE(view->SectionNamed(kImageSensor, ""));
    EXPECT_EQ(view->SectionWithID(kImageSensor, 8)->Index(), 0U);
    EXPECT_EQ(view->SectionWithID(kImageSensor, 7)->Index(), 2U);
    EXPECT_FALSE(view->SectionWithID(kImageDevice, 7));
    EXPECT_FALSE(view->SectionWithID(kImageSensor, 9));
    EXPECT_EQ(view->AllSections()[1].Name(), "a");
    EXPECT_EQ(view->AllSections()[1].ID(), std::nullopt);
    EXPECT_EQ(view->AllSections()[0].ID(), 8U);
    EXPECT_EQ(view->AllSections()[4].Name(), std::nullopt);
}

TEST(ImageView, FindsEntriesByNameAndIdentifier) {
    const std::string image = SmallImage();
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view);
    const ImageView::Section group = *view->SectionNamed(kImageGroup, "A");
    EXPECT_EQ(group.EntryWithId(0x02000007)->Value(0).number, 2U);
    EXPECT_FALSE(group.EntryWithId(kIdID));
    EXPECT_FALSE(group.EntryNamed("NAME")) << "a keyword is no name";
    const ImageView::Section property = view->AllSections()[0];
    EXPECT_EQ(property.EntryNamed("Maker")->Id(), 0x03000000U);
    EXPECT_EQ(property.EntryNamed("Maker")->Offset(), 0x10cU);
    EXPECT_FALSE(property.EntryNamed("X")) << "a name of another table";
}

TEST(ImageView, FindsEntriesOfALargeSectionByNameAndIdentifier) {
    ViewedTables tables = {.texts = {"t"}};
    SectionWords section = {kImageProperty, {}};
    // Backwards, so that the order of the section is not that of the identifiers.
    for (unsigned i = 0; i < 1000; ++i) {
        tables.properties.push_back("p" + std::to_string(i));
        section.entries.push_back({kIdProperty + 999 - i, {0x12000000}});
    }
    const std::string image = ViewedImage({{kImageSystem, {}}, section}, tables);
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view) << Refusal(image);
    const ImageView::Section found = *view->SectionNamed(kImageProperty, "p17");
    for (unsigned i = 0; i < 1000; ++i) {
        const auto entry = found.EntryNamed("p" + std::to_string(i));
        ASSERT_TRUE(entry) << i;
        EXPECT_EQ(entry->Id(), kIdProperty + i);
        EXPECT_EQ(found.EntryWithId(kIdProperty + i)->Offset(), entry->Offset());
    }
    EXPECT_FALSE(found.EntryNamed("p1000"));
    EXPECT_FALSE(found.EntryWithId(kIdProperty + 1000));
    EXPECT_FALSE(view->AllSections()[0].EntryNamed("p1"));
}

TEST(ImageView, ResolvesWordsAndNames) {
    const std::string image = SmallImage();
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view);
    const std::pair<unsigned, const char*> rows[] = {
        {0x03000000, "\"Maker\""}, {0x03000001, "-"}, {0x11000000, "7"}, {0x11000003, "-"}, {0x12000000, "\"us\""},
        {0x18000000, "\"0\""},     {0x1d000005, "5"}, {0x1e000002, "2"}, {0x1f000001, "1"}, {0x1b000000, "-"},
        {0x02000015, "-"},         {0, "-"},          {0xFFFFFFFF, "-"}, {0x31000000, "-"}};
    for (const auto& [word, text] : rows) {
        SCOPED_TRACE(word);
        EXPECT_EQ(TextOf(view->Resolve(word)), text);
        EXPECT_EQ(view->Resolve(word).word, word);
    }
    EXPECT_EQ(view->IdentifierOf(kIdGroup, "A"), 0x18000001U);
    EXPECT_EQ(view->IdentifierOf(kIdGroup, "B"), std::nullopt);
    EXPECT_EQ(view->IdentifierOf(kIdNumber, "7"), std::nullopt) << "numbers have no names";
    EXPECT_EQ(view->IdentifierOf(kIdGroup + 1, "A"), std::nullopt) << "no class";
    EXPECT_EQ(view->IdentifierOf(0x38000000, "A"), std::nullopt) << "no class";
    EXPECT_EQ(view->IdentifierCount(kIdValue + 1), 0U);
    EXPECT_EQ(view->IdentifierCount(kIdValue), 6U);
    EXPECT_EQ(view->IdentifierCount(kIdNumber), 3U);
    EXPECT_EQ(view->IdentifierCount(0xFF000000), 0U);
}

TEST(ImageView, GivesBlocksByOrdinalAndByIdentifier) {
    const std::string image = SmallImage();
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view);
    EXPECT_EQ(view->TableBlockCount(), 1U);
    ASSERT_EQ(view->TableBlock(0).size(), 256U);
    EXPECT_EQ(view->TableBlock(0)[3], 9);
    EXPECT_EQ(view->TableBlock(0x1c000000).data(), view->TableBlock(0).data());
    EXPECT_TRUE(view->TableBlock(1).empty());
    EXPECT_TRUE(view->TableBlock(0x00FFFFFF).empty());
}

TEST(ImageView, KnowsGroupsAndParents) {
    const std::string image = ViewedImage({{kImageGroup, {{kIdParent, {0x18000000}}, {kIdName, {0x18000001}}}},
                                           {kImageGroup, {{kIdParent, {0x18000001}}, {kIdName, {0x18000002}}}},
                                           {kImageSensor, {{kIdParent, {0x18000002}}}},
                                           {kImageDevice, {{kIdName, {0x12000000}}}}},
                                          {.texts = {"A"}, .groups = {"0", "A", "B"}});
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view) << Refusal(image);
    EXPECT_EQ(view->GroupIndex("B"), 2U);
    EXPECT_EQ(view->GroupIndex("0"), 0U);
    EXPECT_EQ(view->GroupIndex("C"), std::nullopt);
    EXPECT_FALSE(view->AllSections()[0].Parent());
    EXPECT_EQ(view->AllSections()[1].Parent()->Index(), 0U);
    EXPECT_EQ(view->AllSections()[2].Parent()->Index(), 1U);
    EXPECT_FALSE(view->AllSections()[3].Parent());
}

TEST(ImageView, SelectsFieldsOfValuesAndRepeaterItems) {
    const std::string image =
        ViewedImage({{kImageSensor, {{0x05000001, {0x1e000004, 0x11000000, 0x11000001, 0x11000000, 0x11000001}}}},
                     {kImageRepeater, {{0x06000000, {0x11000001, 0x1a000000, 0x1d000003}}}},
                     {kImageSystem, {{0x02000013, {0x12000000}}}}},
                    {.repeaters = {"r"}, .numbers = {10, 20}, .texts = {"t"}, .actions = {"do"}});
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view) << Refusal(image);
    const auto first = [&](unsigned section) { return *view->AllSections()[section].AllEntries().begin(); };
    EXPECT_EQ(first(0).ValueType(), 4U);
    EXPECT_EQ(TextOf(first(0).Field(0x10000)), "4");
    EXPECT_EQ(TextOf(first(0).Field(0x90000)), "20");
    EXPECT_EQ(TextOf(first(0).Field(0x20000)), "-");
    EXPECT_EQ(TextOf(first(1).Field(0x160000)), "20");
    EXPECT_EQ(TextOf(first(1).Field(0x170000)), "\"do\"");
    EXPECT_EQ(TextOf(first(1).Field(0x180001)), "3");
    EXPECT_EQ(TextOf(first(1).Field(0x10000)), "-");
    EXPECT_EQ(first(1).ValueType(), std::nullopt);
    EXPECT_EQ(TextOf(first(2).Field(0x10000)), "-");
    EXPECT_EQ(first(2).Word(1), 0xFFFFFFFFU);
    EXPECT_EQ(TextOf(first(2).Value(1)), "-");
}

TEST(ImageView, SharesWhatItBuiltWithItsCopies) {
    const std::string image = SmallImage();
    std::optional<ImageView> first = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(first);
    const ImageView second = *first;
    const std::string before = Listing(second);
    first.reset();
    EXPECT_EQ(Listing(second), before);
}

TEST(ImageView, AnswersManyThreadsAtOnce) {
    const std::string image = SmallImage();
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view);
    const auto answers = [&view] {
        std::string said = Listing(*view);
        for (const ImageView::Section section : view->AllSections()) {
            const auto place = [](std::size_t at) { return " " + std::to_string(at); };
            if (section.Name()) said += place(view->SectionNamed(section.Kind(), *section.Name())->Offset());
            if (section.ID()) said += place(view->SectionWithID(section.Kind(), *section.ID())->Offset());
            if (section.Parent()) said += place(section.Parent()->Offset());
            for (const ImageView::Entry entry : section.AllEntries()) {
                said += place(section.EntryNamed(entry.Name())->Offset());
                said += place(section.EntryWithId(entry.Id())->Offset());
            }
        }
        return said;
    };
    const std::string expected = answers();
    std::vector<std::string> listings(4);
    std::vector<std::thread> threads;
    for (std::string& listing : listings) threads.emplace_back([&] { listing = answers(); });
    for (std::thread& thread : threads) thread.join();
    for (const std::string& listing : listings) EXPECT_EQ(listing, expected);
}

class ImageViewBesideTheQueries : public ProcessTest {};

TEST_F(ImageViewBesideTheQueries, LeavesTheLoadedImageAndTheSlotsAlone) {
    Write("loaded.zki", SmallImage());
    ASSERT_EQ(gcInit("loaded.zki", nullptr), 1U);
    const std::string sections = LoadedSections();
    gcSetLastError(77);
    gdSetLastError(88);
    const std::string other = ViewedImage({{kImageSystem, {}}}, {});
    const auto view = ImageView::Open(BytesOf(other));
    ASSERT_TRUE(view);
    EXPECT_FALSE(view->SectionNamed(kImageSystem, "x"));
    EXPECT_FALSE(ImageView::Open(BytesOf(other.substr(0, 300))));
    EXPECT_EQ(LoadedSections(), sections);
    EXPECT_EQ(gcGetLastError(), 77U);
    EXPECT_EQ(gdGetLastError(), 88U);
}

}  // namespace

}  // namespace zek::test
