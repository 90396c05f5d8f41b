// Numbers that do not count as they are written.
#include "lint_rules.h"

namespace zek::tool {
namespace {

/// Calls with every sub-string that the compiler takes for a number: section, item, position, text, number, and whether
/// it has to be without sign.
template <typename Show>
void ForEachNumber(const LintRun& run, Show show) {
    const LintModel& model = run.Model();
    for (const auto& section : model.Written()) {
        for (const LintItem& item : section->items) {
            const auto tell = [&](std::size_t position, bool hasNoSign) {
                const std::string text = item.Part(position);
                const std::optional<WrittenNumber> number = WrittenNumberIn(text);
                if (number) show(*section, item, position, text, *number, hasNoSign);
            };
            const Meaning meaning = item.meaning;
            const bool isKey = meaning == Meaning::kNumber || meaning == Meaning::kSigned || meaning == Meaning::kWord;
            // A word goes before a number there.
            if (isKey && !model.WordValue(item.Part(0))) tell(0, meaning == Meaning::kNumber);
            if (meaning == Meaning::kRow) tell(0, true);
            for (std::size_t i = 0; meaning == Meaning::kList && i < item.parts.size(); ++i) tell(i, true);
            model.ForEachOperand(item, [&](std::size_t position, Role role) {
                if (role == Role::kOperand || role == Role::kNumber) tell(position, role == Role::kNumber);
            });
        }
    }
}

}  // namespace

void FindTextBehindNumbers(LintRun& run) {
    ForEachNumber(run, [&](const LintSection& section, const LintItem& item, std::size_t position,
                           const std::string& text, const WrittenNumber& number, bool) {
        if (number.hasTextBehind) run.Add("L111", section, item, position, {text, std::to_string(number.value)});
    });
}

void FindWrappedNumbers(LintRun& run) {
    ForEachNumber(run, [&](const LintSection& section, const LintItem& item, std::size_t position,
                           const std::string& text, const WrittenNumber& number, bool) {
        if (number.wrapped) run.Add("L112", section, item, position, {text, std::to_string(number.value)});
    });
}

void FindNegativeNumbers(LintRun& run) {
    ForEachNumber(run, [&](const LintSection& section, const LintItem& item, std::size_t position,
                           const std::string& text, const WrittenNumber& number, bool hasNoSign) {
        if (number.negative && hasNoSign) {
            run.Add("L113", section, item, position, {text, std::to_string(number.value)});
        }
    });
}

}  // namespace zek::tool
