// Images made to take as much memory as their bytes can: each is loaded and asked, or opened, in a process of its own,
// and what the process then took at most is held against the size of the image.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <stdexcept>
#include <utility>

#include "compile/image_bytes.h"
#include "model/section.h"
#include "support/resources.h"
#include "view/viewed_image.h"

namespace zek::test {

namespace {

constexpr std::size_t kImageSize = std::size_t{1} << 20;

/// What a load takes beside what grows with the image: the sections of a model of up to kPlainModel have all their
/// entries, large pages are taken whole, and bytes that are missing at the end may count as zeros.
constexpr std::size_t kBesides = std::size_t{10} << 20;

#if defined(__SANITIZE_ADDRESS__)
/// The sanitizer keeps freed memory, so what the process takes at its peak says nothing: only what stays can be told.
constexpr bool kIsPeak = false;
std::size_t Memory() { return HeapInUse(); }
#else
constexpr bool kIsPeak = true;
/// The most memory that the process had so far, in bytes.
std::size_t Memory() {
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}
#endif

std::string Times(std::size_t times, const std::string& part) {
    std::string all;
    all.reserve(times * part.size());
    for (std::size_t i = 0; i < times; ++i) all += part;
    return all;
}

/// As many different names as there is room for, the shortest first, each made a `record`.
std::string ShortNames(std::size_t room, const std::function<std::string(const std::string&)>& record) {
    std::string all;
    for (unsigned number = 0; all.size() < room; ++number) {
        std::string name;
        for (unsigned rest = number; rest > 0; rest /= 255) name += static_cast<char>(1 + rest % 255);
        all += record(name);
    }
    return all;
}

std::string NamesWithNul(std::size_t room) {
    return ShortNames(room, [](const std::string& name) { return name + '\0'; });
}

// Debug images.

const std::string kFirstSection = Block(Object(0x20000002, 2, 1, 0, "") + List({}));

/// One [PROPERTY] section of so many entries.
std::string EntriesImage(const std::string& entry) {
    const std::size_t count = kImageSize / (4 + entry.size());
    return DebugHead() + Joined({0, 1, 1}) +
           Block(kFirstSection + Word(static_cast<unsigned>(count)) + Times(count, Block(entry)));
}

std::string EntryImage(unsigned type, const std::string& data) {
    return EntriesImage(EntryRecord(Object(type, 10, 1, 0, ""), Word(type) + data));
}

std::string SectionsImage(unsigned type, std::size_t count) {
    const std::string section = Block(SectionRecord(Object(type, 2, 1, 0, ""), {}));
    return DebugHead() + Joined({0, 1, static_cast<unsigned>(count + 1)}) + Block(kFirstSection + Word(0)) +
           Times(count, section);
}

std::string EmptyTexts() {
    constexpr unsigned kCount = kImageSize / 4 + 1;
    return Word(kCount) + std::string(4 * kCount, '\0');
}

/// A section that ends with the count of its source files: 1 MiB of zeros are missing, so many empty texts.
std::string ListBehindTheEnd() {
    return DebugHead() + Joined({0, 1, 1, 0x200000, 0x180000}) + Object(0x20000002, 2, 1, 0, "") + Word(0x40000);
}

std::string EntriesOfAllTypes() {
    std::string entries;
    unsigned count = 0;
    for (; entries.size() < kImageSize; ++count) {
        const unsigned type = 0x10000000U + (0x10000U << count % 5) + count / 5;
        entries += Block(EntryRecord(Object(type, 1, 1, 0, ""), Word(0)));
    }
    return DebugHead() + Joined({0, 1, 1}) + Block(kFirstSection + Word(count) + entries);
}

std::string PredefinedNames() {
    unsigned count = 0;
    const std::string records = ShortNames(kImageSize, [&](const std::string& name) {
        ++count;
        return Str(name) + Word(1);
    });
    return DebugHead() + Word(count) + records + Word(0);
}

// Compiled images.

constexpr unsigned kTables[] = {kIdProperty, kIdGlobal, kIdValue,  kIdRepeater, kIdNumber,
                                kIdString,   kIdGroup,  kIdAction, kIdTableName};

std::string CompiledSections(std::size_t count, const WordList& section) {
    return ImageWithDirectory({}, {}).substr(0, 256) + Word(static_cast<unsigned>(count)) +
           Times(count, Joined(section));
}

std::string EntriesOfAllNames() {
    constexpr unsigned kCount = kImageSize / 8;
    SectionWords section = {0x01000002, {}};
    for (unsigned i = 0; i < kCount; ++i) section.entries.push_back({0x03000000 + i, {}});
    return Image({section}, {});
}

/// Sections with one entry more than is walked at every query; `nameOf` gives the identifier of each entry in turn.
std::vector<SectionWords> LongSections(std::size_t room, const std::function<unsigned(unsigned)>& nameOf) {
    constexpr unsigned kEntries = 65;
    std::vector<SectionWords> sections(room / (8 + 8 * kEntries), {0x01000002, {}});
    unsigned entry = 0;
    for (SectionWords& section : sections) {
        for (unsigned i = 0; i < kEntries; ++i) section.entries.push_back({nameOf(entry++), {}});
    }
    return sections;
}

/// All entries of all sections have one long name.
std::string LongSectionsOfOneName() {
    return Image(LongSections(kImageSize / 2, [](unsigned) { return kIdProperty; }),
                 {Record(kIdProperty, Names({std::string(kImageSize / 2, 'a')}))});
}

std::string LongSectionsOfAllNames() {
    return Image(LongSections(kImageSize, [](unsigned entry) { return kIdProperty + entry; }), {});
}

/// Each entry has a name of its own.
std::string NamedEntries() {
    constexpr unsigned kCount = kImageSize / 12;
    SectionWords section = {0x01000002, {}};
    for (unsigned i = 0; i < kCount; ++i) section.entries.push_back({0x03000000 + i, {}});
    return Image({section}, {Record(kIdProperty, NamesWithNul(4 * kCount))});
}

std::string Numbers() {
    WordList numbers(kImageSize / 4);
    for (unsigned i = 0; i < numbers.size(); ++i) numbers[i] = i;
    return Image({}, {Record(kIdNumber, Joined(numbers))});
}

/// Records whose tags and lengths stand one behind the other before the bytes of `body`, which belongs to all of them.
std::string Overlapping(const std::string& body) {
    std::string rest;
    WordList directory;
    const std::size_t start = ImageWithDirectory({}, {}).size();
    for (const unsigned table : kTables) {
        directory.push_back(static_cast<unsigned>(start + rest.size()));
        rest += Word(table) + Word(table == kIdNumber ? static_cast<unsigned>(body.size()) / 4 * 4 : 0xFFFFFFFF);
    }
    return ImageWithDirectory(directory, {}, rest + body);
}

// Images for views.

/// A name for each of two to the power of 20 identifiers, when the slots of a table are emptiest.
std::vector<std::string> EmptyNames() { return std::vector<std::string>(kImageSize); }

/// The properties are those of the sections' entries.
std::string EmptyNamesThatEntriesHave() {
    return ViewedImage({{kImageProperty, {{kIdProperty, {kIdString}}}}}, {.properties = EmptyNames(), .texts = {"a"}});
}

std::vector<std::string> DifferentNames(std::size_t room) {
    std::vector<std::string> names;
    ShortNames(room, [&names](const std::string& name) {
        names.push_back(name);
        return name + '\0';
    });
    return names;
}

/// Every section has what it is found by.
std::string SectionsForView(unsigned kind, const std::vector<EntryWords>& entries) {
    const SectionWords section = {kind, entries};
    return ViewedImage(std::vector<SectionWords>(kImageSize / SectionBytes(section).size(), section),
                       {.numbers = {7}, .texts = {"a"}, .groups = {"0", "A"}});
}

/// One section, each of whose entries has a name of its own.
std::string NamedEntriesForView() {
    const std::vector<std::string> names = DifferentNames(kImageSize / 5);
    SectionWords section = {kImageProperty, {}};
    for (unsigned i = 0; i < names.size(); ++i) section.entries.push_back({kIdProperty + i, {kIdString}});
    return ViewedImage({section}, {.properties = names, .texts = {"a"}});
}

struct Worst {
    const char* name;
    bool debug;
    std::size_t most;  ///< times the size of the image
    std::string (*make)();
};

void AskCompiled() {
    for (const unsigned table : kTables) GetTblData(table + 1);
    for (unsigned kind = 0x01000000; kind < 0x0100000d; ++kind) {
        gcGetSectByName(kind, "none");
        gcGetSectByID(kind, 7);
        for (unsigned i = 0; tagGCSECT* section = gcGetSectByIndex(kind, i); ++i) {
            gcGetEntryByName(section, "none", nullptr);
            gcGetEntryByType(section, 1);
        }
    }
}

void AskDebug() {
    for (unsigned kind = 1; kind < 14; ++kind) {
        for (unsigned i = 0; CZEKSection* section = gdGetSectByIndex(kind, i); ++i) {
            gdGetEntryByIndex(section, 0);
            gdGetSectName(section);
        }
    }
}

/// What has been taken since `before` is no more than so many times the size of the image.
void ExpectAtMost(std::size_t most, std::size_t size, std::size_t before) {
    const std::size_t taken = Memory() - before;
    std::printf("%zu KiB of image, %zu KiB of memory: %.1f times\n", size >> 10, taken >> 10,
                static_cast<double>(taken) / static_cast<double>(size));
    EXPECT_LE(taken, most * size + kBesides);
    EXPECT_GT(taken, kIsPeak ? size / 2 : 0) << "nothing was read";
}

class ImageMadeToTakeMemory : public ProcessTest, public testing::WithParamInterface<Worst> {};

struct WorstView {
    const char* name;
    std::size_t most;
    std::string (*make)();
};

class ViewMadeToTakeMemory : public ProcessTest, public testing::WithParamInterface<WorstView> {};

/// The bytes of a file that are in memory already.
std::span<const unsigned char> MappedBytes(const char* file) {
    const std::size_t size = std::filesystem::file_size(file);
    const int descriptor = open(file, O_RDONLY | O_CLOEXEC);
    void* const memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, descriptor, 0);
    close(descriptor);
    return {static_cast<const unsigned char*>(memory), size};
}

}  // namespace

