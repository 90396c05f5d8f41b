#include "view/view_comparison.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <vector>

#include "model/bytes.h"
#include "zekcomp/image.h"

namespace zek::test {

namespace {

constexpr unsigned kNone = 0xFFFFFFFF;
constexpr unsigned kLastKeyword = 0x02000018;
constexpr unsigned kFieldBases = 0x1c;
constexpr unsigned kMostNames = 6;
constexpr unsigned kTableClasses[] = {kIdProperty, kIdGlobal, kIdValue,  kIdRepeater, kIdNumber,
                                      kIdString,   kIdGroup,  kIdAction, kIdTableName};

struct Difference : std::runtime_error {
    using std::runtime_error::runtime_error;
};

void Require(bool same, const std::string& what) {
    if (!same) throw Difference(what);
}

std::string Name(unsigned word) {
    char text[16];
    std::snprintf(text, sizeof text, "%08x", word);
    return text;
}

bool IsSame(const ImageValue& value, const tagGCVALUE& loaded) {
    switch (value.kind) {
        case ImageValue::Kind::kNumber: return loaded.dwKind == 1 && loaded.qwNumber == value.number;
        case ImageValue::Kind::kText: return loaded.dwKind == 2 && loaded.pszName == value.text;
        default: return loaded.dwKind == 0;
    }
}

std::string_view TextOf(const tagGCVALUE& loaded) { return loaded.dwKind == 2 ? loaded.pszName : std::string_view(); }

class Comparison {
public:
    explicit Comparison(const ImageView& view) : view_(view) {
        std::size_t notes = 0;
        view.ForEachNote([&](const ImageFinding& note) {
            ++notes;
            if (note.code == ImageCode::kCarriedWord) carried_.insert(note.offset);
        });
        Require(notes == view.NoteCount(), "the number of notes");
        CollectNames();
        CollectPlaces();
    }

    void All(const tagMETAFILEINFO& info) const {
        Require(view_.Version() == info.dwVersion && view_.Time() == info.dwTime, "version or time");
        Identifiers();
        Blocks();
        for (unsigned kind = kImageSectionClass; kind <= kImageRepeater + 1; ++kind) Kind(kind);
        for (const std::string& name : names_) {
            Require(view_.GroupIndex(name).value_or(kNone) == gcGetGroupIndex(name), "the index of group " + name);
        }
    }

private:
    using Section = ImageView::Section;
    using Entry = ImageView::Entry;

    /// Some of every table, those that stand nowhere included.
    void CollectNames() {
        for (const unsigned table : kTableClasses) {
            const unsigned count = view_.IdentifierCount(table);
            for (unsigned i = 0; i < count; i += 1 + count / kMostNames) {
                names_.insert(std::string(view_.Resolve(table + i).text));
            }
        }
        names_.insert({"", "0", "none", "NAME"});
    }

    void CollectPlaces() {
        for (unsigned kind = kImageQuorzek; kind <= kImageRepeater; ++kind) {
            unsigned place = 0;
            for (const Section section : view_.SectionsOf(kind)) {
                places_[gcGetSectByIndex(kind, place++)] = section.Index();
            }
        }
    }

    void Identifiers() const {
        for (const unsigned table : kTableClasses) {
            for (unsigned i = 0; i < view_.IdentifierCount(table); ++i) {
                const ImageValue value = view_.Resolve(table + i);
                Require(value.word == table + i && IsSame(value, GetTblData(table + i)), "word " + Name(table + i));
                if (value.kind != ImageValue::Kind::kText) continue;
                Require(view_.IdentifierOf(table, value.text) == table + i, "the identifier of " + Name(table + i));
            }
        }
        for (const unsigned word : {0U, kNone, kIdTableData, kIdArgument + 3, kIdValueType + 104, kIdOperator + 1}) {
            Require(IsSame(view_.Resolve(word), GetTblData(word)), "word " + Name(word));
        }
    }

