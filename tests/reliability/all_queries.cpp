#include "reliability/all_queries.h"

#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "zekcomp/zekcomp.h"

namespace zek::test {

namespace {

/// Where what the queries give goes, so that no read of it is left out.
volatile std::size_t sink = 0;

/// Where values are written as text.
std::string room;

void Use(std::size_t number) { sink = sink + number; }
void Use(const char* text) { Use(text ? std::strlen(text) : 0); }
void Use(const tagGCVALUE& value) { value.dwKind == 2 ? Use(value.pszName) : Use(value.qwNumber); }

std::string TextOf(const tagGCVALUE& value) { return value.dwKind == 2 ? value.pszName : ""; }

void AskEntry(tagGCENTRY* entry) {
    const unsigned count = gcGetValueCount(entry);
    for (unsigned i = 0; i <= count; ++i) Use(gcGetValueByIndex(entry, i));
    for (unsigned base = 0; base <= 0x1b0000; base += 0x10000) {
        for (const unsigned last : {0U, 1U, count - 1, count, 0xFFFFU}) Use(gcGetValueByID(entry, base + last));
    }
}

void AskSection(unsigned kind, tagGCSECT* section) {
    unsigned name = 0;
    for (unsigned i = 0; i <= gcGetEntryCount(section); ++i) {
        tagGCENTRY* entry = gcGetEntryByIndex(section, i, &name);
        if (!entry) continue;
        AskEntry(entry);
        Use(gcGetEntryByType(section, name) != nullptr);
        Use(gcGetEntryByName(section, TextOf(GetTblData(name)), &name) != nullptr);
        const tagGCVALUE first = gcGetValueByIndex(entry, 0);
        Use(gcGetSectByName(kind, TextOf(first)) != nullptr);
        if (first.dwKind == 1) Use(gcGetSectByID(kind, static_cast<unsigned>(first.qwNumber)) != nullptr);
        if (kind == kImageGroup) Use(gcGetGroupIndex(TextOf(first)));
    }
}

/// Every identifier that was given out and two more.
void AskIdentifiers() {
    for (const unsigned end : {g_idxProperty, g_idxGlobal, g_idxValue, g_idxRepeater, g_idxDword, g_idxString,
                               g_idxGroup, g_idxAction, g_idxTableName}) {
        for (unsigned id = end & kIdClassMask; id <= end + 1; ++id) Use(GetTblData(id));
    }
    for (const unsigned id : {0U, kIdTableData, kIdArgument, kIdValueType, kIdOperator, kIdUnresolved}) {
        Use(GetTblData(id));
    }
}

void AskTables() {
    unsigned char block[kTableBlockSize];
    for (unsigned table = 0; gcGetTableData(table, block); ++table) Use(block[table % kTableBlockSize]);
    for (const unsigned table : {0xFFFFFFU, kIdTableName, kIdTableName + 1, kIdUnresolved}) {
        Use(gcGetTableData(table, block));
    }
}

void AskModelSection(CZEKSection* section) {
    Use(gdGetSectID(section));
    Use(gdGetSectName(section));
    Use(gdGetSectPName(section));
    for (unsigned i = 0; CZEKEntry* entry = gdGetEntryByIndex(section, i); ++i) {
        Use(gdGetEntryName(entry));
        Use(gdGetValue(entry, room.data()));
        Use(room.c_str());
    }
}

// Of a view.

void Use(std::string_view text) {
    for (const char character : text) Use(static_cast<std::size_t>(character));
}
void Use(const ImageValue& value) {
    Use(value.number);
    Use(value.text);
}
template <class Found>
void Use(const std::optional<Found>& found) {
    Use(static_cast<std::size_t>(found.has_value()));
}

void AskViewEntry(const ImageView::Entry& entry) {
    Use(entry.Name());
    Use(entry.ValueType());
    Use(entry.Offset());
    const unsigned count = entry.WordCount();
    for (unsigned i = 0; i <= count; ++i) {
        Use(entry.Word(i));
        Use(entry.Value(i));
    }
    for (unsigned base = 0; base <= 0x1b0000; base += 0x10000) {
        for (const unsigned last : {0U, 1U, count - 1, count, 0xFFFFU}) Use(entry.Field(base + last));
    }
}

void AskViewSection(const ImageView& view, const ImageView::Section& section) {
    Use(section.Offset());
    Use(section.Parent());
    if (const auto name = section.Name()) {
        Use(view.SectionNamed(section.Kind(), *name));
        Use(view.GroupIndex(*name));
    }
    if (const auto id = section.ID()) Use(view.SectionWithID(section.Kind(), *id));
    for (const ImageView::Entry entry : section.AllEntries()) {
        AskViewEntry(entry);
        Use(section.EntryWithId(entry.Id()));
        Use(section.EntryNamed(entry.Name()));
        Use(view.SectionNamed(section.Kind(), entry.Name()));
    }
    Use(section.EntryNamed("no such name"));
}

}  // namespace

void AskView(const ImageView& view) {
    Use(view.Bytes().size() + view.Version() + view.Time() + view.NoteCount());
    for (const ImageView::Section section : view.AllSections()) AskViewSection(view, section);
    for (unsigned kind = kImageSectionClass; kind <= kImageRepeater + 1; ++kind) {
        for (const ImageView::Section section : view.SectionsOf(kind)) Use(section.Index());
        Use(view.SectionNamed(kind, "no such name"));
        Use(view.SectionWithID(kind, 0xFFFF));
    }
    for (unsigned table = 0; table < 32; ++table) {
        const unsigned first = table << 24;
        for (unsigned i = 0; i <= view.IdentifierCount(first); ++i) {
            const ImageValue value = view.Resolve(first + i);
            Use(value);
            Use(view.IdentifierOf(first, value.text));
        }
    }
    for (unsigned table = 0; table <= view.TableBlockCount(); ++table) Use(view.TableBlock(table).size());
}

void AskCompiledImage() {
    for (unsigned kind = kImageSectionClass; kind <= kImageRepeater + 1; ++kind) {
        const unsigned count = gcGetSectCount(kind);
        for (unsigned i = 0; i <= count; ++i) {
            if (tagGCSECT* section = gcGetSectByIndex(kind, i)) AskSection(kind, section);
        }
        Use(gcGetSectByName(kind, "no such name") != nullptr);
        Use(gcGetSectByID(kind, 0xFFFF) != nullptr);
    }
    for (const char* name : {"0", "", "no such name"}) Use(gcGetGroupIndex(name));
    AskIdentifiers();
    AskTables();
}

void AskDebugImage(std::size_t size) {
    // What gdGetValue asks for.
    if (room.size() < size + (1 << 20)) room.resize(size + (1 << 20));
    for (unsigned kind = 0; kind <= 16; ++kind) {
        for (unsigned i = 0; CZEKSection* section = gdGetSectByIndex(kind, i); ++i) AskModelSection(section);
    }
}

}  // namespace zek::test
