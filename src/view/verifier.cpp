#include "view/verifier.h"

#include <algorithm>
#include <numeric>

#include "compile/image_format.h"
#include "model/file_header.h"

namespace zek {

namespace {

/// The class of each table in the order of the directory.
constexpr std::array<unsigned, 10> kTables = {kIdProperty, kIdGlobal, kIdValue,  kIdRepeater,  kIdNumber,
                                              kIdString,   kIdGroup,  kIdAction, kIdTableName, kIdTableData};
constexpr std::size_t kTableHead = 8;
constexpr std::size_t kSectionHead = 8;
constexpr unsigned kRootGroup = kIdGroup;
constexpr std::uint32_t kNone = ImageFinding::kNowhere;
/// An ordinal has 24 bits.
constexpr std::size_t kMostKeys = 1U << 24;

bool IsKind(unsigned identifier) { return identifier >= kImageQuorzek && identifier <= kImageRepeater; }

/// Why an identifier that was given out stands for nothing.
ImageCode CodeOfMissing(const KeyTable& table, unsigned ordinal) {
    return ordinal < table.count ? ImageCode::kRepeatedKey : ImageCode::kBeyondLength;
}

bool OffersNames(unsigned kind) { return kind == kImageProperty || kind == kImageGlobal || kind == kImageRepeater; }

}  // namespace

/// A table record: what its head says, and where it may reach.
struct ImageVerifier::TableFrame {
    std::size_t begin;  ///< of the record
    std::size_t body;
    std::size_t end;  ///< where the next table begins, or the image ends
};

/// How many bytes of the gap before the next table have been written to: none, or those up to the end of a key.
std::size_t ImageVerifier::WrittenInGap(const TableFrame& frame, std::size_t length) const {
    const auto gap = image_.subspan(frame.body + length, frame.end - frame.body - length);
    const auto last = std::find_if(gap.rbegin(), gap.rend(), [](unsigned char byte) { return byte != 0; });
    const auto written = static_cast<std::size_t>(gap.rend() - last);
    if (place_.table == kIdNumber) return (written + 3) / 4 * 4;
    if (written > 0) return std::min(written + 1, gap.size());
    return length > 0 && !gap.empty() && image_[frame.body + length - 1] != 0 ? 1 : 0;
}

/// How many of the first `length` bytes may fill places of keys that the writer lacked.
std::size_t ImageVerifier::Fillers(const TableFrame& frame, std::size_t length) const {
    std::size_t fillers = 0;
    if (place_.table == kIdNumber) {
        for (std::size_t at = 0; at < length; at += 4) fillers += At(frame.body + at) == kIdUnresolved ? 4 : 0;
        return fillers;
    }
    unsigned char before = 0;
    for (const unsigned char byte : image_.subspan(frame.body, length)) {
        fillers += byte == 0 && before == 0;
        before = byte;
    }
    return fillers;
}

/// Whether more was written than this length says: the next table begins later than behind such a body, or the gap
/// before it is not empty; and with as many places filled, since nothing else makes a length too short.
bool ImageVerifier::IsShort(const TableFrame& frame, std::size_t length) const {
    const bool later = NextTable(frame.body + length) < frame.end;
    const std::size_t missing = later ? frame.end - kImageAlignment - frame.body - length : WrittenInGap(frame, length);
    return missing > 0 && missing <= Fillers(frame, length + missing);
}

ImageFinding ImageVerifier::Finding(ImageCode code, std::size_t offset, std::uint32_t found, std::uint32_t limit,
                                    std::uint32_t index) const {
    return {code, place_.section, place_.kind, place_.entry, place_.table, index, offset, found, limit};
}

bool ImageVerifier::Fail(ImageCode code, std::size_t offset, std::size_t found, std::size_t limit,
                         std::uint32_t index) {
    failure_ = Finding(code, offset, static_cast<std::uint32_t>(found), static_cast<std::uint32_t>(limit), index);
    return false;
}

bool ImageVerifier::Note(ImageCode code, std::size_t offset, std::size_t found, std::size_t limit,
                         std::uint32_t index) {
    ++data_.notes;
    if (show_) {
        show_(Finding(code, offset, static_cast<std::uint32_t>(found), static_cast<std::uint32_t>(limit), index));
    }
    return true;
}

bool ImageVerifier::Verify() { return Header() && Tables() && Sections() && Parents(); }

bool ImageVerifier::Zeros(std::size_t begin, std::size_t end) {
    const auto first = image_.begin() + static_cast<std::ptrdiff_t>(begin);
    const auto last = image_.begin() + static_cast<std::ptrdiff_t>(end);
    const auto other = std::find_if(first, last, [](unsigned char byte) { return byte != 0; });
    return other == last || Fail(ImageCode::kReservedByte, static_cast<std::size_t>(other - image_.begin()), *other);
}

bool ImageVerifier::Header() {
    constexpr std::size_t kHeader = kImageBody + 4;
    if (!HasMagic({reinterpret_cast<const char*>(image_.data()), image_.size()}, kImageMagic)) {
        return Fail(ImageCode::kBadMagic, 0);
    }
    if (image_.size() < kHeader) return Fail(ImageCode::kTooShort, image_.size(), image_.size(), kHeader);
    data_.version = At(kMagicSize);
    data_.time = At(kMagicSize + 4);
    if (data_.version != ZEK_VERSION) return Fail(ImageCode::kBadVersion, kMagicSize, data_.version, ZEK_VERSION);
    return Zeros(kImageMagic.size(), kMagicSize) && Zeros(kMagicSize + 8, kImageDirectory) &&
           Zeros(kImageDirectory + 4 * (kTables.size() + 1), kImageBody);
}

bool ImageVerifier::Tables() {
    if (!Directory()) return false;
    for (std::size_t slot = 0; slot < kTables.size(); ++slot) {
        place_ = {kNone, kNone, kNone, kTables[slot]};
        if (!Table(slot)) return false;
    }
    place_ = {};
    return true;
}

/// Every table begins at a boundary, behind the head of the one before it.
bool ImageVerifier::Directory() {
    std::size_t behind = kImageBody + 4;
    for (std::size_t slot = 0; slot < kTables.size(); ++slot) {
        const std::size_t at = kImageDirectory + 4 * slot;
        const auto index = static_cast<std::uint32_t>(slot);
        const std::size_t start = starts_[slot] = At(at);
        if (start == 0) return Fail(ImageCode::kMissingTable, at, 0, 0, index);
        const bool inside = start >= behind && start <= image_.size() && image_.size() - start >= kTableHead;
        if (start % kImageAlignment != 0 || !inside) return Fail(ImageCode::kMisplacedTable, at, start, 0, index);
        behind = start + kTableHead;
    }
    const std::size_t end = kImageDirectory + 4 * kTables.size();
    if (At(end) != 0) return Fail(ImageCode::kExtraTable, end, At(end), 0, static_cast<std::uint32_t>(kTables.size()));
    starts_.back() = image_.size();
    return true;
}

bool ImageVerifier::Table(std::size_t slot) {
    const TableFrame frame = {starts_[slot], starts_[slot] + kTableHead, starts_[slot + 1]};
    const unsigned tableClass = kTables[slot];
    if (At(frame.begin) != tableClass) return Fail(ImageCode::kWrongTable, frame.begin, At(frame.begin), tableClass);
    KeyTable& table = data_.tables[tableClass >> 24];
    if (tableClass == kIdTableData) return Blocks(frame);
    return tableClass == kIdNumber ? Numbers(frame, table) : Names(frame, table);
}

/// The bytes that a table's length covers. It may end before what was written does, since the writer does not count
/// what fills the place of a key that it lacks. And a length of names may go beyond the next table, since it counts
/// keys that are not written; only the names before that are looked at: the writer has used no identifier beyond.
bool ImageVerifier::TakeLength(const TableFrame& frame, std::size_t& length, bool& isShort) {
    const std::size_t at = frame.begin + 4;
    const std::size_t claimed = At(at);
    const std::size_t room = frame.end - frame.body;
    length = std::min(claimed, room);
    if (claimed >= room) {
        return place_.table == kIdNumber ? Fail(ImageCode::kTableLength, at, claimed, room)
                                         : Note(ImageCode::kSurplusLength, at, claimed, room);
    }
    isShort = IsShort(frame, length);
    if (isShort) return Note(ImageCode::kShortLength, at, claimed, room);
    if (NextTable(frame.body + length) != frame.end) return Fail(ImageCode::kTableLength, at, claimed, room);
    return Zeros(frame.body + length, frame.end);
}

bool ImageVerifier::Names(const TableFrame& frame, KeyTable& table) {
    std::size_t length = 0;
    bool isShort = false;
    if (!TakeLength(frame, length, isShort)) return false;
    const unsigned char* const body = table.body = image_.data() + frame.body;
    if (length > 0 && !isShort && length < frame.end - frame.body && body[length - 1] != 0) {
        return Fail(ImageCode::kUnendedName, frame.body + length - 1, body[length - 1]);
    }
    table.starts.push_back(0);
    for (std::size_t at = 0; at < length && table.starts.size() <= kMostKeys;) {
        const unsigned char* const end = std::find(body + at, body + length, 0);
        at = static_cast<std::size_t>(end - body) + 1;
        table.starts.push_back(static_cast<std::uint32_t>(at));
    }
    table.count = static_cast<std::uint32_t>(table.starts.size() - 1);
    table.limit = table.count;
    if (isShort) {
        table.limit = static_cast<std::uint32_t>(std::count(body, image_.data() + frame.end, 0));
    }
    FindRepeated(table, frame);
    return true;
}

bool ImageVerifier::Numbers(const TableFrame& frame, KeyTable& table) {
    std::size_t length = 0;
    bool isShort = false;
    if (!TakeLength(frame, length, isShort)) return false;
    if (length % 4 != 0) return Fail(ImageCode::kTableLength, frame.begin + 4, length, frame.end - frame.body);
    table.body = image_.data() + frame.body;
    table.count = static_cast<std::uint32_t>(std::min(length / 4, kMostKeys));
    table.limit = isShort ? static_cast<std::uint32_t>((frame.end - frame.body) / 4) : table.count;
    FindRepeated(table, frame);
    return true;
}

/// A key that stands in its table before belongs to its first identifier alone.
void ImageVerifier::FindRepeated(KeyTable& table, const TableFrame& frame) {
    const bool names = !table.starts.empty();
    HashSlots numbers;
    HashSlots& slots = names ? table.slots : numbers;
    slots.Reset(table.count);
    for (std::uint32_t i = 0; i < table.count; ++i) {
        const std::uint32_t first =
            names ? slots.Add(HashOf(table.NameAt(i)), i,
                              [&](std::uint32_t other) { return table.NameAt(other) == table.NameAt(i); })
                  : slots.Add(HashOf(table.NumberAt(i)), i,
                              [&](std::uint32_t other) { return table.NumberAt(other) == table.NumberAt(i); });
        if (first == i) continue;
        if (table.repeated.empty()) table.repeated.resize(table.count);
        table.repeated[i] = true;
        const std::size_t at = frame.body + (names ? table.starts[i] : std::size_t{4} * i);
        // A length that counts too much makes empty names of the gap before the next table.
        const bool gap = names && at + kImageAlignment >= frame.end && table.NameAt(i).empty();
        if (!gap) Note(ImageCode::kRepeatedKey, at, first, 0, i);
    }
}

bool ImageVerifier::Blocks(const TableFrame& frame) {
    const std::size_t length = At(frame.begin + 4);
    const std::size_t room = frame.end - frame.body;
    if (length > room || length % kTableBlockSize != 0) {
        return Fail(ImageCode::kTableLength, frame.begin + 4, length, room);
    }
    const std::size_t blocks = length / kTableBlockSize;
    const KeyTable& names = data_.TableOf(kIdTableName);
    if (blocks > names.limit) return Fail(ImageCode::kBlockCount, frame.begin + 4, blocks, names.limit);
    if (blocks < names.count) Note(ImageCode::kTableWithoutBlock, frame.begin + 4, blocks, names.count);
    if (length < room) Note(ImageCode::kTrailingBytes, frame.body + length, room - length);
    data_.blocks = image_.subspan(frame.body, length);
    return true;
}

bool ImageVerifier::Sections() {
    const std::size_t end = starts_[0];
    std::size_t at = kImageBody + 4;
    const std::size_t count = At(kImageBody);
    const std::size_t most = (end - at) / kSectionHead;
    if (count > most) return Fail(ImageCode::kSectionCount, kImageBody, count, most);
    data_.sections.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        place_ = {i, kNone, kNone, kNone};
        if (end - at < kSectionHead) return Fail(ImageCode::kSectionCount, at, count, i);
        if (!Section(at)) return false;
    }
    place_ = {};
    if (NextTable(at) != end) return Fail(ImageCode::kSectionEnd, at, NextTable(at), end);
    data_.named.Build();
    data_.withID.Build();
    SortByKind();
    return Zeros(at, end);
}

