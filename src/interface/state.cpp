// The process-wide variables of the interface.
#include "interface/visible_entries.h"
#include "zekcomp/errors.h"

// The error slots. Set by the queries and by the host; never reset otherwise.
unsigned g_dwLastError = zek::kNoError;
unsigned g_dwLastErrorD = zek::kNoError;

namespace zek {
// Filled by gdGetEntryByIndex; follows the model.
VisibleEntries g_visibleEntries;
}  // namespace zek
