/// The second pass of the check as its rules are told, with a walk for every question. Relies on plain_model.h.
#pragma once

#include <string>

#include "yardstick/plain_model.h"

namespace zek::test::plain {

class SecondPass {
public:
    /// All sections; each reports everything.
    bool Model();
    bool Section(CZEKSection& section);

    bool Global(CZEKEntry& entry, CZEKSection& section, const std::string& name);
    bool Table(CZEKEntry& entry, CZEKSection& section, const std::string& name);
    bool Action(CZEKEntry& entry, CZEKSection& section, const std::string& name);
    bool ParamCount(CZEKEntry& entry, CZEKSection& section, const std::string& name, unsigned count);
    bool ValueName(CZEKEntry& entry, CZEKSection& section, const std::string& name);

    /// What was reported since it was last emptied.
    std::string messages;

private:
    bool OnlyOne(CZEKSection& section);
    bool NewKeys(CZEKSection& section);
    bool GroupParent(CZEKSection& section);
    bool NewNameAndId(CZEKSection& section);
    bool InItsKind(CZEKSection& section);
    bool UniqueKeys(CZEKSection& section);

    bool Entry(CZEKEntry& entry, CZEKSection& section);
    bool TextEntry(CZEKEntry& entry, CZEKSection& section);
    bool SensorList(CZEKEntry& entry, CZEKSection& section);
    bool RepeaterItem(CZEKEntry& entry, CZEKSection& section);
    bool Value(CZEKEntry& entry, CZEKSection& section);
    bool Bus(CZEKEntry& entry, CZEKSection& section, const Pieces& pieces);
    bool References(CZEKEntry& entry, CZEKSection& section, const std::vector<std::string>& texts, unsigned bound);

    bool Digital(CZEKEntry& entry, CZEKSection& section, const std::string& text);
    bool Argument(CZEKEntry& entry, CZEKSection& section, const std::string& name, unsigned bound);
    bool Reference(CZEKEntry& entry, CZEKSection& section, const std::string& text, unsigned bound);
    bool Named(unsigned sectionType, const std::string& name);

    /// Reports `text` behind file, line, section and key of an entry; false.
    bool At(const CZEKEntry& entry, const CZEKSection& section, const std::string& text);
    /// Reports `text` behind a file and a line; false.
    bool At(const std::string& file, unsigned line, const std::string& text);
};

}  // namespace zek::test::plain
