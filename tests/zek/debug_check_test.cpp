// The verification of debug images, on bytes.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "debug_layout.h"
#include "zek/told_debug_check.h"
#include "zekcomp/zekcomp.h"

namespace zek::tool {

namespace {

std::string Number(std::size_t number) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift);
    return bytes;
}

/// A text or a block: its length, then its bytes.
std::string Counted(const std::string& bytes) { return Number(bytes.size()) + bytes; }

struct Common {
    unsigned notation = 2;
    unsigned line = 1;
    unsigned file = 0;
};

std::string Object(unsigned type, const std::string& name, const Common& common = {}) {
    return Number(type) + Number(common.notation) + Number(common.line) + Number(common.file) + Counted(name);
}

/// An entry that a source adds.
std::string Entry(unsigned type, const std::string& data, unsigned file = 0) {
    return Counted(Counted(Object(type, "key", {AddedNotation(type), 1, file})) + Counted(data));
}

/// Any entry with a text.
std::string TextEntry(unsigned type, const std::string& name, const Common& common) {
    return Counted(Counted(Object(type, name, common)) + Counted(Number(type) + Counted("text")));
}

/// A declared key that was not given.
std::string Absent(unsigned type, unsigned notation) {
    return Counted(Counted(Object(type, "", {notation, 0, 0})) + Counted(Number(0)));
}

const std::string kFiles = Number(1) + Counted("a.zek");

std::string Section(unsigned type, const std::string& name, const std::vector<std::string>& entries = {},
                    const std::string& files = "") {
    std::string bytes = Counted(Object(type, name) + files) + Number(entries.size());
    for (const std::string& entry : entries) bytes += entry;
    return Counted(bytes);
}

std::string Group(const std::vector<std::string>& sections) {
    std::string bytes = Number(sections.size());
    for (const std::string& section : sections) bytes += section;
    return bytes;
}

/// What the groups of an image begin behind: the header and one predefined name.
constexpr std::size_t kGroups = 0x80 + 4 + 9;

std::string Image(const std::vector<std::string>& groups) {
    std::string bytes = std::string("QUOR ZEK metaD.\0", 16) + Number(ZEKD_VERSION);
    bytes.resize(ZEKD_DATA_OFFSET);
    bytes += Number(1) + Counted("W") + Number(7) + Number(groups.size());
    for (const std::string& group : groups) bytes += group;
    return bytes;
}

constexpr unsigned kGlobal = 0x2000000a;
constexpr unsigned kDefine = 0x2000000c;
constexpr unsigned kInclude = 0x2000000e;

/// An image of one [GLOBAL] whose one entry has this typed data.
std::string WithData(const std::string& data) {
    return Image({Group({Section(kGlobal, "GLOBAL", {Entry(ValueKey(1), data)}, kFiles)})});
}

std::string WithValue(const std::string& record) { return WithData(Number(ValueKey(1)) + Counted(record)); }

TEST(ZekDebugCheck, AcceptsWhatIsSound) {
    EXPECT_EQ(Told(Image({})), "0 0 0");
    EXPECT_EQ(Told(Image({Group({}), Group({Section(kDefine, "DEFINE", {}, kFiles)}), Group({})})), "1 0 0");
    EXPECT_EQ(Told(Image({Group({Section(kDefine, "DEFINE", {}, Number(0))})})),
              "section 0 [DEFINE], file index: is 0, and the list of source files has 0 (file-index at 169)");
    EXPECT_EQ(Told(WithValue(Number(1) + Counted("W") + Counted("5"))), "1 1 0");
    EXPECT_EQ(Told(WithValue(Number(3) + Counted("") + Counted("Act") + Number(2) + Counted("1") + Counted(""))),
              "1 1 0");
    EXPECT_EQ(Told(WithValue(Number(50) + Counted("W"))), "1 1 0");
}

