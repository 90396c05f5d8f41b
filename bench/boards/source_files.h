/// Generated sources as files. Relies on boards.h.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace zek::bench {

/// Writes bytes to a file, which is made anew. Throws std::system_error with the name of the file where the system
/// refuses.
void WriteBytes(const std::filesystem::path& file, std::string_view bytes);

/// Writes the files that a source of these arguments includes, for one that stands in this folder. Throws as WriteBytes
/// and ZekSource do.
void WriteIncluded(const std::filesystem::path& folder, std::string_view shape, unsigned size, std::uint64_t seed = 1);

}  // namespace zek::bench
