#include "diff.h"

#include <algorithm>
#include <optional>

#include "section_path.h"
#include "values.h"

namespace zek::tool {
namespace {

constexpr unsigned kMostPasses = 64;

/// A section of a kind and its name; the place among those that have both.
using Identity = std::pair<std::string, std::size_t>;
using Renames = std::map<std::pair<std::string, std::string>, std::string>;  // keyword and old name: new name

/// The sections of one kind by name, in the order of the image.
class Kind {
public:
    void Add(const DescribedSection& section) {
        const Identity identity = {section.name, count_[section.name]++};
        byName_[identity] = &section;
        order_.push_back(identity);
    }
    const DescribedSection* Find(const Identity& identity) const {
        const auto found = byName_.find(identity);
        return found == byName_.end() ? nullptr : found->second;
    }
    const std::vector<Identity>& Order() const { return order_; }

private:
    std::map<std::string, std::size_t> count_;
    std::map<Identity, const DescribedSection*> byName_;
    std::vector<Identity> order_;
};

std::map<std::string, Kind> Kinds(const DescribedImage& image) {
    std::map<std::string, Kind> kinds;
    for (const DescribedSection& section : image.sections) kinds[section.keyword].Add(section);
    return kinds;
}

/// The kind of section that an entry of that key names; empty for none.
std::string NamedBy(const std::string& key) { return key == "PARENT" ? "GROUP" : ""; }

/// The value with the new name of what it names.
std::string Renamed(const Renames& renames, const std::string& key, const std::string& value) {
    const auto found = renames.find({NamedBy(key), value});
    return found == renames.end() ? value : found->second;
}

/// All but the name, to find the same under another.
std::string ContentOf(const DescribedSection& section, const Renames& renames) {
    std::string content = section.keyword;
    for (const auto& [key, value] : section.values) {
        if (key == "NAME") continue;
        const std::string now = Renamed(renames, key, value);
        content += '\n' + std::to_string(key.size()) + ' ' + key + ' ' + std::to_string(now.size()) + ' ' + now;
    }
    return content;
}

std::string TypeOf(const std::string& value) { return value.substr(0, value.find(',')); }

bool IsTyped(const std::string& keyword, const std::string& key) {
    return keyword == "GLOBAL" || (keyword != "PROPERTY" && (key == "VALUE" || key.starts_with("VALUE_")));
}

/// Whether hosts ask for entries of that key: not for what stands in debug images alone.
bool IsAskedFor(const std::string& keyword, const std::string& key) {
    return keyword != "DEFINE" && keyword != "IFDEF" && (keyword != "TABLE" || key == "NAME" || key == "TYPE");
}

/// Whether a host that knew the value before is misled by the one after: a type of another kind, or another ID.
bool Breaks(const Difference& changed) {
    if (HasName(changed.keyword) && (changed.key == "ID" || changed.key == "TYPE")) return true;
    return IsTyped(changed.keyword, changed.key) && TypeOf(changed.before) != TypeOf(changed.after);
}

class Comparison {
public:
    Comparison(const DescribedImage& before, const DescribedImage& after,
               const std::function<void(const Difference&)>& show)
        : before_(Kinds(before)), after_(Kinds(after)), show_(show) {
        for (const DescribedImage* image : {&before, &after}) {
            for (const DescribedSection& section : image->sections) {
                if (std::find(keywords_.begin(), keywords_.end(), section.keyword) == keywords_.end()) {
                    keywords_.push_back(section.keyword);
                }
            }
        }
    }

    void Show() {
        FindRenames();
        for (const std::string& keyword : keywords_) ShowKind(keyword);
    }

private:
    /// A group that was renamed changes what its children say, so the search goes on until it finds no more.
    void FindRenames() {
        bool found = true;
        for (unsigned pass = 0; found && pass < kMostPasses; ++pass) {
            found = false;
            for (const std::string& keyword : keywords_) {
                if (HasName(keyword)) found = FindRenames(keyword) || found;
            }
        }
    }

    bool FindRenames(const std::string& keyword) {
        std::multimap<std::string, Identity> added;
        for (const Identity& identity : after_[keyword].Order()) {
            if (before_[keyword].Find(identity) || taken_.contains({keyword, identity})) continue;
            added.emplace(ContentOf(*after_[keyword].Find(identity), {}), identity);
        }
        bool found = false;
        for (const Identity& identity : before_[keyword].Order()) {
            if (added.empty()) break;
            if (after_[keyword].Find(identity) || renamed_.contains({keyword, identity})) continue;
            const auto same = added.find(ContentOf(*before_[keyword].Find(identity), renames_));
            if (same == added.end()) continue;
            renamed_[{keyword, identity}] = same->second;
            taken_[{keyword, same->second}] = true;
            renames_[{keyword, identity.first}] = same->second.first;
            added.erase(same);
            found = true;
        }
        return found;
    }

