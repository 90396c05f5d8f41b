#include "view/verifier.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "compile/image_format.h"
#include "model/file_header.h"

namespace zek {

namespace {

constexpr std::size_t kSectionHead = 8;
constexpr std::uint32_t kNone = ImageFinding::kNowhere;

/// Why an identifier that was given out stands for nothing.
ImageCode CodeOfMissing(const ImageTable& table, unsigned ordinal) {
    return ordinal < table.count ? ImageCode::kRepeatedKey : ImageCode::kBeyondLength;
}

bool OffersNames(unsigned kind) { return kind == kImageProperty || kind == kImageGlobal || kind == kImageRepeater; }

}  // namespace

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
    const bool sound = IsValueKey(name)
                           ? Value(record, at)
                           : Words(ShapeOfKey(place_.kind, name), record, at, (name & kIdClassMask) == kIdRepeater);
    if (!sound) return false;
    Remember(record, at);
    at += kEntryHead + std::size_t{4} * words;
    return true;
}

bool ImageVerifier::Name(std::size_t at, unsigned name) {
    const unsigned kinds = KindsWith(name);
    if (kinds == 0) return Fail(ImageCode::kUnknownEntry, at, name);
    const ImageTable& table = data_.TableOf(name);
    const unsigned ordinal = name & kIdOrdinalMask;
    const bool keyword = (name & kIdClassMask) == kIdKeyword;
    const std::uint32_t limit = keyword ? kKeywords : table.limit;
    if (ordinal >= limit) return Fail(ImageCode::kBeyondTable, at, name, limit);
    if (StandsBefore(name, limit)) Note(ImageCode::kRepeatedEntry, at, name);
    bool foreign = !(kinds >> (place_.kind & kIdOrdinalMask) & 1);
    if (!keyword && !table.Stands(ordinal)) {
        Note(CodeOfMissing(table, ordinal), at, name, ordinal);
    } else if ((name & kIdClassMask) == kIdValue && table.IsWhole(ordinal)) {
        foreign |= !IsNameOfValue(place_.kind, table.NameAt(ordinal));
    }
    return !foreign || Note(ImageCode::kForeignEntry, at, name);
}

/// Whether an entry of the section before has the name; `limit` is that of the ordinals of its class.
bool ImageVerifier::StandsBefore(unsigned name, std::size_t limit) {
    std::vector<std::uint32_t>& last = lastWith_[name >> 24];
    if (last.empty()) last.resize(limit, kNone);
    return std::exchange(last[name & kIdOrdinalMask], place_.section) == place_.section;
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
        const ImageTable& table = data_.TableOf(word);
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
        if (data_.Resolve(word)) {
            data_.named.Add(place_.kind, word, place_.section);
            data_.nameClasses[place_.kind & kIdOrdinalMask] |= 1U << (word >> 24);
        }
    }
    if (name == kIdID) {
        const ImageValue id = data_.Resolve(EntryWord(record, 0));
        if (id) data_.withID.Add(place_.kind, id.number, place_.section);
    }
    const bool below = place_.kind == kImageGroup || place_.kind == kImageSensor;
    const bool first = parents_.empty() || parents_.back().section != place_.section;
    if (name == kIdParent && below && first) {
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
    if ((group && child.word == data_.rootGroup) || !data_.Resolve(child.word)) return true;
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
