/// The entries of long sections of the loaded image by name. Stands beside the entries because walking a section of a
/// hundred thousand for each of its names would take the square of that. Relies on image_stamp.h and hash.h.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "compile/image_stamp.h"
#include "model/hash.h"

namespace zek {

/// For the maps of the standard library, whose own hash of a number is the number: whoever writes an image could choose
/// identifiers that all meet.
struct SeededHash {
    std::size_t operator()(std::string_view text) const { return HashOf(text); }
    std::size_t operator()(unsigned number) const { return HashOf(number); }
};

class EntryIndex {
public:
    /// The first entry of the section whose name identifier resolves to this text, or null.
    tagGCENTRY* Named(tagGCSECT& section, const std::string& name);
    /// The first entry of the section with this name identifier, or null.
    tagGCENTRY* WithName(tagGCSECT& section, unsigned identifier);

private:
    struct Entries {
        std::unordered_map<std::string, tagGCENTRY*, SeededHash> byText;
        std::unordered_map<unsigned, tagGCENTRY*, SeededHash> byIdentifier;
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
