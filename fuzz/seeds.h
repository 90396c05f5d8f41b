/// Seeds of the fuzzers, made from the examples, the pages and the tests of the repository. Relies on compilation.h.
#pragma once

#include <filesystem>

namespace zek::fuzz {

/// Writes the seeds of every harness into a folder of its name below `out`, but for the one that takes both images,
/// whose seeds are those of the other two; `sources` is the repository. Gives their number.
std::size_t MakeSeeds(const std::filesystem::path& sources, const std::filesystem::path& out);

}  // namespace zek::fuzz
