/// The debug-image queries: load the checked source model and read it as text. Relies on records.h.
///
/// The model is process-wide, the same one that the compiler fills; call from one thread. Handles and texts belong to
/// the model and stay valid until `gdUnInit`. A query sets the `gd` slot (errors.h); where it sets the `gc` slot
/// instead, which hosts rely on, the call says so.
#pragma once

#include <string>

#include "zekcomp/api.h"
#include "zekcomp/records.h"

class CZEKSection;
class CZEKEntry;

extern "C" {

/// Loads a debug image into the model; what the model held stays. `info` may be null. 1 (the `gc` slot is set to 0), or
/// 0 with the reason sent to `Output` and no slot touched. Throws `std::out_of_range` for a damaged section; what was
/// read until then stays until `gdUnInit`. So does it where memory runs out, which throws `std::bad_alloc`. No bytes
/// take more memory than a multiple of theirs. A pipe or device may give 256 MiB, keep silent for two seconds, and be
/// waited for a minute in all.
ZEK_API unsigned gdInit(const std::string& file, tagMETAFILEINFO* info);

/// Destroys the model and the predefined names. Always 1; no slot is touched.
ZEK_API unsigned gdUnInit();

/// The index-th section (from 0) of a kind, given as 0x200000nn or nn. Null: gd 1 there is no section of this kind, gc
/// 4 index too large.
ZEK_API CZEKSection* gdGetSectByIndex(unsigned kind, unsigned index);

/// The index-th entry (from 0) of those that hold data. Null: gd 1 null section, gc 2 no entry with data, gc 4 index
/// too large.
ZEK_API CZEKEntry* gdGetEntryByIndex(CZEKSection* section, unsigned index);

/// The number of the section's ID. 0xFFFFFFFF: gd 1 null section, gd 3 no data or no number. 0 with gd 2: no ID entry.
ZEK_API unsigned gdGetSectID(CZEKSection* section);

/// The text of the section's NAME. Null: gd 1 null section, gd 2 no NAME entry, gd 3 no data.
ZEK_API const char* gdGetSectName(CZEKSection* section);

/// The text of the section's PARENT; fails as `gdGetSectName` does.
ZEK_API const char* gdGetSectPName(CZEKSection* section);

/// The entry's key as written in the source. Null with gd 2 for a null entry.
ZEK_API const char* gdGetEntryName(CZEKEntry* entry);

/// Writes the entry's value as text, NUL-terminated, to `out`, whose room the caller makes large enough for the longest
/// value: for what gdInit read, the size of the image and 1 MiB more is enough. The empty text for an entry without
/// data. 1, with the slot left as it was; 0 with gd 2 for a null entry.
ZEK_API unsigned gdGetValue(CZEKEntry* entry, char* out);
}
