#include "origin.h"

#include <algorithm>
#include <optional>
#include <set>

namespace zek::tool {
namespace {

std::string Joined(const std::vector<std::string_view>& texts) {
    std::string all;
    for (const std::string_view& text : texts) all += (&text == texts.data() ? "" : ",") + std::string(text);
    // Operands that an arithmetic operator does not take.
    return all.substr(0, all.find_last_not_of(',') + 1);
}

bool IsDefinition(const DebugSection& section) { return section.keyword == "DEFINE" || section.keyword == "IFDEF"; }

std::string TextOf(const DebugSection& section, const DebugEntry& entry) {
    if (IsDefinition(section) && entry.texts.empty()) return std::to_string(entry.number);
    return Joined(entry.texts);
}

std::optional<std::string> FirstText(const DebugSection& section, std::string_view key) {
    const DebugEntry* const entry = section.Entry(key);
    if (!entry || entry->texts.empty()) return {};
    return std::string(entry->texts[0]);
}

/// Follows what the operands of one entry name.
class Finder {
public:
    Finder(const DebugSource& source, const std::map<std::string, unsigned>& names) : source_(source), names_(names) {}

    void Find(const SectionPath& path, Origin& origin) const {
        for (const DebugSection& section : source_.sections) {
            if (section.keyword != path.keyword || !IsMeant(path, Stub(section))) continue;
            origin.entry = section.Entry(path.key);
            origin.section = &section;
            if (origin.entry) return;
        }
    }

    void AddOperands(Origin& origin) const {
        std::set<std::string_view> seen;
        for (const std::string_view operand : origin.entry->texts) {
            if (operand.empty() || !seen.insert(operand).second) continue;
            if (AddDefinition(operand, origin)) continue;
            AddEntry("global", "GLOBAL", nullptr, operand, origin);
            AddEntry("value", "", origin.section, operand, origin);
            if (origin.entry->key == "PARENT") AddSection("group", "GROUP", operand, origin);
            AddSection("action", "ACTION", operand, origin);
            AddSection("table", "TABLE", operand, origin);
        }
    }

private:
    /// What a path compares.
    ShownSection Stub(const DebugSection& section) const {
        ShownSection stub;
        stub.name = FirstText(section, "NAME");
        const std::string id = FirstText(section, "ID").value_or(std::string());
        const auto name = names_.find(id);
        stub.id = name == names_.end() ? NumberIn(id) : std::optional(name->second);
        return stub;
    }

    /// A word may be defined several times; the image tells which number it has in the end.
    bool AddDefinition(std::string_view word, Origin& origin) const {
        const auto name = names_.find(std::string(word));
        if (name == names_.end()) return false;
        OriginStep step = {"definition", std::string(word) + " = " + std::to_string(name->second), {}};
        for (const DebugSection& section : source_.sections) {
            if (!IsDefinition(section)) continue;
            for (const DebugEntry& entry : section.entries) {
                const bool counts = entry.key == word && entry.texts.empty();
                if (counts && (entry.number == name->second || step.spot.line == 0)) step.spot = entry.spot;
            }
        }
        origin.steps.push_back(step);
        return true;
    }

    /// An entry of that key in the sections of a kind, or in one section.
    void AddEntry(const char* what, std::string_view keyword, const DebugSection* only, std::string_view key,
                  Origin& origin) const {
        if (only && !(key.starts_with("VALUE") || key.starts_with("G_"))) return;
        for (const DebugSection& section : source_.sections) {
            if (only ? &section != only : section.keyword != keyword) continue;
            const DebugEntry* const entry = section.Entry(key);
            if (!entry || entry == origin.entry) continue;
            origin.steps.push_back({what, std::string(key) + " = " + TextOf(section, *entry), entry->spot});
            return;
        }
    }

    void AddSection(const char* what, std::string_view keyword, std::string_view name, Origin& origin) const {
        // A section is named in values and in PARENT; its own NAME and plain texts name nothing.
        const bool names = origin.entry->type >> 16 != kTextClass || origin.entry->key == "PARENT";
        if (!names) return;
        for (const DebugSection& section : source_.sections) {
            if (section.keyword != keyword || FirstText(section, "NAME") != name) continue;
            origin.steps.push_back({what, std::string(name), section.spot});
            return;
        }
    }

    static constexpr unsigned kTextClass = 0x1002;

    const DebugSource& source_;
    const std::map<std::string, unsigned>& names_;
};

/// The included name may stand behind the folder of the file that includes it.
bool Includes(const DebugEntry& item, std::string_view file) {
    if (item.texts.empty() || item.texts[0].empty() || !file.ends_with(item.texts[0])) return false;
    const std::size_t folder = file.size() - item.texts[0].size();
    return folder == 0 || file[folder - 1] == '/' || file[folder - 1] == '\\';
}

/// The item that included a file first; null for the main source.
const DebugEntry* IncludeItem(const DebugSource& source, std::string_view file) {
    for (const DebugSection& section : source.sections) {
        if (section.keyword != "INCLUDE") continue;
        for (const DebugEntry& item : section.entries) {
            if (Includes(item, file)) return &item;
        }
    }
    return nullptr;
}

}  // namespace

Origin FindOrigin(const DebugSource& source, const std::map<std::string, unsigned>& names, const SectionPath& path) {
    Origin origin;
    const Finder finder(source, names);
    finder.Find(path, origin);
    if (!origin.entry) return origin;
    origin.steps.push_back({"value", TextOf(*origin.section, *origin.entry), origin.entry->spot});
    origin.steps.push_back({"section", '[' + std::string(origin.section->keyword) + ']', origin.section->spot});
    finder.AddOperands(origin);
    return origin;
}

std::vector<SourceSpot> IncludesOf(const DebugSource& source, std::uint32_t file) {
    std::vector<SourceSpot> way;
    // No file leads to itself in a source that was compiled, but a damaged image may say so.
    while (file < source.files.size() && way.size() < source.files.size()) {
        const DebugEntry* const item = IncludeItem(source, source.files[file]);
        if (!item || item->spot.file == file) break;
        way.push_back(item->spot);
        file = item->spot.file;
    }
    return way;
}

}  // namespace zek::tool
