/// The verification of images, and what the command says of what it finds. Relies on image_view.h for compiled images
/// and on debug_check.h for debug images.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "debug_check.h"
#include "failure.h"
#include "image_bytes.h"
#include "zekcomp/image_view.h"

namespace zek::tool {

/// Why a file is no valid image.
Failure NoImage(const std::string& file, const std::string& why);

/// Shows what is odd in an image that is valid all the same.
using ShowNote = std::function<void(const std::string&)>;

// Each throws NoImage for an image that is not valid, with the place, what is wrong, the code and the offset. The bytes
// are those of the file, which must outlive the view.
ImageView OpenCompiledImage(const std::string& file, std::string_view bytes);
DebugCheck CheckedDebugImage(const std::string& file, std::string_view bytes, const ShowNote& showNote = nullptr);

/// What an image has, by its own records: entries of a debug image are also those that the source has not given.
struct ImageSize {
    std::size_t sections = 0;
    std::size_t entries = 0;
    std::size_t notes = 0;
};

/// Verifies an image of a kind that is known; throws NoImage.
ImageSize CheckImage(ImageKind kind, const std::string& file, std::string_view bytes, const ShowNote& showNote);

/// The kind of a file's bytes; throws NoImage where it is none.
ImageKind RequireKind(const std::string& file, std::string_view bytes);

}  // namespace zek::tool
