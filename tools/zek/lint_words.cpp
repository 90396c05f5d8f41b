// Words that do not stand for what they seem to.
#include "lint_rules.h"

namespace zek::tool {
namespace {

bool IsDefinedBefore(const LintModel& model, const std::string& word, std::size_t position) {
    const auto found = model.Words().find(word);
    // What the command line defines stands before everything.
    if (found == model.Words().end()) return model.WordValue(word).has_value();
    return found->second.front().position < position;
}

}  // namespace

void FindWordsDefinedAgain(LintRun& run) {
    for (const auto& [word, definitions] : run.Model().Words()) {
        for (std::size_t i = 1; i < definitions.size(); ++i) {
            const Definition& earlier = definitions[i - 1];
            const Definition& later = definitions[i];
            if (earlier.value == later.value || earlier.item == later.item) continue;
            Finding& finding = run.Add("L141", *later.section, *later.item, {word, std::to_string(later.value)});
            finding.notes.push_back(
                {"it was " + std::to_string(earlier.value) + " here", run.KeyPlace(*earlier.section, *earlier.item)});
        }
    }
}

void FindUnknownConditions(LintRun& run) {
    const std::vector<const LintSection*>& sections = run.Model().Sections();
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (sections[i]->Kind() != "IFDEF" || sections[i]->items.empty()) continue;
        const LintItem& condition = sections[i]->items.front();
        const std::string word = condition.Part(0);
        if (!IsDefinedBefore(run.Model(), word, i)) run.Add("L143", *sections[i], condition, 0, {word});
    }
}

}  // namespace zek::tool
