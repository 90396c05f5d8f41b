#include "renames.h"

#include <algorithm>

#include "section_path.h"

namespace zek::tool {
namespace {

// What stands instead of a name, and is none.
constexpr std::string_view kItself("\0", 1);
constexpr std::string_view kUnknown("\0\0", 2);

const std::vector<Identity> kNoSections;

/// What to say instead of the name of a section.
using Saying = std::function<std::string(const std::string& keyword, const std::string& name)>;

std::string WithNames(const DescribedValue& value, const Saying& saying) {
    if (value.references.empty()) return value.text;
    std::string text;
    std::size_t end = 0;
    for (const DescribedValue::Reference& reference : value.references) {
        text += value.text.substr(end, reference.at - end);
        text += saying(reference.keyword, value.text.substr(reference.at, reference.size));
        end = reference.at + reference.size;
    }
    return text + value.text.substr(end);
}

std::string Counted(const std::string& text) { return std::to_string(text.size()) + ' ' + text; }

/// All of a section but its name, and with the same instead of every other name.
std::string ShapeOf(const DescribedSection& section,
                    const std::function<void(const std::string&, const std::string&)>& showName) {
    const Saying saying = [&](const std::string& keyword, const std::string& name) {
        if (keyword == section.keyword && name == section.name) return std::string(kItself);
        showName(keyword, name);
        return std::string(kUnknown) + keyword;
    };
    std::string shape = section.keyword + ' ' + Counted(section.bytes);
    for (const DescribedValue& value : section.values) {
        if (value.key != "NAME") shape += Counted(value.key) + Counted(WithNames(value, saying));
    }
    return shape;
}

bool HaveOneShape(const DescribedSection& a, const DescribedSection& b) {
    const auto ignore = [](const std::string&, const std::string&) {};
    return ShapeOf(a, ignore) == ShapeOf(b, ignore);
}

/// What a name adds to the sum over a section.
std::uint64_t Term(std::size_t at, const std::string& name) {
    // Spreads what is near: a name moved from one place to another must make a difference.
    std::uint64_t term = std::hash<std::string>()(name) + (at + 1) * 0x9E3779B97F4A7C15ULL;
    term = (term ^ (term >> 30)) * 0xBF58476D1CE4E5B9ULL;
    term = (term ^ (term >> 27)) * 0x94D049BB133111EBULL;
    return term ^ (term >> 31);
}

}  // namespace

NamedSections::NamedSections(const DescribedImage& image) {
    for (const DescribedSection& section : image.sections) {
        Kind& kind = kinds_[section.keyword];
        if (kind.order.empty()) keywords_.push_back(section.keyword);
        const Identity identity = {section.name, kind.counts[section.name]++};
        kind.sections.emplace(identity, &section);
        kind.order.push_back(identity);
    }
}

const std::vector<Identity>& NamedSections::Of(const std::string& keyword) const {
    const auto kind = kinds_.find(keyword);
    return kind == kinds_.end() ? kNoSections : kind->second.order;
}

const DescribedSection* NamedSections::Find(const std::string& keyword, const Identity& identity) const {
    const auto kind = kinds_.find(keyword);
    if (kind == kinds_.end()) return nullptr;
    const auto found = kind->second.sections.find(identity);
    return found == kind->second.sections.end() ? nullptr : found->second;
}

std::uint64_t Renames::Open::SumOf(const Naming& naming) const {
    std::uint64_t sum = shape;
    for (std::size_t at = 0; at < references.size(); ++at) sum += Term(at, naming(references[at]));
    return sum;
}

Renames::Renames(const NamedSections& before, const NamedSections& after)
    : gone_(OpenOf(before, after)), fresh_(OpenOf(after, before)) {
    for (std::size_t gone = 0; gone < gone_.size(); ++gone) {
        for (std::size_t at = 0; at < gone_[gone].references.size(); ++at) {
            users_[gone_[gone].references[at]].push_back({gone, at});
        }
    }
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

std::vector<Renames::Open> Renames::OpenOf(const NamedSections& image, const NamedSections& other) {
    std::vector<Open> all;
    for (const std::string& keyword : image.Keywords()) {
        if (!HasName(keyword)) continue;
        for (const Identity& identity : image.Of(keyword)) {
            if (other.Find(keyword, identity)) continue;
            Open open = {{keyword, identity}, image.Find(keyword, identity)};
            open.shape =
                std::hash<std::string>()(ShapeOf(*open.section, [&](const std::string& kind, const std::string& name) {
                    open.references.emplace_back(kind, name);
                }));
            open.content = open.SumOf([](const Name& name) { return name.second; });
            all.push_back(std::move(open));
        }
    }
    return all;
}

std::optional<Renames::Pair> Renames::Match(std::size_t gone, std::uint64_t sum, Waiting& waiting, const Naming& before,
                                            const Naming& after) const {
    const auto same = waiting.find(sum);
    if (same == waiting.end() || same->second.empty()) return std::nullopt;
    const Pair pair = {gone, same->second.front()};
    const Open& was = gone_[gone];
    const Open& is = fresh_[pair.fresh];
    const auto areSame = [&](const Name& a, const Name& b) { return before(a) == after(b); };
    // Two sums may be the same by chance.
    if (!HaveOneShape(*was.section, *is.section) ||
        !std::equal(was.references.begin(), was.references.end(), is.references.begin(), is.references.end(), areSame))
        return std::nullopt;
    same->second.pop_front();
    return pair;
}

/// A name that was found changes the sections that refer to it, so these are looked for again, until none has changed.
void Renames::FindInTurn() {
    const Naming now = [&](const Name& name) { return NameNow(name); };
    const Naming asItIs = [](const Name& name) { return name.second; };
    Waiting waiting;
    for (std::size_t fresh = 0; fresh < fresh_.size(); ++fresh) waiting[fresh_[fresh].content].push_back(fresh);
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
    const Open& was = gone_[pair.gone];
    const Open& is = fresh_[pair.fresh];
    const std::string before = NameNow(was.Named());
    renamed_[was.place] = is.place.second;
    taken_.insert(is.place);
    names_[was.Named()] = is.place.second.first;
    for (const auto& [gone, at] : users_[was.Named()]) {
        gone_[gone].content += Term(at, is.place.second.first) - Term(at, before);
        changed.insert(gone);
    }
}

/// Sections that refer to each other can only be found together: all that are the same but for the names of such, less
/// those that differ once all of these are taken for found.
void Renames::FindTogether() {
    std::set<std::size_t> changed;
    for (const Pair& pair : Consistent(PairsButForNames())) Take(pair, changed);
}

Renames::Pairs Renames::PairsButForNames() const {
    std::set<Name> openBefore;
    std::set<Name> openAfter;
    for (std::size_t gone = 0; gone < gone_.size(); ++gone) {
        if (IsOpen(gone)) openBefore.insert(gone_[gone].Named());
    }
    for (const Open& open : fresh_) {
        if (!taken_.contains(open.place)) openAfter.insert(open.Named());
    }
    const Naming before = [&](const Name& name) {
        return openBefore.contains(name) ? std::string(kUnknown) : NameNow(name);
    };
    const Naming after = [&](const Name& name) {
        return openAfter.contains(name) ? std::string(kUnknown) : name.second;
    };
    Waiting waiting;
    for (std::size_t fresh = 0; fresh < fresh_.size(); ++fresh) {
        if (!taken_.contains(fresh_[fresh].place)) waiting[fresh_[fresh].SumOf(after)].push_back(fresh);
    }
    Pairs pairs;
    for (std::size_t gone = 0; gone < gone_.size(); ++gone) {
        if (!IsOpen(gone)) continue;
        if (const auto pair = Match(gone, gone_[gone].SumOf(before), waiting, before, after)) pairs.push_back(*pair);
    }
    return pairs;
}

/// Those that are the same section where all of them are.
Renames::Pairs Renames::Consistent(const Pairs& pairs) const {
    std::map<Name, std::set<std::size_t>> leading;  // pairs by the name before; the last one tells the name now
    std::vector<std::optional<std::size_t>> pairOf(gone_.size());
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        leading[gone_[pairs[i].gone].Named()].insert(i);
        pairOf[pairs[i].gone] = i;
    }
    const auto isWrong = [&](const Pair& pair, std::size_t at) {
        const Name& name = gone_[pair.gone].references[at];
        const auto lead = leading.find(name);
        const bool leads = lead != leading.end() && !lead->second.empty();
        const std::string now = leads ? fresh_[pairs[*lead->second.rbegin()].fresh].place.second.first : NameNow(name);
        return now != fresh_[pair.fresh].references[at].second;
    };
    // What is wrong no longer leads anywhere, which may make wrong who refers to it.
    std::vector<std::size_t> wrong;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        for (std::size_t at = 0; at < gone_[pairs[i].gone].references.size(); ++at) {
            if (isWrong(pairs[i], at)) wrong.push_back(i);
        }
    }
    while (!wrong.empty()) {
        const Open& was = gone_[pairs[wrong.back()].gone];
        const bool isNew = leading[was.Named()].erase(wrong.back()) > 0;
        wrong.pop_back();
        const auto users = users_.find(was.Named());
        if (!isNew || users == users_.end()) continue;
        for (const auto& [gone, at] : users->second) {
            if (pairOf[gone] && isWrong(pairs[*pairOf[gone]], at)) wrong.push_back(*pairOf[gone]);
        }
    }
    Pairs right;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        if (leading[gone_[pairs[i].gone].Named()].contains(i)) right.push_back(pairs[i]);
    }
    return right;
}

}  // namespace zek::tool
