/// Where the file and line of a message really are. The library calls a file by the name it was included under, so that
/// two files of one name in different folders look alike; what stands on the line tells them apart. Relies on what was
/// read (source_reading.h) and on what stands in the files (source_index.h).
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "source_index.h"
#include "source_reading.h"

namespace zek::tool {

struct Place {
    std::string path;
    unsigned line = 0;
};

/// What a message says of the place.
struct Wanted {
    std::string name;     ///< the file as the library calls it
    unsigned line = 0;    ///< 0: the main source, the library gives no line
    std::string section;  ///< empty: any
    std::string key;      ///< empty: any
};

class Places {
public:
    /// Both must outlive this.
    Places(const std::vector<SourceFile>& files, SourceIndex& index);

    /// All places that it can be, at least one; more than one only where nothing tells them apart.
    std::vector<Place> Of(const Wanted& wanted);

    /// The headers of all sections of that name without an item of that key, in the order in which they were read.
    const std::vector<Place>& SectionsWithout(const std::string& section, const std::string& key);

private:
    struct ReadSection {
        const std::string* path;
        const SourceSection* section;
    };

    void ReadAgain(std::size_t position, const std::vector<std::vector<std::size_t>>& included);
    const std::vector<ReadSection>& SectionsRead();

    const std::vector<SourceFile>& files_;
    SourceIndex& index_;
    std::map<std::string, std::vector<std::string>> pathsByName_;
    std::map<std::pair<std::string, std::string>, std::vector<Place>> without_;
    std::vector<ReadSection> read_;
};

}  // namespace zek::tool
