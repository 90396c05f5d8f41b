/// The source model as text, for comparison as a whole. Relies on the model.
#pragma once

#include <fstream>
#include <stdexcept>
#include <string>

#include "check/vocabulary.h"
#include "model/section.h"
#include "support/process_test.h"

namespace zek::test {

inline std::string ValueText(CZEKEntry* entry) {
    std::string text(1 << 16, '\0');
    EXPECT_EQ(gdGetValue(entry, text.data()), 1U);
    return text.c_str();
}

/// One line per section: its name, line and file, then key and value of every entry that holds data.
inline std::string ModelText() {
    std::string text;
    for (const zek::SectionList* list : CZEKSection::m_svpHSection) {
        for (CZEKSection* section : *list) {
            text += section->m_strName + '@' + std::to_string(section->m_dwLine) + ' ' + section->GetFile(0) + ':';
            for (CZEKEntry* entry : section->m_vpEntry) {
                if (entry->m_ZekEntryData.GetData()) text += ' ' + entry->m_strName + '=' + ValueText(entry);
            }
            text += '\n';
        }
    }
    return text;
}

/// The predefined names in order, as NAME=NUMBER.
inline std::string NamesText() {
    std::string text;
    for (const auto& [name, value] : g_tblPreDefine) {
        text += (text.empty() ? "" : " ") + name + '=' + std::to_string(value);
    }
    return text;
}

/// What `load` gave, or the text of what it threw.
template <class Load>
std::string Outcome(Load&& load) {
    try {
        return std::to_string(load());
    } catch (const std::out_of_range& error) {
        return error.what();
    }
}

inline constexpr char kOutOfRangeText[] = "vector::_M_range_check";

/// The outcome of loading these bytes as a debug image.
inline std::string Loaded(const std::string& image, tagMETAFILEINFO* info = nullptr) {
    std::ofstream("loaded.metad", std::ios::binary) << image;
    return Outcome([info] { return gdInit("loaded.metad", info); });
}

}  // namespace zek::test
