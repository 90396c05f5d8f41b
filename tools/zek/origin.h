/// Where a value comes from, by the debug image. Relies on debug_source.h and section_path.h.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "debug_source.h"
#include "section_path.h"

namespace zek::tool {

/// Something in the source that takes part in the value.
struct OriginStep {
    std::string what;  ///< such as "value", "definition" or "global"
    std::string text;  ///< what stands there
    SourceSpot spot;   ///< line 0 where it stands in no source
};

struct Origin {
    const DebugSection* section = nullptr;
    const DebugEntry* entry = nullptr;
    std::optional<unsigned> element;  ///< of the entry's texts, the one that is meant
    std::vector<OriginStep> steps;    ///< the value and its section, then what its operands name, in their order
};

/// `names` are the predefined names of the image. The entry is null where the source has none of that path.
Origin FindOrigin(const DebugSource& source, const std::map<std::string, unsigned>& names, const SectionPath& path);

/// What a path compares of a section.
ShownSection StubOf(const DebugSection& section, const std::map<std::string, unsigned>& names);

}  // namespace zek::tool
