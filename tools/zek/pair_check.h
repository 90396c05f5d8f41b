/// Whether a compiled and a debug image are of one compilation. Relies on the library, which compiles the model of a
/// debug image as it compiles that of a source.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zek::tool {

/// Between a compiled image and what a debug image compiles to.
struct PairDifference {
    std::size_t imageSize = 0;
    std::size_t compiledSize = 0;  ///< of what the debug image compiles to
    std::size_t offset = 0;        ///< of the first byte that differs

    /// What is different, in a sentence without a full stop.
    std::string Told() const;
};

struct VerifiedPair {
    std::string image;                         ///< the file of the compiled image
    std::string debug;                         ///< that of the debug image
    std::optional<PairDifference> difference;  ///< nothing where they belong together
};

/// Throws Failure (kSourceHasErrors) where they do not belong together, with the first difference.
void RequireBelonging(const VerifiedPair& pair);

// Both are to be called once in a process: the numbers of names go on from one compilation to the next.

/// Compares two images that were verified; `image` and `debug` are their files.
VerifiedPair ComparedPair(const std::string& image, std::string_view imageBytes, const std::string& debug,
                          std::string_view debugBytes);
/// Verifies a compiled and a debug image, in either order, compiles the debug image and compares, time stamps aside.
/// Throws Failure where they are not such images.
VerifiedPair VerifyPair(const std::string& file, const std::string& other);

}  // namespace zek::tool
