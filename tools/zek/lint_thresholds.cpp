// Thresholds that are not in the order of what they mean.
#include <array>
#include <cstdint>

#include "lint_rules.h"
#include "lint_text.h"

namespace zek::tool {
namespace {

/// A decimal number as it is written; the bits of others are those of a number with sign. Nothing for no number.
std::optional<std::int64_t> ThresholdIn(const LintModel& model, const std::string& text) {
    if (const std::optional<unsigned> word = model.WordValue(text)) return static_cast<int>(*word);
    const std::optional<WrittenNumber> number = WrittenNumberIn(text);
    if (!number) return std::nullopt;
    const bool isSigned = number->hexadecimal || number->negative;
    return isSigned ? std::int64_t{static_cast<int>(number->value)} : std::int64_t{number->value};
}

}  // namespace

void FindThresholdsOutOfOrder(LintRun& run) {
    constexpr std::array<std::string_view, 4> kRising = {"THRESHOLD_FL", "THRESHOLD_WL", "THRESHOLD_WH",
                                                         "THRESHOLD_FH"};
    for (const auto& section : run.Model().Written()) {
        if (section->Kind() != "SENSOR") continue;
        const LintItem* below = nullptr;
        std::int64_t belowValue = 0;
        for (const std::string_view key : kRising) {
            const LintItem* const item = section->Find(key);
            const auto value = item ? ThresholdIn(run.Model(), item->Part(0)) : std::nullopt;
            if (!value) continue;
            if (below && *value < belowValue) {
                Finding& finding =
                    run.Add("L121", *section, *item, 0, {item->Part(0), below->source->key, below->Part(0)});
                finding.notes.push_back({Filled(NoteText::kOtherThreshold), run.KeyPlace(*section, *below)});
            }
            below = item;
            belowValue = *value;
        }
    }
}

}  // namespace zek::tool
