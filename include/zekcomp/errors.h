/// The last-error slots of the two query families and the codes they hold. Relies on api.h.
#pragma once

#include "zekcomp/api.h"

namespace zek {

/// What a slot can hold. A slot keeps the code of the last query that set it.
enum ErrorCode : unsigned {
    kNoError = 0,           ///< success
    kNoSection = 1,         ///< null section handle, or no section of the asked kind
    kNoEntry = 2,           ///< empty list, null entry handle, or (gd) the asked entry is missing
    kNoData = 3,            ///< nothing to enumerate or select, or (gd) no data or an id that is no number
    kOutOfRange = 4,        ///< index or table beyond the end
    kNoSuchID = 5,          ///< ids were compared, none matched
    kNoIDs = 6,             ///< sections exist, none has an id
    kNoSuchName = 7,        ///< names were compared, none matched
    kNoNames = 8,           ///< sections exist, none offers a name
    kValueUnresolved = 10,  ///< the word addressed resolves to nothing
    kWrongClass = 11,       ///< the entry's name is no value, global or repeater item
    kCannotOpen = 12,       ///< compiled image cannot be opened
    kBadMagic = 13,         ///< not a compiled image; `gcInit` reports every failed load so
    kBadVersion = 14,       ///< unsupported version, or the image is cut short
};

}  // namespace zek

/// The slot of the compiled-image queries (`gc...`).
extern ZEK_API unsigned g_dwLastError;
/// The slot of the debug-image queries (`gd...`).
extern ZEK_API unsigned g_dwLastErrorD;

ZEK_API void gcSetLastError(unsigned code);
ZEK_API void gdSetLastError(unsigned code);
extern "C" ZEK_API unsigned gcGetLastError();
extern "C" ZEK_API unsigned gdGetLastError();
