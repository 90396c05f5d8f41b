// What compiles, but does not reach the image, or reaches it as something else.
#include <set>
#include <vector>

#include "lint_rules.h"

namespace zek::tool {
namespace {

/// Calls with every section and item of a meaning, each once.
template <typename Show>
void ForEachItem(const LintRun& run, Meaning meaning, Show show) {
    for (const auto& section : run.Model().Written()) {
        for (const LintItem& item : section->items) {
            if (item.meaning == meaning) show(*section, item);
        }
    }
}

/// The names that the image numbers for P_ texts.
struct NumberedTexts {
    std::set<std::string> names = {};
    NearNames near;  ///< as keys
};

NumberedTexts NumberedTextsIn(const LintModel& model) {
    std::set<std::string> names;
    for (const auto& section : model.Written()) {
        const std::string& kind = section->Kind();
        const bool prefixed = kind == "SENSOR" || kind == "DEVICE" || kind == "SYSTEM";
        if (!prefixed && kind != "PROPERTY") continue;
        for (const LintItem& item : section->items) {
            const std::string& key = item.source->key;
            if (!prefixed) names.insert(key);
            if (prefixed && key.starts_with("P_")) names.insert(key.substr(2));
        }
    }
    std::vector<std::string> keys;
    for (const std::string& name : names) keys.push_back("P_" + name);
    return {std::move(names), NearNames(std::move(keys))};
}

/// What is lost of one section: the first text without a number, and all behind it.
void FindLostTextsOf(const LintSection& section, const NumberedTexts& numbered, LintRun& run) {
    Finding* finding = nullptr;
    std::vector<const LintItem*> behind;
    for (const LintItem& item : section.items) {
        const std::string& key = item.source->key;
        if (!key.starts_with("P_")) continue;
        if (finding) {
            behind.push_back(&item);
        } else if (!numbered.names.contains(key.substr(2))) {
            finding = &run.Add("L101", section, item, {key.substr(2)});
            run.Suggest(*finding, numbered.near, key);
        }
    }
    if (!finding) return;
    const auto note = [&](std::size_t i) {
        return Note{Filled(NoteText::kLost, {ShownText(behind[i]->source->key)}), run.KeyPlace(section, *behind[i])};
    };
    AddNotes(*finding, behind.size(), note, NoteText::kMoreBehind);
}

/// What an operand compiles to, where it is a number or a word.
std::optional<unsigned> Compiled(const LintModel& model, const std::string& operand) {
    const std::optional<WrittenNumber> number = WrittenNumberIn(operand);
    return number ? std::optional(number->value) : model.WordValue(operand);
}

void FindNoneAmongOperands(const LintSection& section, const LintItem& item, LintRun& run) {
    run.Model().ForEachOperand(item, [&](std::size_t position, Operand kind) {
        if (kind != kReference && kind != kNumberOperand) return;
        const std::string operand = item.Part(position);
        if (Compiled(run.Model(), operand) != kNumberForNone) return;
        Finding& finding = run.Add("L103", section, item, position, {operand});
        if (!WrittenNumberIn(operand)) run.NoteWord(finding, operand);
    });
}

/// Items of which the first sub-string has to be a number, and is a word or a text.
void FindByName(const char* code, const std::string& kind, std::initializer_list<std::string_view> keys, LintRun& run) {
    for (const auto& section : run.Model().Written()) {
        if (section->Kind() != kind) continue;
        for (const std::string_view key : keys) {
            const LintItem* const item = section->Find(key);
            if (item && !item->parts.empty() && !WrittenNumberIn(item->parts[0].text)) {
                run.NoteWord(run.Add(code, *section, *item, 0, {item->Part(0)}), item->Part(0));
            }
        }
    }
}

}  // namespace

void FindLostTexts(LintRun& run) {
    const NumberedTexts numbered = NumberedTextsIn(run.Model());
    for (const auto& section : run.Model().Written()) {
        if (section->Kind() == "TAVRGROUP") FindLostTextsOf(*section, numbered, run);
    }
}

void FindLostArguments(LintRun& run) {
    ForEachItem(run, Meaning::kRepeater, [&](const LintSection& section, const LintItem& item) {
        run.Model().ForEachOperand(item, [&](std::size_t position, Operand kind) {
            const std::string operand = item.Part(position);
            if (kind != kReference || !IsArgumentName(operand) || run.Model().WordValue(operand)) return;
            if (!WrittenNumberIn(operand.substr(3))) run.Add("L102", section, item, position, {operand});
        });
    });
}

void FindNumbersForNone(LintRun& run) {
    for (const Meaning meaning : {Meaning::kNumber, Meaning::kSigned}) {
        ForEachItem(run, meaning, [&](const LintSection& section, const LintItem& item) {
            if (run.Model().ValueOf(item.Part(0)) != kNumberForNone) return;
            run.NoteWord(run.Add("L103", section, item, 0, {item.Part(0)}), item.Part(0));
        });
    }
    ForEachItem(run, Meaning::kList, [&](const LintSection& section, const LintItem& item) {
        for (std::size_t i = 0; i < item.parts.size(); ++i) {
            const std::optional<WrittenNumber> number = WrittenNumberIn(item.parts[i].text);
            if (number && number->value == kNumberForNone) run.Add("L103", section, item, i, {item.Part(i)});
        }
    });
    for (const Meaning meaning : {Meaning::kValue, Meaning::kRepeater}) {
        ForEachItem(run, meaning, [&](const LintSection& section, const LintItem& item) {
            FindNoneAmongOperands(section, item, run);
        });
    }
}

void FindCountsByName(LintRun& run) {
    ForEachItem(run, Meaning::kRepeater, [&](const LintSection& section, const LintItem& item) {
        if (WrittenNumberIn(item.Part(0))) return;
        run.NoteWord(run.Add("L104", section, item, 0, {item.Part(0)}), item.Part(0));
    });
}

void FindSensorsByName(LintRun& run) {
    ForEachItem(run, Meaning::kList, [&](const LintSection& section, const LintItem& item) {
        for (std::size_t i = 0; i < item.parts.size(); ++i) {
            if (WrittenNumberIn(item.parts[i].text)) continue;
            run.NoteWord(run.Add("L105", section, item, i, {item.Part(i)}), item.Part(i));
        }
    });
}

void FindIdsByName(LintRun& run) {
    FindByName("L106", "SENSOR", {"ID"}, run);
    FindByName("L106", "TAVRGROUP", {"PID"}, run);
    FindByName("L106", "ACTION", {"ARGNUMBER"}, run);
}

void FindRowsByName(LintRun& run) {
    ForEachItem(run, Meaning::kRow, [&](const LintSection& section, const LintItem& item) {
        if (item.parts.empty() || WrittenNumberIn(item.parts[0].text)) return;
        run.NoteWord(run.Add("L107", section, item, 0, {item.Part(0)}), item.Part(0));
    });
}

void FindLostOperands(LintRun& run) {
    ForEachItem(run, Meaning::kValue, [&](const LintSection& section, const LintItem& item) {
        const std::optional<unsigned> type = run.Model().TypeOf(item);
        if (item.parts.size() < 2 || !type || *type == 0) return;
        bool any = false;
        run.Model().ForEachOperand(item, [&](std::size_t, Operand) { any = true; });
        if (!any) run.NoteWord(run.Add("L108", section, item, 1, {item.Part(0), std::to_string(*type)}), item.Part(0));
    });
}

}  // namespace zek::tool
