#include "values_at.h"

#include "debug_lines.h"
#include "section_keywords.h"
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

/// One value for each item of an [INCLUDE].
FoundValues Included(const Image& image, const std::string& key) {
    std::vector<ShownValue> files;
    for (const RecordedLine& line : IncludeItems(image.Source())) {
        if (line.entry->key != key) continue;
        const std::vector<ShownValue> names = Values(image).Resolved({key, 0, {}, {}, line.entry});
        files.push_back(names.empty() ? ShownValue() : names[0]);
    }
    return files.empty() ? FoundValues() : files;
}

/// The value of a word that the compiler was given.
FoundValues GivenTo(const Image& image, const std::string& word) {
    if (image.Kind() != ImageKind::kDebug) return {};
    const std::map<std::string, unsigned> given = GivenWords(image.Source(), image.Names());
    const auto found = given.find(word);
    if (found == given.end()) return {};
    return {{{std::to_string(found->second), found->second}}};
}

FoundValues EveryAt(const Image& image, const SectionPath& path) {
    if (path.keyword == kIncludeKeyword) return Included(image, path.key);
    FoundValues found = AllAt(image, path);
    return found || path.keyword != "DEFINE" ? found : GivenTo(image, path.key);
}

}  // namespace

FoundValues ValuesAt(const Image& image, const SectionPath& path) {
    const FoundValues found = EveryAt(image, path);
    if (!found || !path.element) return found;
    if (*path.element >= found->size()) return {};
    return {{(*found)[*path.element]}};
}

}  // namespace zek::tool
