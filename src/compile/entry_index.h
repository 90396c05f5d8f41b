/// The entries of long sections of the loaded image by name. Stands beside the entries because walking a section of a
/// hundred thousand for each of its names would take the square of that. Relies on image_stamp.h and key_table.h.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "compile/image_stamp.h"
#include "model/key_table.h"

namespace zek {

/// The identifiers of the image by what they stand for. Keeps no text: a damaged image may name entries of a thousand
/// sections by one text of a million characters.
class NamedIdentifiers {
public:
    /// Takes in an identifier, whose text is read once, if it stands for one.
    void Add(unsigned identifier);
    /// Calls `visit` with each identifier that stands for this text, in no order.
    template <class Visit>
    void ForEachOf(const std::string& text, Visit&& visit) const;

private:
    /// Each identifier with the one before it whose text has the same hash, and the last one by that hash.
    KeyTable<unsigned, unsigned> before_;
    KeyTable<unsigned, unsigned> last_;
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
    };

    /// The entries of a long section of the image, or null for one that is to be walked.
    const Entries* Of(const tagGCSECT& section) {
        return section.vEntries.size() <= kWalkedAtOnce ? nullptr : OfLong(section);
    }
    const Entries* OfLong(const tagGCSECT& section);
    Entries Read(const tagGCSECT& section);
    static tagGCENTRY* Find(const Entries& entries, tagGCSECT& section, unsigned identifier);

    ImageStamp stamp_;
    std::unordered_map<const tagGCSECT*, Entries> long_;  ///< the long sections of the image, read when first asked
    NamedIdentifiers names_;                              ///< of the entries of those that have been read
};

}  // namespace zek
