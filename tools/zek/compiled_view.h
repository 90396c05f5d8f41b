/// The compiled image that is loaded, through the queries of the library. Relies on image.h for the shapes.
#pragma once

#include <functional>

#include "image.h"

namespace zek::tool {

/// Those of one kind: a position in kSectionKeywords.
void ForEachCompiledSection(unsigned position, const std::function<void(const ShownSection&)>& show);
void ForEachCompiledTable(const std::function<void(const ShownTable&)>& show);
void ForEachCompiledBlock(const std::function<void(const ShownBlock&)>& show);

}  // namespace zek::tool
