/// The entries of long sections of the loaded image by name. Stands beside the entries because walking a section of a
/// hundred thousand for each of its names would take the square of that. Relies on image_stamp.h.
#pragma once

#include <string>
#include <unordered_map>

#include "compile/image_stamp.h"

namespace zek {

class EntryIndex {
public:
    /// The first entry of the section whose name identifier resolves to this text, or null.
    tagGCENTRY* Named(tagGCSECT& section, const std::string& name);
    /// The first entry of the section with this name identifier, or null.
    tagGCENTRY* WithName(tagGCSECT& section, unsigned identifier);

private:
    struct Entries {
        std::unordered_map<std::string, tagGCENTRY*> byText;
        std::unordered_map<unsigned, tagGCENTRY*> byIdentifier;
        const tagGCENTRY* first = nullptr;  ///< where the section's entries stood, and how many they were
        std::size_t count = 0;
    };

    /// The entries of a long section of the image, or null for one that is to be walked.
    Entries* Of(tagGCSECT& section) { return section.vEntries.size() <= kWalkedAtOnce ? nullptr : OfLong(section); }
    Entries* OfLong(tagGCSECT& section);
    static Entries Read(tagGCSECT& section);

    ImageStamp stamp_;
    std::unordered_map<const tagGCSECT*, Entries> long_;  ///< the long sections of the image, read when first asked
};

}  // namespace zek
