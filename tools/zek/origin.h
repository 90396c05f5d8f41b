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

/// Which include items lead to the files of a source, which must outlive this.
class IncludeWays {
public:
    explicit IncludeWays(const DebugSource& source);

    /// Those to a file by its position in the list, from the innermost one to that of the main source; where several
    /// include a file, the first one counts.
    std::vector<SourceSpot> To(std::uint32_t file) const;

private:
    const DebugSource& source_;
    std::map<std::string, const DebugEntry*, std::less<>> items_;  // by the name that they ask for
};

}  // namespace zek::tool
