/// The commands `compile` and `check`. Rely on the compiler calls of the library and on the parser library that serves.
#pragma once

#include "options.h"

namespace zek::tool {

/// Both give the exit code and have told everything on standard error, except what the Failure that they may throw
/// says.
int RunCompile(const Options& options);
int RunCheck(const Options& options);

}  // namespace zek::tool
