/// Memory that fails once, at a piece chosen beforehand. A program with failing_heap.cpp has it for all that it takes
/// with new, and without the address sanitizer also for what malloc and its like give and mmap maps. Relies on Linux.
#pragma once

#include <cstddef>

namespace zek::test {

/// The `pieces`-th piece of memory from now on is not given; 0 takes a failure back that has not come yet.
void FailHeapAt(std::size_t pieces);

/// The same for mmap alone, which blocks in large pages come from.
void FailMappingAt(std::size_t mappings);

/// Whether the failure has come since it was set.
bool HasHeapFailed();

/// How many pieces were taken with new and not deleted since; each page that was mapped counts as one.
std::ptrdiff_t LivePieces();

/// How many bytes were taken with new, those that are deleted since included.
std::size_t TakenBytes();

}  // namespace zek::test
