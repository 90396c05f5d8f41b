#include "debug_source.h"

#include <algorithm>

#include "debug_fields.h"
#include "debug_layout.h"
#include "printable.h"

namespace zek::tool {
namespace {

/// Puts sections together from their fields.
class Builder {
public:
    explicit Builder(DebugSource& source) : source_(source) {}

    void Take(const DebugFieldSeen& seen) {
        switch (seen.field) {
            case DebugField::kSection: source_.sections.emplace_back(); break;
            case DebugField::kSectionCommon: inEntry_ = false; break;
            case DebugField::kEntry: Section().entries.emplace_back(); break;
            case DebugField::kEntryCommon: inEntry_ = true; break;
            case DebugField::kFile: source_.files.push_back(seen.text); break;
            case DebugField::kTypeId:
                inEntry_ ? Entry().type = seen.number : Section().kind = seen.number & 0xff;
                break;
            case DebugField::kLine: Spot().line = seen.number; break;
            case DebugField::kFileIndex: Spot().file = seen.number; break;
            case DebugField::kObjectName: (inEntry_ ? Entry().key : Section().keyword) = seen.text; break;
            case DebugField::kDataType: Entry().given = seen.number != 0; break;
            case DebugField::kNumber:
            case DebugField::kValueType: Entry().number = seen.number; break;
            case DebugField::kText:
            case DebugField::kListElement:
            case DebugField::kTypeWord: Entry().texts.push_back(seen.text); break;
            default: break;
        }
    }

private:
    DebugSection& Section() { return source_.sections.back(); }
    DebugEntry& Entry() { return Section().entries.back(); }
    SourceSpot& Spot() { return inEntry_ ? Entry().spot : Section().spot; }

    DebugSource& source_;
    bool inEntry_ = false;
};

}  // namespace

const DebugEntry* DebugSection::Entry(std::string_view key) const {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const DebugEntry& entry) { return entry.given && entry.key == key; });
    return found == entries.end() ? nullptr : &*found;
}

std::string DebugSource::Told(const SourceSpot& spot) const {
    const std::string file =
        spot.file < files.size() ? Printable(files[spot.file]) : "file " + std::to_string(spot.file);
    return file + ':' + std::to_string(spot.line);
}

DebugSource ReadDebugSource(std::string_view image) {
    DebugSource source;
    Builder builder(source);
    ForEachDebugField(image, [&](const DebugFieldSeen& seen) { builder.Take(seen); });
    return source;
}

}  // namespace zek::tool
