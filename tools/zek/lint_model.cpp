#include "lint_model.h"

#include <algorithm>
#include <iterator>

#include "debug_layout.h"
#include "zekcomp/operators.h"
#include "zekcomp/predefined.h"

namespace zek::tool {
namespace {

/// What the compiler takes an entry of a type for.
Meaning MeaningOf(unsigned type) {
    constexpr unsigned kTheory = NumericKey(0x0b);
    constexpr unsigned kThresholdWL = NumericKey(0x0f);
    if (type == kRowKey) return Meaning::kRow;
    if (type >= kTheory && type <= kThresholdWL) return Meaning::kSigned;
    switch (type >> 16) {
        case kDefinitionKey >> 16: return Meaning::kWord;
        case kSensorsKey >> 16: return Meaning::kList;
        case ValueKey(0) >> 16: return Meaning::kValue;
        case kRepeaterKey >> 16: return Meaning::kRepeater;
        default: return type >= NumericKey(0) ? Meaning::kNumber : Meaning::kText;
    }
}

/// `kind` is null for a section of none.
Meaning MeaningOf(const DebugKind* kind, std::string_view key) {
    if (!kind) return Meaning::kIgnored;
    if (const DebugKey* const declared = kind->Declared(key)) return MeaningOf(declared->type);
    if (kind->addsProperties && (!kind->added || key.starts_with("P_"))) return Meaning::kText;
    return kind->added ? MeaningOf(kind->added) : Meaning::kIgnored;
}

constexpr ValueShape kRepeaterShape = {0, "na", true, 3, kNoLimit};

/// The value types of which all that comes is what they work out.
constexpr unsigned kIdle[] = {1, 2, 4, 7, 8, 10, 12};

constexpr unsigned kFirstComparison = 101;  ///< of the codes of operators

/// How many operands of a value reach the image where as many are written.
std::size_t OperandsKept(const ValueShape& shape, const LintItem& item, std::size_t written) {
    if (shape.type == kOperation && GetOperator(item.Part(1)) < kFirstComparison)
        return std::min<std::size_t>(written, 3);
    if (shape.type == kListOfFour) return std::min(written, shape.most - 1);
    return shape.list ? written : std::min(written, shape.operands.size());
}

std::vector<LintItem> ItemsOf(const SourceSection& section) {
    const DebugKind* const kind = DebugKindOf(section.name);
    std::vector<LintItem> items;
    items.reserve(section.items.size());
    for (const SourceItem& item : section.items) {
        items.push_back({&item, MeaningOf(kind, item.key), CutValue(item.value)});
        // Only the first item of an [IFDEF] can be its condition, and it can be nothing else.
        if (section.name == "IFDEF") items.back().meaning = items.size() == 1 ? Meaning::kText : Meaning::kWord;
    }
    return items;
}

}  // namespace

std::string LintItem::Part(std::size_t position) const {
    return position < parts.size() ? std::string(parts[position].text) : std::string();
}

const LintItem* LintSection::Find(std::string_view key) const {
    const auto found =
        std::find_if(items.begin(), items.end(), [&](const LintItem& item) { return item.source->key == key; });
    return found == items.end() ? nullptr : &*found;
}

std::string LintSection::TextOf(std::string_view key) const {
    const LintItem* const item = Find(key);
    return item ? item->Part(0) : std::string();
}

LintModel::LintModel(const std::vector<SourceFile>& files, SourceIndex& index, std::set<std::string> given)
    : given_(std::move(given)) {
    std::map<const SourceSection*, const LintSection*> known;
    Places places(files, index);
    std::map<std::string_view, const std::string*> paths;
    for (const SourceFile& file : files) paths.try_emplace(file.path, &file.path);
    for (const Places::ReadSection& read : places.SectionsRead()) {
        const auto [place, isNew] = known.try_emplace(read.section, nullptr);
        if (isNew) {
            auto section =
                std::make_unique<LintSection>(LintSection{paths.at(*read.path), read.section, ItemsOf(*read.section)});
            place->second = section.get();
            written_.push_back(std::move(section));
        }
        sections_.push_back(place->second);
        Define(*place->second, sections_.size() - 1);
    }
}

void LintModel::Define(const LintSection& section, std::size_t position) {
    for (const LintItem& item : section.items) {
        if (item.meaning != Meaning::kWord || item.parts.empty()) continue;
        const std::string text = item.Part(0);
        const std::optional<unsigned> value = text.empty() ? 0 : ValueOf(text);
        if (!value) continue;
        const Definition* const other = Defined(text);
        const std::optional<WrittenNumber> number = WrittenNumberIn(text);
        const bool negative = other ? other->negative : number && number->negative;
        words_[item.source->key].push_back({&section, &item, position, *value, negative});
    }
}

std::vector<const LintSection*> LintModel::OfKind(std::string_view kind) const {
    std::vector<const LintSection*> all;
    for (const LintSection* section : sections_) {
        if (section->Kind() == kind) all.push_back(section);
    }
    return all;
}

std::vector<std::string> LintModel::WordNames() const {
    std::vector<std::string> names(given_.begin(), given_.end());
    for (const auto& [word, definitions] : words_) names.push_back(word);
    return names;
}

const Definition* LintModel::Defined(const std::string& word) const {
    const auto found = words_.find(word);
    return found == words_.end() ? nullptr : &found->second.back();
}

bool LintModel::IsDefinedBefore(const std::string& word, std::size_t position) const {
    if (given_.contains(word)) return true;
    const auto found = words_.find(word);
    return found != words_.end() && found->second.front().position < position;
}

std::optional<unsigned> LintModel::WordValue(const std::string& word) const {
    if (const Definition* const definition = Defined(word)) return definition->value;
    // Defined on the command line.
    unsigned value = 0;
    return GetPreDefinedValue(word, &value) ? std::optional(value) : std::nullopt;
}

std::optional<unsigned> LintModel::ValueOf(const std::string& text) const {
    if (const std::optional<unsigned> value = WordValue(text)) return value;
    const std::optional<WrittenNumber> number = WrittenNumberIn(text);
    return number ? std::optional(number->value) : std::nullopt;
}

std::optional<unsigned> LintModel::TypeOf(const LintItem& item) const {
    return item.meaning == Meaning::kValue ? WordValue(item.Part(0)) : std::nullopt;
}

bool LintModel::Acts(const LintItem& item) const {
    const std::optional<unsigned> type = TypeOf(item);
    return !type || std::find(std::begin(kIdle), std::end(kIdle), *type) == std::end(kIdle);
}

void LintModel::ForEachOperand(const LintItem& item, const std::function<void(std::size_t, Operand)>& show) const {
    const bool isRepeater = item.meaning == Meaning::kRepeater;
    const std::optional<unsigned> type = TypeOf(item);
    const ValueShape* const shape = isRepeater ? &kRepeaterShape : type ? ShapeOf(*type) : nullptr;
    // Behind the word of the type.
    const std::size_t first = isRepeater ? 0 : 1;
    if (!shape || item.parts.size() <= first) return;
    const std::size_t count = OperandsKept(*shape, item, item.parts.size() - first);
    for (std::size_t i = 0; i < count; ++i) {
        show(first + i, i < shape->operands.size() ? static_cast<Operand>(shape->operands[i]) : kReference);
    }
}

void LintModel::ForEachWord(const LintItem& item, const std::function<void(std::size_t)>& show) const {
    const bool isNumber = item.meaning == Meaning::kNumber || item.meaning == Meaning::kSigned;
    if (isNumber || item.meaning == Meaning::kValue) show(0);
    ForEachOperand(item, [&](std::size_t position, Operand operand) {
        const bool isWord = operand == kReference || operand == kNumberOperand;
        // A number goes before a word there.
        if (isWord && !WrittenNumberIn(item.Part(position))) show(position);
    });
}

bool IsStepName(std::string_view operand) { return operand.size() > 6 && operand.starts_with("VALUE_"); }
bool IsArgumentName(std::string_view operand) { return operand.size() > 3 && operand.starts_with("ARG"); }
bool IsGlobalName(std::string_view operand) { return operand.size() > 2 && operand.starts_with("G_"); }

std::optional<WrittenNumber> ArgumentNumber(const std::string& operand) {
    return IsArgumentName(operand) ? WrittenNumberIn(operand.substr(3)) : std::nullopt;
}

}  // namespace zek::tool
