/// What is made of findings before they are shown: the command line raises, lowers or leaves out codes, and comments of
/// the source allow findings. Relies on code_table.h and on the comments of the sources (source_text.h).
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "code_table.h"
#include "finding.h"
#include "source_text.h"

namespace zek::tool {

/// The code; throws Failure where there is none such.
std::string RequireCode(const std::string& code);

/// What the command line says of codes, in the order of the words: the last word about a code counts.
class Levels {
public:
    /// Each throws Failure for a code that there is not, and for an E code where it would be made less of.
    void Warn(const std::string& code);
    void Hide(const std::string& code);
    void Raise(const std::string& code);
    /// All warnings are errors, but those that were told by their code.
    void RaiseWarnings() { allRaised_ = true; }
    /// What is hidden because it says nothing new is shown as a note.
    void ShowHidden() { hiddenShown_ = true; }

    /// Nothing where it is not to be shown.
    std::optional<Severity> Of(const std::string& code) const;
    /// Whether a rule has to be run for its findings.
    bool Wanted(const std::string& code) const { return Of(code).has_value(); }

    /// A code of that origin that was told to be shown, or nothing.
    std::optional<std::string> Shown(Origin origin) const;

private:
    enum class Told { kWarn, kHide, kRaise };
    void Tell(const std::string& code, Told told);

    std::map<std::string, Told> told_;
    bool allRaised_ = false;
    bool hiddenShown_ = false;
};

/// What a run looks for and where.
struct ReviewScope {
    std::vector<std::string> paths;  ///< the files whose comments count; a file may be there several times
    std::set<Origin> origins;        ///< an allowed code of any other origin may well find nothing
};

/// A comment of an included file, which may serve another source of the run.
struct SharedAllow {
    Finding unused;     ///< what there is to tell where no source needs it
    bool idle = false;  ///< this one does not
};

/// Takes away what is hidden or allowed by a comment `; zek: allow CODE` on its line or above it (the comment alone on
/// its line; several codes with commas between them), gives each of the others its severity, and adds what is wrong
/// with such comments. The order stays. With `shared`, what allows nothing in a file behind the first path is not told
/// but stored there, along with what allows something.
std::vector<Finding> Reviewed(std::vector<Finding> findings, const Levels& levels, const ReviewScope& scope,
                              SourceText& text, std::vector<SharedAllow>* shared = nullptr);

}  // namespace zek::tool
