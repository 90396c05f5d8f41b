#include "debug_view.h"

#include <memory>

#include "entry_roles.h"
#include "failure.h"
#include "memory_file.h"
#include "section_keywords.h"
#include "zekcomp/debug_image.h"
#include "zekcomp/identifiers.h"

namespace zek::tool {
namespace {

/// Room for the longest value of an image, its NUL included; the query does not take the size. Every character shown
/// stands in the image, but for a comma before each string, which takes four bytes there, and up to ten for a number,
/// which takes four bytes too: less than three times the image.
std::size_t RoomFor(std::size_t imageSize) { return imageSize * 3; }

std::optional<std::string> Optional(const char* text) { return text ? std::optional<std::string>(text) : std::nullopt; }

void AppendWord(std::string& bytes, unsigned word) {
    for (unsigned shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(word >> shift);
}

/// Makes the library take a list of source files, which it otherwise expects in the first image that it reads.
void TakeEmptyFileList() {
    // No predefined names, then a group of one section: an [INCLUDE], which is not restored, with an empty list.
    constexpr unsigned kWords[] = {0, 1, 1, 32, 24, 0x2000000e, 0, 0, 0, 0, 0, 0};
    std::string bytes("QUOR ZEK metaD.\0", 16);
    AppendWord(bytes, ZEKD_VERSION);
    bytes.resize(ZEKD_DATA_OFFSET);
    for (const unsigned word : kWords) AppendWord(bytes, word);
    gdInit(MemoryFile(bytes).Name(), nullptr);
}

ShownSection Shown(const DebugSection& source, unsigned index, CZEKSection* section, char* room) {
    ShownSection shown;
    shown.keyword = kSectionKeywords[source.kind - 1];
    shown.index = index;
    shown.name = Optional(gdGetSectName(section));
    shown.parent = Optional(gdGetSectPName(section));
    shown.source = &source;
    unsigned next = 0;
    for (const DebugEntry& given : source.entries) {
        CZEKEntry* const entry = given.given ? gdGetEntryByIndex(section, next) : nullptr;
        if (!entry) continue;
        ++next;
        // Data without a value leaves the room as it is.
        room[0] = '\0';
        gdGetValue(entry, room);
        shown.entries.push_back({gdGetEntryName(entry), 0, {}, room, &given});
    }
    return shown;
}

}  // namespace

tagMETAFILEINFO LoadDebugImage(std::string_view bytes, bool lacksFileList) {
    if (lacksFileList) TakeEmptyFileList();
    // From a copy, so that what is loaded is what was verified, also when the file is a pipe.
    const MemoryFile copy(bytes);
    tagMETAFILEINFO info = {};
    if (!gdInit(copy.Name(), &info)) {
        throw Failure(kUsageOrFiles, "cannot hold the image in memory: " + copy.Name() + " cannot be read");
    }
    return info;
}

void UnloadDebugImage() { gdUnInit(); }

void ForEachDebugSection(const Image& image, unsigned position, std::size_t imageSize,
                         const std::function<void(const ShownSection&)>& show) {
    // Not initialised, so only what is used takes memory.
    const std::unique_ptr<char[]> room(new char[RoomFor(imageSize)]);
    const unsigned kind = position + 1;
    unsigned next = 0;
    for (const DebugSection& source : image.Source().sections) {
        CZEKSection* const section = source.kind == kind ? gdGetSectByIndex(kind, next) : nullptr;
        if (!section) continue;
        ShownSection shown = Shown(source, next++, section, room.get());
        shown.id = IdOf(source, image.Names());
        show(shown);
    }
}

}  // namespace zek::tool
