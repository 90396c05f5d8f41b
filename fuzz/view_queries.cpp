#include "view_queries.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>

#include "compile/compile.h"
#include "compile/tables.h"
#include "harness.h"
#include "zekcomp/errors.h"
#include "zekcomp/image.h"

namespace zek::fuzz {

namespace {

constexpr unsigned kNothing = 0xFFFFFFFF;
constexpr unsigned kLastKeyword = 0x02000018;
/// Of the sections of a kind, and of the entries of a section, so many are asked for by their own names.
constexpr unsigned kMostAskedByName = 32;

bool Same(const ImageValue& value, const tagGCVALUE& loaded) {
    if (value.word != loaded.dwID) return false;
    switch (value.kind) {
        case ImageValue::Kind::kNumber: return loaded.dwKind == 1 && loaded.qwNumber == value.number;
        case ImageValue::Kind::kText: return loaded.dwKind == 2 && loaded.pszName == value.text;
        default: return loaded.dwKind == 0;
    }
}

class Comparison {
public:
    explicit Comparison(const ImageView& view) : view_(view) {
        for (const tagGCSECT* section : g_GCHead) places_.emplace(section, static_cast<unsigned>(places_.size()));
        for (const IdentifierTable& table : kIdentifierTables) {
            if (table.names && !table.names->empty()) {
                names_.insert({table.names->begin()->first, table.names->rbegin()->first});
            }
        }
    }

    void HoldAll() const {
        Require(view_.AllSections().size() == g_GCHead.size(), "a view has the sections that are loaded");
        unsigned place = 0;
        for (const ImageView::Section section : view_.AllSections()) HoldSection(section, *g_GCHead[place++]);
        for (unsigned kind = kImageSectionClass; kind <= kImageRepeater + 1; ++kind) HoldKind(kind);
        for (const std::string& name : names_) {
            Require(view_.GroupIndex(name).value_or(kNothing) == gcGetGroupIndex(name), "a view finds groups");
        }
        HoldTables();
        HoldNotes();
    }

private:
    /// Whether both have found the same section, or both none.
    void HoldFound(const std::optional<ImageView::Section>& section, const tagGCSECT* loaded) const {
        Require(section.has_value() == (loaded != nullptr) && (!loaded || places_.at(loaded) == section->Index()),
                "a view finds the section that the loaded image gives");
    }

    void HoldKind(unsigned kind) const {
        const ImageView::Sections sections = view_.SectionsOf(kind);
        Require(sections.size() == gcGetSectCount(kind), "a view counts the sections of a kind");
        for (unsigned i = 0; i < sections.size(); ++i) HoldFound(sections[i], gcGetSectByIndex(kind, i));
        for (const std::string& name : names_) HoldFound(view_.SectionNamed(kind, name), gcGetSectByName(kind, name));
        for (const unsigned id : {0U, 1U, 7U, kNothing}) {
            HoldFound(view_.SectionWithID(kind, id), gcGetSectByID(kind, id));
        }
        for (unsigned i = 0; i < std::min(sections.size(), kMostAskedByName); ++i) HoldOwnName(sections[i]);
    }

    /// A section by its own name and ID, which another one may have before it.
    void HoldOwnName(const ImageView::Section& section) const {
        const unsigned kind = section.Kind();
        if (const auto name = section.Name()) {
            HoldFound(view_.SectionNamed(kind, *name), gcGetSectByName(kind, std::string(*name)));
        }
        if (const auto id = section.ID()) HoldFound(view_.SectionWithID(kind, *id), gcGetSectByID(kind, *id));
    }

