/// The entries of long sections of the loaded image by name. Stands beside the entries because walking a section of a
/// hundred thousand for each of its names would take the square of that. Relies on image_stamp.h, tables.h and
/// key_table.h.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "compile/image_stamp.h"
#include "compile/tables.h"
#include "model/key_table.h"

namespace zek {

/// The identifiers of the image by what they stand for. Keeps no text: a damaged image may name entries of a thousand
/// sections by one text of a million characters.
class NamedIdentifiers {
public:
    /// Takes in the identifiers, whose texts are read once, where they stand for some.
    template <class Rows>
    void Add(const Rows& rows);
    /// Whether all of them still stand for what they did, as far as the sizes of their tables tell.
    bool IsInStep() const { return stamp_ == StampOf(tables_); }
    /// Calls `visit` with each identifier that stands for this text, in no order.
    template <class Visit>
    void ForEachOf(const std::string& text, Visit&& visit) const;

private:
    void Add(unsigned identifier);

    /// Each identifier with the one before it whose text has the same hash, and the last one by that hash.
    KeyTable<unsigned, unsigned> before_;
    KeyTable<unsigned, unsigned> last_;
    TableSet tables_ = 0;      ///< those that the identifiers are of
    std::uint64_t stamp_ = 0;  ///< of these tables when they were read
};

class EntryIndex {
public:
    /// The first entry of the section whose name identifier resolves to this text, or null.
    tagGCENTRY* Named(tagGCSECT& section, const std::string& name);
    /// The first entry of the section with this name identifier, or null.
    tagGCENTRY* WithName(tagGCSECT& section, unsigned identifier);

private:
    struct FirstEntry {
        unsigned identifier;
        unsigned position;
    };
    struct Entries {
        std::vector<FirstEntry> firsts;     ///< in the order of their identifiers
        const tagGCENTRY* begin = nullptr;  ///< where the section's entries stood, and how many they were
        std::size_t count = 0;
        std::size_t reading = 0;  ///< which reading of the names has its identifiers, from 1
    };

    /// The entries of a long section of the image, or null for one that is to be walked.
    Entries* Of(const tagGCSECT& section) {
        return section.vEntries.size() <= kWalkedAtOnce ? nullptr : OfLong(section);
    }
    Entries* OfLong(const tagGCSECT& section);
    static Entries Read(const tagGCSECT& section);
    void ReadNames(Entries& entries);
    static tagGCENTRY* Find(const Entries& entries, tagGCSECT& section, unsigned identifier);

    SectionsStamp stamp_;
    std::unordered_map<const tagGCSECT*, Entries> long_;  ///< the long sections of the image, read when first asked
    NamedIdentifiers names_;                              ///< of the entries of those that were asked by text
    std::size_t reading_ = 1;                             ///< counts how often these are begun anew
};

}  // namespace zek
