/// The command `verify`. Relies on image_check.h.
#pragma once

#include "options.h"

namespace zek::tool {

/// Gives the exit code: the highest of all images.
int RunVerify(const Options& options);

}  // namespace zek::tool
