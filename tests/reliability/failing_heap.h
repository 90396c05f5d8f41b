/// A heap that fails once, at a piece of memory chosen beforehand. A program with failing_heap.cpp has it for all that
/// it takes with new, and without the address sanitizer also for what calloc and realloc give. Relies on nothing.
#pragma once

#include <cstddef>

namespace zek::test {

/// The `pieces`-th piece of memory from now on is not given; 0 takes a failure back that has not come yet.
void FailHeapAt(std::size_t pieces);

/// Whether the failure has come since FailHeapAt.
bool HasHeapFailed();

/// How many pieces were taken with new and not deleted since.
std::ptrdiff_t LivePieces();

}  // namespace zek::test
