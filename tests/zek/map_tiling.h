/// Whether a map takes each byte of an image once. Relies on map.h.
#pragma once

#include <optional>
#include <string>

#include "debug_check.h"
#include "map.h"

namespace zek::tool {

/// Nothing for bytes that are no valid image; else whether the ranges begin at 0, touch each other and end with it.
/// `source`, which may be null, is that of the debug image; `also` gets every range.
inline std::optional<bool> Tile(
    const std::string& image, const DebugSource* source = nullptr, const ShowRange& also = [](const MapRange&) {}) {
    std::size_t end = 0;
    bool touch = true;
    const ShowRange show = [&](const MapRange& range) {
        touch = touch && range.offset == end && range.size > 0 && !range.what.empty();
        end = range.offset + range.size;
        also(range);
    };
    const auto view = ImageView::Open({reinterpret_cast<const unsigned char*>(image.data()), image.size()});
    if (view) {
        MapCompiledImage(*view, source, show);
    } else if (!CheckDebugImage(image).failure) {
        MapDebugImage(image, show);
    } else {
        return {};
    }
    return touch && end == image.size();
}

}  // namespace zek::tool
