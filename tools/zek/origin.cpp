#include "origin.h"

#include <algorithm>
#include <optional>
#include <set>

#include "debug_layout.h"
#include "debug_lines.h"
#include "zekcomp/predefined.h"
#include "zekcomp/value_shapes.h"

namespace zek::tool {
namespace {

// Type ids of entries: the class in the upper half, and the texts that are numbers.
constexpr unsigned kListClass = kSensorsKey >> 16;
constexpr unsigned kValueClass = ValueKey(0) >> 16;
constexpr unsigned kRepeaterClass = kRepeaterKey >> 16;
constexpr unsigned kNumericMask = 0xFFFFF000;

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

std::string_view FirstText(const DebugSection& section, std::string_view key) {
    const DebugEntry* const entry = section.Entry(key);
    return entry && !entry->texts.empty() ? entry->texts[0] : std::string_view();
}

/// What a text of an entry can be.
enum class Role { kText, kWord, kReference, kAction, kTable, kGroup, kSensor, kView };

Role RoleOfOperand(unsigned valueType, std::size_t at) {
    const ValueShape* const shape = ShapeOf(valueType);
    switch (shape && at < shape->operands.size() ? shape->operands[at] : static_cast<char>(kReference)) {
        case kActionOperand: return Role::kAction;
        case kTableOperand: return Role::kTable;
        case kOperatorOperand: return Role::kText;
        case kNumberOperand: return Role::kWord;
        default: return Role::kReference;
    }
}

Role RoleOf(const DebugSection& section, const DebugEntry& entry, std::size_t at) {
    constexpr Role kRepeaterRoles[] = {Role::kWord, Role::kAction, Role::kReference};
    const bool isView = section.keyword == "TAVRGROUP";
    switch (entry.type >> 16) {
        case kValueClass: return at == 0 ? Role::kWord : RoleOfOperand(entry.number, at - 1);
        case kRepeaterClass: return kRepeaterRoles[std::min<std::size_t>(at, 2)];
        case kListClass: return isView && entry.key == "SENSORS" ? Role::kSensor : Role::kText;
        default: break;
    }
    if (entry.key == "PARENT") return Role::kGroup;
    if (isView && entry.key == "PID") return Role::kView;
    return IsDefinition(section) || (entry.type & kNumericMask) == NumericKey(0) ? Role::kWord : Role::kText;
}

/// Finds what texts name, where several have a name the first.
class Finder {
public:
    Finder(const DebugSource& source, const std::map<std::string, unsigned>& names) : source_(source), names_(names) {
        for (const DebugSection& section : source.sections) {
            if (const auto id = IdOf(section)) ids_.emplace(std::pair(section.keyword, *id), &section);
            sections_.emplace(std::pair(section.keyword, FirstText(section, "NAME")), &section);
            const bool isGlobal = section.keyword == "GLOBAL";
            if (!isGlobal && !IsDefinition(section)) continue;
            for (const DebugEntry& entry : section.entries) {
                if (entry.given && isGlobal) globals_.emplace(entry.key, &entry);
                if (entry.given && !isGlobal && entry.texts.empty()) definitions_[entry.key].push_back(&entry);
            }
        }
    }

    void Find(const SectionPath& path, Origin& origin) const {
        for (const DebugSection& section : source_.sections) {
            if (section.keyword != path.keyword || !IsMeant(path, Stub(section))) continue;
            origin.entry = section.Entry(path.key);
            origin.section = &section;
            if (origin.entry) return;
        }
    }

    void AddOperands(Origin& origin) const {
        std::set<std::pair<Role, std::string_view>> seen;
        for (std::size_t i = 0; i < origin.entry->texts.size(); ++i) {
            const std::string_view text = origin.entry->texts[i];
            const Role role = RoleOf(*origin.section, *origin.entry, i);
            if (!text.empty() && seen.emplace(role, text).second) AddNamed(role, text, origin);
        }
    }

private:
    std::optional<unsigned> NumberOf(std::string_view text) const {
        unsigned number = 0;
        if (StringToLong(std::string(text), &number)) return number;
        const auto name = names_.find(std::string(text));
        return name == names_.end() ? std::nullopt : std::optional(name->second);
    }
    std::optional<unsigned> IdOf(const DebugSection& section) const { return NumberOf(FirstText(section, "ID")); }

