/// A compiled image as it is shown. Relies on the verified view of the library, and on image.h for the shapes.
#pragma once

#include <functional>

#include "image.h"
#include "zekcomp/image_view.h"

namespace zek::tool {

/// The keyword of a name identifier, such as "PARENT"; null where there is none.
const char* KeywordOf(unsigned id);
/// A section; `index` is its place among those of its kind.
ShownSection ShowCompiledSection(const ImageView& view, ImageView::Section section, unsigned index);

/// Those of one kind: a position in kSectionKeywords.
void ForEachCompiledSection(const ImageView& view, unsigned position,
                            const std::function<void(const ShownSection&)>& show);
void ForEachCompiledTable(const ImageView& view, const std::function<void(const ShownTable&)>& show);
void ForEachCompiledBlock(const ImageView& view, const std::function<void(const ShownBlock&)>& show);

}  // namespace zek::tool
