#include "section_path.h"

#include <charconv>
#include <iterator>
#include <set>
#include <vector>

#include "failure.h"
#include "printable.h"
#include "section_keywords.h"
#include "suggestion.h"

namespace zek::tool {
namespace {

Failure NoPath(const std::string& text, const std::string& why) {
    return Failure(kUsageOrFiles, Printable(text) + " is no path to a value: " + why);
}

struct Part {
    std::string text;
    bool isId = false;  ///< it begins with a # that no backslash precedes
};

std::vector<Part> Parts(const std::string& text) {
    std::vector<Part> parts(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '/') {
            parts.emplace_back();
        } else if (text[i] == '#' && parts.back().text.empty()) {
            parts.back() = {"#", true};
        } else {
            if (text[i] == '\\' && i + 1 < text.size()) ++i;
            parts.back().text += text[i];
        }
    }
    return parts;
}

std::string Escaped(std::string_view part) {
    std::string text = part.starts_with('#') ? "\\" : "";
    for (const char c : part) {
        if (c == '/' || c == '\\') text += '\\';
        text += c;
    }
    return text;
}

}  // namespace

std::optional<unsigned> NumberIn(std::string_view text) {
    const int base = text.starts_with("0x") ? 16 : 10;
    if (base == 16) text.remove_prefix(2);
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error != std::errc() || end != text.data() + text.size()) return {};
    return number;
}

bool HasName(std::string_view keyword) {
    const DebugKind* const kind = DebugKindOf(keyword);
    return kind && kind->Declared(kNameKey.name);
}

SectionPath ParsePath(const std::string& text) {
    const std::vector<Part> parts = Parts(text);
    SectionPath path;
    path.keyword = parts[0].text;
    std::set<std::string> keywords(std::begin(kSectionKeywords), std::end(kSectionKeywords));
    keywords.insert(kIncludeKeyword);
    if (!keywords.contains(path.keyword)) {
        const auto nearest = NearestName(path.keyword, keywords);
        throw NoPath(text, "there are no [" + Printable(path.keyword) + "] sections" +
                               (nearest ? "; did you mean " + *nearest + '?' : ""));
    }
    const std::size_t key = HasName(path.keyword) ? 2 : 1;
    if (parts.size() != key + 1 && parts.size() != key + 2) {
        throw NoPath(text, path.keyword + (key == 2 ? "/NAME/KEY or " + path.keyword + "/#ID/KEY" : "/KEY") +
                               " is one, and perhaps the place of a value behind it");
    }
    if (key == 2 && parts[1].isId) {
        path.id = NumberIn(std::string_view(parts[1].text).substr(1));
        if (!path.id) throw NoPath(text, "behind the # an ID must stand");
    } else if (key == 2) {
        path.name = parts[1].text;
    }
    path.key = parts[key].text;
    if (parts.size() == key + 1) return path;
    path.element = NumberIn(parts[key + 1].text);
    if (!path.element) throw NoPath(text, "behind the key the place of a value must stand, from 0");
    return path;
}

std::string PathTo(std::string_view keyword, std::string_view name, std::string_view key) {
    std::string path(keyword);
    if (HasName(keyword)) path += '/' + Escaped(name);
    return key.empty() ? path : path + '/' + Escaped(key);
}

std::string TextOf(const SectionPath& path) {
    std::string text = path.id ? path.keyword + "/#" + std::to_string(*path.id) + '/' + Escaped(path.key)
                               : PathTo(path.keyword, path.name.value_or(std::string()), path.key);
    if (path.element) text += '/' + std::to_string(*path.element);
    return text;
}

bool IsMeant(const SectionPath& path, const ShownSection& section) {
    if (path.id) return section.id == path.id;
    return !path.name || section.name == path.name;
}

}  // namespace zek::tool
