/// Asks everything of what is loaded or opened. Relies on the published queries.
#pragma once

#include <cstddef>

#include "zekcomp/image_view.h"

namespace zek::test {

/// Every query of the compiled image that is loaded: each section, entry and word by index, name, number and type,
/// each field of each value, each identifier, each table, each group. Every text is read to its end.
void AskCompiledImage();

/// Every query of the model that a debug image of `size` bytes left.
void AskDebugImage(std::size_t size);

/// Every query of a view but for ForEachNote, in the same way. Takes no memory itself.
void AskView(const ImageView& view);

}  // namespace zek::test
