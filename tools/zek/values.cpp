#include "values.h"

#include <algorithm>

#include "debug_lines.h"
#include "entry_roles.h"
#include "zekcomp/identifiers.h"
#include "zekcomp/operators.h"

namespace zek::tool {
namespace {

constexpr char kUnresolved[] = "unresolved";

ShownValue OfNumber(unsigned number) { return {std::to_string(number), number, nullptr}; }

/// The kind of section that a text in a role is a NAME of.
const char* NamedIn(Role role) {
    switch (role) {
        case Role::kGroup: return "GROUP";
        case Role::kAction: return "ACTION";
        case Role::kTable: return "TABLE";
        default: return nullptr;
    }
}

/// The same for a word of a compiled image.
const char* NamedByWord(unsigned word) {
    switch (word & kIdClassMask) {
        case kIdGroup: return "GROUP";
        case kIdAction: return "ACTION";
        case kIdTableName: return "TABLE";
        default: return nullptr;
    }
}

/// Whether the words of an entry are those of a value: its type, then operands.
bool IsValue(const ShownEntry& entry) {
    const unsigned nameClass = entry.id & kIdClassMask;
    return nameClass == kIdGlobal || nameClass == kIdValue;
}

/// Texts end at a NUL for hosts.
std::string UpToNul(std::string_view text) { return std::string(text.substr(0, text.find('\0'))); }

/// What no number is among the operands, as a compiled image tells it again.
std::string ReferenceText(const std::string& text) {
    if (text == "VALUE_") return "VALUE";
    if (text == "VALUE" || text.starts_with("VALUE_") || text.starts_with("G_")) return text;
    const auto argument = text.starts_with("ARG") ? PlainNumber(text.substr(3)) : std::nullopt;
    return argument ? "ARG" + std::to_string(*argument) : kUnresolved;
}

}  // namespace

const char* OperatorText(unsigned code) {
    const auto found =
        std::find_if(g_NTMapOper.begin(), g_NTMapOper.end(), [&](const tagNTMAP& row) { return row.dwID == code; });
    return found == g_NTMapOper.end() ? nullptr : found->pszName;
}

std::string SourceText(const ShownWord& word) {
    const unsigned wordClass = word.word & kIdClassMask;
    if (wordClass == kIdOperator) {
        const char* const known = OperatorText(word.word - kIdOperator);
        return known ? known : kUnresolved;
    }
    if (wordClass == kIdArgument) return "ARG" + std::to_string(word.word - kIdArgument);
    if (word.number) return std::to_string(*word.number);
    if (!word.text) return kUnresolved;
    if (wordClass == kIdGlobal) return "G_" + *word.text;
    if (wordClass == kIdValue) return word.text->empty() ? "VALUE" : "VALUE_" + *word.text;
    return *word.text;
}

ShownValue Values::First(const ShownSection& section, const char* key) const {
    const std::vector<ShownValue> values = List(section, key);
    return values.empty() ? ShownValue() : values[0];
}

std::vector<ShownValue> Values::List(const ShownSection& section, const char* key) const {
    std::vector<ShownValue> values;
    const ShownEntry* const entry = section.Entry(key);
    if (!entry) return values;
    if (!entry->source) return OfWords(*entry);
    for (const std::string_view text : entry->source->texts) {
        values.push_back({UpToNul(text), NumberOf(RoleOf(*entry->source, values.size()), text, names_), nullptr});
    }
    return values;
}

std::vector<ShownValue> Values::Resolved(const ShownEntry& entry) const {
    if (!entry.source) return OfWords(entry);
    const DebugEntry& source = *entry.source;
    if (IsDefinition(source)) {
        // Another item, above or below, may have given the word its value.
        const auto word = names_.find(entry.key);
        return {OfNumber(word == names_.end() ? source.number : word->second)};
    }
    std::vector<ShownValue> values;
    const std::size_t count = TextsOf(source).size();
    while (values.size() < count) values.push_back(OfText(source, values.size()));
    return values;
}

std::vector<ShownValue> Values::OfWords(const ShownEntry& entry) {
    std::vector<ShownValue> values;
    for (const ShownWord& word : entry.words) {
        // The type is added to its class, also where the sum is of another one.
        if (values.empty() && IsValue(entry)) {
            values.push_back(OfNumber(word.word - kIdValueType));
            continue;
        }
        const bool isNumber = (word.word & kIdClassMask) == kIdNumber;
        values.push_back({SourceText(word), isNumber ? word.number : std::nullopt, NamedByWord(word.word)});
    }
    return values;
}

ShownValue Values::OfText(const DebugEntry& entry, std::size_t at) const {
    const Role role = RoleOf(entry, at);
    const std::string text = UpToNul(entry.texts[at]);
    const auto number = NumberOf(role, entry.texts[at], names_);
    switch (role) {
        case Role::kValueType: return OfNumber(entry.number);
        case Role::kWord: return OfNumber(number.value_or(kIdUnresolved));
        // An element of a list that is no number is 0xFFFFFFFF, any other 0.
        case Role::kPlainNumber: return OfNumber(number.value_or(IsList(entry) ? kIdUnresolved : 0));
        case Role::kReference: return number ? OfNumber(*number) : ShownValue{ReferenceText(text), {}, nullptr};
        default: return {text, {}, NamedIn(role)};
    }
}

}  // namespace zek::tool
