// How findings in debug images are told.
#include <iterator>

#include "debug_check.h"
#include "debug_layout.h"
#include "printable.h"

namespace zek::tool {
namespace {

/// A code as a text. In the sentence, %f stands for what was found, %l for the limit; %x and %y for both in
/// hexadecimal.
struct CodeText {
    DebugCode code;
    const char* name;
    const char* sentence;
};

constexpr CodeText kCodeTexts[] = {
    {DebugCode::kNone, "none", "nothing is wrong"},
    {DebugCode::kTooShort, "too-short", "the image has %f bytes, its header alone takes %l"},
    {DebugCode::kBadMagic, "bad-magic", "does not begin as a debug image does"},
    {DebugCode::kBadVersion, "bad-version", "the format version is %x, only %y is known"},
    {DebugCode::kReservedByte, "reserved-byte", "the byte is %f, and always 0 in an image"},
    {DebugCode::kCutShort, "cut-short", "needs %f bytes, and the image ends after %l"},
    {DebugCode::kOverrun, "overrun", "needs %f bytes, and its block ends after %l"},
    {DebugCode::kCount, "count", "says %f, and what is left has room for %l at most"},
    {DebugCode::kSurplusBytes, "surplus-bytes", "ends %f bytes before its block does"},
    {DebugCode::kUnsortedName, "unsorted-name", "does not come behind the name before it in the order of bytes"},
    {DebugCode::kGroupCount, "group-count", "says %f, and there are %l kinds of sections"},
    {DebugCode::kUnknownSection, "unknown-section", "%x is no kind of section"},
    {DebugCode::kMixedGroup, "mixed-group", "is %x in a group of sections that are %y"},
    {DebugCode::kRepeatedGroup, "repeated-group", "%x has a group before this one"},
    {DebugCode::kWrongName, "wrong-name", "is not the name of this kind of section"},
    {DebugCode::kEntryCount, "entry-count", "says %f, and such a section has %l at least"},
    {DebugCode::kMissingKey, "missing-key", "is %x, and %y stands there in such a section"},
    {DebugCode::kUnknownEntry, "unknown-entry", "%x is no entry of such a section"},
    {DebugCode::kWrongData, "wrong-data", "is %x, and that of the entry is %y"},
    {DebugCode::kFileIndex, "file-index", "is %f, and the list of source files has %l"},
    {DebugCode::kNotation, "notation", "is %f, and that of such an object is %l"},
    {DebugCode::kEntryName, "entry-name", "is not a name that makes such an entry"},
    {DebugCode::kNoData, "no-data", "is 0, and only a declared key can be without data"},
    {DebugCode::kAbsentKey, "absent-key", "is that of a key that was given, and this one has no data"},
    {DebugCode::kNul, "nul", "has a NUL behind %f bytes, and no text of a source has one"},
    {DebugCode::kTrailingBytes, "trailing-bytes", "%f bytes follow behind the last section"},
    {DebugCode::kNoFileList, "no-file-list",
     "is not there, since the process that wrote the image had written another"},
    {DebugCode::kRestoredKey, "restored-key",
     "is %f, that of a key given again, which took the place of the first when its image was loaded"},
};

const CodeText& TextOf(DebugCode code) {
    for (const CodeText& row : kCodeTexts) {
        if (row.code == code) return row;
    }
    return kCodeTexts[0];
}

/// Adds a part of a place behind those that are there.
void Add(std::string& place, const std::string& part) {
    if (!part.empty()) place += (place.empty() ? "" : ", ") + part;
}

std::string Numbered(const char* what, std::size_t number) {
    if (number == DebugFinding::kNowhere) return {};
    return std::string(what) + ' ' + std::to_string(number);
}

}  // namespace

const char* NameOf(DebugCode code) { return TextOf(code).name; }

std::string DebugFinding::Place() const {
    std::string place;
    Add(place, Numbered("predefined name", name));
    Add(place, section == kNowhere ? Numbered("group", group) : Numbered("section", section));
    if (const DebugKind* known = DebugKindOf(kind)) place += std::string(" [") + known->keyword + ']';
    Add(place, Numbered("entry", entry));
    Add(place, index == kNowhere ? field : Numbered(field, index));
    return place;
}

std::string DebugFinding::Sentence() const {
    std::string text;
    for (const char* at = TextOf(code).sentence; *at; ++at) {
        if (*at != '%') {
            text += *at;
            continue;
        }
        ++at;
        const std::size_t number = *at == 'f' || *at == 'x' ? found : limit;
        text += *at == 'f' || *at == 'l' ? std::to_string(number) : Hexadecimal(static_cast<unsigned>(number));
    }
    return text;
}

}  // namespace zek::tool
