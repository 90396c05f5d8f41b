/// The entries of a section as text, for comparison with a table. Relies on section.h.
#pragma once

#include <cstdio>
#include <string>
#include <typeinfo>

#include "model/section.h"

namespace zek::test {

/// "TEXT", "VALUE", ...: the class that the entry is of, whatever its type id says.
inline std::string ClassOf(const CZEKEntry& entry) {
    const std::type_info& type = typeid(entry);
    if (type == typeid(CGEDWORD)) return "DWORD";
    if (type == typeid(CGESTRING)) return "STRING";
    if (type == typeid(CGESTRINGLIST)) return "STRINGLIST";
    if (type == typeid(CGEVALUE)) return "VALUE";
    return type == typeid(CGEREPEATER) ? "REPEATER" : type.name();
}

/// One line per entry from `first` on: class, type id, notation, then for a filled one its key, line and pieces.
inline std::string EntriesOf(const CZEKSection& section, std::size_t first = 0) {
    std::string text;
    for (std::size_t i = first; i < section.m_vpEntry.size(); ++i) {
        const CZEKEntry& entry = *section.m_vpEntry[i];
        char ids[32];
        std::snprintf(ids, sizeof ids, " %08x %u", entry.m_dwType, unsigned{entry.m_eNotation});
        text += ClassOf(entry) + ids;
        if (!entry.m_strName.empty()) {
            text += ' ' + entry.m_strName + ' ' + std::to_string(entry.m_dwLine);
            for (const std::string& piece : entry.m_vstrSubStr) text += " [" + piece + "]";
        }
        text += '\n';
    }
    return text;
}

}  // namespace zek::test
