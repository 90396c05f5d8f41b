/// Where the file and line of a message really are. The library calls a file by the name it was included under, so that
/// two files of one name in different folders look alike; what stands on the line tells them apart. Relies on what was
/// read (source_reading.h) and on what stands in the files (source_index.h).
#pragma once

#include <compare>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "finding.h"
#include "source_index.h"
#include "source_reading.h"

namespace zek::tool {

/// What a message says of the place.
struct Wanted {
    std::string name;                ///< the file as the library calls it
    unsigned line = 0;               ///< 0: the main source, the library gives no line
    std::string section;             ///< empty: any
    std::string key;                 ///< empty: any
    std::vector<std::string> texts;  ///< what the message quotes of the value

    auto operator<=>(const Wanted&) const = default;
};

/// All places that a message can be about, at least one, in the order in which the library comes to them. A file that
/// was read several times counts as often, where another has its name.
struct PossiblePlaces {
    std::vector<Place> all;
    std::size_t different = 1;  ///< how many of them are
};

class Places {
public:
    /// Both must outlive this.
    Places(const std::vector<SourceFile>& files, SourceIndex& index);

    /// Those of many files of one name are looked for once, since each may give rise to such a message.
    std::shared_ptr<const PossiblePlaces> Of(const Wanted& wanted);

    /// The headers of all sections of that name of which the library says that they lack the entry of that key, in the
    /// order in which they were read.
    const std::vector<Place>& SectionsWithout(const std::string& section, const std::string& key);

    /// The include items that lead to an opening of a file, the one in the main source first. Line 0 where it is not
    /// known. The opening is a position among the files.
    std::vector<Place> WayTo(std::size_t opening);

    struct ReadSection {
        const std::string* path;
        const SourceSection* section;
    };
    /// All sections in the order in which they were read, those of a file as often as it was; none with a parser
    /// library without hook.
    const std::vector<ReadSection>& SectionsRead();

    /// The section in which an item stands; null where none does.
    const SourceSection* SectionOf(const Place& item);

private:
    /// The order in which the library checks sections: that of the kinds, then that of the reading.
    using Order = std::pair<std::size_t, std::size_t>;

    /// The files that were read under one name in messages.
    struct Openings {
        std::vector<std::size_t> positions;  ///< in files_
        bool isOneFile = true;
    };
    std::shared_ptr<const PossiblePlaces> Find(const Wanted& wanted, const Openings& openings);
    std::vector<Place> Fitting(const Wanted& wanted, const Openings& openings);
    Order OrderOf(std::size_t opening, const SourceLine& line) const;
    void ReadAgain(std::size_t position, const std::vector<std::vector<std::size_t>>& included);

    const std::vector<SourceFile>& files_;
    SourceIndex& index_;
    std::map<std::string, Openings> openings_;  // by the name in messages
    std::map<Wanted, std::shared_ptr<const PossiblePlaces>> found_;
    std::map<std::pair<std::string, std::string>, std::vector<Place>> without_;
    std::vector<ReadSection> read_;
    std::vector<std::vector<std::size_t>> positions_;  // in read_, of each file's sections
    std::vector<unsigned> lines_;                      // of the items that include the files; 0 where not known
    std::map<std::string, std::size_t> kinds_;         // the position of the first section of each name
};

}  // namespace zek::tool
