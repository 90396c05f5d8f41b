/// The sections of the loaded image by kind, name and id. Stands beside the list of sections because walking all of it for
/// every query would make each as slow as the image is large. Relies on the published records.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "zekcomp/records.h"

namespace zek {

/// What a look-up among the sections of one kind found, and whether there was anything to compare.
struct Found {
    tagGCSECT* section = nullptr;
    bool compared = false;
};

class ImageIndex {
public:
    /// The sections with this identifier in order; they are made anew when the list or a table has changed.
    const std::vector<tagGCSECT*>& Sections(unsigned identifier);
    /// The first of them whose NAME, or in sections of free names whose entry's name, is this text.
    Found Named(unsigned identifier, const std::string& name);
    /// The first of them whose ID is this number.
    Found WithID(unsigned identifier, unsigned number);

private:
    using Names = std::unordered_map<std::string_view, tagGCSECT*>;
    using IDs = std::unordered_map<unsigned, tagGCSECT*>;
    struct Kind {
        std::vector<tagGCSECT*> sections;
        std::unique_ptr<Names> names;  ///< made when the first name is asked for
        std::unique_ptr<IDs> ids;      ///< made when the first id is asked for
        bool hasNames = false;
        bool hasIDs = false;
    };

    /// The kind of an identifier, never null, brought up to date.
    Kind& KindOf(unsigned identifier);
    static void ReadNames(Kind& kind, bool freeNames);
    static void ReadIDs(Kind& kind);

    std::unordered_map<unsigned, Kind> kinds_;
    unsigned changes_ = 0;
    std::size_t sections_ = 0;
    std::size_t keys_ = 0;
};

}  // namespace zek
