/// What the command takes from the bytes of an image itself: which kind it is, whether what was just written is whole,
/// and the predefined names of a debug image, for which there is no query. Relies on the layouts in
/// docs/compiled-image.md and docs/debug-image.md.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace zek::tool {

inline constexpr std::size_t kMagicSize = 16;  ///< of both kinds
// Of the compiled image.
inline constexpr std::size_t kDirectoryOffset = 128;
inline constexpr std::size_t kSectionsOffset = 256;

enum class ImageKind { kNone, kCompiled, kDebug };

/// "compiled" or "debug". Static.
const char* NameOf(ImageKind kind);

/// Told by the first 16 bytes.
ImageKind KindOf(std::string_view bytes);

/// The four bytes at an offset, which must be there, as a number: the least significant one first.
std::uint32_t WordAt(std::string_view bytes, std::size_t offset);

/// Whether the last record of an image that the library has just written ends where the bytes end.
bool IsWholeCompiledImage(std::string_view bytes);
bool IsWholeDebugImage(std::string_view bytes);

/// The names that the [DEFINE] and [IFDEF] sections of a sound debug image define.
std::map<std::string, unsigned> PredefinedNames(std::string_view bytes);

}  // namespace zek::tool
