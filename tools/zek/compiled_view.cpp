#include "compiled_view.h"

#include "printable.h"
#include "section_keywords.h"
#include "zekcomp/identifiers.h"
#include "zekcomp/image.h"

namespace zek::tool {
namespace {

constexpr unsigned kNameEntry = kIdKeyword | 0x15;
constexpr unsigned kIDEntry = kIdKeyword | 0x08;
constexpr unsigned kTextKind = 2;
constexpr unsigned kNumberKind = 1;
/// Table ordinals above this wrap round in the query.
constexpr unsigned kMostBlocks = 0x01000000;

/// By ordinal, from 1; gaps are ordinals that no entry of a compiled image has.
constexpr const char* kKeywords[] = {
    nullptr,     "VERSION",  "TYPE",        "FLAG",   "SOUTHBRIDGE",  "NORTHBRIDGE",  "ZEKLOOP",      "CHILDGROUP",
    "ID",        "INITFLAG", "CONTROLMASK", "THEORY", "THRESHOLD_FH", "THRESHOLD_WH", "THRESHOLD_FL", "THRESHOLD_WL",
    "ARGNUMBER", "PID",      nullptr,       "MODEL",  "PARENT",       "NAME",         "SENSORS"};

struct WordClass {
    unsigned id;
    const char* name;
    const char* table;        ///< what the table of these is called; null where there is none
    const unsigned* counter;  ///< the next identifier of the table
};

/// The tables in the order of the file.
const WordClass kClasses[] = {
    {kIdProperty, "property", "properties", &g_idxProperty},
    {kIdGlobal, "global", "globals", &g_idxGlobal},
    {kIdValue, "value", "values", &g_idxValue},
    {kIdRepeater, "repeater", "repeaters", &g_idxRepeater},
    {kIdNumber, "number", "numbers", &g_idxDword},
    {kIdString, "string", "strings", &g_idxString},
    {kIdGroup, "group", "groups", &g_idxGroup},
    {kIdAction, "action", "actions", &g_idxAction},
    {kIdTableName, "table", "tables", &g_idxTableName},
    {kIdTableData, "table data", nullptr, nullptr},
    {kIdKeyword, "keyword", nullptr, nullptr},
    {kIdArgument, "argument", nullptr, nullptr},
    {kIdValueType, "value type", nullptr, nullptr},
    {kIdOperator, "operator", nullptr, nullptr},
};

const char* ClassName(unsigned word) {
    if (word == kIdUnresolved) return "unresolved";
    for (const WordClass& known : kClasses) {
        if (known.id == (word & kIdClassMask)) return known.name;
    }
    return "unknown";
}

ShownWord Shown(unsigned word) {
    ShownWord shown = {word, ClassName(word), {}, {}};
    const tagGCVALUE value = GetTblData(word);
    if (value.dwKind == kNumberKind) shown.number = static_cast<unsigned>(value.qwNumber);
    if (value.dwKind == kTextKind) shown.text = value.pszName;
    return shown;
}

/// The key as it stood in the source; the identifier itself where it names nothing.
std::string KeyOf(unsigned id, unsigned section) {
    const unsigned ordinal = id & kIdOrdinalMask;
    if ((id & kIdClassMask) == kIdKeyword && ordinal < std::size(kKeywords) && kKeywords[ordinal]) {
        return kKeywords[ordinal];
    }
    const ShownWord name = Shown(id);
    if (!name.text) return Hexadecimal(id);
    switch (id & kIdClassMask) {
        case kIdProperty: return section == kImageProperty ? *name.text : "P_" + *name.text;
        case kIdGlobal: return "G_" + *name.text;
        case kIdValue: return name.text->empty() ? "VALUE" : "VALUE_" + *name.text;
        default: return *name.text;
    }
}

ShownSection Shown(unsigned kind, unsigned index) {
    ShownSection shown;
    shown.keyword = kSectionKeywords[kind - kImageQuorzek];
    shown.index = index;
    tagGCSECT* section = gcGetSectByIndex(kind, index);
    const unsigned count = gcGetEntryCount(section);
    for (unsigned i = 0; i < count; ++i) {
        ShownEntry entry;
        tagGCENTRY* handle = gcGetEntryByIndex(section, i, &entry.id);
        entry.key = KeyOf(entry.id, kind);
        for (const unsigned word : handle->vdwValues) entry.words.push_back(Shown(word));
        if (!entry.words.empty() && entry.id == kNameEntry && !shown.name) shown.name = entry.words[0].text;
        if (!entry.words.empty() && entry.id == kIDEntry && !shown.id) shown.id = entry.words[0].number;
        shown.entries.push_back(std::move(entry));
    }
    return shown;
}

}  // namespace

void ForEachCompiledSection(unsigned position, const std::function<void(const ShownSection&)>& show) {
    const unsigned kind = kImageQuorzek + position;
    const unsigned count = gcGetSectCount(kind);
    for (unsigned i = 0; i < count; ++i) show(Shown(kind, i));
}

void ForEachCompiledTable(const std::function<void(const ShownTable&)>& show) {
    for (const WordClass& known : kClasses) {
        if (!known.table) continue;
        ShownTable table = {known.table, {}};
        const bool own = (*known.counter & kIdClassMask) == known.id;
        for (unsigned id = known.id; own && id < *known.counter; ++id) table.words.push_back(Shown(id));
        show(table);
    }
}

void ForEachCompiledBlock(const std::function<void(const ShownBlock&)>& show) {
    unsigned char bytes[kTableBlockSize];
    for (unsigned i = 0; i < kMostBlocks && gcGetTableData(i, bytes); ++i) {
        show({i, Shown(kIdTableName | i).text, std::string(bytes, bytes + sizeof bytes)});
    }
}

}  // namespace zek::tool
