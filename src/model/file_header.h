/// What both images begin with: a magic text, the format version, the time stamp, then zeros. Relies on bytes.h.
#pragma once

#include <ctime>
#include <string_view>

#include "model/bytes.h"

namespace zek {

/// Bytes that the magic text takes, padded with zeros; the version follows, then the time stamp.
inline constexpr std::size_t kMagicSize = 16;

/// Appends a header of `size` bytes. The time stamp is the low 32 bits of the calendar time in seconds.
inline void PutFileHeader(ByteWriter& out, std::string_view magic, unsigned version, std::size_t size) {
    out.Raw(magic);
    out.Zeros(kMagicSize - out.Position());
    out.U32(version);
    out.U32(static_cast<unsigned>(std::time(nullptr)));
    out.Zeros(size - out.Position());
}

/// Whether the file begins with the magic, read as a NUL-terminated text; what is missing counts as zeros.
inline bool HasMagic(std::string_view bytes, std::string_view magic) {
    const std::string_view head = bytes.substr(0, kMagicSize);
    return head.substr(0, head.find('\0')) == magic;
}

}  // namespace zek
