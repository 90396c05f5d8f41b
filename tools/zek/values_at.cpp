#include "values_at.h"

#include "table_rows.h"

namespace zek::tool {
namespace {

/// A byte of a table by its name; of a debug image by the rows that set it.
unsigned ByteOf(const Image& image, const ShownSection& table, unsigned byte) {
    if (table.source) return RowBehind(image.Source(), *table.source, byte).Byte();
    std::optional<unsigned> found;
    image.ForEachBlock([&](const ShownBlock& block) {
        if (!found && block.name == table.name) found = static_cast<unsigned char>(block.bytes[byte]);
    });
    return found.value_or(0);
}

FoundValues AllAt(const Image& image, const SectionPath& path) {
    FoundValues found;
    const auto byte = path.keyword == "TABLE" ? ByteIn(path.key) : std::nullopt;
    image.ForEachSectionOf(path.keyword, [&](const ShownSection& section) {
        if (found || !IsMeant(path, section)) return;
        if (byte) {
            const unsigned number = ByteOf(image, section, *byte);
            found = {{std::to_string(number), number, nullptr}};
        } else if (const ShownEntry* const entry = section.Entry(path.key)) {
            found = Values(image).Resolved(*entry);
        }
    });
    return found;
}

}  // namespace

FoundValues ValuesAt(const Image& image, const SectionPath& path) {
    const FoundValues found = AllAt(image, path);
    if (!found || !path.element) return found;
    if (*path.element >= found->size()) return {};
    return {{(*found)[*path.element]}};
}

}  // namespace zek::tool