bool ImageVerifier::Section(std::size_t& at) {
    data_.sections.push_back(static_cast<std::uint32_t>(at));
    if (!IsKind(At(at))) return Fail(ImageCode::kUnknownSection, at, At(at));
    place_.kind = At(at);
    const unsigned count = At(at + 4);
    at += kSectionHead;
    const std::size_t first = at;
    const std::size_t most = (starts_[0] - at) / kEntryHead;
    if (count > most) return Fail(ImageCode::kEntryCount, at - 4, count, most);
    for (place_.entry = 0; place_.entry < count; ++place_.entry) {
        if (starts_[0] - at < kEntryHead) return Fail(ImageCode::kEntryCount, at, count, place_.entry);
        if (!Entry(at)) return false;
    }
    if (count > kWalkedEntries) IndexEntries(first, count);
    return true;
}

bool ImageVerifier::Entry(std::size_t& at) {
    const unsigned char* const record = image_.data() + at;
    const unsigned name = EntryName(record);
    const unsigned words = EntryWords(record);
    const std::size_t most = (starts_[0] - at - kEntryHead) / 4;
    if (words > most) return Fail(ImageCode::kWordCount, at + 4, words, most);
    if (!Name(at, name)) return false;
    if (IsValueKey(place_.kind, name)) {
        if (!Value(record, at)) return false;
    } else {
        const std::optional<EntryShape> shape = ShapeOfKey(place_.kind, name);
        if (!shape) return Fail(ImageCode::kUnknownEntry, at, name);
        if (!Words(*shape, record, at, (name & kIdClassMask) == kIdRepeater)) return false;
    }
    Remember(record, at);
    at += kEntryHead + std::size_t{4} * words;
    return true;
}

