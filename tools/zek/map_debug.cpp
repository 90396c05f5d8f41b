#include "debug_fields.h"
#include "map.h"
#include "printable.h"

namespace zek::tool {
namespace {

bool IsHexadecimal(DebugField field) {
    return field == DebugField::kVersion || field == DebugField::kTypeId || field == DebugField::kDataType ||
           field == DebugField::kNotation;
}

std::string Told(const DebugFieldSeen& seen) {
    const std::string name = NameOf(seen.field);
    if (seen.text.data()) return name + ' ' + Quoted(seen.text);
    const bool isWord =
        seen.field != DebugField::kMagic && seen.field != DebugField::kReserved && seen.field != DebugField::kTrailing;
    if (!isWord) return name;
    return name + ": " + (IsHexadecimal(seen.field) ? Hexadecimal(seen.number) : std::to_string(seen.number));
}

}  // namespace

void MapDebugImage(std::string_view bytes, const ShowRange& show) {
    unsigned depth = 0;
    ForEachDebugField(bytes, [&](const DebugFieldSeen& seen) {
        const bool isFrame = seen.field == DebugField::kSectionCount || seen.field == DebugField::kTrailing;
        const bool isSection = seen.field == DebugField::kSection;
        const bool isEntry = seen.field == DebugField::kEntry;
        if (isFrame || isSection) depth = 0;
        if (isEntry) depth = 1;
        show({seen.offset, seen.size, depth, Told(seen)});
        if (isSection) depth = 1;
        if (isEntry) depth = 2;
    });
}

}  // namespace zek::tool
