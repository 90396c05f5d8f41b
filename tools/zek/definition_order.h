/// The order in which words are defined while a source is read: the last definition of each word counts. Relies on
/// debug_lines.h.
#pragma once

#include <map>
#include <string_view>
#include <vector>

#include "debug_lines.h"

namespace zek::tool {

struct DefinitionOrder {
    struct Word {
        std::size_t first = 0;  ///< the place of its first definition in the order of the reading
        SourceSpot last;        ///< where its last one stands
    };

    std::map<std::string_view, Word> words;
    std::map<SourceSpot, std::size_t> places;        ///< of a definition, when it is read for the last time
    std::map<std::string_view, unsigned> spotCount;  ///< on how many lines each word is defined
};

/// Goes through the files as the compiler does, each at every [INCLUDE] of it. Throws Failure where that takes more
/// readings than a compilation may have, and where two files of one name were read.
DefinitionOrder FollowDefinitions(const DebugSource& source, const std::vector<RecordedFile>& files);

}  // namespace zek::tool
