/// How wide text is on a terminal, and how wide the terminal. Relies on the C library's table of characters in UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zek::tool {

/// How many columns a shown text (printable.h) takes that begins in a column, from 0; a tab goes to the next multiple
/// of eight. A wide character takes two columns, one that combines with what stands before it none.
std::size_t ColumnsOf(std::string_view shown, std::size_t begin = 0);

/// As many blanks as a shown text has columns, with its tabs.
std::string BlanksFor(std::string_view shown);

bool IsTerminal(int descriptor);

/// How many columns lines for a terminal have: as COLUMNS says, else as the terminal does.
std::size_t TerminalColumns(int descriptor);
/// As the terminal says, else 80.
std::size_t WindowColumns(int descriptor);

}  // namespace zek::tool