    void ShowKind(const std::string& keyword) {
        for (const Identity& identity : before_[keyword].Order()) {
            const DescribedSection& section = *before_[keyword].Find(identity);
            if (const DescribedSection* now = after_[keyword].Find(identity)) {
                ShowValues(section, *now);
            } else if (const auto renamed = renamed_.find({keyword, identity}); renamed != renamed_.end()) {
                show_({Change::kRenamed, keyword, identity.first, "", "", renamed->second.first, true});
            } else if (HasName(keyword)) {
                show_({Change::kRemoved, keyword, identity.first, "", "", "", true});
            } else {
                ShowValues(section, {keyword, "", {}});
            }
        }
        for (const Identity& identity : after_[keyword].Order()) {
            if (before_[keyword].Find(identity) || taken_.contains({keyword, identity})) continue;
            if (HasName(keyword)) {
                show_({Change::kAdded, keyword, identity.first, "", "", "", false});
            } else {
                ShowValues({keyword, "", {}}, *after_[keyword].Find(identity));
            }
        }
    }

    void ShowValues(const DescribedSection& before, const DescribedSection& after) {
        const std::map<std::string, std::string> now(after.values.begin(), after.values.end());
        const std::map<std::string, std::string> then(before.values.begin(), before.values.end());
        Difference difference = {Change::kChanged, before.keyword, before.name, "", "", "", false};
        for (const auto& [key, value] : before.values) {
            const auto found = now.find(key);
            difference.key = key;
            difference.before = value;
            difference.after = found == now.end() ? "" : found->second;
            difference.change = found == now.end() ? Change::kRemoved : Change::kChanged;
            difference.breaks = found == now.end() ? IsAskedFor(before.keyword, key) : Breaks(difference);
            if (found == now.end() || Renamed(renames_, key, value) != found->second) show_(difference);
        }
        for (const auto& [key, value] : after.values) {
            if (!then.contains(key)) show_({Change::kAdded, after.keyword, after.name, key, "", value, false});
        }
    }

    std::map<std::string, Kind> before_;
    std::map<std::string, Kind> after_;
    const std::function<void(const Difference&)>& show_;
    std::vector<std::string> keywords_;  // in the order of the kinds
    std::map<std::pair<std::string, Identity>, Identity> renamed_;
    std::map<std::pair<std::string, Identity>, bool> taken_;
    Renames renames_;
};

/// Gives each key a name of its own: #2 and so on behind those that stand there before.
class Keys {
public:
    std::string Own(const std::string& key) {
        const unsigned count = ++counts_[key];
        return count == 1 ? key : key + " #" + std::to_string(count);
    }

private:
    std::map<std::string, unsigned> counts_;
};

void AddRows(const Image& image, DescribedImage& described) {
    std::map<std::string, std::string> blocks;
    image.ForEachBlock([&](const ShownBlock& block) {
        if (block.name) blocks.try_emplace(*block.name, block.bytes);
    });
    for (DescribedSection& section : described.sections) {
        const auto block = section.keyword == "TABLE" ? blocks.find(section.name) : blocks.end();
        if (block == blocks.end()) continue;
        unsigned row = 0;
        for (const char byte : block->second) {
            section.values.emplace_back(std::to_string(row++), std::to_string(static_cast<unsigned char>(byte)));
        }
    }
}

}  // namespace

DescribedImage Describe(const std::string& file) {
    const Image image(file);
    const Values values(image);
    DescribedImage described = {image.Kind(), {}};
    std::map<std::string, Keys> unnamed;
    image.ForEachSection([&](const ShownSection& section) {
        const bool named = HasName(section.keyword);
        const bool first = described.sections.empty() || described.sections.back().keyword != section.keyword;
        if (named || first) described.sections.push_back({section.keyword, section.name.value_or(std::string()), {}});
        Keys own;
        Keys& keys = named ? own : unnamed[section.keyword];
        for (const ShownEntry& entry : section.entries) {
            described.sections.back().values.emplace_back(keys.Own(entry.key), Joined(values.Resolved(section, entry)));
        }
    });
    AddRows(image, described);
    return described;
}

void Compare(const DescribedImage& before, const DescribedImage& after,
             const std::function<void(const Difference&)>& show) {
    Comparison(before, after, show).Show();
}

}  // namespace zek::tool
