// The process-wide variables of the checks.
#include "check/cross_references.h"
#include "check/predefined_names.h"

// Filled while a source is read and by gdInit; emptied by CZEKSection::Destory.
std::map<std::string, unsigned> g_tblPreDefine;

namespace zek {
// Filled by the first look-up in a large g_tblPreDefine; emptied with it.
PredefinedIndex g_predefinedIndex;

// Set by the outermost References in use, which gccCheck makes for its second pass; null otherwise.
CrossReferences* g_crossReferences = nullptr;
}  // namespace zek
