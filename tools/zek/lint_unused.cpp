// What is given a name and is not used by it.
#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "lint_rules.h"

namespace zek::tool {
namespace {

/// Who uses the names of one kind.
class Uses {
public:
    void Add(const std::string& name, const void* user) {
        const auto [known, isNew] = users_.try_emplace(name, user);
        if (!isNew && known->second != user) known->second = nullptr;
    }
    bool HasBut(const std::string& name, const void* self) const {
        const auto known = users_.find(name);
        return known != users_.end() && known->second != self;
    }

private:
    std::map<std::string, const void*> users_;  // null: several
};

/// What operands of a kind name, each section being a user.
Uses UsesBySections(const LintModel& model, Operand wanted) {
    Uses uses;
    for (const auto& section : model.Written()) {
        for (const LintItem& item : section->items) {
            model.ForEachOperand(item, [&](std::size_t position, Operand kind) {
                if (kind == wanted) uses.Add(item.Part(position), section.get());
            });
        }
    }
    return uses;
}

/// The sections of a kind whose names no other source can use.
template <typename Show>
void ForEachOwn(const LintRun& run, std::string_view kind, Show show) {
    for (const auto& section : run.Model().Written()) {
        if (section->Kind() == kind && run.IsOwn(*section->path)) show(*section);
    }
}

void FindUnusedSections(const char* code, std::string_view kind, Operand wanted, LintRun& run) {
    const Uses uses = UsesBySections(run.Model(), wanted);
    ForEachOwn(run, kind, [&](const LintSection& section) {
        const LintItem* const name = section.Find("NAME");
        // What it answers to an IPMI request is asked for from outside.
        if (!name || section.Find("VALUE_IPMI") || uses.HasBut(name->Part(0), &section)) return;
        run.Add(code, section, *name, 0, {name->Part(0)});
    });
}

/// The sub-strings that name a word, or were to name one: where only a number counts another rule tells of it.
Uses UsesOfWords(const LintModel& model) {
    Uses uses;
    for (const auto& section : model.Written()) {
        for (const LintItem& item : section->items) {
            const bool isText = item.meaning == Meaning::kText || item.meaning == Meaning::kIgnored;
            if (isText && section->Kind() != "IFDEF") continue;
            for (std::size_t i = 0; i < item.parts.size(); ++i) {
                if (model.Defined(item.Part(i))) uses.Add(item.Part(i), &item);
            }
        }
    }
    return uses;
}

void FindUnusedStepsOf(const LintSection& action, LintRun& run) {
    Uses uses;
    for (const LintItem& item : action.items) {
        run.Model().ForEachOperand(item, [&](std::size_t position, Operand) {
            if (IsStepName(item.Part(position))) uses.Add(item.Part(position), &item);
        });
    }
    for (const LintItem& item : action.items) {
        const std::string& key = item.source->key;
        if (!IsStepName(key) || key == "VALUE_IPMI" || run.Model().Acts(item) || uses.HasBut(key, &item)) continue;
        run.Add("L134", action, item, {});
    }
}

}  // namespace

void FindUnusedActions(LintRun& run) { FindUnusedSections("L131", "ACTION", kActionOperand, run); }
void FindUnusedTables(LintRun& run) { FindUnusedSections("L132", "TABLE", kTableOperand, run); }

void FindUnusedGlobals(LintRun& run) {
    Uses uses;
    for (const auto& section : run.Model().Written()) {
        for (const LintItem& item : section->items) {
            run.Model().ForEachOperand(item, [&](std::size_t position, Operand) {
                if (IsGlobalName(item.Part(position))) uses.Add(item.Part(position), &item);
            });
        }
    }
    ForEachOwn(run, "GLOBAL", [&](const LintSection& section) {
        for (const LintItem& item : section.items) {
            if (!uses.HasBut(item.source->key, &item)) run.Add("L133", section, item, {});
        }
    });
}

void FindUnusedSteps(LintRun& run) {
    ForEachOwn(run, "ACTION", [&](const LintSection& action) { FindUnusedStepsOf(action, run); });
}

void FindUnusedWords(LintRun& run) {
    const Uses uses = UsesOfWords(run.Model());
    std::map<std::string, std::vector<std::pair<const LintSection*, const LintItem*>>> own;  // by the word
    for (const auto& section : run.Model().Written()) {
        if (!run.IsOwn(*section->path)) continue;
        for (const LintItem& item : section->items) {
            if (item.meaning == Meaning::kWord) own[item.source->key].emplace_back(section.get(), &item);
        }
    }
    for (const auto& [word, items] : own) {
        const auto isOnlyUser = [&](const auto& defined) { return !uses.HasBut(word, defined.second); };
        if (std::none_of(items.begin(), items.end(), isOnlyUser)) continue;
        Finding& finding = run.Add("L135", *items[0].first, *items[0].second, {word});
        for (std::size_t i = 1; i < items.size(); ++i) {
            finding.others.push_back(run.KeyPlace(*items[i].first, *items[i].second));
        }
        const auto note = [&](std::size_t i) { return Note{Filled(NoteText::kDefinedToo), finding.others[i]}; };
        AddNotes(finding, items.size() - 1, note, NoteText::kMoreBehind);
    }
}

}  // namespace zek::tool
