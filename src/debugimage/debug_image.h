/// The debug image file: a header, the predefined names, then every section of the model. Relies on the model.
#pragma once

#include <string>

#include "zekcomp/api.h"
#include "zekcomp/identifiers.h"
#include "zekcomp/records.h"

/// Writes the model; 1, or 0 (reported) when the file cannot be created. Write errors after that are not examined.
ZEK_API unsigned WriteMetaD(const std::string& file);

/// Adds the names and sections of an image to the model. 1, or 0 (reported) for a file that is no debug image; `info`
/// may be null. Throws `std::out_of_range` for a damaged section; what was read until then stays.
ZEK_API unsigned ReadMetaD(const std::string& file, tagMETAFILEINFO* info);