TEST(ZekDebugCheck, NotesBytesBehindTheImageAndAListThatIsNotThere) {
    std::vector<std::string> notes;
    const auto show = [&](const DebugFinding& note) {
        EXPECT_GE(note.code, DebugCode::kTrailingBytes) << "a failure";
        notes.push_back(note.Place() + ": " + note.Sentence() + " (" + NameOf(note.code) + " at " +
                        std::to_string(note.offset) + ')');
    };
    const std::string image =
        Image({Group({Section(kDefine, "DEFINE", {Entry(kDefinitionKey, Number(kDefinitionKey) + Number(7), 99)})})});
    const DebugCheck check = CheckDebugImage(image + "xyz", show);
    EXPECT_FALSE(check.failure);
    EXPECT_TRUE(check.lacksFileList);
    EXPECT_EQ(check.notes, 2u);
    EXPECT_EQ(notes, (std::vector<std::string>{
                         "section 0 [DEFINE], list of source files: is not there, since the process that wrote the "
                         "image had written another (no-file-list at 183)",
                         "image: 3 bytes follow behind the last section (trailing-bytes at " +
                             std::to_string(image.size()) + ')'}));
}

TEST(ZekDebugCheck, TellsWhatIsWrongWithTheFrame) {
    const std::string empty = Image({});
    const std::string define = Section(kDefine, "DEFINE", {}, kFiles);
    const std::string names = empty.substr(0, 0x80) + Number(2) + Counted("B") + Number(1);
    const struct {
        std::string image;
        const char* told;
    } rows[] = {
        {"", "image: the image has 0 bytes, its header alone takes 128 (too-short at 0)"},
        {Replaced(empty, 14, "x"), "image: does not begin as a debug image does (bad-magic at 0)"},
        {Replaced(empty, 16, Number(1)),
         "image: the format version is 0x00000001, only 0x01000000 is known (bad-version at 16)"},
        {Replaced(empty, 0x7f, "\x02"), "image: the byte is 2, and always 0 in an image (reserved-byte at 127)"},
        {empty.substr(0, 0x82),
         "number of predefined names: needs 4 bytes, and the image ends after 2 (cut-short at 128)"},
        {Replaced(empty, 0x80, Number(3)),
         "number of predefined names: says 3, and what is left has room for 1 at most (count at 128)"},
        {Replaced(empty, 0x84, Number(100)),
         "predefined name 0, name: needs 100 bytes, and the image ends after 9 (cut-short at 132)"},
        {names + Counted("A") + Number(1) + Number(0),
         "predefined name 1, name: does not come behind the name before it in the order of bytes (unsorted-name at "
         "141)"},
        {names + Counted("B") + Number(1) + Number(0),
         "predefined name 1, name: does not come behind the name before it in the order of bytes (unsorted-name at "
         "141)"},
        {empty.substr(0, kGroups) + Number(15),
         "number of groups: says 15, and there are 14 kinds of sections (group-count at 141)"},
        {empty.substr(0, kGroups) + Number(1),
         "group 0, number of sections: needs 4 bytes, and the image ends after 0 "
         "(cut-short at 145)"},
        {empty.substr(0, kGroups) + Number(1) + Number(9) + define,
         "section 1, block: needs 4 bytes, and the image ends after 0 (cut-short at 200)"},
        {empty.substr(0, kGroups) + Number(1) + Number(0xFFFFFFFF) + define,
         "group 0, number of sections: says 4294967295, and what is left has room for 12 at most (count at 145)"},
        {Image({Group({define}), Group({Section(kGlobal, "GLOBAL"), Section(kInclude, "INCLUDE")})}),
         "section 2 [INCLUDE], type id: is 0x2000000e in a group of sections that are 0x2000000a (mixed-group at 250)"},
        {Image({Group({define}), Group({Section(kDefine, "DEFINE")})}),
         "section 1 [DEFINE], type id: 0x2000000c has a group before this one (repeated-group at 212)"},
    };
    for (const auto& row : rows) EXPECT_EQ(Told(row.image), row.told);
}

