/// What compiles but does not do what its author thinks: the rules of `zek check`, in one table. Relies on
/// lint_model.h for the source and on code_table.h for what there is to say of each code.
#pragma once

#include <initializer_list>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "finding.h"
#include "finding_review.h"
#include "lint_model.h"
#include "source_text.h"
#include "suggestion.h"

namespace zek::tool {

/// What a rule looks at, and where it reports.
class LintRun {
public:
    /// Everything must outlive this.
    LintRun(const LintModel& source, SourceText& text, const Levels& levels, bool amongOthers, Review& review);

    const LintModel& Model() const { return model_; }
    SourceText& Text() const { return text_; }
    /// Whether findings of another rule are shown, so that this one need not tell the same.
    bool Tells(const char* code) const { return levels_.Wanted(code); }
    /// Whether a file is read by this source alone, as far as that can be told: it is the main source, or stands in its
    /// folder or below while no other source is checked in the same run or stands beside this one. `path` is that of a
    /// section.
    bool IsOwn(const std::string& path) const;

    /// Adds a finding about a sub-string or, without position, about the key; `texts` fill the text of the code behind
    /// the section and the key, long ones shortened. It can be completed until the next one.
    Finding& Add(const char* code, const LintSection& section, const LintItem& item, std::size_t position,
                 std::initializer_list<std::string> texts);
    Finding& Add(const char* code, const LintSection& section, const LintItem& item,
                 std::initializer_list<std::string> texts);

    /// Notes where the source defines a word; nothing where it does not.
    void NoteWord(Finding& finding, const std::string& word) const;

    /// Suggests the nearest of these names in the place of what was written, which the finding marks.
    void Suggest(Finding& finding, const NearNames& names, const std::string& written);

    Place KeyPlace(const LintSection& section, const LintItem& item) const;

    /// The last finding is complete.
    void Finish();

private:
    const LintModel& model_;
    SourceText& text_;
    const Levels& levels_;
    bool amongOthers_;
    std::string folder_;   // of the main source
    std::string builtIn_;  // of what comes with the command
    mutable std::map<const std::string*, bool> own_;
    Review& review_;
    std::optional<Finding> last_;
    ComparisonsLeft left_;
};

struct LintRule {
    const char* code;
    const char* name;
    void (*find)(LintRun& run);
    bool needsSound;  ///< is not run where the source has errors
};

/// By rising code.
std::span<const LintRule> LintRules();

/// What the rules say of it: the first sentence of the cause of its code.
std::string AboutRule(const LintRule& rule);

struct LintScope {
    bool sound = false;                ///< the source has no errors
    bool amongOthers = false;          ///< other sources are checked in the same run
    std::set<std::string> words = {};  ///< that the command line defines
};

/// Gives the review what the rules find that are wanted, by file in the order of the reading, then by place. Nothing
/// with a parser library without hook, which does not tell what was read.
void Lint(const std::vector<SourceFile>& files, SourceIndex& index, SourceText& text, const Levels& levels,
          const LintScope& scope, Review& review);

}  // namespace zek::tool
