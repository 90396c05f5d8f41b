// The part of the verification that is about the tables.
#include <algorithm>

#include "compile/image_format.h"
#include "view/verifier.h"

namespace zek {

namespace {

constexpr std::size_t kTableHead = 8;
/// An ordinal has 24 bits.
constexpr std::size_t kMostKeys = 1U << 24;

}  // namespace

/// A table record: what its head says, and where it may reach.
struct ImageVerifier::TableFrame {
    std::size_t begin;  ///< of the record
    std::size_t body;
    std::size_t end;  ///< where the next table begins, or the image ends
};

bool ImageVerifier::Tables() {
    if (!Directory()) return false;
    for (std::size_t slot = 0; slot < kTables.size(); ++slot) {
        place_ = {};
        place_.table = kTables[slot];
        if (!Table(slot)) return false;
    }
    place_ = {};
    const std::uint32_t root = data_.TableOf(kIdGroup).OrdinalOf("0");
    if (root != HashSlots::kNone) data_.rootGroup = kIdGroup + root;
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
    ImageTable& table = data_.tables[tableClass >> 24];
    if (tableClass == kIdTableData) return Blocks(frame);
    return tableClass == kIdNumber ? Numbers(frame, table) : Names(frame, table);
}

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

/// The last name ends before the gap, however far its table's length goes.
bool ImageVerifier::IsLastNameEnded(const TableFrame& frame, std::size_t length, bool isShort) {
    const std::size_t room = frame.end - frame.body;
    const bool toGap = isShort || length == room;
    // The gap has one byte at least.
    if (toGap && image_[frame.end - 1] != 0) return Fail(ImageCode::kUnendedName, frame.end - 1, image_[frame.end - 1]);
    const std::size_t behind = frame.body + (toGap ? room - 1 : length);
    const unsigned char last = image_[behind - 1];
    return behind == frame.body || last == 0 || Fail(ImageCode::kUnendedName, behind - 1, last);
}

/// How many keys of a table are looked at: those of more have no identifier.
std::uint32_t ImageVerifier::Numbered(const TableFrame& frame, std::size_t keys) {
    if (keys > kMostKeys) Note(ImageCode::kTooManyKeys, frame.begin + 4, keys, kMostKeys);
    return static_cast<std::uint32_t>(std::min(keys, kMostKeys));
}

bool ImageVerifier::Names(const TableFrame& frame, ImageTable& table) {
    std::size_t length = 0;
    bool isShort = false;
    if (!TakeLength(frame, length, isShort) || !IsLastNameEnded(frame, length, isShort)) return false;
    const unsigned char* const body = table.body = image_.data() + frame.body;
    const auto ends = [body](std::size_t size) { return static_cast<std::size_t>(std::count(body, body + size, 0)); };
    const bool cut = length > 0 && body[length - 1] != 0;
    table.count = Numbered(frame, ends(length) + cut);
    table.starts.reserve(table.count + std::size_t{1});
    table.starts.push_back(0);
    for (std::size_t at = 0; table.starts.size() <= table.count;) {
        at = static_cast<std::size_t>(std::find(body + at, body + length, 0) - body) + 1;
        table.starts.push_back(static_cast<std::uint32_t>(at));
    }
    FindRepeated(table, frame);
    // What fills a place is an empty name. If it made the length too short for empty names, the last ones, these do not
    // show in the gap.
    const bool mayHide = table.OrdinalOf("") != HashSlots::kNone;
    const std::size_t hidden = mayHide ? frame.end - frame.body - length : 0;
    table.limit = isShort ? static_cast<std::uint32_t>(ends(frame.end - frame.body))
                          : table.count + static_cast<std::uint32_t>(hidden);
    return true;
}

bool ImageVerifier::Numbers(const TableFrame& frame, ImageTable& table) {
    std::size_t length = 0;
    bool isShort = false;
    if (!TakeLength(frame, length, isShort)) return false;
    if (length % 4 != 0) return Fail(ImageCode::kTableLength, frame.begin + 4, length, frame.end - frame.body);
    table.body = image_.data() + frame.body;
    table.count = Numbered(frame, length / 4);
    const std::size_t room = frame.end - frame.body;
    // As with names; but only the number 0, as the last one, does not show.
    const bool mayHide = room - length >= 4 && Fillers(frame, length) > 0;
    table.limit = isShort ? static_cast<std::uint32_t>(room / 4) : table.count + mayHide;
    FindRepeated(table, frame);
    return true;
}

/// A key that stands in its table before belongs to its first identifier alone.
void ImageVerifier::FindRepeated(ImageTable& table, const TableFrame& frame) {
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
    const ImageTable& names = data_.TableOf(kIdTableName);
    if (blocks > names.limit) return Fail(ImageCode::kBlockCount, frame.begin + 4, blocks, names.limit);
    if (blocks < names.count) Note(ImageCode::kTableWithoutBlock, frame.begin + 4, blocks, names.count);
    if (length < room) Note(ImageCode::kTrailingBytes, frame.body + length, room - length);
    data_.blocks = image_.subspan(frame.body, length);
    return true;
}

}  // namespace zek
