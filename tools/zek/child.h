/// Work in a process of its own: the library's order of kinds, its tables and its list of files outlive a compilation.
/// Relies on streams.h for how a failure is told.
#pragma once

#include <functional>
#include <string>

namespace zek::tool {

/// Runs in a process as fresh as this one still is, waits for its end and gives its exit code; a signal that ended it
/// is told, `what` being what was ended, and counts as kUsageOrFiles. It does not outlive this process. Throws Failure
/// when no process can be had.
int RunInChild(const std::string& what, const std::function<int()>& run);

}  // namespace zek::tool
