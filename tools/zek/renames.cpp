#include "renames.h"

#include <algorithm>
#include <functional>
#include <list>

#include "section_path.h"

namespace zek::tool {
namespace {

constexpr unsigned kMostPasses = 64;

// What stands instead of a name, and is none.
constexpr std::string_view kItself("\0", 1);
constexpr std::string_view kUnknown("\0\0", 2);

const std::vector<Identity> kNoSections;

/// What to say instead of the name of a section.
using Naming = std::function<std::string(const std::string& keyword, const std::string& name)>;

std::string WithNames(const DescribedValue& value, const Naming& naming) {
    if (value.references.empty()) return value.text;
    std::string text;
    std::size_t end = 0;
    for (const DescribedValue::Reference& reference : value.references) {
        text += value.text.substr(end, reference.at - end);
        text += naming(reference.keyword, value.text.substr(reference.at, reference.size));
        end = reference.at + reference.size;
    }
    return text + value.text.substr(end);
}

std::string Counted(const std::string& text) { return std::to_string(text.size()) + ' ' + text; }

/// All but the name of a section.
std::string ContentOf(const DescribedSection& section, const Naming& naming) {
    const Naming orItself = [&](const std::string& keyword, const std::string& name) {
        return keyword == section.keyword && name == section.name ? std::string(kItself) : naming(keyword, name);
    };
    std::string content = section.keyword + ' ' + Counted(section.bytes);
    for (const DescribedValue& value : section.values) {
        if (value.key != "NAME") content += Counted(value.key) + Counted(WithNames(value, orItself));
    }
    return content;
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

Renames::Renames(const NamedSections& before, const NamedSections& after) : before_(before), after_(after) {
    // A name that was found changes what refers to it, so the search goes on until it finds no more.
    for (unsigned pass = 0; pass < kMostPasses && FindNext(); ++pass) continue;
    FindTogether();
}

const Identity* Renames::NewOf(const std::string& keyword, const Identity& identity) const {
    const auto found = renamed_.find({keyword, identity});
    return found == renamed_.end() ? nullptr : &found->second;
}

std::string Renames::Applied(const DescribedValue& value) const {
    return WithNames(value,
                     [&](const std::string& keyword, const std::string& name) { return NameNow(keyword, name); });
}

std::string Renames::NameNow(const std::string& keyword, const std::string& name) const {
    const auto found = names_.find({keyword, name});
    return found == names_.end() ? name : found->second;
}

/// The sections of an image that the other lacks and that are not yet paired.
std::vector<Renames::Place> Renames::Open(const NamedSections& image, const NamedSections& other) const {
    std::vector<Place> open;
    for (const std::string& keyword : image.Keywords()) {
        if (!HasName(keyword)) continue;
        for (const Identity& identity : image.Of(keyword)) {
            const Place place = {keyword, identity};
            const bool paired = &image == &before_ ? renamed_.contains(place) : taken_.contains(place);
            if (!paired && !other.Find(keyword, identity)) open.push_back(place);
        }
    }
    return open;
}

Renames::Names Renames::NamesOf(const std::vector<Place>& places) {
    Names names;
    for (const auto& [keyword, identity] : places) names.insert({keyword, identity.first});
    return names;
}

std::string Renames::ContentBefore(const Place& place, const Names& unknown) const {
    return ContentOf(*before_.Find(place.first, place.second),
                     [&](const std::string& keyword, const std::string& name) {
                         return unknown.contains({keyword, name}) ? std::string(kUnknown) : NameNow(keyword, name);
                     });
}

std::string Renames::ContentAfter(const Place& place, const Names& unknown) const {
    return ContentOf(*after_.Find(place.first, place.second), [&](const std::string& keyword, const std::string& name) {
        return unknown.contains({keyword, name}) ? std::string(kUnknown) : name;
    });
}

std::vector<Renames::Pair> Renames::Pairs(const Names& unknownBefore, const Names& unknownAfter) const {
    std::vector<Pair> pairs;
    const std::vector<Place> gone = Open(before_, after_);
    if (gone.empty()) return pairs;
    std::map<std::string, std::list<Identity>> waiting;  // by their content
    for (const Place& place : Open(after_, before_)) waiting[ContentAfter(place, unknownAfter)].push_back(place.second);
    for (const Place& place : gone) {
        const auto same = waiting.find(ContentBefore(place, unknownBefore));
        if (same == waiting.end() || same->second.empty()) continue;
        pairs.emplace_back(place, same->second.front());
        same->second.pop_front();
    }
    return pairs;
}

void Renames::Take(const Pair& pair) {
    const auto& [before, after] = pair;
    renamed_[before] = after;
    taken_.insert({before.first, after});
    names_[{before.first, before.second.first}] = after.first;
}

bool Renames::FindNext() {
    const std::vector<Pair> pairs = Pairs({}, {});
    for (const Pair& pair : pairs) Take(pair);
    return !pairs.empty();
}

/// Sections that refer to each other can only be found together: all that are the same but for the names of such, less
/// those that differ once all of these are taken for found.
void Renames::FindTogether() {
    std::vector<Pair> pairs = Pairs(NamesOf(Open(before_, after_)), NamesOf(Open(after_, before_)));
    const std::map<Name, std::string> known = names_;
    for (unsigned pass = 0; pass < kMostPasses && !pairs.empty(); ++pass) {
        for (const auto& [place, now] : pairs) names_[{place.first, place.second.first}] = now.first;
        const std::size_t wrong = std::erase_if(pairs, [&](const Pair& pair) {
            const auto& [place, now] = pair;
            return ContentBefore(place, {}) != ContentAfter({place.first, now}, {});
        });
        names_ = known;
        if (wrong > 0) continue;
        for (const Pair& pair : pairs) Take(pair);
        return;
    }
}

}  // namespace zek::tool
