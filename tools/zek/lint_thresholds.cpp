// Thresholds that are not in the order of what they mean.
#include <array>

#include "lint_rules.h"

namespace zek::tool {

void FindThresholdsOutOfOrder(LintRun& run) {
    constexpr std::array<std::string_view, 4> kRising = {"THRESHOLD_FL", "THRESHOLD_WL", "THRESHOLD_WH",
                                                         "THRESHOLD_FH"};
    for (const auto& section : run.Model().Written()) {
        if (section->Kind() != "SENSOR") continue;
        const LintItem* below = nullptr;
        for (const std::string_view key : kRising) {
            const LintItem* const item = section->Find(key);
            const std::optional<unsigned> value = item ? run.Model().ValueOf(item->Part(0)) : std::nullopt;
            if (!value) continue;
            // The bits are those of a number with sign.
            if (below && static_cast<int>(*value) < static_cast<int>(*run.Model().ValueOf(below->Part(0)))) {
                Finding& finding =
                    run.Add("L121", *section, *item, 0, {item->Part(0), below->source->key, below->Part(0)});
                finding.notes.push_back({Filled(NoteText::kOtherThreshold), run.KeyPlace(*section, *below)});
            }
            below = item;
        }
    }
}

}  // namespace zek::tool
