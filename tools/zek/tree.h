/// Groups with their sensors and TAVRGROUPs with theirs as indented lines or as JSON. Relies on hardware.h.
#pragma once

#include "hardware.h"
#include "streams.h"

namespace zek::tool {

/// Every group, sensor and TAVRGROUP stands in it, also one whose parent does not exist and one that is its own
/// ancestor.
void WriteTree(const Hardware& hardware, StandardOutput& out);
/// The same as one JSON object; `kind` is that of the image.
void WriteTreeAsJson(ImageKind kind, const Hardware& hardware, StandardOutput& out);

}  // namespace zek::tool
