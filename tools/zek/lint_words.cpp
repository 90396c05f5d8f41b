// Words that do not stand for what they seem to.
#include <set>

#include "lint_rules.h"

namespace zek::tool {

void FindWordsDefinedAgain(LintRun& run) {
    for (const auto& [word, definitions] : run.Model().Words()) {
        for (std::size_t i = 1; i < definitions.size(); ++i) {
            const Definition& earlier = definitions[i - 1];
            const Definition& later = definitions[i];
            if (earlier.value == later.value || earlier.item == later.item) continue;
            Finding& finding = run.Add("L141", *later.section, *later.item, {word, std::to_string(later.value)});
            finding.notes.push_back({Filled(NoteText::kWas, {std::to_string(earlier.value)}),
                                     run.KeyPlace(*earlier.section, *earlier.item)});
        }
    }
}

void FindWordsUsedBefore(LintRun& run) {
    const LintModel& model = run.Model();
    const std::vector<const LintSection*>& sections = model.Sections();
    std::set<std::string> told;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        for (const LintItem& item : sections[i]->items) {
            model.ForEachWord(item, [&](std::size_t position) {
                const std::string word = item.Part(position);
                if (!model.Defined(word) || model.IsDefinedBefore(word, i) || !told.insert(word).second) return;
                run.NoteWord(run.Add("L142", *sections[i], item, position, {word}), word);
            });
        }
    }
}

void FindUnknownConditions(LintRun& run) {
    const std::vector<const LintSection*>& sections = run.Model().Sections();
    const NearNames words(run.Model().WordNames());
    std::set<const LintItem*> told;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (sections[i]->Kind() != "IFDEF" || sections[i]->items.empty()) continue;
        const LintItem& condition = sections[i]->items.front();
        const std::string word = condition.Part(0);
        if (run.Model().IsDefinedBefore(word, i) || !told.insert(&condition).second) continue;
        Finding& finding = run.Add("L143", *sections[i], condition, 0, {word});
        run.NoteWord(finding, word);
        run.Suggest(finding, words, word);
    }
}

}  // namespace zek::tool
