#include "origin.h"

#include <algorithm>
#include <optional>
#include <set>

#include "entry_roles.h"
#include "joined_text.h"
#include "section_keywords.h"
#include "table_rows.h"
#include "word_items.h"

namespace zek::tool {
namespace {

/// What stands in an entry, or one of its texts; of a definition the value of its word.
std::string TextOf(const DebugEntry& entry, std::optional<unsigned> element,
                   const std::map<std::string, unsigned>& names) {
    const auto word = IsDefinition(entry) ? names.find(std::string(entry.key)) : names.end();
    if (word != names.end()) return std::to_string(word->second);
    if (IsDefinition(entry)) return std::to_string(entry.number);
    return element ? std::string(entry.texts[*element]) : Joined(TextsOf(entry), ",");
}

std::string_view FirstText(const DebugSection& section, std::string_view key) {
    const DebugEntry* const entry = section.Entry(key);
    return entry && !entry->texts.empty() ? entry->texts[0] : std::string_view();
}

/// Finds what texts name, where several have a name the first.
class Finder {
public:
    Finder(const DebugSource& source, const std::map<std::string, unsigned>& names)
        : source_(source), names_(names), words_(source, names) {
        for (const DebugSection& section : source.sections) {
            if (const auto id = IdOf(section, names)) ids_.emplace(std::pair(section.keyword, *id), &section);
            sections_.emplace(std::pair(section.keyword, FirstText(section, "NAME")), &section);
            for (const DebugEntry& entry : section.entries) {
                if (entry.given && section.keyword == "GLOBAL") globals_.emplace(entry.key, &entry);
            }
        }
    }

    void Find(const SectionPath& path, Origin& origin) const {
        if (path.keyword == kIncludeKeyword) return FindIncluded(path, origin);
        const auto byte = path.keyword == "TABLE" ? ByteIn(path.key) : std::nullopt;
        for (const DebugSection& section : source_.sections) {
            if (section.keyword != path.keyword || !IsMeant(path, StubOf(section, names_))) continue;
            const TableRow found =
                byte ? RowBehind(source_, section, *byte) : TableRow{&section, section.Entry(path.key)};
            origin.section = found.section;
            origin.entry = found.row;
            if (byte || origin.entry) break;
        }
        if (origin.entry && IsDefinition(*origin.entry)) {
            const WordItem counting = words_.Behind(origin.entry->key);
            origin.section = counting.section;
            origin.entry = counting.item;
        }
        if (!origin.entry || !path.element) return;
        origin.element = path.element;
        if (*path.element >= std::max<std::size_t>(TextsOf(*origin.entry).size(), 1)) origin.entry = nullptr;
    }

    void AddOperands(Origin& origin) const {
        std::set<std::pair<Role, std::string_view>> seen;
        for (std::size_t i = 0; i < origin.entry->texts.size(); ++i) {
            if (origin.element && *origin.element != i) continue;
            const std::string_view text = origin.entry->texts[i];
            const Role role = RoleOf(*origin.entry, i);
            if (!text.empty() && seen.emplace(role, text).second) AddNamed(role, text, origin);
        }
    }

private:
    /// One file; the first where the path picks none.
    void FindIncluded(const SectionPath& path, Origin& origin) const {
        std::size_t left = path.element.value_or(0);
        for (const RecordedLine& line : IncludeItems(source_)) {
            if (line.entry->key != path.key || left-- > 0) continue;
            origin.section = line.section;
            origin.entry = line.entry;
            return;
        }
    }

    void AddNamed(Role role, std::string_view text, Origin& origin) const {
        switch (role) {
            case Role::kAction: return AddSection("action", "ACTION", text, origin);
            case Role::kTable: return AddSection("table", "TABLE", text, origin);
            case Role::kGroup: return AddSection("group", "GROUP", text, origin);
            case Role::kPlainNumber:
                if (IsList(*origin.entry)) AddSectionOfId("sensor", "SENSOR", role, text, origin);
                return;
            case Role::kText:
            case Role::kOperator: return;
            default: break;
        }
        if (AddDefinition(role, text, origin)) return;
        if (role == Role::kReference) AddEntry(text, origin);
        if (origin.entry->key == "PID") AddSectionOfId("view", "TAVRGROUP", role, text, origin);
    }

    bool AddDefinition(Role role, std::string_view word, Origin& origin) const {
        const auto name = names_.find(std::string(word));
        if (name == names_.end() || NumberOf(role, word, names_) != name->second) return false;
        OriginStep step = {"definition", std::string(word) + " = " + std::to_string(name->second), {}};
        if (const DebugEntry* const item = words_.Behind(word).item) step.spot = item->spot;
        origin.steps.push_back(step);
        return true;
    }

    /// A global, or a value of the same section.
    void AddEntry(std::string_view key, Origin& origin) const {
        const auto global = globals_.find(key);
        const bool isValue = key.starts_with("VALUE");
        const DebugEntry* const entry = isValue                    ? origin.section->Entry(key)
                                        : global == globals_.end() ? nullptr
                                                                   : global->second;
        if (!entry || entry == origin.entry) return;
        origin.steps.push_back(
            {isValue ? "value" : "global", std::string(key) + " = " + Joined(TextsOf(*entry), ","), entry->spot});
    }

    void AddSection(const char* what, std::string_view keyword, std::string_view name, Origin& origin) const {
        const auto found = sections_.find({keyword, name});
        if (found != sections_.end()) origin.steps.push_back({what, std::string(name), found->second->spot});
    }

    void AddSectionOfId(const char* what, std::string_view keyword, Role role, std::string_view id,
                        Origin& origin) const {
        const std::optional<unsigned> number = NumberOf(role, id, names_);
        const auto found = number ? ids_.find({keyword, *number}) : ids_.end();
        if (found == ids_.end()) return;
        origin.steps.push_back({what, std::string(FirstText(*found->second, "NAME")), found->second->spot});
    }

    template <class Key>
    using Sections = std::map<std::pair<std::string_view, Key>, const DebugSection*>;  // the keyword first

    const DebugSource& source_;
    const std::map<std::string, unsigned>& names_;
    WordItems words_;
    Sections<std::string_view> sections_;
    Sections<unsigned> ids_;
    std::map<std::string_view, const DebugEntry*> globals_;
};

}  // namespace

ShownSection StubOf(const DebugSection& section, const std::map<std::string, unsigned>& names) {
    ShownSection stub;
    if (section.Entry("NAME")) stub.name = FirstText(section, "NAME");
    stub.id = IdOf(section, names);
    return stub;
}

Origin FindOrigin(const DebugSource& source, const std::map<std::string, unsigned>& names, const SectionPath& path) {
    Origin origin;
    const Finder finder(source, names);
    finder.Find(path, origin);
    if (!origin.entry) return origin;
    origin.steps.push_back({"value", TextOf(*origin.entry, origin.element, names), origin.entry->spot});
    origin.steps.push_back({"section", '[' + std::string(origin.section->keyword) + ']', origin.section->spot});
    finder.AddOperands(origin);
    return origin;
}

}  // namespace zek::tool
