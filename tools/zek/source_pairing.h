/// Which section and entry of a debug image became which of the compiled image of the same source. Relies on the order
/// of both: that of the source within each kind.
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

    /// The section that became this one, by its keyword and index; null where there is none or it has another NAME, so
    /// that the images are not of one source.
    const DebugSection* SectionOf(const ShownSection& section) const;

    /// For each entry of a compiled section the entry that it was compiled from; null where there is none.
    static std::vector<const DebugEntry*> EntriesOf(const ShownSection& section, const DebugSection& source);

private:
    std::map<std::string_view, std::vector<const DebugSection*>> sections_;
};

}  // namespace zek::tool
