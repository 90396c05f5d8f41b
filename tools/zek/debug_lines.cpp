#include "debug_lines.h"

#include <utility>

#include "debug_layout.h"
#include "decompile.h"
#include "failure.h"
#include "printable.h"
#include "source_reading.h"

namespace zek::tool {
namespace {

constexpr unsigned kIncludeKind = 14;

/// Whether two lines say the same. The numbers of a definition may differ where its file was read twice.
bool IsSame(const RecordedLine& a, const RecordedLine& b) {
    if (!a.entry || !b.entry) return !a.entry && !b.entry && a.section->kind == b.section->kind;
    return a.section->spot == b.section->spot && a.entry->type == b.entry->type && a.entry->key == b.entry->key &&
           a.entry->texts == b.entry->texts;
}

void Put(const DebugSource& source, std::vector<RecordedFile>& files, const SourceSpot& spot, RecordedLine line) {
    if (spot.file >= files.size() || spot.line == 0) {
        throw CannotExpress("something of a [" + std::string(line.section->keyword) +
                            "] stands nowhere: " + source.Told(spot));
    }
    const auto [there, isNew] = files[spot.file].emplace(spot.line, line);
    if (!isNew && !IsSame(there->second, line)) {
        throw CannotExpress(source.Told(spot) + ": two different things stand there" + kTwoFiles);
    }
    ++there->second.times;
}

/// Throws where an item does not stand below its own header.
void RequireOrder(const DebugSource& source, const RecordedFile& file) {
    const DebugSection* section = nullptr;
    for (const auto& [number, line] : file) {
        if (!line.entry) section = line.section;
        if (section && section->spot == line.section->spot) continue;
        throw CannotExpress(source.Told({line.section->spot.file, number}) + ": an item of the [" +
                            std::string(line.section->keyword) + "] at " + source.Told(line.section->spot) +
                            " does not stand in it");
    }
}

}  // namespace

std::vector<RecordedFile> RecordedFiles(const DebugSource& source) {
    std::vector<RecordedFile> files(source.files.size());
    for (const DebugSection& section : source.sections) {
        Put(source, files, section.spot, {&section});
        for (const DebugEntry& entry : section.entries) {
            if (entry.given) Put(source, files, entry.spot, {&section, &entry});
        }
    }
    for (const RecordedFile& file : files) RequireOrder(source, file);
    return files;
}

std::vector<std::string_view> TextsOf(const DebugEntry& entry) {
    std::vector<std::string_view> texts = entry.texts;
    // The word of the type, the operator, two operands and two more, which only a comparison has.
    const bool isOperation = entry.type >> 16 == ValueKey(0) >> 16 && entry.number == kOperation;
    if (isOperation && texts.size() == 6 && texts[4].empty() && texts[5].empty()) texts.resize(4);
    return texts;
}

std::string AskedName(std::string_view includer, const DebugEntry& file) {
    return BackslashFolder(std::string(includer)) + std::string(file.texts.empty() ? "" : file.texts[0]);
}

bool IsInclude(const RecordedLine& line) { return line.entry && line.section->kind == kIncludeKind; }

bool IsDefinition(const DebugEntry& entry) { return entry.type == kDefinitionKey; }

std::vector<RecordedLine> IncludeItems(const DebugSource& source) {
    std::vector<RecordedLine> items;
    // On one line two files of one name may have different items.
    std::map<std::pair<SourceSpot, std::vector<std::string_view>>, std::size_t> known;
    for (const DebugSection& section : source.sections) {
        if (section.kind != kIncludeKind) continue;
        for (const DebugEntry& item : section.entries) {
            if (!item.given) continue;
            const auto [place, isNew] = known.try_emplace({item.spot, item.texts}, items.size());
            if (isNew) items.push_back({&section, &item});
            ++items[place->second].times;
        }
    }
    return items;
}

std::map<std::string, unsigned> GivenWords(const DebugSource& source, std::map<std::string, unsigned> names) {
    for (const DebugSection& section : source.sections) {
        for (const DebugEntry& entry : section.entries) {
            if (entry.given && IsDefinition(entry)) names.erase(std::string(entry.key));
        }
    }
    return names;
}

}  // namespace zek::tool
