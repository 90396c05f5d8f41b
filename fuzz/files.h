/// Files on disk, whole. Relies on the standard library.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zek::fuzz {

/// What a file holds; ends the process where it cannot be read.
std::string ReadFile(const std::filesystem::path& file);
/// Writes a file, its folder too; ends the process where that fails.
void WriteFile(const std::filesystem::path& file, std::string_view bytes);
/// The regular files in a folder and the folders below it, in the order of their paths; none where there is no folder.
std::vector<std::filesystem::path> FilesBelow(const std::filesystem::path& folder);

}  // namespace zek::fuzz
