/// Where the counts, lengths, offsets and words of an image stand, of a damaged one as far as they lead. Relies on
/// docs/compiled-image.md and docs/debug-image.md, and on nothing of the readers.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace zek::fuzz {

inline constexpr std::string_view kCompiledMagic = "QUOR ZEK meta.";
inline constexpr std::string_view kDebugMagic = "QUOR ZEK metaD.";

enum class FieldKind { kWord, kCount, kLength, kOffset };

/// A field of four bytes.
struct Field {
    FieldKind kind;
    std::size_t at;
    std::size_t end;  ///< of a length: where what it covers ends, which begins right behind the field
};

/// A piece that is one of several: a section, an entry, a word, a name.
struct Part {
    std::size_t begin;
    std::size_t end;
    std::size_t count;  ///< where their number stands; 0 when it stands nowhere
};

struct Structure {
    std::vector<Field> fields;
    std::vector<Part> parts;
};

/// Empty for bytes that are no image.
Structure StructureOf(std::string_view image);

/// The word at a position, which has four bytes.
unsigned WordAt(std::string_view image, std::size_t at);

}  // namespace zek::fuzz