bool ImageVerifier::Name(std::size_t at, unsigned name) {
    if ((name & kIdClassMask) == kIdKeyword) return true;
    const KeyTable& table = data_.TableOf(name);
    const unsigned ordinal = name & kIdOrdinalMask;
    const bool known = (name & kIdClassMask) <= kIdRepeater && (name & kIdClassMask) >= kIdProperty;
    if (!known) return Fail(ImageCode::kUnknownEntry, at, name);
    if (ordinal >= table.limit) return Fail(ImageCode::kBeyondTable, at, name, table.limit);
    return table.Stands(ordinal) || Note(CodeOfMissing(table, ordinal), at, name, ordinal);
}

bool ImageVerifier::Value(const unsigned char* record, std::size_t at) {
    const unsigned words = EntryWords(record);
    if (words == 0) return Fail(ImageCode::kWrongWordCount, at + 4, 0, 1);
    const unsigned type = EntryWord(record, 0);
    const std::size_t typeAt = at + kEntryHead;
    if ((type & kIdClassMask) != kIdValueType) {
        // The value types without operands are any numbers, and so carry into any class.
        if (words == 1) return Note(ImageCode::kCarriedWord, typeAt, type, 0, 0);
        return Fail(ImageCode::kWrongClass, typeAt, type, 0, 0);
    }
    bool comparison = false;
    if ((type & kIdOrdinalMask) == kOperation && words > 1) {
        const unsigned code = EntryWord(record, 1);
        const bool known = MayStand(kOperatorOperand, code) && IsOperatorCode(code & kIdOrdinalMask);
        if (!known) return Fail(ImageCode::kUnknownOperator, typeAt + 4, code, 0, 1);
        comparison = IsComparison(code & kIdOrdinalMask);
    }
    // The argument that an operand of an action stands for can be any number.
    return Words(ShapeOfValue(type & kIdOrdinalMask, comparison), record, at, place_.kind == kImageAction);
}

