#include "renderer.h"

#include <algorithm>

namespace zek::tool {

std::size_t SourceFindings::Count(Severity severity) const {
    const auto isOne = [&](const Finding& finding) { return finding.severity == severity; };
    return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(), isOne));
}

const std::vector<FormatRow> kFormats = {
    {"text", TextRenderer, false},
    {"json", [](const Screen&) { return JsonRenderer(); }, true},
    {"sarif", [](const Screen&) { return SarifRenderer(); }, true},
    {"github", [](const Screen&) { return GithubRenderer(); }, true},
};

}  // namespace zek::tool
