#include "yardstick/plain_queries.h"

#include <map>
#include <optional>

#include "compile/compile.h"
#include "compile/tables.h"

namespace zek::test::plain {

namespace {

constexpr unsigned kNone = 0xFFFFFFFF;

tagGCVALUE Nothing(unsigned identifier) { return {0, identifier, {0}}; }

Answer<tagGCVALUE> Failed(unsigned code) { return {Nothing(kNone), code}; }

tagGCVALUE NumberValue(unsigned identifier, unsigned number) { return {1, identifier, {number}}; }

tagGCVALUE InNames(const std::map<std::string, unsigned>& table, unsigned identifier) {
    for (const auto& [name, its] : table) {
        if (its != identifier) continue;
        tagGCVALUE value{2, identifier, {0}};
        value.pszName = name.c_str();
        return value;
    }
    return Nothing(identifier);
}

tagGCVALUE InNumbers(unsigned identifier) {
    for (const auto& [number, its] : g_tblDword) {
        if (its == identifier) return number == kNone ? Nothing(identifier) : NumberValue(identifier, number);
    }
    return Nothing(identifier);
}

/// The names that an entry offers in gcGetSectByName: none, or one that may resolve to no name text.
std::optional<tagGCVALUE> Candidate(unsigned section, const tagGCENTRY& entry) {
    if (entry.dwName == 0x02000015 && !entry.vdwValues.empty()) return Resolved(entry.vdwValues[0]);
    if (section == 0x01000002 || section == 0x0100000a || section == 0x0100000b) return Resolved(entry.dwName);
    return {};
}

/// The word that a field selects by value type, for entries of `count` words, as the table of fields has it.
std::optional<unsigned> WordOf(unsigned type, unsigned field, unsigned count) {
    const auto list = [field](unsigned base, unsigned most, unsigned offset) -> std::optional<unsigned> {
        if (field < base || field - base > most) return {};
        return field - base + offset;
    };
    const auto one = [&list](unsigned base, unsigned word) { return list(base, 0, word); };
    const auto first = [](std::initializer_list<std::optional<unsigned>> words) -> std::optional<unsigned> {
        for (const auto& word : words) {
            if (word) return word;
        }
        return {};
    };
    const auto bus = [&] { return first({one(0x80000, 1), one(0x90000, 2), one(0xa0000, 3), one(0xb0000, 4)}); };
    switch (type) {
        case 1: return count == 2 ? one(0x20000, 1) : std::nullopt;
        case 2:
            if (count == 4) return first({one(0x30000, 1), list(0x40000, 2, 1)});
            return count == 6 ? first({one(0x30000, 1), list(0x40000, 2, 1), list(0x50000, 2, 3)}) : std::nullopt;
        case 3: return count >= 2 ? first({one(0x60000, 1), list(0x70000, count - 2, 1)}) : std::nullopt;
        case 4:
        case 8:
        case 12: return count >= 5 ? bus() : std::nullopt;
        case 5:
        case 9:
        case 11: return count >= 6 ? first({bus(), list(0xc0000, count - 5, 4)}) : std::nullopt;
        case 6:
            return count >= 3 ? first({one(0xd0000, 1), one(0xe0000, 2), list(0xf0000, count - 3, 2)}) : std::nullopt;
        case 7: return count <= 5 ? list(0x100000, count - 1, 0) : std::nullopt;
        case 10: return count == 3 ? first({one(0x120000, 1), one(0x130000, 2)}) : std::nullopt;
        case 101: return count == 2 ? one(0x140000, 1) : std::nullopt;
        case 102:
            return count >= 3 ? first({one(0x150000, 1), one(0x170000, 2), list(0x180000, count - 3, 2)})
                              : std::nullopt;
        case 103: return count == 2 ? one(0x190000, 1) : std::nullopt;
        case 104: return count == 2 ? one(0x1a0000, 1) : std::nullopt;
        default: return {};
    }
}

std::optional<unsigned> RepeaterWordOf(unsigned field, unsigned count) {
    if (count < 2) return {};
    if (field == 0x160000) return 0;
    if (field == 0x170000) return 1;
    if (field >= 0x180000 && field - 0x180000 <= count - 2) return field - 0x180000 + 1;
    return {};
}

Answer<tagGCVALUE> Selected(const tagGCENTRY& entry, std::optional<unsigned> word) {
    if (!word || entry.vdwValues.at(*word) == kNone) return Failed(3);
    const tagGCVALUE value = Resolved(entry.vdwValues[*word]);
    return {value, value.dwKind == 0 ? 10U : 0U};
}

}  // namespace

tagGCVALUE Resolved(unsigned identifier) {
    switch (identifier & 0xFF000000) {
        case 0x03000000: return InNames(g_tblProperty, identifier);
        case 0x04000000: return InNames(g_tblGlobal, identifier);
        case 0x05000000: return InNames(g_tblValue, identifier);
        case 0x06000000: return InNames(g_tblRepeater, identifier);
        case 0x11000000: return InNumbers(identifier);
        case 0x12000000: return InNames(g_tblString, identifier);
        case 0x18000000: return InNames(g_tblGroup, identifier);
        case 0x1a000000: return InNames(g_tblAction, identifier);
        case 0x1c000000: return InNames(g_tblTableName, identifier);
        case 0x1d000000:
        case 0x1e000000:
        case 0x1f000000: return NumberValue(identifier, identifier & 0x00FFFFFF);
        default: return Nothing(identifier);
    }
}

std::vector<tagGCSECT*> ImageSections(unsigned identifier) {
    std::vector<tagGCSECT*> sections;
    for (tagGCSECT* section : g_GCHead) {
        if (section->dwSect == identifier) sections.push_back(section);
    }
    return sections;
}

Answer<tagGCSECT*> SectionByIndex(unsigned identifier, unsigned index) {
    const auto sections = ImageSections(identifier);
    if (sections.empty()) return {nullptr, 1};
    if (index >= sections.size()) return {nullptr, 4};
    return {sections[index], 0};
}

Answer<tagGCSECT*> SectionByName(unsigned identifier, const std::string& name) {
    const auto sections = ImageSections(identifier);
    if (sections.empty()) return {nullptr, 1};
    unsigned examined = 0;
    for (tagGCSECT* section : sections) {
        for (const tagGCENTRY& entry : section->vEntries) {
            const std::optional<tagGCVALUE> candidate = Candidate(identifier, entry);
            if (!candidate) continue;
            ++examined;
            if (candidate->dwKind == 2 && candidate->pszName == name) return {section, 0};
        }
    }
    return {nullptr, examined > 0 ? 7U : 8U};
}

Answer<tagGCSECT*> SectionById(unsigned identifier, unsigned number) {
    const auto sections = ImageSections(identifier);
    if (sections.empty()) return {nullptr, 1};
    unsigned compared = 0;
    for (tagGCSECT* section : sections) {
        for (const tagGCENTRY& entry : section->vEntries) {
            if (entry.dwName != 0x02000008 || entry.vdwValues.empty()) continue;
            ++compared;
            const tagGCVALUE id = Resolved(entry.vdwValues[0]);
            if (id.dwKind == 1 && id.qwNumber == number) return {section, 0};
        }
    }
    return {nullptr, compared > 0 ? 5U : 6U};
}

Answer<tagGCENTRY*> EntryByIndex(tagGCSECT& section, unsigned index) {
    if (index >= section.vEntries.size()) return {nullptr, 4};
    return {&section.vEntries[index], 0};
}

Answer<tagGCENTRY*> EntryByName(tagGCSECT& section, const std::string& name) {
    if (section.vEntries.empty()) return {nullptr, 2};
    for (tagGCENTRY& entry : section.vEntries) {
        const tagGCVALUE own = Resolved(entry.dwName);
        if (own.dwKind == 2 && own.pszName == name) return {&entry, 0};
    }
    return {nullptr, 7};
}

Answer<tagGCENTRY*> EntryByType(tagGCSECT& section, unsigned identifier) {
    for (tagGCENTRY& entry : section.vEntries) {
        if (entry.dwName == identifier) return {&entry, 0};
    }
    return {nullptr, 2};
}

Answer<tagGCVALUE> ValueByIndex(const tagGCENTRY& entry, unsigned index) {
    if (entry.vdwValues.empty()) return Failed(3);
    if (index >= entry.vdwValues.size()) return Failed(4);
    const tagGCVALUE value = Resolved(entry.vdwValues[index]);
    return {value, value.dwKind == 0 ? 10U : 0U};
}

Answer<tagGCVALUE> ValueById(const tagGCENTRY& entry, unsigned field) {
    const unsigned itsClass = entry.dwName & 0xFF000000;
    const auto count = static_cast<unsigned>(entry.vdwValues.size());
    if (itsClass == 0x06000000) return Selected(entry, RepeaterWordOf(field, count));
    if (itsClass != 0x05000000 && itsClass != 0x04000000) return Failed(11);
    if (count == 0) return Failed(3);
    const tagGCVALUE type = Resolved(entry.vdwValues[0]);
    if (type.dwKind != 1) return Failed(10);
    if (field == 0x10000) return {type, 0};
    return Selected(entry, WordOf(static_cast<unsigned>(type.qwNumber), field, count));
}

Answer<unsigned> GroupIndex(const std::string& name) {
    const Answer<tagGCSECT*> group = SectionByName(0x01000004, name);
    if (!group.result && name == "0") return {0, 0};
    if (!group.result) return {kNone, 1};
    for (const tagGCENTRY& entry : group.result->vEntries) {
        if (entry.dwName == 0x02000015 && !entry.vdwValues.empty()) return {entry.vdwValues[0] & 0x00FFFFFF, 0};
    }
    return {kNone, 8};
}

}  // namespace zek::test::plain
