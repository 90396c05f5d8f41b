/// The process-wide variables of the compiled image that are not published. Relies on the indexes.
#pragma once

#include <array>
#include <string>

#include "compile/entry_index.h"
#include "compile/image_index.h"
#include "compile/reverse_index.h"

namespace zek {

class Numbering;

extern unsigned g_changes;
extern std::array<NameIndex, 10> g_nameIndexes;
extern NumberIndex g_numberIndex;
extern ImageIndex g_imageIndex;
extern EntryIndex g_entryIndex;
extern Numbering* g_numbering;

}  // namespace zek
