#include "lint.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
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
    {"L109", "argument-of-none", FindArgumentsOfNone, true},
    {"L111", "text-behind-number", FindTextBehindNumbers, true},
    {"L112", "wrapped-number", FindWrappedNumbers, true},
    {"L113", "negative-number", FindNegativeNumbers, true},
    {"L114", "row-above-byte", FindRowsAboveByte, true},
    {"L121", "threshold-order", FindThresholdsOutOfOrder, true},
    {"L131", "unused-action", FindUnusedActions, true},
    {"L132", "unused-table", FindUnusedTables, true},
    {"L133", "unused-global", FindUnusedGlobals, true},
    {"L134", "unused-step", FindUnusedSteps, true},
    {"L135", "unused-word", FindUnusedWords, true},
    {"L141", "word-again", FindWordsDefinedAgain, true},
    {"L142", "word-used-before", FindWordsUsedBefore, true},
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

/// Whether a file that ends as the main source does stands beside it and is not read: perhaps another source, which
/// shares files with this one.
bool HasNeighbour(const std::vector<SourceFile>& files) {
    std::set<std::pair<dev_t, ino_t>> read;
    for (const SourceFile& file : files) read.emplace(file.device, file.inode);
    const std::filesystem::path main = files.front().path;
    const std::string folder = FolderOf(main);
    std::error_code failed;
    std::filesystem::directory_iterator entries(folder.empty() ? "." : folder, failed);
    for (const std::filesystem::directory_iterator end; !failed && entries != end; entries.increment(failed)) {
        if (!main.has_extension() || entries->path().extension() != main.extension()) continue;
        struct stat info {};
        if (stat(entries->path().c_str(), &info) != 0 || !S_ISREG(info.st_mode)) continue;
        if (!read.contains({info.st_dev, info.st_ino})) return true;
    }
    return false;
}

}  // namespace

LintRun::LintRun(const LintModel& source, SourceText& text, const Levels& levels, bool amongOthers, Review& review)
    : model_(source),
      text_(text),
      levels_(levels),
      amongOthers_(amongOthers),
      builtIn_(Real(BuiltInFolder())),
      review_(review) {
    if (!source.Written().empty()) folder_ = FolderOf(Real(*source.Written().front()->path));
}

bool LintRun::IsOwn(const std::string& path) const {
    const auto [known, isNew] = own_.try_emplace(&path);
    if (!isNew) return known->second;
    const std::string real = Real(path);
    const bool isAlone = !amongOthers_ && IsBelow(real, folder_) && !IsBelow(real, builtIn_);
    return known->second = isAlone || path == *model_.Written().front()->path;
}

void LintRun::NoteWord(Finding& finding, const std::string& word) const {
    const Definition* const definition = model_.Defined(word);
    if (definition)
        finding.notes.push_back({Filled(NoteText::kDefined), KeyPlace(*definition->section, *definition->item)});
}

void LintRun::Suggest(Finding& finding, const NearNames& names, const std::string& written) {
    const std::optional<std::string> meant = names.Nearest(written, left_);
    if (meant) finding.fix = Fix{finding.place, *meant};
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
    std::vector<std::string> all = {section.Kind(), ShownText(item.source->key)};
    std::transform(texts.begin(), texts.end(), std::back_inserter(all), ShownText);
    Finding finding;
    finding.code = code;
    finding.place = KeyPlace(section, item);
    finding.header = section.source->line;
    finding.message = Filled(code, all);
    Finish();
    return last_.emplace(std::move(finding));
}

void LintRun::Finish() {
    if (last_) review_.Add(std::move(*last_));
    last_.reset();
}

std::span<const LintRule> LintRules() { return kRules; }

std::string AboutRule(const LintRule& rule) {
    const std::string cause = RowOfCode(rule.code)->cause;
    return cause.substr(0, std::min(cause.find(". "), cause.size() - 1) + 1);
}

void Lint(const std::vector<SourceFile>& files, SourceIndex& index, SourceText& text, const Levels& levels,
          const LintScope& scope, Review& review) {
    const LintModel model(files, index, scope.words);
    if (model.Written().empty()) return;
    std::map<std::string, std::size_t> order;
    for (const SourceFile& file : files) order.try_emplace(file.path, order.size());
    const auto placed = [&](const Finding& finding) {
        return std::tuple(order[finding.place.path], finding.place.line, finding.place.column);
    };
    review.Sort([&](const Finding& a, const Finding& b) { return placed(a) < placed(b); });
    LintRun run(model, text, levels, scope.amongOthers || HasNeighbour(files), review);
    for (const LintRule& rule : kRules) {
        if (levels.Wanted(rule.code) && (scope.sound || !rule.needsSound)) rule.find(run);
    }
    run.Finish();
    review.SortNone();
}

}  // namespace zek::tool
