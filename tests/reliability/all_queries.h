/// Asks everything of what is loaded. Relies on the published queries.
#pragma once

#include <cstddef>

namespace zek::test {

/// Every query of the compiled image that is loaded: each section, entry and word by index, name, number and type,
/// each field of each value, each identifier, each table, each group. Every text is read to its end.
void AskCompiledImage();

/// Every query of the model that a debug image of `size` bytes left.
void AskDebugImage(std::size_t size);

}  // namespace zek::test
