// The library's process-wide state, all of it.
// Relies on calls coming from one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "section_file.h"
#include "zekrsparser.h"

namespace zek::parser {

extern std::vector<std::string> g_searchDirs;
extern RSOpenHook g_openHook;
extern void* g_openHookContext;
extern std::uint64_t g_openCount;
extern std::size_t g_openFiles;
extern std::vector<SectionFile*> g_enumerated;

}  // namespace zek::parser