    void Blocks() const {
        std::vector<unsigned char> loaded(kTableBlockSize);
        for (const unsigned first : {0U, kIdTableName}) {
            for (unsigned table = first; table <= first + view_.TableBlockCount(); ++table) {
                const std::span<const unsigned char> block = view_.TableBlock(table);
                const bool stands = gcGetTableData(table, loaded.data());
                Require(stands ? std::ranges::equal(block, loaded) : block.empty(), "block " + Name(table));
            }
        }
    }

    void Kind(unsigned kind) const {
        const ImageView::Sections sections = view_.SectionsOf(kind);
        Require(sections.size() == gcGetSectCount(kind), "how many sections of kind " + Name(kind));
        for (unsigned i = 0; i < sections.size(); ++i) {
            Compare(sections[i], *gcGetSectByIndex(kind, i));
            FoundBy(sections[i]);
        }
        Require(gcGetSectByIndex(kind, sections.size()) == nullptr, "a section behind the last one");
        for (const std::string& name : names_) {
            SameSection(view_.SectionNamed(kind, name), gcGetSectByName(kind, name));
        }
        for (const unsigned id : {0U, 1U, 7U, kNone}) {
            SameSection(view_.SectionWithID(kind, id), gcGetSectByID(kind, id));
        }
    }

    /// What every NAME and ID entry of a section finds, of which there may be several.
    void FoundBy(const Section& section) const {
        const unsigned kind = section.Kind();
        for (const Entry& entry : section.AllEntries()) {
            const ImageValue value = entry.Value(0);
            if (entry.Id() == kIdName && value.kind == ImageValue::Kind::kText) {
                const std::string name(value.text);
                SameSection(view_.SectionNamed(kind, name), gcGetSectByName(kind, name));
            }
            if (entry.Id() == kIdID && value.kind == ImageValue::Kind::kNumber) {
                SameSection(view_.SectionWithID(kind, value.number), gcGetSectByID(kind, value.number));
            }
        }
    }

    /// Whether both are the same section of the image, or both none.
    void SameSection(const std::optional<Section>& section, const tagGCSECT* loaded) const {
        Require(section.has_value() == (loaded != nullptr), "whether a section is found");
        Require(!section || places_.at(loaded) == section->Index(), "which section is found");
    }

    /// Whether both are the same entry of the section, or both none.
    static void SameEntry(const Section& section, const std::optional<Entry>& entry, tagGCSECT& loaded,
                          const tagGCENTRY* loadedEntry) {
        Require(entry.has_value() == (loadedEntry != nullptr), "whether an entry is found");
        if (!entry) return;
        auto its = section.AllEntries().begin();
        std::advance(its, loadedEntry - loaded.vEntries.data());
        Require((*its).Offset() == entry->Offset(), "which entry is found");
    }

    unsigned WordAtOffset(std::size_t offset) const { return WordAt(view_.Bytes().data() + offset); }

    void Compare(const Section& section, tagGCSECT& loaded) const {
        const std::string where = "section " + std::to_string(section.Index());
        const ImageView::Entries entries = section.AllEntries();
        Require(section.Kind() == loaded.dwSect && WordAtOffset(section.Offset()) == loaded.dwSect, where + ": kind");
        Require(entries.size() == gcGetEntryCount(&loaded), where + ": number of entries");
        unsigned index = 0;
        for (const Entry& entry : entries) {
            unsigned name = 0;
            tagGCENTRY* loadedEntry = gcGetEntryByIndex(&loaded, index, &name);
            Compare(where + ", entry " + std::to_string(index++), entry, *loadedEntry, name);
            SameEntry(section, section.EntryWithId(name), loaded, gcGetEntryByType(&loaded, name));
            const std::string text(entry.Name());
            SameEntry(section, section.EntryNamed(text), loaded, gcGetEntryByName(&loaded, text, nullptr));
        }
        for (unsigned id = kIdKeyword; id <= kLastKeyword; ++id) {
            SameEntry(section, section.EntryWithId(id), loaded, gcGetEntryByType(&loaded, id));
        }
        for (const std::string& name : names_) {
            SameEntry(section, section.EntryNamed(name), loaded, gcGetEntryByName(&loaded, name, nullptr));
        }
        WhatTheSectionIs(section, loaded);
    }

