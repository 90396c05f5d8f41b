#include "compile/image_index.h"

#include <algorithm>
#include <iterator>

#include "compile/compile.h"
#include "compile/state.h"
#include "compile/tables.h"

namespace zek {

namespace {

bool HasFreeNames(unsigned identifier) {
    return identifier == kImageProperty || identifier == kImageGlobal || identifier == kImageRepeater;
}

}  // namespace

ImageStamp ImageStamp::Now() {
    if (g_GCHead.empty()) return {g_changes, KeysInTables(), 0, nullptr, nullptr};
    return {g_changes, KeysInTables(), g_GCHead.size(), g_GCHead.front(), g_GCHead.back()};
}

ImageIndex::Kind& ImageIndex::KindOf(unsigned identifier) {
    if (const ImageStamp now = ImageStamp::Now(); stamp_ != now || g_GCHead.size() <= kWalkedAtOnce) {
        stamp_ = now;
        kinds_ = {};
        other_ = {};
        for (tagGCSECT* section : g_GCHead) {
            const unsigned ordinal = section->dwSect - kImageSectionClass;
            if (ordinal < kinds_.size()) kinds_[ordinal].sections.push_back(section);
        }
        for (unsigned ordinal = 0; Kind & kind : kinds_) kind.identifier = kImageSectionClass + ordinal++;
    }
    const unsigned ordinal = identifier - kImageSectionClass;
    if (ordinal < kinds_.size()) return kinds_[ordinal];
    if (other_.identifier != identifier || other_.sections.empty()) {
        other_ = {};
        other_.identifier = identifier;
        std::copy_if(g_GCHead.begin(), g_GCHead.end(), std::back_inserter(other_.sections),
                     [identifier](const tagGCSECT* section) { return section->dwSect == identifier; });
    }
    return other_;
}

void ImageIndex::ReadNames(Kind& kind) {
    kind.names = std::make_unique<Names>();
    for (tagGCSECT* section : kind.sections) {
        for (const tagGCENTRY& entry : section->vEntries) {
            const bool byValue = entry.dwName == kIdName && !entry.vdwValues.empty();
            if (!byValue && !HasFreeNames(kind.identifier)) continue;
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
            if (entry.dwName != kIdID || entry.vdwValues.empty()) continue;
            kind.hasIDs = true;
            const tagGCVALUE id = GetTblData(entry.vdwValues[0]);
            if (id.dwKind == 1) kind.ids->try_emplace(static_cast<unsigned>(id.qwNumber), section);
        }
    }
}

const std::vector<tagGCSECT*>& ImageIndex::Sections(unsigned identifier) { return KindOf(identifier).sections; }

Found ImageIndex::Named(unsigned identifier, const std::string& name) {
    Kind& kind = KindOf(identifier);
    if (!kind.names) ReadNames(kind);
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
