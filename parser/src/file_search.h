// From the name that is asked for to the path of the file that it means.
// Relies on the library's state for the search directories, the hook and the files being enumerated.
#pragma once

#include <optional>
#include <string>

namespace zek::parser {

// The path of the file that `name` means; nothing when there is none or the hook refuses. Throws what the hook throws.
std::optional<std::string> FindFile(const std::string& name);

}  // namespace zek::parser
