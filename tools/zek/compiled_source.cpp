#include "compiled_source.h"

#include <algorithm>
#include <iterator>

#include "compiled_view.h"
#include "decompile.h"
#include "printable.h"
#include "section_keywords.h"
#include "written_source.h"

namespace zek::tool {
namespace {

constexpr std::uint32_t kPID = 0x02000011;
constexpr std::uint32_t kVersion = 0x02000001;
constexpr std::uint32_t kModel = 0x02000013;
// Identifiers of values that some kinds declare.
constexpr std::uint32_t kIpmi = kIdValue;
constexpr std::uint32_t kPlain = kIdValue + 1;
constexpr std::uint32_t kExit = kIdValue + 5;
constexpr std::uint32_t kJump = 104;

bool IsAnyOf(std::uint32_t word, std::initializer_list<std::uint32_t> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Whether a section of that kind declares the key of a value.
bool IsDeclared(std::uint32_t kind, std::uint32_t value) {
    if (kind == kImageAction) return value == kIpmi || value == kPlain;
    return IsAnyOf(kind, {kImageSensor, kImageGroup}) && value >= kIpmi && value <= kExit;
}

/// Whether an item of the section names a value "VALUE_" as the one to go on at.
bool JumpsToPlain(ImageView::Section section) {
    for (const ImageView::Entry entry : section.AllEntries()) {
        if (entry.ValueType() == kJump && entry.WordCount() > 1 && entry.Word(1) == kPlain) return true;
    }
    return false;
}

unsigned CountOf(ImageView::Section section, std::uint32_t id) {
    const auto entries = section.AllEntries();
    return static_cast<unsigned>(
        std::count_if(entries.begin(), entries.end(), [&](ImageView::Entry entry) { return entry.Id() == id; }));
}

/// The rows that make one block of table data of another.
std::vector<std::string> RowsBetween(std::span<const unsigned char> before, std::span<const unsigned char> block) {
    std::vector<std::string> rows;
    for (std::size_t low = 0; low < block.size(); ++low) {
        if (block[low] == (before.empty() ? 0 : before[low])) continue;
        std::size_t high = low;
        while (high + 1 < block.size() && block[high + 1] == block[low]) ++high;
        const std::string end = high == low ? "" : '.' + std::to_string(high);
        rows.push_back(std::to_string(low) + end + " = \"" + std::to_string(block[low]) + '"');
        low = high;
    }
    return rows;
}

}  // namespace

CompiledSource::CompiledSource(const ImageView& view)
    : view_(view), compared_(view), jumps_(view), words_(view, made_) {}

std::vector<std::string> CompiledSource::Lines(const ImageView::Section& section) {
    std::vector<std::string> lines = {std::string("[") + kSectionKeywords[section.Kind() - kImageQuorzek] + ']'};
    Section in = {section};
    in.isUnderlined = CountOf(section, kPlain) == 1 && JumpsToPlain(section);
    for (const ImageView::Entry entry : section.AllEntries()) {
        if ((entry.Id() & kIdClassMask) == kIdValue && section.Kind() == kImageAction) in.values.insert(entry.Id());
    }
    for (const ImageView::Entry entry : section.AllEntries()) {
        const std::string key = Key(in, entry);
        const Texts texts = TextsOf(in, entry);
        const std::optional<std::string> line = ItemLine(key, {texts.begin(), texts.end()});
        if (!line) {
            throw CannotExpress("section " + std::to_string(section.Index()) + ' ' + lines[0] +
                                ": no item of a source has the key " + Quoted(key) + " and such a value");
        }
        lines.push_back(*line);
    }
    if (section.Kind() == kImageTable) AddRows(lines);
    return lines;
}

std::string CompiledSource::Key(Section& in, const ImageView::Entry& entry) {
    const std::uint32_t id = entry.Id();
    const std::uint32_t nameClass = id & kIdClassMask;
    if (nameClass == kIdKeyword) return KeywordOf(id);
    if (nameClass == kIdValue) return ValueKey(in, entry);
    in.hasAdded = true;
    const std::string name = words_.Text(id, nameClass);
    if (nameClass == kIdGlobal) return "G_" + name;
    return nameClass == kIdProperty && in.section.Kind() != kImageProperty ? "P_" + name : name;
}

std::string CompiledSource::ValueKey(Section& in, const ImageView::Entry& entry) {
    const std::uint32_t id = entry.Id();
    const std::string name = words_.Text(id, kIdValue);
    // "VALUE" and "VALUE_" have one identifier; the first is declared, so it stands before all that is not.
    const bool isUnderlined = id == kPlain && in.isUnderlined;
    const bool isDeclared =
        !in.hasAdded && !isUnderlined && !(id == kPlain && in.plainGiven) && IsDeclared(in.section.Kind(), id);
    in.hasAdded = in.hasAdded || !isDeclared;
    in.plainGiven = in.plainGiven || id == kPlain;
    return id == kPlain && isDeclared ? "VALUE" : "VALUE_" + name;
}

CompiledSource::Texts CompiledSource::TextsOf(const Section& in, const ImageView::Entry& entry) {
    if (entry.Id() == kIdSensors) return Sensors(entry);
    const std::uint32_t nameClass = entry.Id() & kIdClassMask;
    if (nameClass == kIdValue || nameClass == kIdGlobal) return Value(in, entry);
    if (nameClass == kIdRepeater) return words_.Repeater(entry);
    if (nameClass == kIdProperty) return {words_.Text(entry.Word(0), kIdString)};
    return {KeywordText(in, entry)};
}

std::string CompiledSource::KeywordText(const Section& in, const ImageView::Entry& entry) {
    const std::uint32_t word = entry.Word(0);
    const std::uint32_t kind = in.section.Kind();
    if (entry.Id() == kIdParent || (entry.Id() == kIdName && kind == kImageGroup)) return words_.Text(word, kIdGroup);
    if (entry.Id() == kIdName && kind == kImageAction) return words_.Text(word, kIdAction);
    if (IsAnyOf(entry.Id(), {kIdName, kVersion, kModel})) return words_.Text(word, kIdString);
    return NumberText(in.section.Index(), entry.Id(), words_.Number(word));
}

std::string CompiledSource::WordFor(std::uint32_t number, std::uint32_t compared) {
    const std::optional<std::string> word = made_.Number(number, compared);
    if (word) return *word;
    throw CannotExpress("no word for " + std::to_string(number) + " counts as " + std::to_string(compared));
}

std::string CompiledSource::NumberText(std::uint32_t section, std::uint32_t key, std::uint32_t number) {
    if (key == kIdID) {
        if (const auto compared = compared_.IDAsWord(section)) return WordFor(number, *compared);
    }
    if (key == kIdArgNumber) {
        if (const auto compared = compared_.ArgumentsAsWord(section)) return WordFor(number, *compared);
    }
    if (key == kPID && compared_.IsUnknownView(number)) return WordFor(number, 0);
    return std::to_string(number);
}

CompiledSource::Texts CompiledSource::Sensors(const ImageView::Entry& entry) {
    Texts texts;
    for (unsigned i = 0; i < entry.WordCount(); ++i) {
        const std::uint32_t number = words_.Number(entry.Word(i));
        if (number == kIdUnresolved && compared_.NeedsZero() && !zeroWritten_) {
            // A word, which compiles to what stands for nothing, and which the checks look up.
            zeroWritten_ = true;
            texts.push_back(made_.Number(0));
        } else {
            texts.push_back(std::to_string(number));
        }
    }
    return texts;
}

CompiledSource::Texts CompiledSource::Value(const Section& in, const ImageView::Entry& entry) {
    Texts texts = words_.Value(entry, in.values);
    if (entry.ValueType() != kJump || entry.WordCount() < 2) return texts;
    const std::optional<std::string> word = jumps_.WordFor(in.section.Index(), entry.Word(1));
    if (word && made_.Value(*word, words_.Number(entry.Word(1)))) texts[1] = *word;
    return texts;
}

void CompiledSource::AddRows(std::vector<std::string>& lines) {
    const auto before = tables_ == 0 ? std::span<const unsigned char>() : view_.TableBlock(tables_ - 1);
    const std::vector<std::string> rows = RowsBetween(before, view_.TableBlock(tables_));
    lines.insert(lines.end(), rows.begin(), rows.end());
    ++tables_;
}

}  // namespace zek::tool
