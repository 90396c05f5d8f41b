#include "zekcomp/image.h"

#include <algorithm>

#include "compile/compile.h"
#include "compile/image_file.h"
#include "compile/state.h"
#include "compile/tables.h"
#include "compile/value_fields.h"
#include "interface/answer.h"

namespace zek {

namespace {

constexpr unsigned kNone = 0xFFFFFFFF;

/// Frees the sections of an earlier image once they are no longer listed, also when loading runs out of memory.
class ReplacedSections {
public:
    ReplacedSections() = default;
    ~ReplacedSections() {
        if (g_GCHead == before_) return;
        for (const tagGCSECT* section : before_) delete section;
    }
    ReplacedSections(const ReplacedSections&) = delete;
    ReplacedSections& operator=(const ReplacedSections&) = delete;

private:
    const std::vector<tagGCSECT*> before_ = g_GCHead;
};

// What is rare is a call, so that the queries of a value save nothing and end with a jump.

[[gnu::noinline]] tagGCVALUE Nothing(ErrorCode code) { return AnswerGc(code, tagGCVALUE{0, kNone, {0}}); }

[[gnu::noinline]] tagGCVALUE AnswerResolved(unsigned word) {
    const tagGCVALUE value = GetTblData(word);
    return AnswerGc(value.dwKind == 0 ? kValueUnresolved : kNoError, value);
}

tagGCVALUE Resolved(unsigned word) {
    tagGCVALUE value;
    return g_resolver.AtOnce(word, value) ? AnswerGc(kNoError, value) : AnswerResolved(word);
}

/// What a look-up among all sections of a kind gave; the codes tell whether there were sections and candidates.
tagGCSECT* AnswerFound(unsigned section, const Found& found, ErrorCode noMatch, ErrorCode noCandidate) {
    if (found.section) return AnswerGc(kNoError, found.section);
    const bool any = !g_imageIndex.Sections(section).empty();
    return AnswerGc<tagGCSECT*>(!any ? kNoSection : found.compared ? noMatch : noCandidate, nullptr);
}

/// Entry and, where the host asks for it, its name identifier.
tagGCENTRY* AnswerEntry(tagGCENTRY& entry, unsigned* name) {
    if (name) *name = entry.dwName;
    return AnswerGc(kNoError, &entry);
}

tagGCVALUE ValueAt(const tagGCENTRY& entry, std::size_t word) {
    if (word == kNoWord || entry.vdwValues[word] == kIdUnresolved) return Nothing(kNoData);
    return Resolved(entry.vdwValues[word]);
}

/// A field of a value or global that is not found ready, and the type itself.
[[gnu::noinline]] tagGCVALUE FieldByType(const tagGCENTRY& entry, unsigned field) {
    const tagGCVALUE type = GetTblData(entry.vdwValues[0]);
    if (type.dwKind != kNumberKind) return Nothing(kValueUnresolved);
    if (field == kTypeField) return AnswerGc(kNoError, type);
    return ValueAt(entry, WordByRows(static_cast<unsigned>(type.qwNumber), field, entry.vdwValues.size()));
}

tagGCVALUE FieldOfValue(const tagGCENTRY& entry, unsigned field) {
    const std::vector<unsigned>& words = entry.vdwValues;
    if (words.empty()) return Nothing(kNoData);
    // A type word of the compiler is an immediate.
    const unsigned type = words[0] - kIdValueType;
    if (type >= kReadyRepeater) return FieldByType(entry, field);
    const std::size_t word = ReadyWord(type, field, words.size());
    return word == kNoWord ? FieldByType(entry, field) : ValueAt(entry, word);
}

tagGCVALUE FieldOfRepeater(const tagGCENTRY& entry, unsigned field) {
    return ValueAt(entry, WordOfField(kRepeaterFields, field, entry.vdwValues.size()));
}

}  // namespace

}  // namespace zek

using zek::AnswerGc;

unsigned gcInit(const std::string& file, tagMETAFILEINFO* info) {
    const zek::ReplacedSections replaced;
    const bool loaded = ReadMeta(file, info);
    return loaded ? AnswerGc(zek::kNoError, 1U) : AnswerGc(zek::kBadMagic, 0U);
}

unsigned gcUnInit() {
    CompDestory();
    return 1;
}

unsigned gcGetSectCount(unsigned section) {
    return AnswerGc(zek::kNoError, static_cast<unsigned>(zek::g_imageIndex.Sections(section).size()));
}

