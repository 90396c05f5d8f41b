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
        for (const bool behind : {false, true}) {
            const std::string lost(Trimmed(behind ? part.after : part.before));
            if (lost.empty()) continue;
            Finding& finding = run.Add("L161", section, item, {lost, '\'' + std::string(part.text) + '\''});
            finding.place = run.Text().OutsideQuotes(*section.path, item.source->line, i, behind);
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
        // That items before the first section are lost is told as a whole.
        if (section->Kind().empty()) continue;
        for (const LintItem& item : section->items) {
            if (!item.source->value.empty() || !HasNoEquals(*section->path, item.source->line, run.Text())) continue;
            run.Add("L163", *section, item, {});
        }
    }
}

}  // namespace zek::tool
