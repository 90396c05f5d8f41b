#include "rename_guesses.h"

#include <algorithm>
#include <string_view>

namespace zek::tool {
namespace {

NameOfKind NameIn(const DescribedValue& value, const DescribedValue::Reference& reference) {
    return {reference.keyword, value.text.substr(reference.at, reference.size)};
}

/// The only section of each shape.
std::map<std::uint64_t, std::optional<std::size_t>> OnlyOnes(const std::vector<OpenSection>& sections) {
    std::map<std::uint64_t, std::optional<std::size_t>> only;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        const auto [row, isFirst] = only.emplace(sections[i].shape, i);
        if (!isFirst) row->second.reset();
    }
    return only;
}

}  // namespace

RenameGuesses::RenameGuesses(const std::vector<OpenSection>& gone, const std::vector<OpenSection>& fresh)
    : gone_(gone), fresh_(fresh), goneAt_(PositionsOf(gone)), freshAt_(PositionsOf(fresh)) {
    Clear();
}

void RenameGuesses::Clear() {
    freshOf_.assign(gone_.size(), std::nullopt);
    guessed_.assign(fresh_.size(), false);
}

RenameGuesses::Positions RenameGuesses::PositionsOf(const std::vector<OpenSection>& sections) {
    Positions positions;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (sections[i].IsNamed()) positions.emplace(sections[i].Named(), i);
    }
    return positions;
}

void RenameGuesses::GuessByUsers(const NamedSections& before, const NamedSections& after) {
    Votes votes;
    VoteByUnique(votes);
    for (const std::string& keyword : before.Keywords()) {
        for (const Identity& identity : before.Of(keyword)) {
            if (const DescribedSection* const now = after.Find(keyword, identity))
                VoteByBoth(*before.Find(keyword, identity), *now, votes);
        }
    }
    std::vector<std::pair<Pair, std::size_t>> byCount(votes.begin(), votes.end());
    std::stable_sort(byCount.begin(), byCount.end(), [](const auto& a, const auto& b) { return a.second > b.second; });
    for (const auto& [pair, count] : byCount) Suppose(pair.first, pair.second);
}

void RenameGuesses::VoteByUnique(Votes& votes) {
    const auto fresh = OnlyOnes(fresh_);
    for (const auto& [shape, gone] : OnlyOnes(gone_)) {
        const auto same = fresh.find(shape);
        if (!gone || same == fresh.end() || !same->second) continue;
        const Pair pair = {*gone, *same->second};
        if (!Put(pair)) continue;
        for (std::size_t at = 0; at < gone_[pair.first].references.size(); ++at) {
            const auto named = PairOf(gone_[pair.first].references[at], fresh_[pair.second].references[at]);
            if (named) ++votes[*named];
        }
    }
}

void RenameGuesses::VoteByBoth(const DescribedSection& before, const DescribedSection& after, Votes& votes) const {
    std::map<std::string_view, const DescribedValue*> now;
    for (const DescribedValue& value : after.values) {
        if (!value.references.empty()) now.emplace(value.key, &value);
    }
    for (const DescribedValue& value : before.values) {
        const auto same = value.references.empty() ? now.end() : now.find(value.key);
        if (same == now.end()) continue;
        const DescribedValue& then = *same->second;
        for (std::size_t at = 0; at < std::min(value.references.size(), then.references.size()); ++at) {
            const auto named = PairOf(NameIn(value, value.references[at]), NameIn(then, then.references[at]));
            if (named) ++votes[*named];
        }
    }
}

std::optional<RenameGuesses::Pair> RenameGuesses::PairOf(const NameOfKind& gone, const NameOfKind& fresh) const {
    const auto was = goneAt_.find(gone);
    const auto is = freshAt_.find(fresh);
    if (was == goneAt_.end() || is == freshAt_.end()) return std::nullopt;
    return Pair(was->second, is->second);
}

bool RenameGuesses::Put(const Pair& pair) {
    const OpenSection& was = gone_[pair.first];
    const OpenSection& is = fresh_[pair.second];
    const bool isPossible = was.shape == is.shape && was.references.size() == is.references.size();
    if (!isPossible || freshOf_[pair.first] || guessed_[pair.second]) return false;
    freshOf_[pair.first] = pair.second;
    guessed_[pair.second] = true;
    return true;
}

void RenameGuesses::Suppose(std::size_t gone, std::size_t fresh) {
    std::vector<Pair> open = {{gone, fresh}};
    while (!open.empty()) {
        const Pair pair = open.back();
        open.pop_back();
        if (!Put(pair)) continue;
        for (std::size_t at = 0; at < gone_[pair.first].references.size(); ++at) {
            const auto named = PairOf(gone_[pair.first].references[at], fresh_[pair.second].references[at]);
            if (named) open.push_back(*named);
        }
    }
}

}  // namespace zek::tool
