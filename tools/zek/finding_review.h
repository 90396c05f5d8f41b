/// What is made of findings before they are shown: the command line raises, lowers or leaves out codes, and comments of
/// the source allow findings. Relies on code_table.h and on the comments of the sources (source_text.h).
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "allow_comments.h"
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

/// A comment of an included file, which may serve another source of the run.
struct SharedAllow {
    Finding unused;     ///< what there is to tell where no source needs it
    bool idle = false;  ///< this one does not
};

/// How many findings of each severity there are.
using SeverityCounts = std::array<std::size_t, 3>;

/// So many findings of each severity are shown of one source where nobody says otherwise.
inline constexpr std::size_t kMostFindings = 1000;

/// Takes away what is hidden or allowed by a comment `; zek: allow CODE` on its line or above it (the comment alone on
/// its line; several codes with commas between them), gives each of the other findings its severity and counts them,
/// keeps the first ones of each severity, errors and what was raised to errors each by themselves, and adds what is
/// wrong with such comments.
class Review {
public:
    using Before = std::function<bool(const Finding&, const Finding&)>;

    /// `paths` are the files whose comments count; a file may be there several times. At most `most` findings of each
    /// severity are kept. Levels and text must outlive this.
    Review(const Levels& levels, const std::vector<std::string>& paths, SourceText& text, std::size_t most);

    /// For what gives rise to very many: true where a finding of that code is not kept, wherever it stands, and need
    /// not be made; it counts.
    bool CountOnly(const std::string& code);
    /// The findings that are kept stand in the order in which they come.
    void Add(Finding finding);
    /// Those that come from here on until SortNone stand in this order, behind those that came before.
    void Sort(const Before& before);
    void SortNone();

    /// Those so far.
    std::vector<Finding>& Kept() { return kept_; }
    /// Of each severity, how many were not kept.
    SeverityCounts CountLeft() const;

    /// The last step: what is wrong with comments. An allowed code of an origin that was not looked for may well find
    /// nothing. With `shared`, what allows nothing in a file behind the first path is not told but stored there, along
    /// with what allows something.
    void AddComments(const std::set<Origin>& origins, std::vector<SharedAllow>* shared);

private:
    bool Passes(Finding& finding);
    std::optional<Finding> WrongWith(const Allowed& allowed, const std::set<Origin>& origins, bool failed) const;
    /// Takes away what is too much of each severity, once the last ones are in order.
    void Cut();

    const Levels& levels_;
    std::string mainPath_;
    AllowComments comments_;
    std::size_t most_;
    bool failed_ = false;  // there are errors that nobody asked for
    std::vector<Finding> kept_;
    /// By severity, with a row of its own behind for what was raised to an error, lest it hides true ones.
    using RowCounts = std::array<std::size_t, std::tuple_size_v<SeverityCounts> + 1>;
    RowCounts counts_ = {};
    RowCounts keptOf_ = {};
    Before before_;
    std::size_t sorted_ = 0;  // where those begin in kept_ that are sorted now
};

}  // namespace zek::tool
