/// The sections of the loaded image by kind, name and id. Stands beside the list of sections because walking all of it
/// for every query would make each as slow as the image is large. Relies on image_stamp.h.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "compile/image_stamp.h"

namespace zek {

/// What a look-up among the sections of one kind found, and whether there was anything to compare.
struct Found {
    tagGCSECT* section = nullptr;
    bool compared = false;
};

class ImageIndex {
public:
    /// The sections with this identifier in order. They are made anew when our functions have changed the list or a
    /// table, and for a short list always; a host that changes a long one itself is followed when it changes a size, or
    /// the first or last section.
    const std::vector<tagGCSECT*>& Sections(unsigned identifier);
    /// The first of them whose NAME, or in sections of free names whose entry's name, is this text.
    Found Named(unsigned identifier, const std::string& name);
    /// The first of them whose ID is this number.
    Found WithID(unsigned identifier, unsigned number);

private:
    using Names = std::unordered_map<std::string, tagGCSECT*>;
    using IDs = std::unordered_map<unsigned, tagGCSECT*>;
    struct Kind {
        unsigned identifier = 0;
        std::vector<tagGCSECT*> sections;
        std::unique_ptr<Names> names;  ///< made when the first name is asked for
        std::unique_ptr<IDs> ids;      ///< made when the first id is asked for
        bool hasNames = false;
        bool hasIDs = false;
    };
    /// The kind of an identifier, brought up to date.
    Kind& KindOf(unsigned identifier);
    static void ReadNames(Kind& kind);
    static void ReadIDs(Kind& kind);

    ImageStamp stamp_;
    std::array<Kind, 12> kinds_;  ///< by the ordinal of the identifiers that the compiler writes
    Kind other_;                  ///< the kind of any other identifier, the one that was asked for last
};

}  // namespace zek