    /// What the view says of a section in one call, against the values of its entries.
    void WhatTheSectionIs(const Section& section, tagGCSECT& loaded) const {
        const auto first = [&](unsigned id) { return gcGetValueByIndex(gcGetEntryByType(&loaded, id), 0); };
        const tagGCVALUE name = first(kIdName);
        Require(section.Name().has_value() == (name.dwKind == 2) && section.Name().value_or("") == TextOf(name),
                "NAME");
        const tagGCVALUE id = first(kIdID);
        const bool numbered = id.dwKind == 1;
        Require(section.ID().has_value() == numbered && (!numbered || *section.ID() == id.qwNumber), "ID");
        const bool group = section.Kind() == kImageGroup;
        if (!group && section.Kind() != kImageSensor) return;
        const tagGCVALUE parent = first(kIdParent);
        const tagGCSECT* above = parent.dwKind == 2 ? gcGetSectByName(kImageGroup, parent.pszName) : nullptr;
        if (above == &loaded || (group && parent.dwKind == 2 && TextOf(parent) == "0")) above = nullptr;
        SameSection(section.Parent(), above);
    }

    void Compare(const std::string& where, const Entry& entry, tagGCENTRY& loaded, unsigned name) const {
        const unsigned count = gcGetValueCount(&loaded);
        Require(entry.Id() == name && WordAtOffset(entry.Offset()) == name, where + ": identifier");
        Require(entry.Name() == TextOf(GetTblData(name)), where + ": name");
        Require(entry.WordCount() == count, where + ": number of words");
        std::set<unsigned> carried;
        for (unsigned i = 0; i <= count; ++i) {
            const tagGCVALUE value = gcGetValueByIndex(&loaded, i);
            const bool isCarried = i < count && carried_.contains(entry.Offset() + 8 + std::size_t{4} * i);
            if (isCarried) carried.insert(value.dwID);
            Require(entry.Word(i) == value.dwID && entry.Value(i).word == value.dwID, where + ": word");
            Require(isCarried ? !entry.Value(i) : IsSame(entry.Value(i), value), where + ": value");
        }
        Fields(where, entry, loaded, carried);
    }

    static void Fields(const std::string& where, const Entry& entry, tagGCENTRY& loaded,
                       const std::set<unsigned>& carried) {
        const bool typed = !loaded.vdwValues.empty() && !carried.contains(loaded.vdwValues[0]);
        const bool repeater = (loaded.dwName & kIdClassMask) == kIdRepeater;
        const tagGCVALUE type = gcGetValueByID(&loaded, 0x10000);
        Require(entry.ValueType().has_value() == (typed && type.dwKind == 1), where + ": value type");
        const unsigned count = gcGetValueCount(&loaded);
        for (unsigned base = 0; base < kFieldBases; ++base) {
            for (const unsigned last : {0U, 1U, 2U, count - 2, count - 1, count}) {
                const unsigned field = (base << 16) + last;
                const tagGCVALUE value = gcGetValueByID(&loaded, field);
                const bool none = carried.contains(value.dwID) || !(typed || repeater);
                Require(none ? !entry.Field(field) : IsSame(entry.Field(field), value),
                        where + ": field " + Name(field));
            }
        }
    }

    const ImageView& view_;
    std::set<std::uint64_t> carried_;  ///< where carried words stand
    std::set<std::string> names_;
    std::map<const tagGCSECT*, unsigned> places_;  ///< of the loaded sections in the image
};

}  // namespace

std::string DifferenceFromLoaded(const ImageView& view, const tagMETAFILEINFO& info) {
    try {
        Comparison(view).All(info);
    } catch (const Difference& difference) {
        return difference.what();
    }
    return {};
}

}  // namespace zek::test
