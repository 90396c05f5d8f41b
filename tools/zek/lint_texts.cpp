// What is lost when a text is cut into items and sub-strings.
#include "lint_rules.h"
#include "source_line.h"

namespace zek::tool {
namespace {

/// Calls with every sub-string.
template <typename Show>
void ForEachPart(const LintRun& run, Show show) {
    for (const auto& section : run.Model().Written()) {
        for (const LintItem& item : section->items) {
            for (std::size_t i = 0; i < item.parts.size(); ++i) show(*section, item, i, item.parts[i]);
        }
    }
}

/// Whether a line and those joined to it are a key as a whole.
bool HasNoEquals(const std::string& path, unsigned line, SourceText& text) {
    LineParts parts = PartsOf(text.Line(path, line));
    if (parts.text.empty() || parts.KeyEnd() != std::string_view::npos) return false;
    while (parts.continues) {
        parts = PartsOf(text.Line(path, ++line));
        if (parts.text.find('=') != std::string_view::npos) return false;
    }
    return true;
}

}  // namespace

void FindTextOutsideQuotes(LintRun& run) {
    ForEachPart(run, [&](const LintSection& section, const LintItem& item, std::size_t i, const CutText& part) {
        for (const std::string_view lost : {Trimmed(part.before), Trimmed(part.after)}) {
            if (!lost.empty()) run.Add("L161", section, item, i, {std::string(lost), std::string(part.text)});
        }
    });
}

void FindOpenQuotes(LintRun& run) {
    ForEachPart(run, [&](const LintSection& section, const LintItem& item, std::size_t i, const CutText& part) {
        if (part.open) run.Add("L162", section, item, i, {});
    });
}

void FindItemsWithoutEquals(LintRun& run) {
    for (const auto& section : run.Model().Written()) {
        for (const LintItem& item : section->items) {
            if (!item.source->value.empty() || !HasNoEquals(*section->path, item.source->line, run.Text())) continue;
            run.Add("L163", *section, item, {});
        }
    }
}

}  // namespace zek::tool
