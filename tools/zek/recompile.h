/// Compilations whose results are only looked at. Relies on the library, which each gets a process of its own of.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zek::tool {

struct Recompiled {
    bool valid = false;
    std::string messages;  ///< as `zek compile` shows them
    std::string image;     ///< of a valid source
    std::string debug;     ///< the same
};

/// Compiles a source as `zek compile` does in that folder, "" being the current one; `definitions` are those of its -D.
/// Throws Failure.
Recompiled Recompile(const std::string& folder, const std::string& source, const std::vector<std::string>& definitions);

/// The compiled image that the compiler wrote along with a debug image, which was verified; but for the time. Throws
/// Failure.
std::string ImageBehind(std::string_view debugImage);

}  // namespace zek::tool
