#include "renames.h"

#include <algorithm>
#include <string_view>

namespace zek::tool {
namespace {

// What stands instead of a name that is open, and is none.
constexpr std::string_view kOpen("\0", 1);

}  // namespace

Renames::Renames(const NamedSections& before, const NamedSections& after)
    : gone_(OpenSections(before, after)), fresh_(OpenSections(after, before)), guesses_(gone_, fresh_) {
    for (std::size_t gone = 0; gone < gone_.size(); ++gone) {
        for (std::size_t at = 0; at < gone_[gone].references.size(); ++at) {
            users_[gone_[gone].references[at]].push_back({gone, at});
        }
    }
    guesses_.GuessByUsers(before, after);
    FindInTurn();
    FindTogether();
    // What is left is not what was guessed.
    guesses_.Clear();
    FindInTurn();
    FindTogether();
}

const Identity* Renames::NewOf(const std::string& keyword, const Identity& identity) const {
    const auto found = renamed_.find({keyword, identity});
    return found == renamed_.end() ? nullptr : &found->second;
}

std::string Renames::Applied(const DescribedValue& value) const {
    return WithNames(value, [&](const std::string& keyword, const std::string& name) {
        return NameNow({keyword, name});
    });
}

std::string Renames::NameNow(const Name& name) const {
    const auto found = names_.find(name);
    return found == names_.end() ? name.second : found->second;
}

Renames::Waiting Renames::WaitingBy(const Naming& after) const {
    Waiting waiting = {std::vector<std::uint64_t>(fresh_.size()), {}};
    for (std::size_t fresh = 0; fresh < fresh_.size(); ++fresh) {
        if (taken_.contains(fresh_[fresh].place)) continue;
        waiting.sums[fresh] = fresh_[fresh].SumOf(after);
        if (!guesses_.IsGuessed(fresh)) waiting.free[waiting.sums[fresh]].push_back(fresh);
    }
    return waiting;
}

std::optional<Renames::Pair> Renames::Match(std::size_t gone, std::uint64_t sum, Waiting& waiting, const Naming& before,
                                            const Naming& after) const {
    const auto guess = guesses_.Of(gone);
    const auto same = guess ? waiting.free.end() : waiting.free.find(sum);
    if (guess ? waiting.sums[*guess] != sum : same == waiting.free.end() || same->second.empty()) return std::nullopt;
    const Pair pair = {gone, guess ? *guess : same->second.front()};
    const OpenSection& was = gone_[gone];
    const OpenSection& is = fresh_[pair.fresh];
    const auto areSame = [&](const Name& a, const Name& b) { return before(a) == after(b); };
    // Two sums may be the same by chance.
    if (!HaveOneShape(*was.section, *is.section) ||
        !std::equal(was.references.begin(), was.references.end(), is.references.begin(), is.references.end(), areSame))
        return std::nullopt;
    if (!guess) same->second.pop_front();
    return pair;
}

/// A name that was found changes the sections that refer to it, so these are looked for again, until none has changed.
void Renames::FindInTurn() {
    const Naming now = [&](const Name& name) { return NameNow(name); };
    const Naming asItIs = [](const Name& name) { return name.second; };
    Waiting waiting = WaitingBy(asItIs);
    std::set<std::size_t> changed;
    for (std::size_t gone = 0; gone < gone_.size(); ++gone) changed.insert(changed.end(), gone);
    while (!changed.empty()) {
        Pairs found;
        for (const std::size_t gone : changed) {
            if (!IsOpen(gone)) continue;
            if (const auto pair = Match(gone, gone_[gone].content, waiting, now, asItIs)) found.push_back(*pair);
        }
        changed.clear();
        for (const Pair& pair : found) Take(pair, changed);
    }
}

void Renames::Take(const Pair& pair, std::set<std::size_t>& changed) {
    const OpenSection& was = gone_[pair.gone];
    const OpenSection& is = fresh_[pair.fresh];
    renamed_[was.place] = is.place.second;
    taken_.insert(is.place);
    if (!was.IsNamed()) return;
    const std::string before = NameNow(was.Named());
    names_[was.Named()] = is.place.second.first;
    for (const auto& [gone, at] : users_[was.Named()]) {
        gone_[gone].content += SumTerm(at, is.place.second.first) - SumTerm(at, before);
        changed.insert(gone);
    }
}

/// Sections that refer to each other can only be found together: all that are the same but for the names of such, less
/// those that differ once all of these are taken for found.
void Renames::FindTogether() {
    std::set<std::size_t> changed;
    for (const Pair& pair : Consistent(PairsButForNames())) Take(pair, changed);
}

Renames::Pairs Renames::PairsButForNames() {
    std::set<Name> openBefore;
    std::set<Name> openAfter;
    for (std::size_t gone = 0; gone < gone_.size(); ++gone) {
        if (IsOpen(gone)) openBefore.insert(gone_[gone].Named());
    }
    for (const OpenSection& open : fresh_) {
        if (!taken_.contains(open.place)) openAfter.insert(open.Named());
    }
    const Naming before = [&](const Name& name) {
        return openBefore.contains(name) ? std::string(kOpen) : NameNow(name);
    };
    const Naming after = [&](const Name& name) { return openAfter.contains(name) ? std::string(kOpen) : name.second; };
    Waiting waiting = WaitingBy(after);
    GuessInOrder(waiting, before);
    Pairs pairs;
    for (std::size_t gone = 0; gone < gone_.size(); ++gone) {
        if (!IsOpen(gone)) continue;
        if (const auto pair = Match(gone, gone_[gone].SumOf(before), waiting, before, after)) pairs.push_back(*pair);
    }
    return pairs;
}

/// The first of those that may be the same, and with each what it refers to, so that the guesses agree.
void Renames::GuessInOrder(Waiting& waiting, const Naming& before) {
    for (std::size_t gone = 0; gone < gone_.size(); ++gone) {
        if (!IsOpen(gone) || guesses_.Of(gone)) continue;
        const auto same = waiting.free.find(gone_[gone].SumOf(before));
        if (same == waiting.free.end()) continue;
        std::deque<std::size_t>& free = same->second;
        while (!free.empty() && guesses_.IsGuessed(free.front())) free.pop_front();
        if (!free.empty()) guesses_.Suppose(gone, free.front());
    }
}

/// Those that are the same section where all of them are.
Renames::Pairs Renames::Consistent(const Pairs& pairs) const {
    std::map<Name, std::string> now;  // what the names are where the pairs are right
    std::vector<std::optional<std::size_t>> pairOf(gone_.size());
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const OpenSection& was = gone_[pairs[i].gone];
        if (was.IsNamed()) now[was.Named()] = fresh_[pairs[i].fresh].place.second.first;
        pairOf[pairs[i].gone] = i;
    }
    const auto isWrong = [&](const Pair& pair, std::size_t at) {
        const Name& name = gone_[pair.gone].references[at];
        const auto found = now.find(name);
        return (found == now.end() ? NameNow(name) : found->second) != fresh_[pair.fresh].references[at].second;
    };
    std::vector<std::size_t> wrong;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        for (std::size_t at = 0; at < gone_[pairs[i].gone].references.size(); ++at) {
            if (isWrong(pairs[i], at)) wrong.push_back(i);
        }
    }
    // What is wrong keeps its name, which may make wrong who refers to it.
    std::vector<bool> isLeft(pairs.size());
    while (!wrong.empty()) {
        const std::size_t pair = wrong.back();
        wrong.pop_back();
        const OpenSection& was = gone_[pairs[pair].gone];
        const bool isNew = !isLeft[pair];
        isLeft[pair] = true;
        const auto users = users_.find(was.Named());
        if (!isNew || !was.IsNamed() || users == users_.end()) continue;
        now.erase(was.Named());
        for (const auto& [gone, at] : users->second) {
            if (pairOf[gone] && isWrong(pairs[*pairOf[gone]], at)) wrong.push_back(*pairOf[gone]);
        }
    }
    Pairs right;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        if (!isLeft[i]) right.push_back(pairs[i]);
    }
    return right;
}

}  // namespace zek::tool
