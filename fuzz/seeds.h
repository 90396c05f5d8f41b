/// Seeds of the fuzzers, made from the examples, the pages and the tests of the repository. Relies on compilation.h.
#pragma once

#include <filesystem>

namespace zek::fuzz {

/// Writes texts and both kinds of images into folders below `out`, which have the names of harnesses and are emptied
/// first; `sources` is the repository. Gives the number of the seeds.
std::size_t MakeSeeds(const std::filesystem::path& sources, const std::filesystem::path& out);

}  // namespace zek::fuzz
