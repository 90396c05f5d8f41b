/// Which sections of one image are those of another under new names. Relies on rename_guesses.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "rename_guesses.h"

namespace zek::tool {

/// A section that is gone and one that is new are the same where all but the NAME is, and where the names that they
/// refer to are the same or lead to such sections, too. Of several that are the same in this, the one that the same
/// sections refer to counts, then the order. It takes as long as there are names referred to, however they depend on
/// each other.
class Renames {
public:
    Renames(const NamedSections& before, const NamedSections& after);

    /// What a section is called now; null for one that was not renamed.
    const Identity* NewOf(const std::string& keyword, const Identity& identity) const;
    /// Whether another section was renamed to this one.
    bool IsNew(const std::string& keyword, const Identity& identity) const {
        return taken_.contains({keyword, identity});
    }
    /// A value of the image before, with the names as they are now.
    std::string Applied(const DescribedValue& value) const;

private:
    using Name = NameOfKind;
    using Place = PlaceOfKind;
    using Naming = OpenSection::Naming;

    /// One of the references of a section that is gone.
    struct User {
        std::size_t gone;
        std::size_t at;
    };
    struct Pair {
        std::size_t gone;
        std::size_t fresh;
    };
    using Pairs = std::vector<Pair>;
    /// New sections that are not taken.
    struct Waiting {
        std::vector<std::uint64_t> sums;                        // of each
        std::map<std::uint64_t, std::deque<std::size_t>> free;  // those that nobody is guessed to be, in their order
    };

    std::string NameNow(const Name& name) const;
    bool IsOpen(std::size_t gone) const { return !renamed_.contains(gone_[gone].place); }

    Waiting WaitingBy(const Naming& after) const;
    /// The new section that is the same, taken from those that wait: the guessed one where there is a guess, else the
    /// first that is free. Nothing where that is another.
    std::optional<Pair> Match(std::size_t gone, std::uint64_t sum, Waiting& waiting, const Naming& before,
                              const Naming& after) const;
    void FindInTurn();
    /// Stores which sections have changed by that.
    void Take(const Pair& pair, std::set<std::size_t>& changed);
    void FindTogether();
    Pairs PairsButForNames();
    void GuessInOrder(Waiting& waiting, const Naming& before);
    Pairs Consistent(const Pairs& pairs) const;

    std::vector<OpenSection> gone_;
    std::vector<OpenSection> fresh_;
    RenameGuesses guesses_;
    std::map<Name, std::vector<User>> users_;
    std::map<Place, Identity> renamed_;
    std::set<Place> taken_;
    std::map<Name, std::string> names_;  // by the name before
};

}  // namespace zek::tool
