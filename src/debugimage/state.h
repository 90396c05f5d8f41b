/// The process-wide variables of the debug image. Relies on nothing.
#pragma once

namespace zek {

extern bool g_fileListWritten;
extern bool g_fileListRead;

}  // namespace zek
