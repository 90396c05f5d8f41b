#include "model/keyword_table.h"

const std::array<tagNTMAP, 37> g_NTMapEntry = zek::kKeywords;
const unsigned g_dwNTMEntry = zek::kKeywords.size();
