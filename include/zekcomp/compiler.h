/// The compiler calls: read a ZEK source, check it, write the compiled and the debug image. Relies on api.h.
///
/// One compilation at a time, in this order: `gccCompStart`, `gccParse`, `gccCheck`, then `gccOutputD` and `gccOutput`
/// in either order, and last `gccCompEnd`. All state is process-wide and unguarded: call from one thread. None of these
/// calls sets an error slot; the reasons of a failure go to the host's `Output`. Where memory runs out each throws
/// `std::bad_alloc`; `gccCompEnd`, which does not, then makes ready for another compilation.
#pragma once

#include <string>

#include "zekcomp/api.h"

extern "C" {

/// Opens and pre-parses the main source file. 1 when opened, 0 when the file or the section-file parser library is
/// missing.
ZEK_API unsigned gccCompStart(const std::string& file);

/// Reads every section of the open file and of the files that it includes into the model, and closes the file.
ZEK_API void gccParse();

/// Checks the whole model and converts its values; required before the outputs. 1 when valid, 0 when not. Every problem
/// of a pass is reported; cross-references are checked only when every entry by itself is sound.
ZEK_API unsigned gccCheck();

/// Writes the debug image. 1 when the file could be created, else 0; later write errors are not examined. Where memory
/// runs out, the file is cut anywhere.
ZEK_API unsigned gccOutputD(const std::string& file);

/// Writes the compiled image. 1 when the file could be created, else 0; later write errors are not examined. Where
/// memory runs out, identifier tables, counters and table data are as they were before.
ZEK_API unsigned gccOutput(const std::string& file);

/// Destroys the model and the predefined names. The list of source file names, the identifier tables and their counters
/// stay for the life of the process.
ZEK_API void gccCompEnd();
}
