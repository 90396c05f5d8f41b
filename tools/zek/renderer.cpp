#include "renderer.h"

#include <algorithm>

namespace zek::tool {

std::size_t SourceFindings::Count(Severity severity) const {
    const auto isOne = [&](const Finding& finding) { return finding.severity == severity; };
    return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(), isOne));
}

const std::vector<FormatRow> kFormats = {
    {"text", TextRenderer, false},
    {"json", [](bool) { return JsonRenderer(); }, true},
    {"sarif", [](bool) { return SarifRenderer(); }, true},
    {"github", [](bool) { return GithubRenderer(); }, true},
};

}  // namespace zek::tool
