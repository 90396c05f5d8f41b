#include "dump.h"

#include <ctime>

#include "debug_lines.h"
#include "printable.h"
#include "word_text.h"

namespace zek::tool {
namespace {

constexpr std::size_t kBytesInLine = 16;

std::string Time(unsigned seconds) {
    const std::time_t time = seconds;
    std::tm utc = {};
    gmtime_r(&time, &utc);
    char text[sizeof "2000-01-01 00:00:00 UTC"];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S UTC", &utc);
    return text;
}

void WriteHeader(const Image& image, StandardOutput& out) {
    out.Write(image.Kind() == ImageKind::kCompiled ? "compiled image" : "debug image");
    out.Write(", version " + Hexadecimal(image.Info().dwVersion) + ", written " + Time(image.Info().dwTime) + " (" +
              std::to_string(image.Info().dwTime) + ")\n");
}

void WriteEntry(const ShownEntry& entry, const Image& image, StandardOutput& out) {
    out.Write("  " + Printable(entry.key));
    if (image.Kind() == ImageKind::kDebug) {
        const auto final = OtherFinalNumber(image, entry);
        return out.Write(" = " + Quoted(entry.value) + (final ? ", finally " + ToldNumber(*final) : "") + '\n');
    }
    out.Write(" (" + Hexadecimal(entry.id) + ")\n");
    for (const ShownWord& word : entry.words) out.Write("    " + ToldWord(word) + '\n');
}

void WriteSections(const Image& image, StandardOutput& out) {
    image.ForEachSection([&](const ShownSection& section) {
        out.Write(std::string("\n[") + section.keyword + "] #" + std::to_string(section.index));
        if (section.name) out.Write(' ' + Quoted(*section.name));
        if (section.id) out.Write(" ID " + std::to_string(*section.id));
        out.Write("\n");
        for (const ShownEntry& entry : section.entries) WriteEntry(entry, image, out);
    });
}

void WriteTables(const Image& image, StandardOutput& out) {
    image.ForEachTable([&](const ShownTable& table) {
        out.Write(std::string("\n") + table.name + ": " + std::to_string(table.words.size()) + '\n');
        for (const ShownWord& word : table.words) out.Write("  " + ToldWord(word) + '\n');
    });
    image.ForEachBlock([&](const ShownBlock& block) {
        out.Write("\ntable data #" + std::to_string(block.index));
        if (block.name) out.Write(' ' + Quoted(*block.name));
        out.Write("\n");
        for (std::size_t start = 0; start < block.bytes.size(); start += kBytesInLine) {
            const char offset = static_cast<char>(start);
            out.Write("  " + Hex({&offset, 1}) + ' ');
            for (std::size_t i = start; i < start + kBytesInLine; ++i) out.Write(' ' + Hex({&block.bytes[i], 1}));
            out.Write("\n");
        }
    });
}

void WriteNames(const Image& image, StandardOutput& out) {
    out.Write("\npredefined names: " + std::to_string(image.Names().size()) + '\n');
    for (const auto& [name, value] : image.Names()) out.Write("  " + Quoted(name) + ' ' + ToldNumber(value) + '\n');
}

}  // namespace

std::optional<unsigned> OtherFinalNumber(const Image& image, const ShownEntry& entry) {
    if (!entry.source || !IsDefinition(*entry.source)) return {};
    const auto word = image.Names().find(entry.key);
    return word == image.Names().end() || word->second == entry.source->number ? std::nullopt
                                                                               : std::optional(word->second);
}

void DumpAsText(const Image& image, StandardOutput& out) {
    WriteHeader(image, out);
    WriteSections(image, out);
    if (image.Kind() == ImageKind::kDebug) return WriteNames(image, out);
    WriteTables(image, out);
}

}  // namespace zek::tool
