#include "jump_words.h"

#include <algorithm>

#include "zekcomp/value_shapes.h"

namespace zek::tool {
namespace {

bool IsOfClass(std::uint32_t word, std::uint32_t wordClass) { return (word & kIdClassMask) == wordClass; }

/// Whether a jump may name it: "VALUE_IPMI" and "VALUE" are keys that the kind declares.
bool IsFree(std::uint32_t value) { return IsOfClass(value, kIdValue) && value > kIdValue + 1; }

bool JumpsToNumber(ImageView::Entry entry) {
    const ValueShape* const shape = entry.ValueType() ? ShapeOf(*entry.ValueType()) : nullptr;
    return shape && shape->operands.starts_with(kValueNameOperand) && entry.WordCount() > 1 &&
           IsOfClass(entry.Word(1), kIdNumber);
}

}  // namespace

JumpWords::JumpWords(const ImageView& view) : view_(view) {
    std::vector<Choice> choices = Choices(view);
    // Those first that can choose the least.
    std::stable_sort(choices.begin(), choices.end(),
                     [](const Choice& a, const Choice& b) { return a.values.size() < b.values.size(); });
    for (const Choice& choice : choices) Choose(choice);
}

std::optional<std::string> JumpWords::WordFor(std::uint32_t section, std::uint32_t number) const {
    const auto found = chosen_.find({section, number});
    if (found == chosen_.end()) return std::nullopt;
    return "VALUE_" + std::string(view_.Resolve(found->second).text);
}

/// The values that operands name: none of these is a defined word.
std::set<std::uint32_t> JumpWords::NamedValues(const ImageView& view) {
    std::set<std::uint32_t> named;
    for (const ImageView::Section section : view.AllSections()) {
        for (const ImageView::Entry entry : section.AllEntries()) {
            for (unsigned i = 1; i < entry.WordCount(); ++i) {
                if (IsOfClass(entry.Word(i), kIdValue)) named.insert(entry.Word(i));
            }
        }
    }
    return named;
}

std::vector<JumpWords::Choice> JumpWords::Choices(const ImageView& view) {
    std::vector<Choice> choices;
    std::optional<std::set<std::uint32_t>> named;  // looked for where there is something to choose
    for (const ImageView::Section section : view.SectionsOf(kImageAction)) {
        std::set<std::uint32_t> numbers;
        for (const ImageView::Entry entry : section.AllEntries()) {
            if (JumpsToNumber(entry)) numbers.insert(entry.Word(1));
        }
        if (numbers.empty()) continue;
        if (!named) named = NamedValues(view);
        std::vector<std::uint32_t> values;
        for (const ImageView::Entry entry : section.AllEntries()) {
            if (IsFree(entry.Id()) && !named->count(entry.Id())) values.push_back(entry.Id());
        }
        for (const std::uint32_t number : numbers) choices.push_back({{section.Index(), number}, values});
    }
    return choices;
}

void JumpWords::Choose(const Choice& choice) {
    const auto is = [&](bool isTaken) {
        return [this, &choice, isTaken](std::uint32_t value) {
            const auto taken = numbers_.find(value);
            return isTaken ? taken != numbers_.end() && taken->second == choice.jump.second : taken == numbers_.end();
        };
    };
    auto found = std::find_if(choice.values.begin(), choice.values.end(), is(true));
    if (found == choice.values.end()) found = std::find_if(choice.values.begin(), choice.values.end(), is(false));
    if (found == choice.values.end()) return;
    numbers_[*found] = choice.jump.second;
    chosen_[choice.jump] = *found;
}

}  // namespace zek::tool
