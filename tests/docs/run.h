/// Runs programs for the tests of the pages. Relies on nothing.
#pragma once

#include <string>

namespace zek::test {

/// Runs a command line in the current folder and gives its exit code, -1 when a signal ended it. The files "stdout" and
/// "stderr" then hold what it printed.
int RunCommand(const std::string& command);

}  // namespace zek::test
