/// Identifiers of the compiled image: their classes, the counters that give them out, and what one stands for. Relies
/// on records.h.
///
/// An identifier is a 32-bit word: its top byte is its class, its low 24 bits its ordinal in the class, from 0.
#pragma once

#include "zekcomp/api.h"
#include "zekcomp/records.h"

/// Format version of the compiled image, 0x01000000.
extern ZEK_API const unsigned ZEK_VERSION;
/// Format version of the debug image, 0x01000000.
extern ZEK_API const unsigned ZEKD_VERSION;
/// Offset of the data area of a debug image, 0x80 bytes.
extern ZEK_API const unsigned ZEKD_DATA_OFFSET;

/// The next identifier to be given out in each class. Filled by `gccOutput` and by `gcInit`; never reset between
/// compilations.
extern ZEK_API unsigned g_idxProperty;
extern ZEK_API unsigned g_idxGlobal;
extern ZEK_API unsigned g_idxValue;
extern ZEK_API unsigned g_idxRepeater;
extern ZEK_API unsigned g_idxDword;
extern ZEK_API unsigned g_idxString;
extern ZEK_API unsigned g_idxGroup;
extern ZEK_API unsigned g_idxAction;
extern ZEK_API unsigned g_idxTableName;

/// What an identifier stands for; kind 0 for nothing. A name text belongs to its table and stays valid while that is
/// unchanged.
ZEK_API tagGCVALUE GetTblData(unsigned id);

namespace zek {

/// Section identifiers, as `gcGetSectByIndex` takes them.
inline constexpr unsigned kImageSectionClass = 0x01000000;
inline constexpr unsigned kImageQuorzek = 0x01000001;
inline constexpr unsigned kImageProperty = 0x01000002;
inline constexpr unsigned kImageSystem = 0x01000003;
inline constexpr unsigned kImageGroup = 0x01000004;
inline constexpr unsigned kImageSensor = 0x01000005;
inline constexpr unsigned kImageDevice = 0x01000006;
inline constexpr unsigned kImageAction = 0x01000007;
inline constexpr unsigned kImageTable = 0x01000008;
inline constexpr unsigned kImageTavrGroup = 0x01000009;
inline constexpr unsigned kImageGlobal = 0x0100000a;
inline constexpr unsigned kImageRepeater = 0x0100000b;

/// Classes of identifiers.
inline constexpr unsigned kIdClassMask = 0xFF000000;
inline constexpr unsigned kIdOrdinalMask = 0x00FFFFFF;
inline constexpr unsigned kIdKeyword = 0x02000000;
inline constexpr unsigned kIdProperty = 0x03000000;
inline constexpr unsigned kIdGlobal = 0x04000000;
inline constexpr unsigned kIdValue = 0x05000000;
inline constexpr unsigned kIdRepeater = 0x06000000;
inline constexpr unsigned kIdNumber = 0x11000000;
inline constexpr unsigned kIdString = 0x12000000;
inline constexpr unsigned kIdGroup = 0x18000000;
inline constexpr unsigned kIdAction = 0x1a000000;
inline constexpr unsigned kIdTableData = 0x1b000000;
inline constexpr unsigned kIdTableName = 0x1c000000;
inline constexpr unsigned kIdArgument = 0x1d000000;   ///< the ordinal is the argument number
inline constexpr unsigned kIdValueType = 0x1e000000;  ///< the ordinal is the value type
inline constexpr unsigned kIdOperator = 0x1f000000;   ///< the ordinal is the operator code
inline constexpr unsigned kIdUnresolved = 0xFFFFFFFF;

/// Keyword identifiers: the names of the entries that identify a section.
inline constexpr unsigned kIdID = 0x02000008;
inline constexpr unsigned kIdParent = 0x02000014;
inline constexpr unsigned kIdName = 0x02000015;
inline constexpr unsigned kIdSensors = 0x02000016;

/// Bytes of one table block.
inline constexpr unsigned kTableBlockSize = 256;

}  // namespace zek
