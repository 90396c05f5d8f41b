#include "image.h"

#include <algorithm>
#include <iterator>

#include "compiled_view.h"
#include "debug_view.h"
#include "entry_roles.h"
#include "image_check.h"
#include "joined_text.h"
#include "progress.h"
#include "section_keywords.h"
#include "zekcomp/identifiers.h"

namespace zek::tool {
namespace {

bool IsPlainValue(std::string_view key) { return key == "VALUE" || key == "VALUE_"; }

bool HasKey(const ShownEntry& entry, const std::string& key) {
    if (entry.key == key) return true;
    const bool isValue = entry.source ? IsValue(*entry.source) : (entry.id & kIdClassMask) == kIdValue;
    return isValue && IsPlainValue(key) && IsPlainValue(entry.key);
}

void ForEachInclude(const DebugSource& source, const std::function<void(const ShownSection&)>& show) {
    unsigned next = 0;
    for (const DebugSection& section : source.sections) {
        if (section.keyword != kIncludeKeyword) continue;
        ShownSection shown;
        shown.keyword = kIncludeKeyword;
        shown.index = next++;
        shown.source = &section;
        for (const DebugEntry& entry : section.entries) {
            if (!entry.given) continue;
            const std::string value = Joined(entry.texts, ",");
            shown.entries.push_back({std::string(entry.key), 0, {}, value.substr(0, value.find('\0')), &entry});
        }
        show(shown);
    }
}

}  // namespace

const ShownEntry* ShownSection::Entry(const std::string& key) const {
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const ShownEntry& entry) { return HasKey(entry, key); });
    return found == entries.end() ? nullptr : &*found;
}

Image::Image(const std::string& file) : bytes_(BytesOfImage(file)), kind_(RequireKind(file, bytes_)) {
    if (kind_ == ImageKind::kCompiled) {
        view_ = OpenCompiledImage(file, bytes_);
        info_ = {view_->Version(), view_->Time()};
        return;
    }
    const DebugCheck check = CheckedDebugImage(file, bytes_);
    ShowPhase("loading");
    info_ = LoadDebugImage(bytes_, check.lacksFileList);
    names_ = PredefinedNames(bytes_);
    source_ = ReadDebugSource(bytes_);
}

Image::~Image() {
    if (kind_ == ImageKind::kDebug) UnloadDebugImage();
}

void Image::ForEachSection(const std::function<void(const ShownSection&)>& show) const {
    for (const char* keyword : kSectionKeywords) ForEachSectionOf(keyword, show);
    if (kind_ == ImageKind::kDebug) ForEachInclude(source_, show);
}

void Image::ForEachSectionOf(std::string_view keyword, const std::function<void(const ShownSection&)>& show) const {
    if (kind_ == ImageKind::kDebug && keyword == kIncludeKeyword) return ForEachInclude(source_, show);
    const auto found = std::find(std::begin(kSectionKeywords), std::end(kSectionKeywords), keyword);
    const auto position = static_cast<unsigned>(found - std::begin(kSectionKeywords));
    if (kind_ == ImageKind::kDebug) return ForEachDebugSection(*this, position, bytes_.size(), show);
    if (kImageQuorzek + position <= kImageRepeater) ForEachCompiledSection(*view_, position, show);
}

void Image::ForEachTable(const std::function<void(const ShownTable&)>& show) const {
    if (view_) ForEachCompiledTable(*view_, show);
}

void Image::ForEachBlock(const std::function<void(const ShownBlock&)>& show) const {
    if (view_) ForEachCompiledBlock(*view_, show);
}

}  // namespace zek::tool
