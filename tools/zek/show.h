/// The commands `dump` and `tree`. Rely on image.h for what an image holds.
#pragma once

#include "options.h"

namespace zek::tool {

/// Both give the exit code or throw Failure.
int RunDump(const Options& options);
int RunTree(const Options& options);

}  // namespace zek::tool
