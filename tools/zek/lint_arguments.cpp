// Arguments that nobody passes.
#include <map>

#include "lint_rules.h"

namespace zek::tool {
namespace {

constexpr unsigned kMostNumbered = 0xFFFFFF;  ///< a higher number changes the class of the word in the image

/// The caller that passes the most arguments to an action.
struct Caller {
    unsigned passed = 0;
    const LintSection* section = nullptr;
    const LintItem* item = nullptr;
};
using Callers = std::map<std::string, Caller>;

Callers CallersIn(const LintModel& model) {
    Callers callers;
    for (const auto& section : model.Written()) {
        for (const LintItem& item : section->items) {
            model.ForEachOperand(item, [&](std::size_t position, Operand kind) {
                if (kind != kActionOperand) return;
                Caller& caller = callers[item.Part(position)];
                const unsigned passed = static_cast<unsigned>(item.parts.size() - position - 1);
                if (!caller.item || passed > caller.passed) caller = {passed, section.get(), &item};
            });
        }
    }
    return callers;
}

/// Which arguments there are in the values of a section.
struct Passed {
    unsigned first = 0;
    unsigned last = kMostNumbered;
    Note note = {};  ///< why
};

Passed PassedTo(const LintSection& section, const Callers& callers, const LintRun& run) {
    // Outside an action all but VT_CALL can have ARG0 alone, so that there it may well mean the first.
    if (section.Kind() == "GLOBAL") return {1, 0, {Filled(NoteText::kGlobalHasNone)}};
    if (section.Kind() != "ACTION")
        return {0, kMostNumbered, {Filled(NoteText::kHighestArgument, {std::to_string(kMostNumbered)})}};
    const auto caller = callers.find(section.TextOf("NAME"));
    // That nothing calls it is told by another rule.
    if (caller == callers.end()) return {1, kMostNumbered, {Filled(NoteText::kFirstArgument)}};
    const auto& [passed, from, item] = caller->second;
    return {1, passed, {Filled(NoteText::kPasses, {std::to_string(passed)}), run.KeyPlace(*from, *item)}};
}

}  // namespace

void FindArgumentsOfNone(LintRun& run) {
    const LintModel& model = run.Model();
    const Callers callers = CallersIn(model);
    for (const auto& section : model.Written()) {
        const Passed passed = PassedTo(*section, callers, run);
        for (const LintItem& item : section->items) {
            model.ForEachOperand(item, [&](std::size_t position, Operand kind) {
                const std::string operand = item.Part(position);
                const std::optional<WrittenNumber> number = ArgumentNumber(operand);
                if (kind != kReference || !number || model.WordValue(operand)) return;
                if (number->value >= passed.first && number->value <= passed.last) return;
                run.Add("L109", *section, item, position, {operand}).notes.push_back(passed.note);
            });
        }
    }
}

}  // namespace zek::tool
