/// The process-wide variables of the model that no class publishes. Relies on file_index.h.
#pragma once

#include "model/file_index.h"

namespace zek {

extern FileIndex g_fileIndex;
extern unsigned g_modelChanges;

}  // namespace zek
