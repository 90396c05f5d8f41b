#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

#include "model/section_kinds.h"
#include "zekcomp/image_view.h"

namespace zek {

namespace {

/// In a sentence, %x stands for what was found as a word, %f for it as a number, %l for its limit.
struct CodeText {
    ImageCode code;
    const char* name;
    const char* sentence;
};

constexpr CodeText kCodes[] = {
    {ImageCode::kNone, "none", "nothing was found"},
    {ImageCode::kTooShort, "too-short", "the image has %f bytes, its header alone takes %l"},
    {ImageCode::kBadMagic, "bad-magic", "does not begin as a compiled image does"},
    {ImageCode::kBadVersion, "bad-version", "the format version is %x, only 0x01000000 is known"},
    {ImageCode::kReservedByte, "reserved-byte", "a byte that is always 0 is %f"},
    {ImageCode::kMissingTable, "missing-table", "the directory has no offset there"},
    {ImageCode::kMisplacedTable, "misplaced-table",
     "the offset %f is not a multiple of 16 behind the table before and within the image"},
    {ImageCode::kExtraTable, "extra-table", "the directory goes on behind its ten tables, with %x"},
    {ImageCode::kWrongTable, "wrong-table", "the tag is %x"},
    {ImageCode::kTableLength, "table-length", "a length of %f bytes cannot be, there are %l"},
    {ImageCode::kUnendedName, "unended-name", "the last name has no end"},
    {ImageCode::kBlockCount, "block-count", "there are %f blocks, but only %l names of tables"},
    {ImageCode::kSectionCount, "section-count", "%f sections are announced, there is room for %l"},
    {ImageCode::kSectionEnd, "section-end", "the tables should begin at byte %f, but begin at %l"},
    {ImageCode::kUnknownSection, "unknown-section", "%x is no kind of section"},
    {ImageCode::kEntryCount, "entry-count", "%f entries are announced, there is room for %l"},
    {ImageCode::kUnknownEntry, "unknown-entry", "%x names no entry"},
    {ImageCode::kWordCount, "word-count", "%f words are announced, there is room for %l"},
    {ImageCode::kWrongWordCount, "wrong-word-count", "the entry has %f words, it should have %l"},
    {ImageCode::kWrongClass, "wrong-class", "%x is of a class that cannot stand here"},
    {ImageCode::kBeyondTable, "beyond-table", "%x is not in its table, which has %l"},
    {ImageCode::kUnknownOperator, "unknown-operator", "%x is no operator"},
    {ImageCode::kMissingParent, "missing-parent", "no group has the name of the parent, %x"},
    {ImageCode::kParentCycle, "parent-cycle", "the group is its own ancestor"},
    {ImageCode::kTrailingBytes, "trailing-bytes", "%f bytes follow the last table"},
    {ImageCode::kSurplusLength, "surplus-length", "the length, %f bytes, counts names that are not there"},
    {ImageCode::kShortLength, "short-length", "the length, %f bytes, leaves keys out"},
    {ImageCode::kRepeatedKey, "repeated-key", "the key stands in its table before, so this identifier means nothing"},
    {ImageCode::kUnnumbered, "unnumbered", "a name without an identifier"},
    {ImageCode::kUnresolved, "unresolved", "%x marks what was not found when the image was written"},
    {ImageCode::kCarriedWord, "carried-word", "a large number has become %x, which means nothing here"},
    {ImageCode::kOwnParent, "own-parent", "the group names itself as its parent"},
    {ImageCode::kBeyondLength, "beyond-length",
     "the key lies behind the length that its table says, so this identifier means nothing"},
    {ImageCode::kTooManyKeys, "too-many-keys", "there are %f keys, those behind the first %l have no identifier"},
    {ImageCode::kForeignEntry, "foreign-entry", "no source gives %x to such a section"},
    {ImageCode::kRepeatedEntry, "repeated-entry", "%x names an entry of the section before, too"},
    {ImageCode::kTableWithoutBlock, "table-without-block", "%l tables have a name, %f have a block"},
};

const CodeText& TextOf(ImageCode code) {
    const auto found =
        std::find_if(std::begin(kCodes), std::end(kCodes), [code](const CodeText& row) { return row.code == code; });
    return found == std::end(kCodes) ? kCodes[0] : *found;
}

struct TableName {
    unsigned tableClass;
    const char* name;
};
constexpr TableName kTableNames[] = {
    {kIdProperty, "properties"},   {kIdGlobal, "globals"},       {kIdValue, "values"}, {kIdRepeater, "repeater items"},
    {kIdNumber, "numbers"},        {kIdString, "texts"},         {kIdGroup, "groups"}, {kIdAction, "actions"},
    {kIdTableName, "table names"}, {kIdTableData, "table data"},
};

std::string Word(std::uint32_t word) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08x", word);
    return text;
}

std::string SectionPlace(const ImageFinding& finding) {
    std::string place = "section " + std::to_string(finding.section);
    if (const SectionKind* kind = KindOf(finding.kind - kImageSectionClass + kSectionClass)) {
        place += std::string(" [") + kind->keyword + "]";
    }
    if (finding.entry != ImageFinding::kNowhere) place += ", entry " + std::to_string(finding.entry);
    if (finding.index != ImageFinding::kNowhere) place += ", word " + std::to_string(finding.index);
    return place;
}

std::string TablePlace(const ImageFinding& finding) {
    std::string place = "table";
    for (const TableName& row : kTableNames) {
        if (row.tableClass == finding.table) place = std::string("table of ") + row.name;
    }
    if (finding.index != ImageFinding::kNowhere) place += ", key " + std::to_string(finding.index);
    return place;
}

}  // namespace

const char* NameOf(ImageCode code) { return TextOf(code).name; }

std::string ImageFinding::Place() const {
    if (section != kNowhere) return SectionPlace(*this);
    if (table != kNowhere) return TablePlace(*this);
    return index != kNowhere ? "directory, slot " + std::to_string(index) : "image";
}

std::string ImageFinding::Sentence() const {
    std::string sentence;
    for (const char* at = TextOf(code).sentence; *at; ++at) {
        if (*at != '%') {
            sentence += *at;
            continue;
        }
        ++at;
        sentence += *at == 'x' ? Word(found) : std::to_string(*at == 'l' ? limit : found);
    }
    return sentence;
}

}  // namespace zek