TEST_P(ImageMadeToTakeMemory, TakesNoMoreThanItsMultiple) {
    const Worst& row = GetParam();
    Write("image", row.make());
    const std::size_t size = std::filesystem::file_size("image");
    InChild([&] {
        const std::size_t before = Memory();
        EXPECT_EQ(row.debug ? gdInit("image", nullptr) : gcInit("image", nullptr), 1U);
        row.debug ? AskDebug() : AskCompiled();
        ExpectAtMost(row.most, size, before);
    });
}

TEST_P(ViewMadeToTakeMemory, TakesNoMoreThanItsMultiple) {
    const WorstView& row = GetParam();
    // In a process of its own, whose memory the view cannot have.
    InChild([&] { Write("image", row.make()); });
    InChild([&] {
        const std::span<const unsigned char> image = MappedBytes("image");
        const std::size_t before = Memory();
        ImageFinding failure;
        const std::optional<ImageView> view = ImageView::Open(image, &failure);
        EXPECT_TRUE(view) << failure.Sentence();
        ExpectAtMost(row.most, image.size(), before);
    });
}

INSTANTIATE_TEST_SUITE_P(
    Debug, ImageMadeToTakeMemory,
    testing::Values(Worst{"FewSensors", true, 12, [] { return SectionsImage(0x20000005, kPlainModel - 2); }},
                    Worst{"Sensors", true, 12, [] { return SectionsImage(0x20000005, kImageSize / 32); }},
                    Worst{"Ifdefs", true, 12, [] { return SectionsImage(0x2000000d, kImageSize / 32); }},
                    Worst{"EntriesWithoutData", true, 12,
                          [] { return EntriesImage(EntryRecord(Object(0x10020001, 10, 1, 0, ""), Word(0))); }},
                    Worst{"NumberEntries", true, 12, [] { return EntryImage(0x10010001, Word(1)); }},
                    Worst{"TextEntries", true, 12, [] { return EntryImage(0x10020001, Str("")); }},
                    Worst{"ListEntries", true, 12, [] { return EntryImage(0x10040001, List({""})); }},
                    Worst{"RepeaterEntries", true, 12,
                          [] {
                              return EntryImage(0x10100001, Joined({0, 0, 0}));
                          }},
                    Worst{"ValueEntries", true, 12,
                          [] {
                              return EntryImage(0x10080001, Block(Joined({4, 0, 0, 0, 0, 0})));
                          }},
                    Worst{"OneList", true, 12,
                          [] {
                              return DebugHead() + Joined({0, 1, 1}) +
                                     Block(kFirstSection + Word(1) +
                                           Block(EntryRecord(Object(0x10040001, 10, 1, 0, ""),
                                                             Word(0x10040001) + EmptyTexts())));
                          }},
                    Worst{"SourceFiles", true, 12,
                          [] {
                              return DebugHead() + Joined({0, 1, 1}) +
                                     Block(Block(Object(0x20000002, 2, 1, 0, "") + EmptyTexts()) + Word(0));
                          }},
                    Worst{"ListBehindTheEnd", true, 12, ListBehindTheEnd},
                    Worst{"EntriesOfAllTypes", true, 12, EntriesOfAllTypes},
                    Worst{"PredefinedNames", true, 12, PredefinedNames}),
    RowName());

