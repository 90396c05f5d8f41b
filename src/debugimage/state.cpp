// The process-wide variables of the debug image. The list of source files travels once per process each way, because
// the file index of every object refers to that one list: hosts rely on it.
#include "debugimage/state.h"

namespace zek {

// Set by the first object written; never cleared.
bool g_fileListWritten = false;
// Set once a list has been read completely; never cleared.
bool g_fileListRead = false;

}  // namespace zek
