/// The debug image that is loaded, through the queries of the library. Relies on image.h for the shapes.
#pragma once

#include <functional>

#include "image.h"

namespace zek::tool {

/// Loads an image that was verified. `lacksFileList` is what the verification says. Throws Failure where there is no
/// memory for it. UnloadDebugImage frees it.
tagMETAFILEINFO LoadDebugImage(std::string_view bytes, bool lacksFileList);
void UnloadDebugImage();

/// Those of one kind: a position in kSectionKeywords. `imageSize` is the number of bytes that the image was loaded
/// from.
void ForEachDebugSection(const Image& image, unsigned position, std::size_t imageSize,
                         const std::function<void(const ShownSection&)>& show);

}  // namespace zek::tool
