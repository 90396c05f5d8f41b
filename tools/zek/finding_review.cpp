#include "finding_review.h"

#include <algorithm>

#include "allow_comments.h"
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

/// What is wrong with a comment; nothing where it does its work or there is reason to leave it.
std::optional<Finding> WrongWith(const Allowed& allowed, const Levels& levels, const ReviewScope& scope, bool failed) {
    if (allowed.code.empty()) return About(allowed, "L004");
    const CodeGroup* const group = GroupOfCode(allowed.code);
    if (!group) {
        Finding finding = About(allowed, "L003");
        if (const auto meant = NearestName(allowed.code, AllCodes())) finding.fix = Fix{allowed.place, *meant};
        return finding;
    }
    if (IsError(allowed.code)) return About(allowed, "L002");
    if (allowed.used || failed || !scope.origins.contains(group->origin) || !levels.Wanted(allowed.code)) {
        return std::nullopt;
    }
    return About(allowed, kUnused);
}

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

std::vector<Finding> Reviewed(std::vector<Finding> findings, const Levels& levels, const ReviewScope& scope,
                              SourceText& text, std::vector<SharedAllow>* shared) {
    AllowComments comments(scope.paths, text);
    bool failed = false;
    std::vector<Finding> kept;
    const auto isKept = [&](Finding& finding) {
        const std::optional<Severity> severity = levels.Of(finding.code);
        if (!severity || (!IsError(finding.code) && comments.Allow(finding))) return false;
        failed |= IsError(finding.code);
        finding.severity = *severity;
        return true;
    };
    const auto keep = [&](Finding&& finding) {
        if (isKept(finding)) kept.push_back(std::move(finding));
    };
    for (Finding& finding : findings) keep(std::move(finding));
    const bool unfinished = failed;
    // Those that allow what is wrong with comments come last: only then is it known whether they were used.
    for (const bool aboutComments : {false, true}) {
        for (std::size_t i = 0; i < comments.All().size(); ++i) {
            const Allowed& allowed = comments.All()[i];
            if (IsAboutComments(allowed.code) != aboutComments) continue;
            std::optional<Finding> wrong = WrongWith(allowed, levels, scope, unfinished);
            const bool isUnused = !wrong || wrong->code == kUnused;
            if (shared && isUnused && allowed.place.path != scope.paths.front()) {
                Finding unused = About(allowed, kUnused);
                const bool idle = wrong && isKept(unused);
                shared->push_back({std::move(unused), idle});
            } else if (wrong) {
                keep(std::move(*wrong));
            }
        }
    }
    return kept;
}

}  // namespace zek::tool
