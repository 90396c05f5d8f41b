/// The fuzz harnesses: each takes any bytes and does with them what hosts do. Where the libraries break a promise it
/// ends the process. Relies on the standard library.
#pragma once

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace zek::fuzz {

/// A section-file text through the parser library, held against a plain reading of the same rules.
void SectionFile(std::string_view text);
/// A description, with the files that it includes (see SourceFiles), compiled into both images, which are loaded again;
/// twice, with the same result.
void CompileText(std::string_view text);
/// A compiled image, loaded and asked everything, held against plain versions of the queries.
void CompiledImage(std::string_view bytes);
/// A debug image, loaded and asked everything.
void DebugImage(std::string_view bytes);
/// A compiled image, verified; when that opens it, loaded as well, and both held against each other.
void ViewedImage(std::string_view bytes);
/// An image of either kind; what changes it keeps to its structure.
void ImageStructure(std::string_view bytes);

struct Harness {
    std::string_view name;  ///< also of its folder in corpus/ and finds/
    void (*run)(std::string_view);
};
inline constexpr std::array<Harness, 6> kHarnesses = {{
    {"section_file", SectionFile},
    {"compile_text", CompileText},
    {"compiled_image", CompiledImage},
    {"debug_image", DebugImage},
    {"image_view", ViewedImage},
    {"image_structure", ImageStructure},
}};

/// Ends the process, which the fuzzer counts as a find.
[[noreturn]] inline void Break(const char* promise) {
    std::fprintf(stderr, "broken: %s\n", promise);
    std::abort();
}

inline void Require(bool kept, const char* promise) {
    if (!kept) Break(promise);
}

}  // namespace zek::fuzz
