// Numbers that do not count as they are written.
#include "lint_rules.h"

namespace zek::tool {
namespace {

constexpr std::size_t kInKey = static_cast<std::size_t>(-1);
constexpr unsigned kHighestByte = 255;

/// A text that the compiler takes for a number.
struct FoundNumber {
    const LintSection& section;
    const LintItem& item;
    std::size_t position;  ///< of the sub-string, or kInKey
    std::string text;      ///< as it is written
    WrittenNumber number;
    bool hasNoSign;  ///< where it stands numbers have none
    std::string counts;
};

using ShowNumber = std::function<void(const FoundNumber&)>;

/// The numbers of one item.
class NumbersOf {
public:
    NumbersOf(const LintModel& model, const LintSection& section, const LintItem& item, const ShowNumber& show)
        : model_(model), section_(section), item_(item), show_(show) {}

    void Run() const {
        const Meaning meaning = item_.meaning;
        if (meaning == Meaning::kRow) RowKey();
        if (meaning == Meaning::kRow) Number(0, item_.Part(0), true);
        for (std::size_t i = 0; meaning == Meaning::kList && i < item_.parts.size(); ++i)
            Number(i, item_.Part(i), true);
        const bool isKey = meaning == Meaning::kNumber || meaning == Meaning::kSigned || meaning == Meaning::kWord;
        // A word goes before a number there.
        if (isKey && !Word(0, meaning == Meaning::kNumber)) Number(0, item_.Part(0), meaning == Meaning::kNumber);
        model_.ForEachOperand(item_, [&](std::size_t position, Operand kind) { OperandAt(position, kind); });
    }

private:
    bool Number(std::size_t position, const std::string& text, bool hasNoSign, const std::string& before = {}) const {
        const std::optional<WrittenNumber> number = WrittenNumberIn(text);
        if (!number) return false;
        // Of the value of a row a byte counts.
        const bool isByte = item_.meaning == Meaning::kRow && position != kInKey;
        const unsigned counts = isByte ? number->value & kHighestByte : number->value;
        show_({section_, item_, position, before + text, *number, hasNoSign, before + std::to_string(counts)});
        return true;
    }

    /// A word that was given a negative number.
    bool Word(std::size_t position, bool hasNoSign) const {
        const std::string text = item_.Part(position);
        const Definition* const word = model_.Defined(text);
        if (word && word->negative) {
            WrittenNumber number;
            number.value = word->value;
            number.negative = true;
            show_({section_, item_, position, text, number, hasNoSign, std::to_string(word->value)});
        }
        return model_.WordValue(text).has_value();
    }

    void RowKey() const {
        const std::string& key = item_.source->key;
        const std::size_t point = std::min(key.find('.'), key.size());
        Number(kInKey, key.substr(0, point), true);
        if (point < key.size()) Number(kInKey, key.substr(point + 1), true);
    }

    void OperandAt(std::size_t position, Operand kind) const {
        if (kind != kReference && kind != kNumberOperand) return;
        const std::string text = item_.Part(position);
        if (Number(position, text, kind == kNumberOperand) || Word(position, kind == kNumberOperand)) return;
        if (IsArgumentName(text)) Number(position, text.substr(3), true, "ARG");
    }

    const LintModel& model_;
    const LintSection& section_;
    const LintItem& item_;
    const ShowNumber& show_;
};

void ForEachNumber(const LintModel& model, const ShowNumber& show) {
    for (const auto& section : model.Written()) {
        for (const LintItem& item : section->items) NumbersOf(model, *section, item, show).Run();
    }
}

Finding& AddNumber(const char* code, const FoundNumber& found, const std::string& counts, LintRun& run) {
    return run.Add(code, found.section, found.item, found.position, {found.text, counts});
}

/// Whether the image takes it for nothing and L103 tells so; not in a row, of which a byte counts, nor behind ARG.
bool IsToldAsNone(const FoundNumber& found, const LintRun& run) {
    if (found.number.value != kNumberForNone || found.item.meaning == Meaning::kRow) return false;
    return run.Tells("L103") && (WrittenNumberIn(found.text) || run.Model().WordValue(found.text));
}

/// Whether the rule of what stands behind numbers, or of those that do not fit, tells what counts of it.
bool IsToldOtherwise(const WrittenNumber& number, const LintRun& run) {
    return number.negative || (number.hasTextBehind && run.Tells("L111")) || (number.wrapped && run.Tells("L112"));
}

}  // namespace

void FindTextBehindNumbers(LintRun& run) {
    ForEachNumber(run.Model(), [&](const FoundNumber& found) {
        if (found.number.hasTextBehind) AddNumber("L111", found, found.counts, run);
    });
}

void FindWrappedNumbers(LintRun& run) {
    ForEachNumber(run.Model(), [&](const FoundNumber& found) {
        if (found.number.wrapped) AddNumber("L112", found, found.counts, run);
    });
}

void FindNegativeNumbers(LintRun& run) {
    ForEachNumber(run.Model(), [&](const FoundNumber& found) {
        if (!found.number.negative || !found.hasNoSign || IsToldAsNone(found, run)) return;
        Finding& finding = AddNumber("L113", found, found.counts, run);
        if (!WrittenNumberIn(found.text)) run.NoteWord(finding, found.text);
    });
}

void FindRowsAboveByte(LintRun& run) {
    ForEachNumber(run.Model(), [&](const FoundNumber& found) {
        if (found.item.meaning != Meaning::kRow || found.position == kInKey) return;
        if (found.number.value <= kHighestByte || IsToldOtherwise(found.number, run)) return;
        AddNumber("L114", found, found.counts, run);
    });
}

}  // namespace zek::tool
