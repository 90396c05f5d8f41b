/// What stands where in an image: ranges of bytes in the order of their offsets, without a gap, none twice. Relies on
/// the verified view of compiled images and on docs/compiled-image.md.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "debug_source.h"
#include "zekcomp/image_view.h"

namespace zek::tool {

struct MapRange {
    std::size_t offset = 0;  ///< in bytes from the beginning of the image
    std::size_t size = 0;    ///< in bytes, from 1
    unsigned depth = 0;      ///< 1 within a section or a table, 2 within an entry
    std::string what;        ///< one line, safe for a terminal
    SourceSpot spot = {};    ///< of a section or entry, where the source is known; else with line 0
};

using ShowRange = std::function<void(const MapRange&)>;

/// `source`, which may be null, is that of the debug image that belongs to it (pair_check.h).
void MapCompiledImage(const ImageView& view, const DebugSource* source, const ShowRange& show);

/// Of an image that was verified.
void MapDebugImage(std::string_view image, const ShowRange& show);

}  // namespace zek::tool
