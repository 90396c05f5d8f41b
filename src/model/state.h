/// The process-wide variables of the model that no class publishes. Relies on file_index.h and pool.h.
#pragma once

#include "model/file_index.h"
#include "model/pool.h"

namespace zek {

struct SharedEntries;

extern FileIndex g_fileIndex;
extern Pool g_pool;
extern SharedEntries g_sharedEntries;
extern unsigned g_modelChanges;

}  // namespace zek
