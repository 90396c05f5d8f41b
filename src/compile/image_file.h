/// The compiled image file: a header with a directory of tables, the compiled sections, then the tables. Relies on
/// compile.h and tables.h.
#pragma once

#include <string>

#include "zekcomp/api.h"
#include "zekcomp/records.h"

/// Writes g_GCHead and the tables; 1, or 0 when the file cannot be created. Write errors after that are not examined.
ZEK_API unsigned WriteMeta(const std::string& file);

/// Replaces g_GCHead and every table that the image has; the sections that g_GCHead held are not freed. `info` may be
/// null. 1, or 0 with the `gc` slot set: 12 the file cannot be opened, 13 it is no compiled image, 14 its version is
/// another or it is cut short; what was read until then stays.
ZEK_API unsigned ReadMeta(const std::string& file, tagMETAFILEINFO* info);

namespace zek {

/// Numbers and compiles the model and writes it behind the sections of g_GCHead, as InitTblD, Compile and WriteMeta do,
/// without the records in between. The same results. Throws `std::bad_alloc`, then without a change to the tables and
/// their counters.
unsigned WriteModel(const std::string& file);

}  // namespace zek
