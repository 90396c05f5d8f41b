#include "compile/image_index.h"

#include "compile/compile.h"
#include "compile/state.h"
#include "compile/tables.h"

namespace zek {

namespace {

constexpr unsigned kNameEntry = kIdKeyword | 0x15;
constexpr unsigned kIDEntry = kIdKeyword | 0x08;

bool HasFreeNames(unsigned identifier) {
    return identifier == kImageProperty || identifier == kImageGlobal || identifier == kImageRepeater;
}

}  // namespace

ImageIndex::Kind& ImageIndex::KindOf(unsigned identifier) {
    const std::size_t keys = KeysInTables();
    if (changes_ != g_changes || sections_ != g_GCHead.size() || keys_ != keys) {
        kinds_.clear();
        for (tagGCSECT* section : g_GCHead) kinds_[section->dwSect].sections.push_back(section);
        changes_ = g_changes;
        sections_ = g_GCHead.size();
        keys_ = keys;
    }
    return kinds_[identifier];
}

void ImageIndex::ReadNames(Kind& kind, bool freeNames) {
    kind.names = std::make_unique<Names>();
    for (tagGCSECT* section : kind.sections) {
        for (const tagGCENTRY& entry : section->vEntries) {
            const bool byValue = entry.dwName == kNameEntry && !entry.vdwValues.empty();
            if (!byValue && !freeNames) continue;
            // A candidate that is no name text counts as compared all the same.
            kind.hasNames = true;
            const tagGCVALUE name = GetTblData(byValue ? entry.vdwValues[0] : entry.dwName);
            if (name.dwKind == 2) kind.names->try_emplace(name.pszName, section);
        }
    }
}

void ImageIndex::ReadIDs(Kind& kind) {
    kind.ids = std::make_unique<IDs>();
    for (tagGCSECT* section : kind.sections) {
        for (const tagGCENTRY& entry : section->vEntries) {
            if (entry.dwName != kIDEntry || entry.vdwValues.empty()) continue;
            kind.hasIDs = true;
            const tagGCVALUE id = GetTblData(entry.vdwValues[0]);
            if (id.dwKind == 1) kind.ids->try_emplace(static_cast<unsigned>(id.qwNumber), section);
        }
    }
}

const std::vector<tagGCSECT*>& ImageIndex::Sections(unsigned identifier) { return KindOf(identifier).sections; }

Found ImageIndex::Named(unsigned identifier, const std::string& name) {
    Kind& kind = KindOf(identifier);
    if (!kind.names) ReadNames(kind, HasFreeNames(identifier));
    const auto place = kind.names->find(name);
    return {place == kind.names->end() ? nullptr : place->second, kind.hasNames};
}

Found ImageIndex::WithID(unsigned identifier, unsigned number) {
    Kind& kind = KindOf(identifier);
    if (!kind.ids) ReadIDs(kind);
    const auto place = kind.ids->find(number);
    return {place == kind.ids->end() ? nullptr : place->second, kind.hasIDs};
}

}  // namespace zek
