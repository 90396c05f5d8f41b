#include "described_image.h"

#include <map>
#include <utility>

#include "debug_lines.h"
#include "progress.h"
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

}  // namespace

DescribedImage Describe(const std::string& file) {
    const Image image(file);
    ShowPhase("listing");
    const Values values(image);
    DescribedImage described = {image.Kind(), {}};
    std::map<std::string, Keys> unnamed;
    image.ForEachSection([&](const ShownSection& section) {
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
    return described;
}

}  // namespace zek::tool
