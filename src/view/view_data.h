/// What a view of a compiled image has built beside the bytes: where things are, and what is found by name or number.
/// Stands beside the bytes because these give no place of anything but by reading all before it. Relies on
/// image_view.h, hash.h and large_pages.h.
#pragma once

#include <array>
#include <vector>

#include "model/bytes.h"
#include "model/hash.h"
#include "model/large_pages.h"
#include "zekcomp/image_view.h"

namespace zek {

/// Whether this is the identifier of a kind of section.
constexpr bool IsKind(unsigned identifier) { return identifier >= kImageQuorzek && identifier <= kImageRepeater; }

/// Positions by hash: open addressing over numbers that stand for something else, which alone knows the keys.
class HashSlots {
public:
    /// For up to so many, all slots free.
    void Reset(std::size_t count);
    /// The position whose key is the same, or kNone; `same` is asked about a position.
    template <class Same>
    std::uint32_t Find(std::uint32_t hash, Same&& same) const {
        return slots_.empty() ? kNone : PositionIn(slots_[SlotOf(hash, same)]);
    }
    /// The position whose key is the same, which is this one when there was none. There must be room.
    template <class Same>
    std::uint32_t Add(std::uint32_t hash, std::uint32_t position, Same&& same) {
        std::uint32_t& slot = slots_[SlotOf(hash, same)];
        if (slot == 0) slot = (hash & ~mask_) | (position + 1);
        return PositionIn(slot);
    }

    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

private:
    /// kNone for a free slot.
    std::uint32_t PositionIn(std::uint32_t slot) const { return (slot & mask_) - 1; }

    template <class Same>
    std::size_t SlotOf(std::uint32_t hash, Same&& same) const {
        std::uint32_t at = hash & mask_;
        for (; slots_[at] != 0; at = (at + 1) & mask_) {
            if (((slots_[at] ^ hash) & ~mask_) == 0 && same(PositionIn(slots_[at]))) break;
        }
        return at;
    }

    /// A power of two of them, or none; 0 for a free one. There are more than positions, so the bits that tell a
    /// position, counted from 1, are those that tell a slot, and the others hold what the hash has there.
    LargeVector<std::uint32_t> slots_;
    std::uint32_t mask_ = 0;
};

/// A table of names or numbers of an image, by ordinal.
struct ImageTable {
    std::uint32_t count = 0;            ///< keys that the table's length covers
    std::uint32_t limit = 0;            ///< keys that may have been written: no identifier is beyond
    std::vector<bool> repeated;         ///< which keys stand in the table before; empty where none does
    const unsigned char* body = {};     ///< of the keys
    LargeVector<std::uint32_t> starts;  ///< names: where each begins in the body, and where one more would begin
    HashSlots slots;                    ///< names: ordinals by name

    std::string_view NameAt(std::uint32_t ordinal) const {
        return {reinterpret_cast<const char*>(body) + starts[ordinal], starts[ordinal + 1] - starts[ordinal] - 1};
    }
    /// Names: whether the table's length reaches the end of this one; of the last one it may leave a piece out.
    bool IsWhole(std::uint32_t ordinal) const { return body[starts[ordinal + 1] - 1] == 0; }
    unsigned NumberAt(std::uint32_t ordinal) const { return WordAt(body + std::size_t{4} * ordinal); }
    bool Stands(std::uint32_t ordinal) const { return ordinal < count && (repeated.empty() || !repeated[ordinal]); }
    std::uint32_t OrdinalOf(std::string_view name) const;
};

/// The first section of each kind that has a key: a name identifier, or an id.
class FirstSections {
public:
    /// To be called in the order of the sections.
    void Add(unsigned kind, unsigned key, std::uint32_t section);
    /// To be called before the first look-up.
    void Build();
    std::uint32_t Find(unsigned kind, unsigned key) const;

    static constexpr std::uint32_t kNone = HashSlots::kNone;

private:
    struct Row {
        std::uint32_t key;
        std::uint32_t section;
        unsigned kind;
    };

    LargeVector<Row> rows_;
    HashSlots slots_;
};

struct ImageView::Data {
    std::span<const unsigned char> image;
    unsigned version = 0;
    unsigned time = 0;
    std::size_t notes = 0;

    LargeVector<std::uint32_t> sections;         ///< where each section's record begins
    LargeVector<std::uint32_t> byKind;           ///< the places of the sections, kind by kind
    std::array<std::uint32_t, 13> kindStarts{};  ///< where those of each kind begin in `byKind`, by its ordinal

    std::array<ImageTable, 32> tables;  ///< by the class of their identifiers
    std::span<const unsigned char> blocks;
    /// The word of "0", the parent of the groups at the top: the first of its table, unless the image was compiled in a
    /// process that had loaded one with other names. kIdUnresolved where no group is at the top.
    unsigned rootGroup = kIdUnresolved;

    FirstSections named;                          ///< by the word of NAME, or the name of an entry
    std::array<std::uint32_t, 13> nameClasses{};  ///< the classes of these words by kind, a bit for each
    FirstSections withID;                         ///< by the number of ID

    /// The first entries by their names in the sections that have too many to walk: rows of each section in the order
    /// of the names.
    struct IndexedEntry {
        unsigned id;
        std::uint32_t record;
    };
    struct LargeSection {
        std::uint32_t section;
        std::uint32_t first;
        std::uint32_t count;
    };
    std::vector<IndexedEntry> indexedEntries;
    std::vector<LargeSection> largeSections;

    const unsigned char* Record(std::uint32_t section) const { return image.data() + sections[section]; }
    bool IsClass(unsigned word) const { return (word & kIdOrdinalMask) == 0 && word >> 24 < tables.size(); }
    const ImageTable& TableOf(unsigned word) const { return tables[word >> 24 & 31]; }
    ImageValue Resolve(unsigned word) const;
    /// The word of the first entry of a section that has this name; kIdUnresolved where there is none.
    unsigned WordOf(std::uint32_t section, unsigned name) const;
    /// The record of the first entry of a section that has this name, or null.
    const unsigned char* EntryWithId(std::uint32_t section, unsigned name) const;
};

/// Sections of up to so many entries are walked.
inline constexpr unsigned kWalkedEntries = 64;

/// The parts of an entry's record.
inline constexpr std::size_t kEntryHead = 8;
inline unsigned EntryName(const unsigned char* record) { return WordAt(record); }
inline unsigned EntryWords(const unsigned char* record) { return WordAt(record + 4); }
inline unsigned EntryWord(const unsigned char* record, std::size_t index) {
    return WordAt(record + kEntryHead + 4 * index);
}
inline const unsigned char* NextEntry(const unsigned char* record) {
    return record + kEntryHead + std::size_t{4} * EntryWords(record);
}

}  // namespace zek