    void HoldSection(const ImageView::Section& section, tagGCSECT& loaded) const {
        Require(section.Kind() == loaded.dwSect, "a section has its kind");
        Require(section.AllEntries().size() == loaded.vEntries.size(), "a section has its entries");
        unsigned position = 0;
        for (const ImageView::Entry entry : section.AllEntries()) {
            HoldEntry(entry, loaded.vEntries[position++]);
            if (position > kMostAskedByName || entry.Name().empty()) continue;
            HoldFound(section.EntryNamed(entry.Name()), gcGetEntryByName(&loaded, std::string(entry.Name()), nullptr));
        }
        for (unsigned id = kIdKeyword; id <= kLastKeyword; ++id) {
            HoldFound(section.EntryWithId(id), gcGetEntryByType(&loaded, id));
        }
        for (const std::string& name : names_) {
            HoldFound(section.EntryNamed(name), gcGetEntryByName(&loaded, name, nullptr));
        }
        unsigned steps = 0;
        for (auto parent = section.Parent(); parent; parent = parent->Parent()) {
            Require(steps++ <= view_.AllSections().size(), "the way to the top ends");
        }
    }

    void HoldFound(const std::optional<ImageView::Entry>& entry, const tagGCENTRY* loaded) const {
        Require(entry.has_value() == (loaded != nullptr) && (!loaded || entry->Id() == loaded->dwName),
                "a view finds the entry that the loaded image gives");
        if (entry) HoldWords(*entry, *loaded);
    }

    static void HoldWords(const ImageView::Entry& entry, const tagGCENTRY& loaded) {
        Require(entry.WordCount() == loaded.vdwValues.size(), "an entry has its words");
        for (unsigned i = 0; i < entry.WordCount(); ++i) {
            Require(entry.Word(i) == loaded.vdwValues[i], "an entry has its words");
        }
    }

    /// A value that the view gives is that of the loaded image. The view gives none for a word that a number has
    /// carried into another class, which the loaded image does not tell; such an image has a note.
    void HoldValue(const ImageValue& value, const tagGCVALUE& loaded) const {
        if (!value && view_.NoteCount() > 0) return;
        Require(value ? Same(value, loaded) : loaded.dwKind == 0, "a view gives the value that the loaded image gives");
    }

    void HoldEntry(const ImageView::Entry& entry, tagGCENTRY& loaded) const {
        Require(entry.Id() == loaded.dwName, "an entry has its name");
        const tagGCVALUE name = GetTblData(loaded.dwName);
        Require(entry.Name() == (name.dwKind == 2 ? name.pszName : ""), "an entry has the text of its name");
        HoldWords(entry, loaded);
        const unsigned count = entry.WordCount();
        for (unsigned i = 0; i <= count; ++i) {
            HoldValue(entry.Value(i), gcGetValueByIndex(&loaded, i));
            Require(Same(view_.Resolve(entry.Word(i)), GetTblData(entry.Word(i))), "a word stands for the same");
        }
        for (unsigned base = 0; base <= 0x1b0000; base += 0x10000) {
            for (const unsigned k : {0U, 1U, 2U, count - 2, count - 1, count}) {
                HoldValue(entry.Field(base + k), gcGetValueByID(&loaded, base + k));
            }
        }
    }

    void HoldTables() const {
        for (const IdentifierTable& table : kIdentifierTables) {
            for (unsigned i = 0; i < view_.IdentifierCount(table.classWord); ++i) {
                const unsigned word = table.classWord + i;
                Require(Same(view_.Resolve(word), GetTblData(word)), "an identifier stands for the same");
            }
        }
        unsigned char block[kTableBlockSize];
        for (unsigned i = 0; i <= view_.TableBlockCount(); ++i) {
            const std::span<const unsigned char> viewed = view_.TableBlock(i);
            Require(viewed.empty() != (gcGetTableData(i, block) == 1), "a view has the tables that are loaded");
            Require(viewed.empty() || std::equal(viewed.begin(), viewed.end(), block), "a table has its bytes");
        }
    }

    void HoldNotes() const {
        std::size_t count = 0;
        view_.ForEachNote([&](const ImageFinding& note) {
            ++count;
            Require(IsNote(note.code) && !note.Place().empty() && !note.Sentence().empty(), "a note says what it is");
        });
        Require(count == view_.NoteCount(), "notes are counted");
    }

    const ImageView& view_;
    std::unordered_map<const tagGCSECT*, unsigned> places_;
    std::set<std::string> names_ = {"", "0", "none"};
};

}  // namespace

void HoldView(const ImageView& view) { Comparison(view).HoldAll(); }

}  // namespace zek::fuzz
