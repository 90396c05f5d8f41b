#include "yardstick/plain_checks.h"

#include "check/vocabulary.h"

namespace zek::test::plain {

namespace {

std::string Place(const CZEKObj& object) {
    return "Line[" + File(object) + ":" + std::to_string(object.m_dwLine) + "]";
}

bool SameText(const CZEKEntry* a, const CZEKEntry* b) { return Text(a) && Text(b) && *Text(a) == *Text(b); }

/// The number of a text, else of the predefined name, else 0.
unsigned Converted(const std::string& text) {
    unsigned number = 0;
    if (!IsNumber(text, number)) IsPredefined(text, number);
    return number;
}

bool HasId(unsigned sectionType, unsigned id) {
    for (const CZEKSection* section : Sections(sectionType)) {
        const std::string* text = Text(Entry(*section, kID));
        if (text && Converted(*text) == id) return true;
    }
    return false;
}

bool IsListed(unsigned id) {
    for (const CZEKSection* section : Sections(kTavrGroupSection)) {
        const CZEKEntry* sensors = Entry(*section, kSensors);
        if (!HoldsData(sensors)) continue;
        for (const std::string& text : List(*sensors)) {
            if (Converted(text) == id) return true;
        }
    }
    return false;
}

}  // namespace

bool SecondPass::At(const std::string& file, unsigned line, const std::string& text) {
    messages += "Error[" + file + ":" + std::to_string(line) + "]:" + text + "\n";
    return false;
}

bool SecondPass::At(const CZEKEntry& entry, const CZEKSection& section, const std::string& text) {
    return At(File(entry), entry.m_dwLine, " [" + section.m_strName + "]:" + entry.m_strName + text);
}

bool SecondPass::Model() {
    bool valid = true;
    for (const auto* list : CZEKSection::m_svpHSection) {
        for (CZEKSection* section : *list) valid &= Section(*section);
    }
    return valid;
}

bool SecondPass::Section(CZEKSection& section) {
    if (section.m_dwType == kIncludeSection) return true;
    bool valid = InItsKind(section);
    valid &= UniqueKeys(section);
    for (CZEKEntry* entry : section.m_vpEntry) valid &= Entry(*entry, section);
    return valid;
}

bool SecondPass::InItsKind(CZEKSection& section) {
    switch (section.m_dwType) {
        case kQuorzekSection:
        case kSystemSection: return OnlyOne(section);
        case kPropertySection:
        case kGlobalSection:
        case kRepeaterSection: return NewKeys(section);
        case kGroupSection: return GroupParent(section) && NewNameAndId(section);
        case kSensorSection:
        case kDeviceSection:
        case kActionSection:
        case kTableSection:
        case kTavrGroupSection: return NewNameAndId(section);
        default: return true;
    }
}

bool SecondPass::OnlyOne(CZEKSection& section) {
    const auto sections = Sections(section.m_dwType);
    if (sections.front() == &section && sections.size() == 1) return true;
    const std::string& name = section.m_strName;
    return At(File(section), section.m_dwLine,
              " SECTION " + name + " is redefined. The MAX number of " + name + " is one.");
}

bool SecondPass::NewKeys(CZEKSection& section) {
    for (const CZEKSection* earlier : SectionsBefore(section)) {
        for (const CZEKEntry* entry : section.m_vpEntry) {
            for (const CZEKEntry* other : earlier->m_vpEntry) {
                if (!HoldsData(entry) || !HoldsData(other) || entry->m_strName != other->m_strName) continue;
                return At(File(section), entry->m_dwLine,
                          " [" + section.m_strName + "], Entry " + entry->m_strName +
                              " is redefined.It has been defined in " + Place(*other) + ".");
            }
        }
    }
    return true;
}

bool SecondPass::GroupParent(CZEKSection& section) {
    const std::string* parent = Text(section.m_vpEntry.at(0));
    const std::string text = parent ? *parent : "";
    if (text == "0") return true;
    for (const CZEKSection* group : Sections(kGroupSection)) {
        const std::string* name = Text(group->m_vpEntry.at(1));
        if (name && *name == text && group->m_dwLine < section.m_dwLine) return true;
    }
    return At(File(section), section.m_dwLine, " Parent of this group hasn't been defined.");
}

bool SecondPass::NewNameAndId(CZEKSection& section) {
    const CZEKEntry* name = plain::Entry(section, kName);
    const CZEKEntry* id = plain::Entry(section, kID);
    for (const CZEKSection* earlier : SectionsBefore(section)) {
        const CZEKEntry* itsName = plain::Entry(*earlier, kName);
        const CZEKEntry* itsId = plain::Entry(*earlier, kID);
        const std::string begin = " [" + section.m_strName + "], ";
        const std::string end = " is redefined.It has been defined in ";
        if (SameText(name, itsName)) {
            return At(File(section), name->m_dwLine, begin + "NAME " + *Text(name) + end + Place(*itsName) + ".");
        }
        unsigned number = 0;
        unsigned itsNumber = 0;
        if (!Text(id) || !Text(itsId)) continue;
        if (!IsNumber(*Text(id), number) || !IsNumber(*Text(itsId), itsNumber) || number != itsNumber) continue;
        return At(File(section), id->m_dwLine, begin + "ID " + *Text(id) + end + Place(*itsId) + ".");
    }
    return true;
}

bool SecondPass::UniqueKeys(CZEKSection& section) {
    bool valid = true;
    std::vector<CZEKEntry*> slots = section.m_vpEntry;
    for (std::size_t i = 0; i < slots.size(); ++i) {
        for (std::size_t j = i + 1; slots[i] && j < slots.size(); ++j) {
            if (!HoldsData(slots[i]) || !HoldsData(slots[j]) || slots[i]->m_strName != slots[j]->m_strName) continue;
            valid = At(File(section), slots[j]->m_dwLine,
                       " [" + section.m_strName + "], Entry " + slots[j]->m_strName + " is redefined.");
            slots[j] = nullptr;
        }
    }
    return valid;
}

bool SecondPass::Entry(CZEKEntry& entry, CZEKSection& section) {
    if (!HoldsData(&entry)) return true;
    switch (entry.m_dwType & 0xFFFF0000) {
        case 0x10020000: return TextEntry(entry, section);
        case 0x10040000: return SensorList(entry, section);
        case 0x10080000: return Value(entry, section);
        case 0x10100000: return RepeaterItem(entry, section);
        default: return true;
    }
}

bool SecondPass::TextEntry(CZEKEntry& entry, CZEKSection& section) {
    const std::string& text = *Text(&entry);
    const bool group = section.m_dwType == kGroupSection;
    const bool sensor = section.m_dwType == kSensorSection;
    unsigned number = 0;
    if (entry.m_dwType == kParent) {
        if ((group && text == "0") || (!group && !sensor) || Named(kGroupSection, text)) return true;
        return At(entry, section, ", Parent GROUP " + text + " does not exist.");
    }
    if (entry.m_dwType == kPID) {
        IsNumber(text, number);
        if (number == 0 || HasId(kTavrGroupSection, number)) return true;
        return At(entry, section, ", Parent TAVRGROUP with ID " + text + " does not exist.");
    }
    if (entry.m_dwType == kID && sensor) {
        IsNumber(text, number);
        if (IsListed(number)) return true;
        return At(entry, section, ", The parent TAVRGROUP of SENSOR with ID " + text + " does not exist.");
    }
    return true;
}

bool SecondPass::SensorList(CZEKEntry& entry, CZEKSection& section) {
    for (const std::string& text : List(entry)) {
        unsigned number = 0;
        IsNumber(text, number);
        if (HasId(kSensorSection, number)) break;
        At(entry, section, ", The SENSOR with ID " + text + " does not exist.");
    }
    return true;
}

bool SecondPass::RepeaterItem(CZEKEntry& entry, CZEKSection& section) {
    const Pieces pieces = PiecesOf(entry);
    const std::string& count = pieces.strings[0];
    bool valid = Action(entry, section, pieces.strings[1]);
    valid &= HasPrefix(count, "G_") ? Global(entry, section, count) : Digital(entry, section, count);
    for (const std::string& text : pieces.list) {
        if (HasPrefix(text, "G_")) {
            valid &= Global(entry, section, text);
        } else if (!HasPrefix(text, "ARG")) {
            valid &= Digital(entry, section, text);
        }
    }
    valid &= ParamCount(entry, section, pieces.strings[1], static_cast<unsigned>(pieces.list.size()));
    return valid;
}

bool SecondPass::References(CZEKEntry& entry, CZEKSection& section, const std::vector<std::string>& texts,
                            unsigned bound) {
    bool valid = true;
    for (const std::string& text : texts) valid &= Reference(entry, section, text, bound);
    return valid;
}

bool SecondPass::Bus(CZEKEntry& entry, CZEKSection& section, const Pieces& pieces) {
    if (pieces.type == 11 || pieces.type == 12) {
        if (pieces.strings[3] != "0x00") At(File(entry), entry.m_dwLine, "SMBUS address field is wrong!");
        if (pieces.strings[2] != "BUSTYPE_SMBUS") At(File(entry), entry.m_dwLine, " SMBUS type is wrong!");
    }
    bool valid = References(entry, section, {pieces.strings[0], pieces.strings[3]}, 0);
    valid &= Digital(entry, section, pieces.strings[1]);
    valid &= Digital(entry, section, pieces.strings[2]);
    valid &= References(entry, section, pieces.list, 0);
    return valid;
}

bool SecondPass::Value(CZEKEntry& entry, CZEKSection& section) {
    const Pieces pieces = PiecesOf(entry);
    const auto& strings = pieces.strings;
    const auto count = static_cast<unsigned>(pieces.list.size());
    bool valid = true;
    unsigned arguments = 0;
    switch (pieces.type) {
        case 1:
        case 101:
        case 103: return Reference(entry, section, strings[0], 0);
        case 2:
            valid = References(entry, section, {strings[1], strings[2]}, 0);
            if (GetOperator(strings[0]) >= 101) valid &= References(entry, section, {strings[3], strings[4]}, 0);
            return valid;
        case 3:
            valid = Action(entry, section, strings[0]);
            for (const std::string& text : pieces.list)
                arguments += HasPrefix(text, "ARG") && section.m_strName != "ACTION";
            valid &= References(entry, section, pieces.list, arguments);
            valid &= ParamCount(entry, section, strings[0], count);
            return valid;
        case 4:
        case 5:
        case 8:
        case 9:
        case 11:
        case 12: return Bus(entry, section, pieces);
        case 6:
            valid = Digital(entry, section, strings[0]);
            valid &= Digital(entry, section, strings[1]);
            valid &= References(entry, section, pieces.list, 0);
            return valid;
        case 7: return References(entry, section, pieces.list, 0);
        case 10:
            valid = Table(entry, section, strings[0]);
            valid &= Reference(entry, section, strings[1], 0);
            return valid;
        case 102:
            valid = Reference(entry, section, strings[0], 0);
            valid &= Action(entry, section, strings[1]);
            valid &= References(entry, section, pieces.list, 0);
            valid &= ParamCount(entry, section, strings[1], count);
            return valid;
        case 104: return ValueName(entry, section, strings[0]);
        default: return true;
    }
}

bool SecondPass::Digital(CZEKEntry& entry, CZEKSection& section, const std::string& text) {
    unsigned number = 0;
    if (IsNumber(text, number) || IsPredefined(text, number)) return true;
    return At(entry, section, ", " + text + " has not been defined and is not a valid number.");
}

bool SecondPass::Argument(CZEKEntry& entry, CZEKSection& section, const std::string& name, unsigned bound) {
    bool sound = true;
    if (section.m_strName == "ACTION") {
        const std::string* text = Text(plain::Entry(section, kArgNumber));
        bound = 0;
        if (text) sound = IsNumber(*text, bound);
    }
    unsigned number = 0;
    if (sound && IsNumber(name.substr(3), number) && number <= bound) return true;
    return At(entry, section, ", The ARG name " + name + " is invalid.");
}

bool SecondPass::Reference(CZEKEntry& entry, CZEKSection& section, const std::string& text, unsigned bound) {
    if (HasPrefix(text, "VALUE_")) return ValueName(entry, section, text);
    if (HasPrefix(text, "ARG")) return Argument(entry, section, text, bound);
    if (HasPrefix(text, "G_")) return Global(entry, section, text);
    return Digital(entry, section, text);
}

bool SecondPass::Named(unsigned sectionType, const std::string& name) {
    for (const CZEKSection* section : Sections(sectionType)) {
        const std::string* text = Text(plain::Entry(*section, kName));
        if (text && *text == name) return true;
    }
    return false;
}

bool SecondPass::Global(CZEKEntry& entry, CZEKSection& section, const std::string& name) {
    for (const CZEKSection* globals : Sections(kGlobalSection)) {
        for (const CZEKEntry* global : globals->m_vpEntry) {
            if (global->m_dwType == kGlobal && global->m_strName == name) return true;
        }
    }
    return At(entry, section, ", The GLOBAL entry with NAME " + name + " does not exist.");
}

bool SecondPass::Table(CZEKEntry& entry, CZEKSection& section, const std::string& name) {
    return Named(kTableSection, name) || At(entry, section, ", The TABLE with NAME " + name + " does not exist.");
}

bool SecondPass::Action(CZEKEntry& entry, CZEKSection& section, const std::string& name) {
    return Named(kActionSection, name) || At(entry, section, ", The ACTION with NAME " + name + " does not exist.");
}

bool SecondPass::ParamCount(CZEKEntry& entry, CZEKSection& section, const std::string& name, unsigned count) {
    for (const CZEKSection* action : Sections(kActionSection)) {
        const std::string* text = Text(plain::Entry(*action, kName));
        if (!text || *text != name) continue;
        unsigned needed = 0;
        const std::string* number = Text(plain::Entry(*action, kArgNumber));
        if (number && !IsNumber(*number, needed)) needed = 0;
        if (count == needed) return true;
        return At(entry, section,
                  " The ACTION " + name + " needs " + std::to_string(needed) + " PARAMS, but total " +
                      std::to_string(count) + " PARAMS here.");
    }
    return false;
}

bool SecondPass::ValueName(CZEKEntry& entry, CZEKSection& section, const std::string& name) {
    for (const CZEKEntry* other : section.m_vpEntry) {
        if (other->m_dwType == kActionValue && other->m_strName == name) return true;
    }
    return At(entry, section, ", The VALUE name " + name + " is not valid in this section.");
}

}  // namespace zek::test::plain