    /// What a path compares.
    ShownSection Stub(const DebugSection& section) const {
        ShownSection stub;
        if (section.Entry("NAME")) stub.name = FirstText(section, "NAME");
        stub.id = IdOf(section);
        return stub;
    }

    void AddNamed(Role role, std::string_view text, Origin& origin) const {
        switch (role) {
            case Role::kText: return;
            case Role::kAction: return AddSection("action", "ACTION", text, origin);
            case Role::kTable: return AddSection("table", "TABLE", text, origin);
            case Role::kGroup: return AddSection("group", "GROUP", text, origin);
            default: break;
        }
        if (AddDefinition(text, origin)) return;
        if (role == Role::kReference) AddEntry(text, origin);
        if (role == Role::kSensor) AddSectionOfId("sensor", "SENSOR", text, origin);
        if (role == Role::kView) AddSectionOfId("view", "TAVRGROUP", text, origin);
    }

    /// A word may be defined several times; the image tells which number it has in the end.
    bool AddDefinition(std::string_view word, Origin& origin) const {
        const auto name = names_.find(std::string(word));
        if (name == names_.end()) return false;
        OriginStep step = {"definition", std::string(word) + " = " + std::to_string(name->second), {}};
        const auto definitions = definitions_.find(word);
        if (definitions != definitions_.end()) {
            for (const DebugEntry* const entry : definitions->second) {
                if (entry->number == name->second || step.spot.line == 0) step.spot = entry->spot;
            }
        }
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
            {isValue ? "value" : "global", std::string(key) + " = " + Joined(entry->texts), entry->spot});
    }

    void AddSection(const char* what, std::string_view keyword, std::string_view name, Origin& origin) const {
        const auto found = sections_.find({keyword, name});
        if (found != sections_.end()) origin.steps.push_back({what, std::string(name), found->second->spot});
    }

    void AddSectionOfId(const char* what, std::string_view keyword, std::string_view id, Origin& origin) const {
        const std::optional<unsigned> number = NumberOf(id);
        const auto found = number ? ids_.find({keyword, *number}) : ids_.end();
        if (found == ids_.end()) return;
        origin.steps.push_back({what, std::string(FirstText(*found->second, "NAME")), found->second->spot});
    }

    template <class Key>
    using Sections = std::map<std::pair<std::string_view, Key>, const DebugSection*>;  // the keyword first

    const DebugSource& source_;
    const std::map<std::string, unsigned>& names_;
    Sections<std::string_view> sections_;
    Sections<unsigned> ids_;
    std::map<std::string_view, const DebugEntry*> globals_;
    std::map<std::string_view, std::vector<const DebugEntry*>> definitions_;
};

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

IncludeWays::IncludeWays(const DebugSource& source) : source_(source) {
    for (const DebugSection& section : source.sections) {
        if (section.keyword != "INCLUDE") continue;
        for (const DebugEntry& item : section.entries) {
            if (!item.given || item.spot.file >= source.files.size()) continue;
            items_.emplace(AskedName(source.files[item.spot.file], item), &item);
        }
    }
}

std::vector<SourceSpot> IncludeWays::To(std::uint32_t file) const {
    std::vector<SourceSpot> way;
    // No file leads to itself in a source that was compiled, but a damaged image may say so.
    while (file < source_.files.size() && way.size() < source_.files.size()) {
        const auto item = items_.find(source_.files[file]);
        if (item == items_.end() || item->second->spot.file == file) break;
        way.push_back(item->second->spot);
        file = item->second->spot.file;
    }
    return way;
}

}  // namespace zek::tool
