#include "image.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "compiled_view.h"
#include "debug_view.h"
#include "failure.h"
#include "memory_file.h"
#include "printable.h"
#include "section_keywords.h"
#include "zekcomp/zekcomp.h"

namespace zek::tool {
namespace {

constexpr char kDamaged[] = "is damaged or cut short";

Failure NoImage(const std::string& file, const std::string& why) { return Failure(kNoImage, file + ": " + why); }

/// The library's own messages about a load name the copy in memory; the command says it in its own words.
bool Load(ImageKind kind, const std::string& name, tagMETAFILEINFO* info) {
    try {
        return kind == ImageKind::kCompiled ? gcInit(name, info) : gdInit(name, info);
    } catch (const std::out_of_range&) {
        return false;
    }
}

/// Frees also what a load that failed has left.
void Unload(ImageKind kind) {
    if (kind == ImageKind::kCompiled) gcUnInit();
    if (kind == ImageKind::kDebug) gdUnInit();
}

}  // namespace

const ShownEntry* ShownSection::Entry(const std::string& key) const {
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const ShownEntry& entry) { return entry.key == key; });
    return found == entries.end() ? nullptr : &*found;
}

Image::Image(const std::string& file) {
    const std::string bytes = ReadFile(file);
    kind_ = KindOf(bytes);
    size_ = bytes.size();
    if (kind_ == ImageKind::kNone) throw NoImage(file, "is neither a compiled nor a debug image");
    const unsigned version = VersionOf(bytes);
    const unsigned known = kind_ == ImageKind::kCompiled ? ZEK_VERSION : ZEKD_VERSION;
    if (version != known) {
        throw NoImage(file,
                      "has the format version " + Hexadecimal(version) + ", only " + Hexadecimal(known) + " is known");
    }
    // The library takes what a debug image lacks at its end for zeros.
    if (kind_ == ImageKind::kDebug && !BeginsWithDebugImage(bytes)) throw NoImage(file, kDamaged);
    // From a copy, so that kind, size and what is loaded are those of one and the same file, also when it is a pipe.
    const MemoryFile copy(bytes);
    if (!Load(kind_, copy.Name(), &info_)) {
        Unload(kind_);
        throw NoImage(file, kDamaged);
    }
    if (kind_ == ImageKind::kDebug) names_ = PredefinedNames(bytes);
    if (kind_ == ImageKind::kCompiled) sectionCount_ = SectionCount(bytes);
}

Image::~Image() { Unload(kind_); }

void Image::ForEachSection(const std::function<void(const ShownSection&)>& show) const {
    for (const char* keyword : kSectionKeywords) ForEachSectionOf(keyword, show);
}

void Image::ForEachSectionOf(std::string_view keyword, const std::function<void(const ShownSection&)>& show) const {
    const auto found = std::find(std::begin(kSectionKeywords), std::end(kSectionKeywords), keyword);
    const auto position = static_cast<unsigned>(found - std::begin(kSectionKeywords));
    if (kind_ == ImageKind::kDebug) return ForEachDebugSection(position, size_, show);
    if (kImageQuorzek + position <= kImageRepeater) ForEachCompiledSection(position, show);
}

unsigned Image::UnknownSections() const {
    unsigned known = 0;
    for (unsigned kind = kImageQuorzek; kind <= kImageRepeater; ++kind) known += gcGetSectCount(kind);
    return sectionCount_ - known;
}

void Image::ForEachTable(const std::function<void(const ShownTable&)>& show) const { ForEachCompiledTable(show); }

void Image::ForEachBlock(const std::function<void(const ShownBlock&)>& show) const { ForEachCompiledBlock(show); }

}  // namespace zek::tool
