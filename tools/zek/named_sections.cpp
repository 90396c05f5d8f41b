#include "named_sections.h"

#include <string_view>

#include "section_path.h"

namespace zek::tool {
namespace {

// What stands instead of a name, and is none.
constexpr std::string_view kItself("\0", 1);
constexpr std::string_view kUnknown("\0\0", 2);

const std::vector<Identity> kNoSections;

/// What to say instead of the name of a section.
using Saying = std::function<std::string(const std::string& keyword, const std::string& name)>;

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

std::uint64_t OpenSection::SumOf(const Naming& naming) const {
    std::uint64_t sum = shape;
    for (std::size_t at = 0; at < references.size(); ++at) sum += SumTerm(at, naming(references[at]));
    return sum;
}

std::vector<OpenSection> OpenSections(const NamedSections& image, const NamedSections& other) {
    std::vector<OpenSection> all;
    for (const std::string& keyword : image.Keywords()) {
        if (!HasName(keyword)) continue;
        for (const Identity& identity : image.Of(keyword)) {
            if (other.Find(keyword, identity)) continue;
            OpenSection open = {{keyword, identity}, image.Find(keyword, identity)};
            open.shape =
                std::hash<std::string>()(ShapeOf(*open.section, [&](const std::string& kind, const std::string& name) {
                    open.references.emplace_back(kind, name);
                }));
            open.content = open.SumOf([](const NameOfKind& name) { return name.second; });
            all.push_back(std::move(open));
        }
    }
    return all;
}

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

bool HaveOneShape(const DescribedSection& a, const DescribedSection& b) {
    const auto ignore = [](const std::string&, const std::string&) {};
    return ShapeOf(a, ignore) == ShapeOf(b, ignore);
}

std::uint64_t SumTerm(std::size_t at, const std::string& name) {
    // Spreads what is near: a name moved from one place to another must make a difference.
    std::uint64_t term = std::hash<std::string>()(name) + (at + 1) * 0x9E3779B97F4A7C15ULL;
    term = (term ^ (term >> 30)) * 0xBF58476D1CE4E5B9ULL;
    term = (term ^ (term >> 27)) * 0x94D049BB133111EBULL;
    return term ^ (term >> 31);
}

}  // namespace zek::tool