TEST(ZekDebugCheck, TellsWhatIsWrongWithASection) {
    const auto alone = [](const std::string& section) { return Image({Group({section})}); };
    const std::string define = alone(Section(kDefine, "DEFINE", {}, kFiles));
    const std::size_t section = kGroups + 8;
    const struct {
        std::string image;
        const char* told;
    } rows[] = {
        {Replaced(define, section, Number(51)),
         "section 0, block: needs 51 bytes, and the image ends after 47 (cut-short at 149)"},
        {Replaced(define, section, Number(3)).substr(0, section + 7),
         "section 0, common part: needs 4 bytes, and its block ends after 3 (overrun at 153)"},
        {Replaced(define, section, Number(46)),
         "section 0 [DEFINE], number of entries: needs 4 bytes, and its block ends after 3 (overrun at 196)"},
        {Replaced(define, section + 4, Number(47)),
         "section 0, common part: needs 47 bytes, and its block ends after 43 (overrun at 153)"},
        {alone(Section(0x2000000f, "NEW", {}, kFiles)),
         "section 0, type id: 0x2000000f is no kind of section (unknown-section at 157)"},
        {alone(Section(kDefine, "define", {}, kFiles)),
         "section 0 [DEFINE], name: is not the name of this kind of section (wrong-name at 173)"},
        {alone(Section(kDefine, "DEFINE", {}, Number(9) + Counted("a.zek"))),
         "section 0 [DEFINE], list of source files: says 9, and what is left has room for 2 at most (count at 183)"},
        {alone(Section(kDefine, "DEFINE", {}, Number(2) + Counted("a.zek"))),
         "section 0 [DEFINE], source file 1: needs 4 bytes, and its block ends after 0 (overrun at 196)"},
        {alone(Section(kDefine, "DEFINE", {}, kFiles + "ab")),
         "section 0 [DEFINE], common part: ends 2 bytes before its block does (surplus-bytes at 196)"},
        {Image({Group({Section(kDefine, "DEFINE", {}, kFiles)}), Group({Section(kGlobal, "GLOBAL", {}, kFiles)})}),
         "section 1 [GLOBAL], common part: ends 13 bytes before its block does (surplus-bytes at 238)"},
        {alone(Section(0x2000000d, "IFDEF", {}, kFiles)),
         "section 0 [IFDEF], number of entries: says 0, and such a section has 1 at least (entry-count at 195)"},
        {alone(Section(0x2000000d, "IFDEF", {Entry(kDefinitionKey, Number(0))}, kFiles)),
         "section 0 [IFDEF], entry 0, type id: is 0x10010001, and 0x10020016 stands there in such a section "
         "(missing-key at 207)"},
    };
    for (const auto& row : rows) EXPECT_EQ(Told(row.image), row.told);
}