// A key takes a node of its map, 80 bytes for a name and 48 for a number, and up to 32 in the index. Names of two
// characters are the densest, and a table has no more than 65,025 of them.
INSTANTIATE_TEST_SUITE_P(
    Compiled, ImageMadeToTakeMemory,
    testing::Values(
        Worst{"Sections", false, 12,
              [] {
                  return CompiledSections(kImageSize / 8, {0x01000005, 0});
              }},
        Worst{"SectionsOfOneEntry", false, 12,
              [] {
                  return CompiledSections(kImageSize / 16, {0x01000005, 1, 0x03000000, 0});
              }},
        Worst{"SectionsOfOneWord", false, 12,
              [] {
                  return CompiledSections(kImageSize / 20, {0x01000005, 1, 0x02000015, 1, 5});
              }},
        Worst{"EntriesOfAllNames", false, 12, EntriesOfAllNames},
        Worst{"LongSectionsOfAllNames", false, 12, LongSectionsOfAllNames},
        Worst{"LongSectionsOfOneName", false, 12, LongSectionsOfOneName},
        Worst{"NamedEntries", false, 36, NamedEntries}, Worst{"Numbers", false, 36, Numbers},
        Worst{"Names", false, 36, [] { return Image({}, {Record(kIdString, NamesWithNul(kImageSize))}); }},
        Worst{"NamesOfTwoCharacters", false, 36, [] { return Image({}, {Record(kIdString, NamesWithNul(195'000))}); }},
        Worst{"EqualNames", false, 12, [] { return Image({}, {Record(kIdString, std::string(kImageSize, '\0'))}); }},
        Worst{"NamesInEightTables", false, 288, [] { return Overlapping(NamesWithNul(kImageSize)); }},
        Worst{"NamesOfTwoCharactersInEightTables", false, 288, [] { return Overlapping(NamesWithNul(195'000)); }},
        Worst{"NamesBehindGapsInEightTables", false, 288,
              [] { return Overlapping(std::string(kImageSize / 3, '\0') + NamesWithNul(2 * kImageSize / 3)); }}),
    RowName());

// A name takes 4 bytes for where it begins and 8 to 16 in the slots, a name of an entry 4 more while it is verified.
INSTANTIATE_TEST_SUITE_P(
    Opened, ViewMadeToTakeMemory,
    testing::Values(WorstView{"Names", 8, [] { return ViewedImage({}, {.texts = DifferentNames(kImageSize)}); }},
                    WorstView{"EmptyNames", 28, [] { return ViewedImage({}, {.texts = EmptyNames()}); }},
                    WorstView{"EmptyNamesThatEntriesHave", 28, EmptyNamesThatEntriesHave},
                    WorstView{"Numbers", 8, [] { return ViewedImage({}, {.numbers = WordList(kImageSize / 4, 1)}); }},
                    WorstView{"Sections", 8, [] { return SectionsForView(kImageDevice, {}); }},
                    WorstView{"SectionsWithNames", 8,
                              [] {
                                  return SectionsForView(kImageDevice, {{kIdName, {kIdString}}});
                              }},
                    WorstView{"SectionsWithNamesAndIDs", 8,
                              [] {
                                  return SectionsForView(kImageDevice, {{kIdName, {kIdString}}, {kIdID, {kIdNumber}}});
                              }},
                    WorstView{"GroupsWithParents", 8,
                              [] {
                                  return SectionsForView(kImageGroup, {{kIdParent, {kIdGroup}}, {kIdName, {kIdGroup}}});
                              }},
                    WorstView{"NamedEntries", 8, NamedEntriesForView}),
    RowName());

}  // namespace zek::test
