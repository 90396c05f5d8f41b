#include "values.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "printable.h"
#include "zekcomp/identifiers.h"
#include "zekcomp/operators.h"
#include "zekcomp/value_shapes.h"

namespace zek::tool {
namespace {

/// The keys whose text is a number.
constexpr std::string_view kNumericKeys[] = {
    "TYPE",        "FLAG",   "SOUTHBRIDGE",  "NORTHBRIDGE",  "ZEKLOOP",      "CHILDGROUP",   "ID",        "INITFLAG",
    "CONTROLMASK", "THEORY", "THRESHOLD_FH", "THRESHOLD_WH", "THRESHOLD_FL", "THRESHOLD_WL", "ARGNUMBER", "PID"};

/// The pieces between commas.
std::vector<std::string> Pieces(const std::string& text) {
    std::vector<std::string> pieces;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t comma = std::min(text.find(',', start), text.size());
        pieces.push_back(text.substr(start, comma - start));
        start = comma + 1;
    }
    return pieces;
}

/// Whether the entry has a value type, or is a repeater item: what stands between its commas counts by itself.
bool IsValue(const ShownSection& section, const std::string& key) {
    const std::string_view keyword = section.keyword;
    return keyword == "REPEATER" || (keyword == "GLOBAL" && key.starts_with("G_")) || key == "VALUE" ||
           (key.starts_with("VALUE_") && keyword != "PROPERTY");
}

/// A debug image shows an access to a bus without data with its last operand before the second; hosts rely on it.
void PutInSourceOrder(std::vector<ShownValue>& values) {
    constexpr unsigned kTypes[] = {4, 8, 12};
    constexpr std::size_t kOperands = 4;
    const bool swapped = std::find(std::begin(kTypes), std::end(kTypes), values[0].number) != std::end(kTypes);
    if (swapped && values.size() == 1 + kOperands) std::swap(values[2], values[4]);
}

/// The kind of section that a word of a compiled image is the NAME of.
const char* NamedByWord(unsigned word) {
    switch (word & kIdClassMask) {
        case kIdGroup: return "GROUP";
        case kIdAction: return "ACTION";
        case kIdTableName: return "TABLE";
        default: return nullptr;
    }
}

/// The same of an operand of the source, by what the value type or, without one, a repeater item has there.
const char* NamedByOperand(const std::vector<ShownValue>& values, std::size_t at, bool isRepeater) {
    if (isRepeater) return at == 1 ? "ACTION" : nullptr;
    const ValueShape* const shape = values[0].number ? ShapeOf(*values[0].number) : nullptr;
    if (!shape || at == 0 || at > shape->operands.size()) return nullptr;
    if (shape->operands[at - 1] == kActionOperand) return "ACTION";
    return shape->operands[at - 1] == kTableOperand ? "TABLE" : nullptr;
}

/// Whether the text is a number and nothing else: hexadecimal behind 0x, else decimal.
bool IsNumber(const std::string& text) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const std::string digits = hexadecimal ? text.substr(2) : text;
    const char* const allowed = hexadecimal ? "0123456789abcdefABCDEF" : "0123456789";
    return !digits.empty() && digits.find_first_not_of(allowed) == std::string::npos;
}

}  // namespace

const char* OperatorText(unsigned code) {
    const auto found =
        std::find_if(g_NTMapOper.begin(), g_NTMapOper.end(), [&](const tagNTMAP& row) { return row.dwID == code; });
    return found == g_NTMapOper.end() ? nullptr : found->pszName;
}

std::string SourceText(const ShownWord& word) {
    if (word.word == kIdUnresolved) return "unresolved";
    const std::string text = word.text.value_or(std::string());
    switch (word.word & kIdClassMask) {
        case kIdGlobal: return "G_" + text;
        case kIdValue: return text.empty() ? "VALUE" : "VALUE_" + text;
        case kIdArgument: return "ARG" + std::to_string(word.number.value_or(0));
        case kIdOperator:
            if (const char* known = OperatorText(word.number.value_or(0))) return known;
            break;
        default: break;
    }
    if (word.number) return std::to_string(*word.number);
    return word.text ? text : Hexadecimal(word.word);
}

