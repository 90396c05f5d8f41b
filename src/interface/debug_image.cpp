#include "zekcomp/debug_image.h"

#include <cstdio>
#include <cstring>

#include "check/vocabulary.h"
#include "debugimage/debug_image.h"
#include "interface/answer.h"
#include "interface/visible_entries.h"
#include "model/section.h"
#include "zekcomp/value_shapes.h"

namespace zek {

namespace {

const char* TextAnswer(CZEKSection* section, unsigned type) {
    if (!section) return AnswerGd<const char*>(kNoSection, nullptr);
    const CZEKEntry* entry = FirstEntry(*section, type);
    if (!entry) return AnswerGd<const char*>(kNoEntry, nullptr);
    const std::string* text = TextOf(*entry);
    return text ? AnswerGd(kNoError, text->c_str()) : AnswerGd<const char*>(kNoData, nullptr);
}

/// The positions of a payload's strings in the order in which they are shown. Three value types show them out of order,
/// and hosts rely on it.
constexpr std::size_t kInOrder[] = {0, 1, 2, 3, 4};
constexpr std::size_t kLastBeforeSecond[] = {0, 3, 2, 1};

const std::size_t* ShownOrder(const CGeValue* value) {
    const ValueShape* shape = value ? ShapeOf(value->m_dwType) : nullptr;
    return shape && IsBusAccess(*shape) && !shape->list ? kLastBeforeSecond : kInOrder;
}

/// Writes texts one behind the other, up to the first NUL, as a host sees them.
class ShownText {
public:
    /// The caller provides the room.
    explicit ShownText(char* out) : end_(out) { *end_ = 0; }

    void Add(const std::string& text) {
        if (!whole_) return;
        char* const start = end_;
        end_ = stpcpy(start, text.c_str());
        whole_ = static_cast<std::size_t>(end_ - start) == text.size();
    }
    void AddComma() {
        if (whole_) end_ = stpcpy(end_, ",");
    }

private:
    char* end_;          ///< where the NUL stands
    bool whole_ = true;  ///< whether no text had a NUL of its own, which ends what is shown
};

void ShowPayload(const CZekEntryData& data, char* out) {
    ShownText shown(out);
    const Payload payload = PayloadOf(data);
    const CGeValue* value = ValueOf(data);
    const std::size_t* order = ShownOrder(value);
    if (value) shown.Add(value->m_strType);
    for (std::size_t i = 0; i < payload.strings.size(); ++i) {
        // What stands first has no comma before it: the type text of a value, the first string of a repeater item.
        if (value || i > 0) shown.AddComma();
        shown.Add(payload.strings[order[i]]);
    }
    if (!payload.list) return;
    for (const std::string& text : *payload.list) {
        shown.AddComma();
        shown.Add(text);
    }
}

/// Writes the text of an entry's value: empty without data; nothing at all for data of another class than the entry's.
void ShowValue(const CZEKEntry& entry, char* out) {
    const CZekEntryData& data = entry.m_ZekEntryData;
    if (!HoldsData(entry)) {
        *out = 0;
        return;
    }
    if (EntryClass(data.m_dwType) != EntryClass(entry.m_dwType)) return;
    if (const std::string* text = TextOf(data)) {
        std::strcpy(out, text->c_str());
    } else if (const unsigned* number = NumberOf(data)) {
        std::snprintf(out, sizeof "0xffffffff", "0x%x", *number);
    } else {
        ShowPayload(data, out);
    }
}

}  // namespace

}  // namespace zek

// Some failures are told in the slot of the other family: hosts rely on it.
using zek::AnswerGc;
using zek::AnswerGd;

unsigned gdInit(const std::string& file, tagMETAFILEINFO* info) {
    if (!ReadMetaD(file, info)) return 0;
    return AnswerGc(zek::kNoError, 1U);
}

unsigned gdUnInit() {
    CZEKSection::Destory();
    return 1;
}

CZEKSection* gdGetSectByIndex(unsigned kind, unsigned index) {
    const zek::SectionList* list = FindSectHead((kind & zek::kSectionOrdinalMask) | zek::kSectionClass);
    if (!list) return AnswerGd<CZEKSection*>(zek::kNoSection, nullptr);
    if (index >= list->size()) return AnswerGc<CZEKSection*>(zek::kOutOfRange, nullptr);
    return AnswerGd(zek::kNoError, (*list)[index]);
}

CZEKEntry* gdGetEntryByIndex(CZEKSection* section, unsigned index) {
    if (!section) return AnswerGd<CZEKEntry*>(zek::kNoSection, nullptr);
    const std::vector<CZEKEntry*>& visible = zek::g_visibleEntries.Of(*section);
    if (index < visible.size()) return AnswerGd(zek::kNoError, visible[index]);
    return AnswerGc<CZEKEntry*>(visible.empty() ? zek::kNoEntry : zek::kOutOfRange, nullptr);
}

unsigned gdGetSectID(CZEKSection* section) {
    if (!section) return AnswerGd(zek::kNoSection, 0xFFFFFFFFU);
    const CZEKEntry* entry = zek::FirstEntry(*section, zek::kID);
    if (!entry) return AnswerGd(zek::kNoEntry, 0U);
    const std::string* text = zek::TextOf(*entry);
    unsigned number = 0;
    if (!text || !StringToLong(*text, &number)) return AnswerGd(zek::kNoData, 0xFFFFFFFFU);
    return AnswerGd(zek::kNoError, number);
}

const char* gdGetSectName(CZEKSection* section) { return zek::TextAnswer(section, zek::kName); }

const char* gdGetSectPName(CZEKSection* section) { return zek::TextAnswer(section, zek::kParent); }

const char* gdGetEntryName(CZEKEntry* entry) {
    if (!entry) return AnswerGd<const char*>(zek::kNoEntry, nullptr);
    return AnswerGd(zek::kNoError, entry->m_strName.c_str());
}

unsigned gdGetValue(CZEKEntry* entry, char* out) {
    if (!entry) return AnswerGd(zek::kNoEntry, 0U);
    // The slot keeps the code of the query before, on success too: hosts rely on it.
    zek::ShowValue(*entry, out);
    return 1;
}
