/// What the command takes from the bytes of an image itself: which kind it is, whether it is whole, and the predefined
/// names of a debug image, for which there is no query. Relies on the layouts in docs/compiled-image.md and
/// docs/debug-image.md.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace zek::tool {

enum class ImageKind { kNone, kCompiled, kDebug };

/// Told by the first 16 bytes.
ImageKind KindOf(std::string_view bytes);

/// The format version; 0 for bytes that end before it.
unsigned VersionOf(std::string_view bytes);

/// Whether the last record of an image that the library has just written ends where the bytes end.
bool IsWholeCompiledImage(std::string_view bytes);
bool IsWholeDebugImage(std::string_view bytes);

/// Whether every section that a debug image announces is there. Bytes behind the last are allowed.
bool BeginsWithDebugImage(std::string_view bytes);

/// The number of sections that a compiled image says it has.
unsigned SectionCount(std::string_view bytes);

/// The names that the [DEFINE] and [IFDEF] sections of a debug image define. Ends where the bytes end.
std::map<std::string, unsigned> PredefinedNames(std::string_view bytes);

}  // namespace zek::tool
