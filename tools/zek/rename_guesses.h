/// Which section that is new a section that is gone probably is, by who refers to them. Relies on named_sections.h.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "named_sections.h"

namespace zek::tool {

/// Sections with the same content, such as groups below one parent, can only be told apart by their users: where the
/// sensor of the one is now a sensor of another, this is it. A guess says nothing of whether the sections are the same.
class RenameGuesses {
public:
    /// Sections are told by their positions in `gone` and `fresh`, which must outlive this.
    RenameGuesses(const std::vector<OpenSection>& gone, const std::vector<OpenSection>& fresh);

    /// Guesses by the sections that both images have, and by those that only one in each can be. What most users say
    /// counts.
    void GuessByUsers(const NamedSections& before, const NamedSections& after);
    /// Guesses that the one is the other, and so on for what they refer to. Does nothing where there is a guess for
    /// either, and where they differ in more than names.
    void Suppose(std::size_t gone, std::size_t fresh);
    void Clear();

    std::optional<std::size_t> Of(std::size_t gone) const { return freshOf_[gone]; }
    bool IsGuessed(std::size_t fresh) const { return guessed_[fresh]; }

private:
    using Pair = std::pair<std::size_t, std::size_t>;  // gone, fresh
    using Positions = std::map<NameOfKind, std::size_t>;
    using Votes = std::map<Pair, std::size_t>;

    static Positions PositionsOf(const std::vector<OpenSection>& sections);
    void VoteByBoth(const DescribedSection& before, const DescribedSection& after, Votes& votes) const;
    void VoteByUnique(Votes& votes);
    std::optional<Pair> PairOf(const NameOfKind& gone, const NameOfKind& fresh) const;
    /// Whether it is a guess now.
    bool Put(const Pair& pair);

    const std::vector<OpenSection>& gone_;
    const std::vector<OpenSection>& fresh_;
    Positions goneAt_;
    Positions freshAt_;
    std::vector<std::optional<std::size_t>> freshOf_;  // by position in gone_
    std::vector<bool> guessed_;                        // by position in fresh_
};

}  // namespace zek::tool
