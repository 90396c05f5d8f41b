/// The verification of images, and what the command says of what it finds. Relies on image_view.h for compiled images
/// and on debug_check.h for debug images.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "debug_check.h"
#include "debug_source.h"
#include "failure.h"
#include "image_bytes.h"
#include "zekcomp/image_view.h"

namespace zek::tool {

/// What the verification found, for people and for scripts.
struct ImageFault {
    std::string place;     ///< such as "section 12 [SENSOR], entry 3, word 1"; may be empty
    std::string sentence;  ///< what is wrong there
    std::string code;      ///< such as "bad-magic"
    std::size_t offset = 0;

    /// All of it in one line.
    std::string Told() const;
};

/// A file is no valid image.
class NoImage : public Failure {
public:
    NoImage(const std::string& file, ImageFault fault);
    const std::string& File() const { return file_; }
    const ImageFault& Fault() const { return fault_; }

private:
    std::string file_;
    ImageFault fault_;
};

/// Shows what is odd in an image that is valid all the same.
using ShowNote = std::function<void(const ImageFault&)>;

/// The bytes of a file that should be an image; throws as ReadFile (memory_file.h) does.
std::string BytesOfImage(const std::string& file);

// Each throws NoImage for an image that is not valid, with the place, what is wrong, the code and the offset. The bytes
// are those of the file, which must outlive the view.
ImageView OpenCompiledImage(const std::string& file, std::string_view bytes);
DebugCheck CheckedDebugImage(const std::string& file, std::string_view bytes, const ShowNote& showNote = nullptr);

/// What a debug image says of its source, once it was verified; throws NoImage, and Failure (kUsageOrFiles) for a
/// compiled image. The bytes are those of the file, which must outlive it.
DebugSource SourceIn(const std::string& file, std::string_view bytes);

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
