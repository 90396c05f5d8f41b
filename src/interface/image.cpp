#include "zekcomp/image.h"

#include <algorithm>

#include "compile/compile.h"
#include "compile/image_file.h"
#include "compile/state.h"
#include "compile/tables.h"
#include "interface/value_fields.h"
#include "zekcomp/errors.h"

namespace zek {

namespace {

constexpr unsigned kNone = 0xFFFFFFFF;
constexpr unsigned kNameKeyword = kIdKeyword | 0x15;

/// Sets the slot and gives the result.
template <class Result>
Result Answer(ErrorCode code, Result result) {
    gcSetLastError(code);
    return result;
}

tagGCVALUE Nothing(ErrorCode code) { return Answer(code, tagGCVALUE{0, kNone, {0}}); }

tagGCVALUE Resolved(unsigned word) {
    const tagGCVALUE value = GetTblData(word);
    return Answer(value.dwKind == 0 ? kValueUnresolved : kNoError, value);
}

/// What a look-up among all sections of a kind gave; the codes tell whether there were sections and candidates.
tagGCSECT* AnswerFound(unsigned section, const Found& found, ErrorCode noMatch, ErrorCode noCandidate) {
    if (found.section) return Answer(kNoError, found.section);
    const bool any = !g_imageIndex.Sections(section).empty();
    return Answer<tagGCSECT*>(!any ? kNoSection : found.compared ? noMatch : noCandidate, nullptr);
}

/// Entry and, where the host asks for it, its name identifier.
tagGCENTRY* AnswerEntry(tagGCENTRY& entry, unsigned* name) {
    if (name) *name = entry.dwName;
    return Answer(kNoError, &entry);
}

/// The first entry that the test takes, or null with the code for a section with entries.
template <class Test>
tagGCENTRY* FirstEntry(tagGCSECT* section, unsigned* name, ErrorCode noMatch, Test&& test) {
    if (!section) return Answer<tagGCENTRY*>(kNoSection, nullptr);
    const auto entry = std::find_if(section->vEntries.begin(), section->vEntries.end(), test);
    if (entry != section->vEntries.end()) return AnswerEntry(*entry, name);
    return Answer<tagGCENTRY*>(section->vEntries.empty() ? kNoEntry : noMatch, nullptr);
}

tagGCVALUE SelectedWord(const tagGCENTRY& entry, unsigned type, unsigned field) {
    const std::optional<std::size_t> word = WordOfField(type, field, entry.vdwValues.size());
    if (!word || entry.vdwValues[*word] == kIdUnresolved) return Nothing(kNoData);
    return Resolved(entry.vdwValues[*word]);
}

}  // namespace

}  // namespace zek

using zek::Answer;

unsigned gcInit(const std::string& file, tagMETAFILEINFO* info) {
    const std::vector<tagGCSECT*> before = g_GCHead;
    const bool loaded = ReadMeta(file, info);
    if (g_GCHead != before) {
        for (const tagGCSECT* section : before) delete section;
    }
    return loaded ? Answer(zek::kNoError, 1U) : Answer(zek::kBadMagic, 0U);
}

unsigned gcUnInit() {
    CompDestory();
    return 1;
}

unsigned gcGetSectCount(unsigned section) {
    return Answer(zek::kNoError, static_cast<unsigned>(zek::g_imageIndex.Sections(section).size()));
}

tagGCSECT* gcGetSectByIndex(unsigned section, unsigned index) {
    const std::vector<tagGCSECT*>& sections = zek::g_imageIndex.Sections(section);
    if (index < sections.size()) return Answer(zek::kNoError, sections[index]);
    return Answer<tagGCSECT*>(sections.empty() ? zek::kNoSection : zek::kOutOfRange, nullptr);
}

tagGCSECT* gcGetSectByName(unsigned section, const std::string& name) {
    return zek::AnswerFound(section, zek::g_imageIndex.Named(section, name), zek::kNoSuchName, zek::kNoNames);
}

