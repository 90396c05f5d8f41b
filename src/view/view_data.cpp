#include "view/view_data.h"

#include <algorithm>
#include <bit>

namespace zek {

void HashSlots::Reset(std::size_t count) {
    slots_.assign(std::bit_ceil(2 * count + 2), 0);
    mask_ = static_cast<std::uint32_t>(slots_.size() - 1);
}

std::uint32_t ImageTable::OrdinalOf(std::string_view name) const {
    return slots.Find(HashOf(name), [&](std::uint32_t ordinal) { return IsSame(NameAt(ordinal), name); });
}

void FirstSections::Add(unsigned kind, unsigned key, std::uint32_t section) { rows_.push_back({key, section, kind}); }

void FirstSections::Build() {
    slots_.Reset(rows_.size());
    for (std::uint32_t at = 0; at < rows_.size(); ++at) {
        const Row& row = rows_[at];
        slots_.Add(HashOf(row.kind, row.key), at,
                   [&](std::uint32_t other) { return rows_[other].key == row.key && rows_[other].kind == row.kind; });
    }
}

std::uint32_t FirstSections::Find(unsigned kind, unsigned key) const {
    const std::uint32_t at = slots_.Find(
        HashOf(kind, key), [&](std::uint32_t other) { return rows_[other].key == key && rows_[other].kind == kind; });
    return at == kNone ? kNone : rows_[at].section;
}

ImageValue ImageView::Data::Resolve(unsigned word) const {
    const unsigned ordinal = word & kIdOrdinalMask;
    const ImageTable& table = TableOf(word);
    switch (word & kIdClassMask) {
        case kIdArgument:
        case kIdValueType:
        case kIdOperator: return {ImageValue::Kind::kNumber, word, ordinal, {}};
        case kIdNumber:
            // The number that marks what was not found is itself nothing.
            if (!table.Stands(ordinal) || table.NumberAt(ordinal) == kIdUnresolved) break;
            return {ImageValue::Kind::kNumber, word, table.NumberAt(ordinal), {}};
        case kIdProperty:
        case kIdGlobal:
        case kIdValue:
        case kIdRepeater:
        case kIdString:
        case kIdGroup:
        case kIdAction:
        case kIdTableName:
            if (!table.Stands(ordinal)) break;
            return {ImageValue::Kind::kText, word, 0, table.NameAt(ordinal)};
        default: break;
    }
    return {ImageValue::Kind::kNothing, word, 0, {}};
}

const unsigned char* ImageView::Data::EntryWithId(std::uint32_t section, unsigned name) const {
    const unsigned char* record = Record(section);
    const unsigned count = EntryWords(record);
    if (count <= kWalkedEntries) {
        record += kEntryHead;
        for (unsigned i = 0; i < count; ++i, record = NextEntry(record)) {
            if (EntryName(record) == name) return record;
        }
        return nullptr;
    }
    const auto large = std::ranges::lower_bound(largeSections, section, {}, &LargeSection::section);
    const auto first = indexedEntries.begin() + large->first;
    const auto found = std::ranges::lower_bound(first, first + large->count, name, {}, &IndexedEntry::id);
    return found != first + large->count && found->id == name ? image.data() + found->record : nullptr;
}

unsigned ImageView::Data::WordOf(std::uint32_t section, unsigned name) const {
    const unsigned char* const record = EntryWithId(section, name);
    return record && EntryWords(record) > 0 ? EntryWord(record, 0) : kIdUnresolved;
}

}  // namespace zek
