/// The process-wide variables of the compiled image that are not published. Relies on the indexes.
#pragma once

#include "compile/entry_index.h"
#include "compile/image_index.h"
#include "compile/resolver.h"

namespace zek {

class Numbering;

extern std::array<unsigned, kIdentifierTables.size()> g_insertions;
extern Resolver g_resolver;
extern ImageIndex g_imageIndex;
extern EntryIndex g_entryIndex;
extern Numbering* g_numbering;

}  // namespace zek
