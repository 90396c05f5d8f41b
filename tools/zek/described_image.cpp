#include "described_image.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "debug_lines.h"
#include "progress.h"
#include "section_keywords.h"
#include "section_path.h"
#include "values.h"

namespace zek::tool {
namespace {

/// Gives each key a name of its own: #2 and so on behind those that stand there before.
class Keys {
public:
    std::string Own(const std::string& key) {
        const unsigned count = ++counts_[key];
        return count == 1 ? key : key + " #" + std::to_string(count);
    }

    bool Has(const std::string& key) const { return counts_.contains(key); }

private:
    std::map<std::string, unsigned> counts_;
};

DescribedValue Described(const std::string& key, const std::vector<ShownValue>& values) {
    DescribedValue described = {key, {}};
    for (const ShownValue& value : values) {
        if (&value != values.data()) described.text += ',';
        if (value.names) described.references.push_back({value.names, described.text.size(), value.text.size()});
        described.text += value.text;
    }
    return described;
}

void AddBytes(const Image& image, DescribedImage& described) {
    std::map<std::string, std::string> blocks;
    image.ForEachBlock([&](const ShownBlock& block) {
        if (block.name) blocks.try_emplace(*block.name, block.bytes);
    });
    for (DescribedSection& section : described.sections) {
        const auto block = section.keyword == "TABLE" ? blocks.find(section.name) : blocks.end();
        if (block != blocks.end()) section.bytes = block->second;
    }
}

/// Each included file is a section that is told by its name, so that one more leaves the others what they are.
void AddIncludes(const Image& image, const Values& values, DescribedImage& described) {
    for (const RecordedLine& line : IncludeItems(image.Source())) {
        const std::string key(line.entry->key);
        const DescribedValue file = Described(key, values.Resolved({key, 0, {}, {}, line.entry}));
        described.sections.push_back({kIncludeKeyword, file.text, {file}});
    }
}

/// Those that the compiler was given are as good as those of a [DEFINE].
void AddGivenWords(const Image& image, DescribedImage& described) {
    const std::map<std::string, unsigned> words = GivenWords(image.Source(), image.Names());
    if (words.empty()) return;
    const auto isDefine = [](const DescribedSection& section) { return section.keyword == "DEFINE"; };
    auto place = std::find_if(described.sections.begin(), described.sections.end(), isDefine);
    if (place == described.sections.end()) place = described.sections.insert(place, {"DEFINE", ""});
    for (const auto& [word, number] : words) place->values.push_back({word, std::to_string(number)});
}

}  // namespace

DescribedImage Describe(const std::string& file) {
    const Image image(file);
    ShowPhase("listing");
    const Values values(image);
    DescribedImage described = {image.Kind(), {}};
    std::map<std::string, Keys> unnamed;
    image.ForEachSection([&](const ShownSection& section) {
        if (std::string_view(section.keyword) == kIncludeKeyword) return;
        const bool named = HasName(section.keyword);
        const bool first = described.sections.empty() || described.sections.back().keyword != section.keyword;
        if (named || first) described.sections.push_back({section.keyword, section.name.value_or(std::string())});
        Keys own;
        Keys& keys = named ? own : unnamed[section.keyword];
        for (const ShownEntry& entry : section.entries) {
            // A word has one value, however often it is defined.
            const bool isWord = entry.source && IsDefinition(*entry.source);
            if (isWord && keys.Has(entry.key)) continue;
            described.sections.back().values.push_back(Described(keys.Own(entry.key), values.Resolved(entry)));
        }
    });
    AddBytes(image, described);
    AddGivenWords(image, described);
    AddIncludes(image, values, described);
    return described;
}

}  // namespace zek::tool