tagGCSECT* gcGetSectByID(unsigned section, unsigned number) {
    return zek::AnswerFound(section, zek::g_imageIndex.WithID(section, number), zek::kNoSuchID, zek::kNoIDs);
}

unsigned gcGetEntryCount(tagGCSECT* section) {
    if (!section) return Answer(zek::kNoSection, zek::kNone);
    return Answer(zek::kNoError, static_cast<unsigned>(section->vEntries.size()));
}

tagGCENTRY* gcGetEntryByIndex(tagGCSECT* section, unsigned index, unsigned* name) {
    if (!section) return Answer<tagGCENTRY*>(zek::kNoSection, nullptr);
    if (index >= section->vEntries.size()) return Answer<tagGCENTRY*>(zek::kOutOfRange, nullptr);
    return zek::AnswerEntry(section->vEntries[index], name);
}

tagGCENTRY* gcGetEntryByName(tagGCSECT* section, const std::string& name, unsigned* id) {
    return zek::FirstEntry(section, id, zek::kNoSuchName, [&name](const tagGCENTRY& entry) {
        const tagGCVALUE own = GetTblData(entry.dwName);
        return own.dwKind == 2 && name == own.pszName;
    });
}

tagGCENTRY* gcGetEntryByType(tagGCSECT* section, unsigned name) {
    return zek::FirstEntry(section, nullptr, zek::kNoEntry, [name](const tagGCENTRY& entry) { return entry.dwName == name; });
}

unsigned gcGetValueCount(tagGCENTRY* entry) {
    if (!entry) return Answer(zek::kNoEntry, zek::kNone);
    return Answer(zek::kNoError, static_cast<unsigned>(entry->vdwValues.size()));
}

tagGCVALUE gcGetValueByIndex(tagGCENTRY* entry, unsigned index) {
    if (!entry) return zek::Nothing(zek::kNoEntry);
    if (entry->vdwValues.empty()) return zek::Nothing(zek::kNoData);
    if (index >= entry->vdwValues.size()) return zek::Nothing(zek::kOutOfRange);
    return zek::Resolved(entry->vdwValues[index]);
}

tagGCVALUE gcGetValueByID(tagGCENTRY* entry, unsigned field) {
    if (!entry) return zek::Nothing(zek::kNoEntry);
    const unsigned nameClass = entry->dwName & zek::kIdClassMask;
    if (nameClass == zek::kIdRepeater) return zek::SelectedWord(*entry, zek::kRepeaterFields, field);
    if (nameClass != zek::kIdValue && nameClass != zek::kIdGlobal) return zek::Nothing(zek::kWrongClass);
    if (entry->vdwValues.empty()) return zek::Nothing(zek::kNoData);
    const tagGCVALUE type = GetTblData(entry->vdwValues[0]);
    if (type.dwKind != 1) return zek::Nothing(zek::kValueUnresolved);
    if (field == zek::kTypeField) return Answer(zek::kNoError, type);
    return zek::SelectedWord(*entry, static_cast<unsigned>(type.qwNumber), field);
}

unsigned gcGetTableData(unsigned table, unsigned char* out) {
    // In 32 bits the class of a table-name identifier shifts out, so it selects the same block as its ordinal.
    const std::size_t start = table * zek::kTableBlockSize;
    if (start + zek::kTableBlockSize > g_tblTableData.size()) return Answer(zek::kOutOfRange, 0U);
    std::copy_n(g_tblTableData.data() + start, zek::kTableBlockSize, out);
    return Answer(zek::kNoError, 1U);
}

unsigned gcGetGroupIndex(const std::string& name) {
    const tagGCSECT* group = gcGetSectByName(zek::kImageGroup, name);
    if (!group) return name == "0" ? Answer(zek::kNoError, 0U) : Answer(zek::kNoSection, zek::kNone);
    for (const tagGCENTRY& entry : group->vEntries) {
        if (entry.dwName != zek::kNameKeyword || entry.vdwValues.empty()) continue;
        return Answer(zek::kNoError, entry.vdwValues[0] & zek::kIdOrdinalMask);
    }
    return Answer(zek::kNoNames, zek::kNone);
}