bool ImageVerifier::Words(const EntryShape& shape, const unsigned char* record, std::size_t at, bool mayCarry) {
    const unsigned words = EntryWords(record);
    if (words < shape.fewest || words > shape.most) {
        return Fail(ImageCode::kWrongWordCount, at + 4, words, words < shape.fewest ? shape.fewest : shape.most);
    }
    for (unsigned i = 0; i < words; ++i) {
        if (!Word(shape.RoleOf(i), EntryWord(record, i), at + kEntryHead + std::size_t{4} * i, i, mayCarry)) {
            return false;
        }
    }
    return true;
}

bool ImageVerifier::Word(char role, unsigned word, std::size_t at, std::uint32_t index, bool mayCarry) {
    const bool operand = role == kReference || role == kValueNameOperand;
    const bool carries = operand && mayCarry;
    if (MayStand(role, word)) {
        const unsigned wordClass = word & kIdClassMask;
        if (wordClass >= kIdArgument) return true;
        const KeyTable& table = data_.TableOf(word);
        const unsigned ordinal = word & kIdOrdinalMask;
        if (ordinal >= table.limit) {
            return carries ? Note(ImageCode::kCarriedWord, at, word, 0, index)
                           : Fail(ImageCode::kBeyondTable, at, word, table.limit, index);
        }
        if (!table.Stands(ordinal)) return Note(CodeOfMissing(table, ordinal), at, word, ordinal, index);
        const bool unresolved = wordClass == kIdNumber && table.NumberAt(ordinal) == kIdUnresolved;
        return !unresolved || Note(ImageCode::kUnresolved, at, word, 0, index);
    }
    const bool named = role == kGroupWord || role == kActionOperand || role == kTableOperand;
    if (word == 0 && (named || operand)) return Note(ImageCode::kUnnumbered, at, word, 0, index);
    if (word == kIdUnresolved && operand) return Note(ImageCode::kUnresolved, at, word, 0, index);
    return carries ? Note(ImageCode::kCarriedWord, at, word, 0, index)
                   : Fail(ImageCode::kWrongClass, at, word, 0, index);
}

