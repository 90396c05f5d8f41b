#include "finding_review.h"

#include <algorithm>
#include <cstddef>

#include "failure.h"
#include "suggestion.h"

namespace zek::tool {
namespace {

constexpr char kUnused[] = "L001";

bool IsError(const std::string& code) {
    const CodeRow* const row = RowOfCode(code);
    return row && row->level == Level::kError;
}

bool IsAboutComments(const std::string& code) {
    const CodeGroup* const group = GroupOfCode(code);
    return group && group->origin == Origin::kCommand;
}

/// The text of a finding of the command's own, with the code that it is about.
Finding About(const Allowed& allowed, const char* code) {
    Finding finding;
    finding.code = code;
    finding.place = allowed.place;
    finding.message = Filled(code, {allowed.code, allowed.code});
    return finding;
}

constexpr std::size_t kRaisedRow = std::tuple_size_v<SeverityCounts>;

std::size_t RowOf(const std::string& code, Severity severity) {
    return severity == Severity::kError && !IsError(code) ? kRaisedRow : static_cast<std::size_t>(severity);
}
std::size_t RowOf(const Finding& finding) { return RowOf(finding.code, finding.severity); }

}  // namespace

std::string RequireCode(const std::string& code) {
    if (RowOfCode(code)) return code;
    const auto meant = NearestName(code, AllCodes());
    throw Failure(kUsageOrFiles, "there is no code " + code + (meant ? "; did you mean " + *meant + '?' : ""));
}

void Levels::Tell(const std::string& code, Told told) {
    if (IsError(RequireCode(code)) && told != Told::kRaise) {
        throw Failure(kUsageOrFiles, code + " is an error and stays one");
    }
    told_[code] = told;
}

void Levels::Warn(const std::string& code) { Tell(code, Told::kWarn); }
void Levels::Hide(const std::string& code) { Tell(code, Told::kHide); }
void Levels::Raise(const std::string& code) { Tell(code, Told::kRaise); }

std::optional<std::string> Levels::Shown(Origin origin) const {
    for (const auto& [code, told] : told_) {
        if (told != Told::kHide && GroupOfCode(code)->origin == origin) return code;
    }
    return std::nullopt;
}

std::optional<Severity> Levels::Of(const std::string& code) const {
    const auto told = told_.find(code);
    if (told != told_.end()) {
        if (told->second == Told::kHide) return std::nullopt;
        return told->second == Told::kRaise ? Severity::kError : Severity::kWarning;
    }
    const CodeRow* const row = RowOfCode(code);
    // A message of another version of the library.
    if (!row) return Severity::kNote;
    const Level level = row->level;
    if (level == Level::kError) return Severity::kError;
    if (level == Level::kWarning) return allRaised_ ? Severity::kError : Severity::kWarning;
    if (level == Level::kHidden && hiddenShown_) return Severity::kNote;
    return std::nullopt;
}

Review::Review(const Levels& levels, const std::vector<std::string>& paths, SourceText& text, std::size_t most)
    : levels_(levels), mainPath_(paths.empty() ? "" : paths.front()), comments_(paths, text), most_(most) {}

bool Review::Passes(Finding& finding) {
    const std::optional<Severity> severity = levels_.Of(finding.code);
    if (!severity || (!IsError(finding.code) && comments_.Allow(finding))) return false;
    failed_ |= IsError(finding.code);
    finding.severity = *severity;
    return true;
}

bool Review::CountOnly(const std::string& code) {
    const std::optional<Severity> severity = levels_.Of(code);
    if (!severity) return true;
    const std::size_t row = RowOf(code, *severity);
    if (before_ || keptOf_[row] < most_ || comments_.Name(code)) return false;
    failed_ |= IsError(code);
    ++counts_[row];
    return true;
}

void Review::Add(Finding finding) {
    if (!Passes(finding)) return;
    const std::size_t row = RowOf(finding);
    ++counts_[row];
    if (!before_ && keptOf_[row] >= most_) return;
    ++keptOf_[row];
    kept_.push_back(std::move(finding));
    // Not each time, since it sorts.
    if (keptOf_[row] >= 2 * most_) Cut();
}

void Review::Sort(const Before& before) {
    before_ = before;
    sorted_ = kept_.size();
}

void Review::SortNone() {
    Cut();
    before_ = nullptr;
}

void Review::Cut() {
    if (!before_) return;
    std::stable_sort(kept_.begin() + static_cast<std::ptrdiff_t>(sorted_), kept_.end(), before_);
    keptOf_ = {};
    std::erase_if(kept_, [&](const Finding& finding) { return ++keptOf_[RowOf(finding)] > most_; });
    for (std::size_t& count : keptOf_) count = std::min(count, most_);
}

SeverityCounts Review::CountLeft() const {
    SeverityCounts left = {};
    for (std::size_t row = 0; row < counts_.size(); ++row) {
        left[row == kRaisedRow ? static_cast<std::size_t>(Severity::kError) : row] += counts_[row] - keptOf_[row];
    }
    return left;
}

std::optional<Finding> Review::WrongWith(const Allowed& allowed, const std::set<Origin>& origins, bool failed) const {
    if (allowed.code.empty()) return About(allowed, "L004");
    const CodeGroup* const group = GroupOfCode(allowed.code);
    if (!group) {
        Finding finding = About(allowed, "L003");
        if (const auto meant = NearestName(allowed.code, AllCodes())) finding.fix = Fix{allowed.place, *meant};
        return finding;
    }
    if (IsError(allowed.code)) return About(allowed, "L002");
    if (allowed.used || failed || !origins.contains(group->origin) || !levels_.Wanted(allowed.code)) {
        return std::nullopt;
    }
    return About(allowed, kUnused);
}

void Review::AddComments(const std::set<Origin>& origins, std::vector<SharedAllow>* shared) {
    const bool failed = failed_;
    // Those that allow what is wrong with comments come last: only then is it known whether they were used.
    for (const bool aboutComments : {false, true}) {
        for (std::size_t i = 0; i < comments_.All().size(); ++i) {
            const Allowed& allowed = comments_.All()[i];
            if (IsAboutComments(allowed.code) != aboutComments) continue;
            std::optional<Finding> wrong = WrongWith(allowed, origins, failed);
            const bool isUnused = !wrong || wrong->code == kUnused;
            if (shared && isUnused && allowed.place.path != mainPath_) {
                Finding unused = About(allowed, kUnused);
                const bool idle = wrong && Passes(unused);
                shared->push_back({std::move(unused), idle});
            } else if (wrong) {
                Add(std::move(*wrong));
            }
        }
    }
}

}  // namespace zek::tool
