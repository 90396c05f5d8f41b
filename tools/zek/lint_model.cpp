#include "lint_model.h"

#include <algorithm>
#include <iterator>

#include "zekcomp/predefined.h"

namespace zek::tool {
namespace {

/// What the keys of a kind of section are. Those that are not named here are `other`, or texts if they begin with P_
/// and the kind has such.
struct KindRow {
    const char* kind;
    const char* numbers;  ///< with a blank around each
    const char* texts;
    bool hasTexts;  ///< of keys that begin with P_
    Meaning other;
};

constexpr KindRow kKinds[] = {
    {"QUORZEK", "", " VERSION ", false, Meaning::kIgnored},
    {"PROPERTY", "", "", false, Meaning::kText},
    {"SYSTEM", " TYPE FLAG SOUTHBRIDGE NORTHBRIDGE ZEKLOOP ", " MODEL ", true, Meaning::kText},
    {"GROUP", " CHILDGROUP ", " PARENT NAME ", false, Meaning::kIgnored},
    {"SENSOR", " ID TYPE INITFLAG CONTROLMASK ", " PARENT NAME ", true, Meaning::kValue},
    {"DEVICE", " ID INITFLAG CONTROLMASK ", " NAME ", true, Meaning::kValue},
    {"ACTION", " ARGNUMBER ", " NAME ", false, Meaning::kValue},
    {"TABLE", " TYPE ", " NAME ", false, Meaning::kRow},
    {"TAVRGROUP", " ID PID ", " NAME ", true, Meaning::kText},
    {"GLOBAL", "", "", false, Meaning::kValue},
    {"REPEATER", "", "", false, Meaning::kRepeater},
    {"DEFINE", "", "", false, Meaning::kWord},
    {"IFDEF", "", " DEFINEWORD ", false, Meaning::kWord},
    {"INCLUDE", "", " FILE ", false, Meaning::kText},
};

constexpr char kGroupValues[] = " VALUE_INIT VALUE_DEINIT VALUE_ENTRY VALUE_EXIT ";
constexpr char kSensorNumbersWithSign[] = " THEORY THRESHOLD_FH THRESHOLD_WH THRESHOLD_WL THRESHOLD_FL ";

bool IsAmong(std::string_view names, const std::string& key) { return names.find(' ' + key + ' ') != names.npos; }

Meaning MeaningOf(const std::string& section, const std::string& key, bool isFirst) {
    const auto row = std::find_if(std::begin(kKinds), std::end(kKinds),
                                  [&](const KindRow& candidate) { return section == candidate.kind; });
    if (row == std::end(kKinds)) return Meaning::kIgnored;
    // Only the first item of an [IFDEF] can be its condition, and it can be nothing else.
    if (section == "IFDEF") return isFirst ? Meaning::kText : Meaning::kWord;
    if (IsAmong(row->numbers, key)) return Meaning::kNumber;
    if (IsAmong(row->texts, key) || (row->hasTexts && key.starts_with("P_"))) return Meaning::kText;
    if (section == "SENSOR" && IsAmong(kSensorNumbersWithSign, key)) return Meaning::kSigned;
    if (section == "GROUP" && IsAmong(kGroupValues, key)) return Meaning::kValue;
    if (section == "TAVRGROUP" && key == "SENSORS") return Meaning::kList;
    return row->other;
}

/// The operands of a value type, one letter for each; the last one is repeated where there may be more.
struct TypeRow {
    unsigned type;
    const char* operands;
    bool more;
    bool acts;
};

// x: anything that is a value; n: a number or a word; o: operator; a: action; t: table; v: a step of the section.
constexpr TypeRow kTypes[] = {
    {1, "x", false, false},   {2, "oxxxx", false, false}, {3, "ax", true, true},     {4, "xnnx", false, false},
    {5, "xnnxx", true, true}, {6, "nnx", true, true},     {7, "xxxx", false, false}, {8, "xnnx", false, false},
    {9, "xnnxx", true, true}, {10, "tx", false, false},   {11, "xnnxx", true, true}, {12, "xnnx", false, false},
    {101, "x", false, true},  {102, "xax", true, true},   {103, "x", false, true},   {104, "v", false, true},
};

constexpr TypeRow kRepeater = {0, "nax", true, true};

/// Null for a type that takes no operands.
const TypeRow* RowOfType(unsigned type) {
    const auto* const row =
        std::find_if(std::begin(kTypes), std::end(kTypes), [&](const TypeRow& a) { return a.type == type; });
    return row == std::end(kTypes) ? nullptr : row;
}

constexpr unsigned kCalculation = 2;

Role RoleOf(char letter) {
    constexpr std::string_view kLetters = "xnoatv";
    return static_cast<Role>(kLetters.find(letter));
}

bool IsComparison(std::string_view text) {
    constexpr std::string_view kComparisons[] = {"==", "!=", ">", ">=", "<", "<="};
    return std::find(std::begin(kComparisons), std::end(kComparisons), text) != std::end(kComparisons);
}

LintItem ItemOf(const SourceSection& section, const SourceItem& item) {
    const Meaning meaning = MeaningOf(section.name, item.key, &item == section.items.data());
    return {&item, meaning, CutValue(item.value)};
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
            auto section = std::make_unique<LintSection>(LintSection{paths.at(*read.path), read.section, {}});
            section->items.reserve(read.section->items.size());
            for (const SourceItem& item : read.section->items) section->items.push_back(ItemOf(*read.section, item));
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
    const TypeRow* const row = type ? RowOfType(*type) : nullptr;
    return !row || row->acts;
}

void LintModel::ForEachOperand(const LintItem& item, const std::function<void(std::size_t, Role)>& show) const {
    const TypeRow* row = item.meaning == Meaning::kRepeater ? &kRepeater : nullptr;
    const std::size_t first = row ? 0 : 1;
    if (const std::optional<unsigned> type = TypeOf(item)) row = RowOfType(*type);
    if (!row) return;
    const std::string_view letters = row->operands;
    std::size_t most = row->more ? item.parts.size() : letters.size();
    if (row->type == kCalculation && !IsComparison(item.Part(1))) most = 3;
    for (std::size_t i = 0; i < most && first + i < item.parts.size(); ++i) {
        show(first + i, RoleOf(letters[std::min(i, letters.size() - 1)]));
    }
}

void LintModel::ForEachWord(const LintItem& item, const std::function<void(std::size_t)>& show) const {
    const bool isNumber = item.meaning == Meaning::kNumber || item.meaning == Meaning::kSigned;
    if (isNumber || item.meaning == Meaning::kValue) show(0);
    ForEachOperand(item, [&](std::size_t position, Role role) {
        const bool isWord = role == Role::kOperand || role == Role::kNumber;
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
