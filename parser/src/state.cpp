#include "state.h"

namespace zek::parser {

// Filled by RSAddSearchDir, emptied by RSClearSearchDirs.
std::vector<std::string> g_searchDirs;
// Set and taken away by RSSetOpenHook.
RSOpenHook g_openHook = nullptr;
// Set along with the hook; never looked into.
void* g_openHookContext = nullptr;
// Counted up by every RSOpenFile that succeeds, never down: it tells which file was opened last.
std::uint64_t g_openCount = 0;
// The files between their RSOpenFile and RSCloseFile.
std::size_t g_openFiles = 0;
// In the order in which they were opened. A file enters with its first RSEnumSection and leaves with RSCloseFile; the
// files are not owned here.
std::vector<SectionFile*> g_enumerated;

}  // namespace zek::parser
