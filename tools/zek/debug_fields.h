/// Every field of a debug image, one after the other: each byte belongs to exactly one. Relies on debug_layout.h and on
/// an image that was verified (debug_check.h); docs/debug-image.md tells the bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace zek::tool {

/// What a field is. A STR is one field with its length; of a BLOCK, and of a LIST, the length or count is a field of
/// its own and what it holds follows.
enum class DebugField {
    kMagic,
    kVersion,
    kTime,
    kReserved,
    kNameCount,
    kName,
    kNameValue,
    kGroupCount,
    kSectionCount,
    kSection,        ///< length of the block of a section
    kSectionCommon,  ///< length of its common part, whose fields follow
    kEntryCount,     ///< behind that common part
    kEntry,          ///< length of the block of an entry
    kEntryCommon,    ///< length of its common part, whose fields follow
    kTypeId,
    kNotation,
    kLine,
    kFileIndex,
    kObjectName,
    kFileCount,
    kFile,
    kData,  ///< length of the typed data
    kDataType,
    kNumber,
    kText,  ///< a text or an operand of a value
    kListCount,
    kListElement,
    kValue,  ///< length of the value record
    kValueType,
    kTypeWord,
    kTrailing,
};

/// What a kind of field is called, such as "type id". Static.
const char* NameOf(DebugField field);

struct DebugFieldSeen {
    DebugField field = DebugField::kMagic;
    std::size_t offset = 0;      ///< in bytes from the beginning of the image
    std::size_t size = 0;        ///< in bytes, from 1
    std::uint32_t number = 0;    ///< of a U32: its value
    std::string_view text = {};  ///< of a STR: what it says; within the bytes of the image
};

/// Shows the fields in the order of the image.
void ForEachDebugField(std::string_view image, const std::function<void(const DebugFieldSeen&)>& show);

}  // namespace zek::tool
