/// Sources made of images. Relies on debug_source.h for debug images and on image_view.h for compiled ones.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "failure.h"
#include "written_source.h"
#include "zekcomp/image_view.h"

namespace zek::tool {

/// No source has more lines in all its files.
inline constexpr std::uint64_t kMostLines = 64'000'000;

/// A source that should compile to the image that it was made of.
struct Decompiled {
    std::string main;                ///< the name to compile, inside the folder of the files
    std::vector<WrittenFile> files;  ///< the main source first
    /// Words that no item defines, as NAME=VALUE: the source was compiled with them defined from outside.
    std::vector<std::string> definitions = {};
    /// What is different in the debug image of its compilation, the first thing; empty where nothing is. `main` is the
    /// name by which it was compiled. Null where there is no debug image to compare with.
    std::function<std::string(std::string_view debugImage, const std::string& main)> debugDifference = nullptr;
};

/// Of a debug image that was verified and has a list of source files; its bytes must outlive the result. Throws Failure
/// where the language cannot express what the image holds.
Decompiled DecompileDebug(std::string_view image);

/// Of a compiled image; `main` is what the main source is to be called. Throws Failure as above.
Decompiled DecompileCompiled(const ImageView& view, const std::string& main);

/// Why there is no source.
Failure CannotExpress(const std::string& what);

}  // namespace zek::tool
