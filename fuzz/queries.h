/// Every query that the libraries answer, asked of whatever is loaded, in bounds and out of them. Relies on the plain
/// versions of the queries among the tests.
#pragma once

#include <cstddef>

namespace zek::fuzz {

/// Asks the loaded compiled image everything. Each answer is held against the plain version of its query; of a large
/// image only so many of them as take some hundredths of a second.
void AskImage();

/// Asks the loaded debug image everything; `size` is that of its file in bytes.
void AskModel(std::size_t size);

}  // namespace zek::fuzz