/// What a section is found by.
void ImageVerifier::Remember(const unsigned char* record, std::size_t at) {
    const unsigned name = EntryName(record);
    if (name == kIdName || OffersNames(place_.kind)) {
        const unsigned word = name == kIdName ? EntryWord(record, 0) : name;
        if (data_.Resolve(word)) data_.named.Add(place_.kind, word, place_.section);
    }
    if (name == kIdID) {
        const ImageValue id = data_.Resolve(EntryWord(record, 0));
        if (id) data_.withID.Add(place_.kind, id.number, place_.section);
    }
    // The first PARENT counts, as in Section::Parent.
    const bool again = !parents_.empty() && parents_.back().section == place_.section;
    if (name == kIdParent && !again && (place_.kind == kImageGroup || place_.kind == kImageSensor)) {
        parents_.push_back({place_.section, EntryWord(record, 0), static_cast<std::uint32_t>(at + kEntryHead)});
    }
}

/// For look-ups in a section that is too long to be walked each time.
void ImageVerifier::IndexEntries(std::size_t first, unsigned count) {
    auto& rows = data_.indexedEntries;
    const std::size_t before = rows.size();
    const unsigned char* record = image_.data() + first;
    for (unsigned i = 0; i < count; ++i, record = NextEntry(record)) {
        rows.push_back({EntryName(record), static_cast<std::uint32_t>(record - image_.data())});
    }
    std::stable_sort(rows.begin() + static_cast<std::ptrdiff_t>(before), rows.end(),
                     [](const auto& a, const auto& b) { return a.id < b.id; });
    data_.largeSections.push_back({place_.section, static_cast<std::uint32_t>(before), count});
}

void ImageVerifier::SortByKind() {
    const auto ordinal = [this](std::uint32_t section) { return At(data_.sections[section]) & kIdOrdinalMask; };
    const auto count = static_cast<std::uint32_t>(data_.sections.size());
    auto& starts = data_.kindStarts;
    for (std::uint32_t i = 0; i < count; ++i) ++starts[ordinal(i) + 1];
    std::partial_sum(starts.begin(), starts.end(), starts.begin());
    auto next = starts;
    data_.byKind.resize(count);
    for (std::uint32_t i = 0; i < count; ++i) data_.byKind[next[ordinal(i)]++] = i;
}

bool ImageVerifier::Parents() {
    std::vector<std::uint32_t> parents(data_.sections.size(), kNone);
    for (const ParentOf& child : parents_) {
        place_ = {child.section, At(data_.sections[child.section]), kNone, kNone};
        if (!Parent(child, parents)) return false;
    }
    return Cycles(parents);
}

bool ImageVerifier::Parent(const ParentOf& child, std::vector<std::uint32_t>& parents) {
    const std::uint32_t parent = data_.named.Find(kImageGroup, child.word);
    if (parent == child.section) return Note(ImageCode::kOwnParent, child.offset, child.word);
    const bool group = place_.kind == kImageGroup;
    if ((group && child.word == kRootGroup) || !data_.Resolve(child.word)) return true;
    if (parent == FirstSections::kNone) return Fail(ImageCode::kMissingParent, child.offset, child.word);
    if (group) parents[child.section] = parent;
    return true;
}

/// Goes up from every group until one that an earlier way has passed.
bool ImageVerifier::Cycles(const std::vector<std::uint32_t>& parents) {
    std::vector<std::uint32_t> passedBy(parents.size(), kNone);
    for (std::uint32_t way = 0; way < parents_.size(); ++way) {
        std::uint32_t group = parents_[way].section;
        for (; group != kNone && passedBy[group] == kNone; group = parents[group]) passedBy[group] = way;
        if (group == kNone || passedBy[group] != way) continue;
        place_ = {parents_[way].section, At(data_.sections[parents_[way].section]), kNone, kNone};
        return Fail(ImageCode::kParentCycle, parents_[way].offset, parents_[way].word);
    }
    place_ = {};
    return true;
}

}  // namespace zek
