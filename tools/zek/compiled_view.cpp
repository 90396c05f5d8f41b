#include "compiled_view.h"

#include "printable.h"
#include "section_keywords.h"

namespace zek::tool {
namespace {

/// By ordinal, from 1; gaps are ordinals that no entry of a compiled image has.
constexpr const char* kKeywords[] = {
    nullptr,     "VERSION",  "TYPE",        "FLAG",   "SOUTHBRIDGE",  "NORTHBRIDGE",  "ZEKLOOP",      "CHILDGROUP",
    "ID",        "INITFLAG", "CONTROLMASK", "THEORY", "THRESHOLD_FH", "THRESHOLD_WH", "THRESHOLD_FL", "THRESHOLD_WL",
    "ARGNUMBER", "PID",      nullptr,       "MODEL",  "PARENT",       "NAME",         "SENSORS"};

struct WordClass {
    unsigned id;
    const char* name;
    const char* table;  ///< what the table of these is called; null where there is none
};

/// The tables in the order of the file.
const WordClass kClasses[] = {
    {kIdProperty, "property", "properties"}, {kIdGlobal, "global", "globals"},   {kIdValue, "value", "values"},
    {kIdRepeater, "repeater", "repeaters"},  {kIdNumber, "number", "numbers"},   {kIdString, "string", "strings"},
    {kIdGroup, "group", "groups"},           {kIdAction, "action", "actions"},   {kIdTableName, "table", "tables"},
    {kIdTableData, "table data", nullptr},   {kIdKeyword, "keyword", nullptr},   {kIdArgument, "argument", nullptr},
    {kIdValueType, "value type", nullptr},   {kIdOperator, "operator", nullptr},
};

const char* ClassName(unsigned word) {
    if (word == kIdUnresolved) return "unresolved";
    for (const WordClass& known : kClasses) {
        if (known.id == (word & kIdClassMask)) return known.name;
    }
    return "unknown";
}

/// Whether the word is the identifier of the number 0xFFFFFFFF: the view reads that as nothing, as hosts do.
bool IsNumberForNone(const ImageView& view, unsigned word) {
    constexpr std::size_t kSlot = 128 + 4 * 4;  // of the directory, where the table of numbers begins
    constexpr std::size_t kBody = 8;            // behind tag and length
    if ((word & kIdClassMask) != kIdNumber || (word & kIdOrdinalMask) >= view.IdentifierCount(kIdNumber)) return false;
    const std::string_view bytes(reinterpret_cast<const char*>(view.Bytes().data()), view.Bytes().size());
    return WordAt(bytes, WordAt(bytes, kSlot) + kBody + std::size_t{4} * (word & kIdOrdinalMask)) == kIdUnresolved;
}

ShownWord Shown(const ImageView& view, unsigned word, const ImageValue& value) {
    ShownWord shown = {word, ClassName(word), {}, {}};
    if (value.kind == ImageValue::Kind::kNumber) shown.number = value.number;
    if (!value && IsNumberForNone(view, word)) shown.number = kIdUnresolved;
    if (value.kind == ImageValue::Kind::kText) shown.text = value.text;
    return shown;
}

/// The key as it stood in the source; the identifier itself where it names nothing.
std::string KeyOf(const ImageView& view, unsigned id, unsigned kind) {
    if (const char* keyword = KeywordOf(id)) return keyword;
    const ImageValue value = view.Resolve(id);
    if (value.kind != ImageValue::Kind::kText) return Hexadecimal(id);
    const std::string name(value.text);
    switch (id & kIdClassMask) {
        case kIdProperty: return kind == kImageProperty ? name : "P_" + name;
        case kIdGlobal: return "G_" + name;
        case kIdValue: return name.empty() ? "VALUE" : "VALUE_" + name;
        default: return name;
    }
}

}  // namespace

ShownSection ShowCompiledSection(const ImageView& view, ImageView::Section section, unsigned index) {
    ShownSection shown;
    shown.keyword = kSectionKeywords[section.Kind() - kImageQuorzek];
    shown.index = index;
    shown.name = section.Name();
    shown.id = section.ID();
    for (const ImageView::Entry entry : section.AllEntries()) {
        ShownEntry& added = shown.entries.emplace_back();
        added.id = entry.Id();
        added.key = KeyOf(view, added.id, section.Kind());
        for (unsigned i = 0; i < entry.WordCount(); ++i)
            added.words.push_back(Shown(view, entry.Word(i), entry.Value(i)));
    }
    return shown;
}

const char* KeywordOf(unsigned id) {
    const unsigned ordinal = id & kIdOrdinalMask;
    return (id & kIdClassMask) == kIdKeyword && ordinal < std::size(kKeywords) ? kKeywords[ordinal] : nullptr;
}

void ForEachCompiledSection(const ImageView& view, unsigned position,
                            const std::function<void(const ShownSection&)>& show) {
    unsigned index = 0;
    for (const ImageView::Section section : view.SectionsOf(kImageQuorzek + position)) {
        show(ShowCompiledSection(view, section, index++));
    }
}

void ForEachCompiledTable(const ImageView& view, const std::function<void(const ShownTable&)>& show) {
    for (const WordClass& known : kClasses) {
        if (!known.table) continue;
        ShownTable table = {known.table, {}};
        const unsigned count = view.IdentifierCount(known.id);
        for (unsigned id = known.id; id < known.id + count; ++id)
            table.words.push_back(Shown(view, id, view.Resolve(id)));
        show(table);
    }
}

void ForEachCompiledBlock(const ImageView& view, const std::function<void(const ShownBlock&)>& show) {
    for (unsigned i = 0; i < view.TableBlockCount(); ++i) {
        const auto block = view.TableBlock(i);
        const ShownWord name = Shown(view, kIdTableName | i, view.Resolve(kIdTableName | i));
        show({i, name.text, std::string(block.begin(), block.end())});
    }
}

}  // namespace zek::tool
