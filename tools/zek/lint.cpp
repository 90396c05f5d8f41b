#include "lint.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <system_error>
#include <tuple>

#include "include_search.h"
#include "lint_rules.h"
#include "paths.h"

namespace zek::tool {
namespace {

constexpr LintRule kRules[] = {
    {"L101", "lost-text", FindLostTexts, true},
    {"L102", "lost-argument", FindLostArguments, true},
    {"L103", "number-for-none", FindNumbersForNone, true},
    {"L104", "count-by-name", FindCountsByName, true},
    {"L105", "sensor-by-name", FindSensorsByName, true},
    {"L106", "id-by-name", FindIdsByName, true},
    {"L107", "row-by-name", FindRowsByName, true},
    {"L108", "lost-operands", FindLostOperands, true},
    {"L111", "text-behind-number", FindTextBehindNumbers, true},
    {"L112", "wrapped-number", FindWrappedNumbers, true},
    {"L113", "negative-number", FindNegativeNumbers, true},
    {"L121", "threshold-order", FindThresholdsOutOfOrder, true},
    {"L141", "word-again", FindWordsDefinedAgain, true},
    {"L143", "unknown-condition", FindUnknownConditions, true},
    {"L151", "table-not-set", FindIncompleteFirstTable, true},
    {"L152", "table-inherits", FindIncompleteLaterTables, true},
    {"L161", "text-outside-quotes", FindTextOutsideQuotes, false},
    {"L162", "open-quote", FindOpenQuotes, false},
    {"L163", "no-equals-sign", FindItemsWithoutEquals, false},
};

/// The path without links, dots and a slash at its end, as far as it stands.
std::string Real(const std::string& path) {
    std::error_code failed;
    const std::filesystem::path real = std::filesystem::weakly_canonical(path.empty() ? "." : path, failed);
    return failed ? path : real.string();
}

bool IsBelow(const std::string& path, const std::string& folder) {
    return !folder.empty() && path.starts_with(folder.ends_with('/') ? folder : folder + '/');
}

std::string Filled(std::string_view format, const std::vector<std::string>& texts) {
    std::string filled;
    for (const std::string& text : texts) {
        const std::size_t at = format.find("%s");
        if (at == format.npos) break;
        filled.append(format.substr(0, at)).append(text);
        format.remove_prefix(at + 2);
    }
    return filled.append(format);
}

}  // namespace

LintRun::LintRun(const LintModel& source, SourceText& text, bool amongOthers)
    : model_(source), text_(text), amongOthers_(amongOthers), builtIn_(Real(BuiltInFolder())) {
    if (!source.Written().empty()) folder_ = FolderOf(Real(*source.Written().front()->path));
}

bool LintRun::IsOwn(const std::string& path) const {
    if (path == *model_.Written().front()->path) return true;
    const std::string real = Real(path);
    return !amongOthers_ && IsBelow(real, folder_) && !IsBelow(real, builtIn_);
}

Place LintRun::KeyPlace(const LintSection& section, const LintItem& item) const {
    return text_.Head(*section.path, item.source->line);
}

Finding& LintRun::Add(const char* code, const LintSection& section, const LintItem& item, std::size_t position,
                      std::initializer_list<std::string> texts) {
    Finding& finding = Add(code, section, item, texts);
    finding.place = text_.SubString(*section.path, item.source->line, position);
    return finding;
}

Finding& LintRun::Add(const char* code, const LintSection& section, const LintItem& item,
                      std::initializer_list<std::string> texts) {
    std::vector<std::string> all = {section.Kind(), item.source->key};
    all.insert(all.end(), texts);
    Finding finding;
    finding.code = code;
    finding.place = KeyPlace(section, item);
    finding.message = Filled(RowOfCode(code)->format, all);
    return findings_.emplace_back(std::move(finding));
}

std::span<const LintRule> LintRules() { return kRules; }

std::string AboutRule(const LintRule& rule) {
    const std::string cause = RowOfCode(rule.code)->cause;
    return cause.substr(0, std::min(cause.find(". "), cause.size() - 1) + 1);
}

std::vector<Finding> Lint(const std::vector<SourceFile>& files, SourceIndex& index, SourceText& text,
                          const Levels& levels, const LintScope& scope) {
    const LintModel model(files, index);
    LintRun run(model, text, scope.amongOthers);
    for (const LintRule& rule : kRules) {
        if (!model.Written().empty() && levels.Wanted(rule.code) && (scope.sound || !rule.needsSound)) rule.find(run);
    }
    std::vector<Finding> findings = run.Take();
    std::map<std::string, std::size_t> order;
    for (const SourceFile& file : files) order.try_emplace(file.path, order.size());
    const auto placed = [&](const Finding& finding) {
        return std::tuple(order[finding.place.path], finding.place.line, finding.place.column);
    };
    std::stable_sort(findings.begin(), findings.end(),
                     [&](const Finding& a, const Finding& b) { return placed(a) < placed(b); });
    return findings;
}

}  // namespace zek::tool
