/// Boards in the formats of other tools, with the same content as the source: each item of it has its field there. None
/// has comments, and none is indented. Relies on board.h.
#pragma once

#include <string>

#include "board.h"

namespace zek::bench {

/// JSON for flatc and the schema board.fbs, a list for each kind of section.
std::string BoardAsJson(const Board& board);
/// The text format of protoc for the schema board.proto, a message for each section.
std::string BoardAsProtoText(const Board& board);
/// Source for dtc. The groups are nodes in one another, with what belongs to them below them, so that no node has many
/// children; that says what PARENT says in the other formats.
std::string BoardAsDts(const Board& board);

}  // namespace zek::bench