ShownValue Values::First(const ShownSection& section, const char* key) const {
    const ShownEntry* entry = section.Entry(key);
    if (!entry) return {};
    if (!compiled_) return Written(entry->value);
    return entry->words.empty() ? ShownValue() : OfWord(entry->words[0]);
}

std::vector<ShownValue> Values::List(const ShownSection& section, const char* key) const {
    std::vector<ShownValue> values;
    const ShownEntry* entry = section.Entry(key);
    if (!entry) return values;
    for (const ShownWord& word : entry->words) values.push_back(OfWord(word));
    if (entry->value.empty()) return values;
    // A comma stands before every element.
    for (const std::string& piece : Pieces(entry->value.substr(1))) values.push_back(Written(piece));
    return values;
}

std::vector<ShownValue> Values::Resolved(const ShownSection& section, const ShownEntry& entry) const {
    std::vector<ShownValue> values;
    for (const ShownWord& word : entry.words) {
        const bool number = (word.word & kIdClassMask) == kIdNumber || (word.word & kIdClassMask) == kIdValueType;
        values.push_back({SourceText(word), number ? word.number : std::nullopt, NamedByWord(word.word)});
    }
    if (compiled_) return values;
    const bool list = entry.key == "SENSORS" && std::string_view(section.keyword) == "TAVRGROUP";
    if (!list && !IsValue(section, entry.key)) {
        const std::string_view keyword = section.keyword;
        const bool named = keyword == "PROPERTY" || (keyword == "IFDEF" && entry.key == "DEFINEWORD");
        const bool number =
            keyword == "DEFINE" || keyword == "IFDEF" || keyword == "TABLE" ||
            std::find(std::begin(kNumericKeys), std::end(kNumericKeys), entry.key) != std::end(kNumericKeys);
        const bool isText = named || !number || entry.key == "NAME";
        if (!isText) return {ResolvedText(entry.value)};
        return {{entry.value, {}, entry.key == "PARENT" ? "GROUP" : nullptr}};
    }
    const std::vector<std::string> pieces = Pieces(list && !entry.value.empty() ? entry.value.substr(1) : entry.value);
    for (const std::string& piece : pieces) values.push_back(ResolvedText(piece));
    const bool isRepeater = std::string_view(section.keyword) == "REPEATER";
    for (std::size_t i = 0; !list && i < values.size(); ++i) {
        if (const char* const kind = NamedByOperand(values, i, isRepeater)) values[i] = {pieces[i], {}, kind};
    }
    if (!list && !isRepeater) PutInSourceOrder(values);
    // Operands that an arithmetic operator does not take.
    while (values.size() > 1 && values.back().text.empty()) values.pop_back();
    return values;
}

ShownValue Values::OfWord(const ShownWord& word) {
    if (word.number) return {std::to_string(*word.number), word.number, nullptr};
    return {word.text.value_or(std::string()), {}, nullptr};
}

/// A predefined name or a number of the source: hexadecimal after 0x, else decimal.
ShownValue Values::Written(const std::string& text) const {
    const auto name = names_.find(text);
    if (name != names_.end()) return {text, name->second, nullptr};
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    char* end = nullptr;
    const auto number = static_cast<unsigned>(std::strtoull(text.c_str(), &end, hexadecimal ? 16 : 10));
    if (end == text.c_str()) return {text, {}, nullptr};
    return {text, number, nullptr};
}

ShownValue Values::ResolvedText(const std::string& text) const {
    if (!names_.contains(text) && !IsNumber(text)) return {text, {}, nullptr};
    const ShownValue written = Written(text);
    return {std::to_string(written.number.value_or(0)), written.number, nullptr};
}

std::string Joined(const std::vector<ShownValue>& values) {
    std::string text;
    for (const ShownValue& value : values) text += (&value == values.data() ? "" : ",") + value.text;
    return text;
}

}  // namespace zek::tool