tagGCSECT* gcGetSectByIndex(unsigned section, unsigned index) {
    const std::vector<tagGCSECT*>& sections = zek::g_imageIndex.Sections(section);
    if (index < sections.size()) return AnswerGc(zek::kNoError, sections[index]);
    return AnswerGc<tagGCSECT*>(sections.empty() ? zek::kNoSection : zek::kOutOfRange, nullptr);
}

tagGCSECT* gcGetSectByName(unsigned section, const std::string& name) {
    return zek::AnswerFound(section, zek::g_imageIndex.Named(section, name), zek::kNoSuchName, zek::kNoNames);
}

tagGCSECT* gcGetSectByID(unsigned section, unsigned number) {
    return zek::AnswerFound(section, zek::g_imageIndex.WithID(section, number), zek::kNoSuchID, zek::kNoIDs);
}

unsigned gcGetEntryCount(tagGCSECT* section) {
    if (!section) return AnswerGc(zek::kNoSection, zek::kNone);
    return AnswerGc(zek::kNoError, static_cast<unsigned>(section->vEntries.size()));
}

tagGCENTRY* gcGetEntryByIndex(tagGCSECT* section, unsigned index, unsigned* name) {
    if (!section) return AnswerGc<tagGCENTRY*>(zek::kNoSection, nullptr);
    if (index >= section->vEntries.size()) return AnswerGc<tagGCENTRY*>(zek::kOutOfRange, nullptr);
    return zek::AnswerEntry(section->vEntries[index], name);
}

tagGCENTRY* gcGetEntryByName(tagGCSECT* section, const std::string& name, unsigned* id) {
    if (!section) return AnswerGc<tagGCENTRY*>(zek::kNoSection, nullptr);
    if (tagGCENTRY* entry = zek::g_entryIndex.Named(*section, name)) return zek::AnswerEntry(*entry, id);
    return AnswerGc<tagGCENTRY*>(section->vEntries.empty() ? zek::kNoEntry : zek::kNoSuchName, nullptr);
}

tagGCENTRY* gcGetEntryByType(tagGCSECT* section, unsigned name) {
    if (!section) return AnswerGc<tagGCENTRY*>(zek::kNoSection, nullptr);
    tagGCENTRY* entry = zek::g_entryIndex.WithName(*section, name);
    return AnswerGc(entry ? zek::kNoError : zek::kNoEntry, entry);
}

unsigned gcGetValueCount(tagGCENTRY* entry) {
    if (!entry) return AnswerGc(zek::kNoEntry, zek::kNone);
    return AnswerGc(zek::kNoError, static_cast<unsigned>(entry->vdwValues.size()));
}

tagGCVALUE gcGetValueByIndex(tagGCENTRY* entry, unsigned index) {
    if (!entry) return zek::Nothing(zek::kNoEntry);
    const std::vector<unsigned>& words = entry->vdwValues;
    if (index < words.size()) [[likely]]
        return zek::Resolved(words[index]);
    return zek::Nothing(words.empty() ? zek::kNoData : zek::kOutOfRange);
}

tagGCVALUE gcGetValueByID(tagGCENTRY* entry, unsigned field) {
    if (!entry) return zek::Nothing(zek::kNoEntry);
    const unsigned nameClass = entry->dwName & zek::kIdClassMask;
    if (nameClass == zek::kIdValue || nameClass == zek::kIdGlobal) return zek::FieldOfValue(*entry, field);
    if (nameClass == zek::kIdRepeater) return zek::FieldOfRepeater(*entry, field);
    return zek::Nothing(zek::kWrongClass);
}

unsigned gcGetTableData(unsigned table, unsigned char* out) {
    // In 32 bits the class of a table-name identifier shifts out, so it selects the same block as its ordinal.
    const std::size_t start = table * zek::kTableBlockSize;
    if (start + zek::kTableBlockSize > g_tblTableData.size()) return AnswerGc(zek::kOutOfRange, 0U);
    std::copy_n(g_tblTableData.data() + start, zek::kTableBlockSize, out);
    return AnswerGc(zek::kNoError, 1U);
}

unsigned gcGetGroupIndex(const std::string& name) {
    const tagGCSECT* group = gcGetSectByName(zek::kImageGroup, name);
    if (!group) return name == "0" ? AnswerGc(zek::kNoError, 0U) : AnswerGc(zek::kNoSection, zek::kNone);
    for (const tagGCENTRY& entry : group->vEntries) {
        if (entry.dwName != zek::kIdName || entry.vdwValues.empty()) continue;
        return AnswerGc(zek::kNoError, entry.vdwValues[0] & zek::kIdOrdinalMask);
    }
    return AnswerGc(zek::kNoNames, zek::kNone);
}
