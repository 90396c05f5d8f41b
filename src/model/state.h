/// The process-wide variables of the model that no class publishes. Relies on the headers below.
#pragma once

#include "model/file_index.h"
#include "model/pool.h"
#include "model/waiting_values.h"

namespace zek {

struct SharedEntries;

extern FileIndex g_fileIndex;
extern Pool g_pool;
extern SharedEntries g_sharedEntries;
extern WaitingValues g_waitingValues;
extern bool g_readingSection;
extern bool g_readingLargeModel;
extern unsigned g_includeDepth;
extern unsigned g_modelChanges;

}  // namespace zek
