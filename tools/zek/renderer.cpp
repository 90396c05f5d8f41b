#include "renderer.h"

#include <algorithm>

#include "printable.h"

namespace zek::tool {

std::size_t SourceFindings::Count(Severity severity) const {
    const auto isOne = [&](const Finding& finding) { return finding.severity == severity; };
    return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(), isOne)) +
           left[static_cast<std::size_t>(severity)];
}

std::string SourceFindings::TellLeft() const {
    const std::string counted = CountedBySeverity(left);
    return counted.empty() ? counted : "not shown: " + counted + " (--max-findings)";
}

std::string CountedBySeverity(const SeverityCounts& counts) {
    constexpr struct {
        Severity severity;
        const char* one;
        const char* more;
    } kRows[] = {{Severity::kError, "error", "errors"},
                 {Severity::kWarning, "warning", "warnings"},
                 {Severity::kNote, "note", "notes"}};
    std::string counted;
    for (const auto& row : kRows) {
        const std::size_t count = counts[static_cast<std::size_t>(row.severity)];
        if (count > 0) counted += (counted.empty() ? "" : ", ") + Counted(count, row.one, row.more);
    }
    return counted;
}

const std::vector<FormatRow> kFormats = {
    {"text", TextRenderer, false},
    {"json", [](const Screen&) { return JsonRenderer(); }, true},
    {"sarif", [](const Screen&) { return SarifRenderer(); }, true},
    {"github", [](const Screen&) { return GithubRenderer(); }, true},
};

}  // namespace zek::tool
