/// The compiled-image queries: load an image, walk its sections and entries, resolve value words. Relies on records.h.
///
/// One image per process; call from one thread. Section and entry handles belong to the library and stay valid until
/// `gcUnInit` or the next `gcInit`, name texts until the next `gcInit`. Every call but `gcUnInit` sets the `gc` slot
/// (errors.h): 0 on success, the code named at the call on failure.
#pragma once

#include <string>

#include "zekcomp/api.h"
#include "zekcomp/records.h"

extern "C" {

/// Loads a compiled image, replacing the one loaded before. `info` may be null. 1, or 0 with code 13 for every failure;
/// what was read before a failure stays until the next `gcInit` or `gcUnInit`. So does it where memory runs out, which
/// throws `std::bad_alloc`, as queries may that make an index. No bytes take more memory than a multiple of theirs. A
/// pipe or device may give 256 MiB, keep silent for two seconds, and be waited for a minute in all.
ZEK_API unsigned gcInit(const std::string& file, tagMETAFILEINFO* info);

/// Frees the sections; the names and numbers stay. Always 1; leaves the slot as it was.
ZEK_API unsigned gcUnInit();

/// The number of sections with this identifier (0x01000001 to 0x0100000b). Always code 0.
ZEK_API unsigned gcGetSectCount(unsigned section);

/// The index-th section (from 0) with this identifier, or null: 1 there is none at all, 4 index too large.
ZEK_API tagGCSECT* gcGetSectByIndex(unsigned section, unsigned index);

/// The first section with this identifier whose NAME is `name`; in [PROPERTY], [GLOBAL] and [REPEATER] sections the
/// name of any entry counts too. Null: 1 no such section at all, 7 no name matched, 8 no name to compare.
ZEK_API tagGCSECT* gcGetSectByName(unsigned section, const std::string& name);

/// The first section with this identifier whose ID is `number`. Null: 1 no such section at all, 5 no ID matched, 6 no
/// ID.
ZEK_API tagGCSECT* gcGetSectByID(unsigned section, unsigned number);

/// The number of entries; 0xFFFFFFFF with code 1 for a null handle.
ZEK_API unsigned gcGetEntryCount(tagGCSECT* section);

/// The index-th entry (from 0); its name identifier is stored in `*name` (may be null; untouched on failure). Null: 1
/// null handle, 4 index too large.
ZEK_API tagGCENTRY* gcGetEntryByIndex(tagGCSECT* section, unsigned index, unsigned* name);

/// The first entry whose name identifier resolves to the text `name` (properties, globals, values, repeater items;
/// never keywords such as NAME); its identifier is stored in `*id` (may be null; untouched on failure). Null: 1 null
/// handle, 2 no entries, 7 none matches.
ZEK_API tagGCENTRY* gcGetEntryByName(tagGCSECT* section, const std::string& name, unsigned* id);

/// The first entry with this name identifier. Null: 1 null handle, 2 none.
ZEK_API tagGCENTRY* gcGetEntryByType(tagGCSECT* section, unsigned name);

/// The number of value words; 0xFFFFFFFF with code 2 for a null handle.
ZEK_API unsigned gcGetValueCount(tagGCENTRY* entry);

/// The index-th value word (from 0), resolved. Kind 0 and identifier 0xFFFFFFFF: 2 null handle, 3 no words, 4 index too
/// large. Kind 0 and the word itself: 10 it resolves to nothing.
ZEK_API tagGCVALUE gcGetValueByIndex(tagGCENTRY* entry, unsigned index);

/// The value word that a field code selects by the entry's value type, resolved. Kind 0 and identifier 0xFFFFFFFF: 2
/// null handle, 11 the entry is no value, global or repeater item, 3 the field does not apply or is unresolved, 10 the
/// type word is no number. Kind 0 and the word itself: 10 it resolves to nothing.
ZEK_API tagGCVALUE gcGetValueByID(tagGCENTRY* entry, unsigned field);

/// Copies the 256-byte block of a table, given by its ordinal or its table-name identifier. 1, or 0 with code 4 when
/// the block lies beyond the table data.
ZEK_API unsigned gcGetTableData(unsigned table, unsigned char* out);

/// The ordinal of the group of this name, counted from 1; 0 for "0", the root, which needs no section. 0xFFFFFFFF: 1 no
/// such group, 8 its section has no NAME value.
ZEK_API unsigned gcGetGroupIndex(const std::string& name);
}
