/// Which section and entry of a debug image became which of the compiled image that belongs to it (pair_check.h).
/// Relies on the order of both: that of the source within each kind.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "debug_source.h"
#include "image.h"

namespace zek::tool {

class SourcePairing {
public:
    /// The source must outlive this.
    explicit SourcePairing(const DebugSource& source);

    /// The section that became this one; null where there is none.
    const DebugSection* SectionOf(const ShownSection& section) const;

    /// For each entry of a compiled section the entry that it was compiled from; null where there is none.
    static std::vector<const DebugEntry*> EntriesOf(const ShownSection& section, const DebugSection& source);

private:
    std::map<std::string_view, std::vector<const DebugSection*>> sections_;
};

}  // namespace zek::tool
