#include "image_bytes.h"

#include <cstdint>

namespace zek::tool {
namespace {

// Of the compiled image.
constexpr std::size_t kTables = 10;
// Of the debug image.
constexpr std::size_t kNames = 0x80;

/// Walks through bytes; once it has run past their end, every word is 0.
class Walk {
public:
    Walk(std::string_view bytes, std::size_t position) : bytes_(bytes), position_(position) {}

    bool IsInside() const { return position_ <= bytes_.size(); }
    bool IsAtEnd() const { return position_ == bytes_.size(); }

    std::uint32_t Word() {
        const std::string_view word = Take(4);
        return word.empty() ? 0 : WordAt(word, 0);
    }
    /// Empty where the bytes do not hold so many; then the walk is over.
    std::string_view Take(std::size_t length) {
        const std::size_t start = position_;
        position_ = start <= bytes_.size() && length <= bytes_.size() - start ? start + length : bytes_.size() + 1;
        return IsInside() ? bytes_.substr(start, length) : std::string_view();
    }

private:
    std::string_view bytes_;
    std::size_t position_;
};

/// The walk behind the last section of a debug image; over where the bytes end before it.
Walk BehindDebugImage(std::string_view bytes) {
    Walk walk(bytes, kNames);
    for (std::uint32_t names = walk.Word(); names > 0 && walk.IsInside(); --names) {
        walk.Take(walk.Word());
        walk.Word();
    }
    for (std::uint32_t groups = walk.Word(); groups > 0 && walk.IsInside(); --groups) {
        for (std::uint32_t sections = walk.Word(); sections > 0 && walk.IsInside(); --sections) walk.Take(walk.Word());
    }
    return walk;
}

/// The magic is a text that ends with a NUL, both within 16 bytes.
bool BeginsWith(std::string_view bytes, std::string_view magic) {
    return bytes.size() >= kMagicSize && bytes.starts_with(magic) && bytes[magic.size()] == '\0';
}

}  // namespace

const char* NameOf(ImageKind kind) { return kind == ImageKind::kCompiled ? "compiled" : "debug"; }

ImageKind KindOf(std::string_view bytes) {
    if (BeginsWith(bytes, "QUOR ZEK meta.")) return ImageKind::kCompiled;
    if (BeginsWith(bytes, "QUOR ZEK metaD.")) return ImageKind::kDebug;
    return ImageKind::kNone;
}

std::uint32_t WordAt(std::string_view bytes, std::size_t offset) {
    std::uint32_t word = 0;
    for (std::size_t i = 4; i > 0; --i) word = word << 8 | static_cast<unsigned char>(bytes[offset + i - 1]);
    return word;
}

bool IsWholeCompiledImage(std::string_view bytes) {
    // The table data is the last record: a tag, a length, and so many bytes.
    Walk record(bytes, Walk(bytes, kDirectoryOffset + 4 * (kTables - 1)).Word());
    record.Word();
    record.Take(record.Word());
    return KindOf(bytes) == ImageKind::kCompiled && bytes.size() > kSectionsOffset && record.IsAtEnd();
}

bool IsWholeDebugImage(std::string_view bytes) {
    return KindOf(bytes) == ImageKind::kDebug && BehindDebugImage(bytes).IsAtEnd();
}

std::map<std::string, unsigned> PredefinedNames(std::string_view bytes) {
    std::map<std::string, unsigned> names;
    Walk walk(bytes, kNames);
    for (std::uint32_t count = walk.Word(); count > 0; --count) {
        const std::string_view name = walk.Take(walk.Word());
        names.emplace(name, walk.Word());
    }
    return names;
}

}  // namespace zek::tool