TEST(ZekDebugCheck, TellsWhatIsWrongWithAnEntry) {
    const auto with = [](const std::string& entry) {
        return Image({Group({Section(kGlobal, "GLOBAL", {entry}, kFiles)})});
    };
    const std::string none = Number(0);
    const std::string value = Number(ValueKey(1));
    const std::string list = Number(7) + Counted("W");
    const struct {
        std::string image;
        const char* told;
    } rows[] = {
        {with(Entry(ValueKey(2), none)),
         "section 0 [GLOBAL], entry 0, type id: 0x10080002 is no entry of such a section (unknown-entry at 208)"},
        {with(Entry(0x10200000, none)),
         "section 0 [GLOBAL], entry 0, type id: 0x10200000 is no entry of such a section (unknown-entry at 208)"},
        {with(Entry(ValueKey(1), none, 1)),
         "section 0 [GLOBAL], entry 0, file index: is 1, and the list of source files has 1 (file-index at 220)"},
        {with(Counted(Counted(Object(ValueKey(1), "key")) + Counted(value + Counted(Number(0) + Counted("W"))) + "x")),
         "section 0 [GLOBAL], entry 0, block: ends 1 bytes before its block does (surplus-bytes at 252)"},
        {WithData(value + Counted(Number(0) + Counted("W")) + "x"),
         "section 0 [GLOBAL], entry 0, typed data: ends 1 bytes before its block does (surplus-bytes at 252)"},
        {WithData(none),
         "section 0 [GLOBAL], entry 0, type id of the data: is 0, and only a declared key can be without data "
         "(no-data at 235)"},
        {WithData(Number(ValueKey(2)) + Counted(list)),
         "section 0 [GLOBAL], entry 0, type id of the data: is 0x10080002, and that of the entry is 0x10080001 "
         "(wrong-data at 235)"},
        {WithData(value),
         "section 0 [GLOBAL], entry 0, value record: needs 4 bytes, and its block ends after 0 (overrun at 239)"},
        {WithData(value + Number(8) + list),
         "section 0 [GLOBAL], entry 0, type word: needs 1 bytes, and its block ends after 0 (overrun at 247)"},
        {WithValue(list),
         "section 0 [GLOBAL], entry 0, list: needs 4 bytes, and its block ends after 0 (overrun at 252)"},
        {WithValue(list + Number(2) + Counted("") + Number(1)),
         "section 0 [GLOBAL], entry 0, list element 1: needs 1 bytes, and its block ends after 0 (overrun at 260)"},
        {WithValue(Number(10) + Counted("W") + Counted("T") + Number(5) + "12"),
         "section 0 [GLOBAL], entry 0, operand 1: needs 5 bytes, and its block ends after 2 (overrun at 257)"},
        {WithValue(Number(0) + Counted("W") + "x"),
         "section 0 [GLOBAL], entry 0, value record: ends 1 bytes before its block does (surplus-bytes at 252)"},
    };
    for (const auto& row : rows) EXPECT_EQ(Told(row.image), row.told);
}

/// An image of a [TABLE] with these entries behind its NAME, or of a [DEVICE] without any that is declared.
std::string TableImage(const std::vector<std::string>& more, const std::string& name = "NAME",
                       const Common& common = {1, 2, 0}) {
    std::vector<std::string> entries = {TextEntry(kNameKey.type, name, common), Absent(kTypeKey.type, 1)};
    entries.insert(entries.end(), more.begin(), more.end());
    return Image({Group({Section(0x20000008, "TABLE", entries, kFiles)})});
}

std::string DeviceImage(const std::string& entry) {
    const std::vector<std::string> entries = {Absent(kNameKey.type, 1), Absent(kIDKey.type, 1),
                                              Absent(kInitFlagKey.type, 1), Absent(kControlMaskKey.type, 1), entry};
    return Image({Group({Section(0x20000006, "DEVICE", entries, kFiles)})});
}

