#include "table_rows.h"

#include <string>

#include "entry_roles.h"

namespace zek::tool {
namespace {

constexpr unsigned kBytes = 256;

/// Whether the key of a row, one number or two with a dot between, covers the byte.
bool Covers(std::string_view key, unsigned byte) {
    const std::size_t dot = key.find('.');
    const unsigned low = PlainNumber(key.substr(0, dot)).value_or(0);
    const unsigned high = dot == key.npos ? low : PlainNumber(key.substr(dot + 1)).value_or(0);
    return low <= byte && byte <= high;
}

}  // namespace

std::optional<unsigned> ByteIn(std::string_view key) {
    const auto byte = PlainNumber(key);
    return byte && *byte < kBytes && std::to_string(*byte) == key ? byte : std::nullopt;
}

unsigned char TableRow::Byte() const {
    return row && !row->texts.empty() ? static_cast<unsigned char>(PlainNumber(row->texts[0]).value_or(0)) : 0;
}

TableRow RowBehind(const DebugSource& source, const DebugSection& table, unsigned byte) {
    TableRow last = {&table, nullptr};
    for (const DebugSection& section : source.sections) {
        if (section.keyword != table.keyword) continue;
        for (const DebugEntry& entry : section.entries) {
            if (entry.given && IsTableRow(entry) && Covers(entry.key, byte)) last = {&section, &entry};
        }
        if (&section == &table) break;
    }
    return last;
}

}  // namespace zek::tool
