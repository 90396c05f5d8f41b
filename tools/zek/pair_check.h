/// Whether a compiled and a debug image are of one compilation. Relies on the library, which compiles the model of a
/// debug image as it compiles that of a source.
#pragma once

#include <string>
#include <vector>

namespace zek::tool {

/// Verifies a compiled and a debug image, in either order, compiles the debug image and compares, time stamps aside.
/// Says on standard output that they belong together, or throws Failure: kSourceHasErrors where they do not, with what
/// is different. To be called once in a process: the numbers of names go on from one compilation to the next.
int VerifyPair(const std::vector<std::string>& images);

}  // namespace zek::tool
