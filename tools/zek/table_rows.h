/// Which row of the source set a byte of a table. Relies on debug_source.h.
#pragma once

#include <optional>
#include <string_view>

#include "debug_source.h"

namespace zek::tool {

/// The byte that a key names which is its plain number, such as "7"; nothing for a range and any other key.
std::optional<unsigned> ByteIn(std::string_view key);

struct TableRow {
    const DebugSection* section = nullptr;
    const DebugEntry* row = nullptr;  ///< null where none set it, so that it is 0

    /// The byte that the row sets.
    unsigned char Byte() const;
};

/// The last row of a table that covers the byte; where none does, that of the tables before, whose bytes stay.
TableRow RowBehind(const DebugSource& source, const DebugSection& table, unsigned byte);

}  // namespace zek::tool