TEST(ZekDebugCheck, TellsWhatIsWrongWithTheNameAndTheNotationOfAKey) {
    const std::string named = "section 0 [TABLE], entry ";
    const std::string given = ": is that of a key that was given, and this one has no data (absent-key at ";
    const auto absent = [](const std::string& name, const Common& common) {
        return Image(
            {Group({Section(0x2000000d, "IFDEF",
                            {Counted(Counted(Object(TextKey(0x16), name, common)) + Counted(Number(0)))}, kFiles)})});
    };
    const struct {
        std::string image;
        std::string told;
    } rows[] = {
        {TableImage({}), "1 2 0"},
        {TableImage({TextEntry(kRowKey, "1.2", {10, 0, 0}), TextEntry(kNameKey.type, "NAME", {2, 9, 0})}), "1 4 0"},
        {TableImage({}, "Name"), named + "0, name: is not a name that makes such an entry (entry-name at 223)"},
        {TableImage({}, ""), named + "0, name: is not a name that makes such an entry (entry-name at 223)"},
        {TableImage({}, "NAME", {2, 2, 0}), "1 2 1"},
        {TableImage({}, "NAME", {3, 2, 0}),
         named + "0, notation: is 3, and that of such an object is 1 (notation at 211)"},
        {TableImage({TextEntry(kNameKey.type, "NAME", {1, 9, 0})}),
         named + "2, notation: is 1, and that of such an object is 2 (notation at 295)"},
        {TableImage({TextEntry(kNameKey.type, "TYPE", {2, 9, 0})}),
         named + "2, name: is not a name that makes such an entry (entry-name at 307)"},
        {TableImage({TextEntry(kRowKey, "TYPE", {10, 9, 0})}),
         named + "2, name: is not a name that makes such an entry (entry-name at 307)"},
        {TableImage({TextEntry(kRowKey, "1", {2, 9, 0})}),
         named + "2, notation: is 2, and that of such an object is 10 (notation at 295)"},
        {DeviceImage(TextEntry(kPropertyKey, "P_", {10, 1, 0})), "1 5 0"},
        {DeviceImage(TextEntry(kPropertyKey, "VALUE_X", {10, 1, 0})),
         "section 0 [DEVICE], entry 4, name: is not a name that makes such an entry (entry-name at 368)"},
        {absent("", {1, 0, 0}), "1 1 0"},
        {absent("W", {1, 0, 0}), "section 0 [IFDEF], entry 0, name" + given + "223)"},
        {absent("", {1, 3, 0}), "section 0 [IFDEF], entry 0, line" + given + "215)"},
    };
    for (const auto& row : rows) EXPECT_EQ(Told(row.image), row.told);
}

TEST(ZekDebugCheck, TellsOfANulInATextOfASource) {
    const std::string nul(1, '\0');
    const std::string why = "has a NUL behind 1 bytes, and no text of a source has one (nul at ";
    const struct {
        std::string image;
        std::string place;
    } rows[] = {
        {WithValue(Number(1) + Counted("W") + Counted("5" + nul)), "text: " + why + "252)"},
        {WithValue(Number(1) + Counted("W" + nul) + Counted("5")), "type word: " + why + "247)"},
        {WithValue(Number(7) + Counted("W") + Number(1) + Counted("5" + nul + "5")), "list element 0: " + why + "256)"},
        {TableImage({TextEntry(kRowKey, "1" + nul, {10, 1, 0})}), "name: " + why + "307)"},
    };
    for (const auto& row : rows) {
        const std::string told = Told(row.image);
        EXPECT_TRUE(told.ends_with(", " + row.place)) << told;
    }
    EXPECT_EQ(Told(Image({Group({Section(kDefine, "DEFINE", {}, Number(1) + Counted("a" + nul))})})),
              "section 0 [DEFINE], source file 0: " + why + "187)");
    // A host may define a word of any bytes.
    std::string image = Image({});
    EXPECT_EQ(Told(image.replace(image.find("W", 0x80), 1, nul)), "0 0 0");
}

TEST(ZekDebugCheck, EveryCodeIsInTheTableOfThePage) {
    std::vector<std::string> names;
    for (unsigned code = 1; code <= static_cast<unsigned>(DebugCode::kRestoredKey); ++code) {
        const std::string name = NameOf(static_cast<DebugCode>(code));
        if (name != "none") names.push_back(name);
    }
    std::ifstream page(ZEK_SOURCE_DIR "/docs/debug-image.md");
    std::vector<std::string> listed;
    std::string line;
    while (std::getline(page, line) && line != "## Verification") continue;
    while (std::getline(page, line)) {
        if (line.starts_with("| `")) listed.push_back(line.substr(3, line.find('`', 3) - 3));
    }
    EXPECT_EQ(listed, names);
}

}  // namespace

}  // namespace zek::tool
