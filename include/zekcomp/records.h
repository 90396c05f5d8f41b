/// The plain records that cross the interface of the library: file information, compiled sections and entries, value
/// results and keyword rows. Relies on the standard library alone; the field orders are part of the binary interface.
#pragma once

#include <cstdint>
#include <vector>

/// What an image says of itself; filled by `gcInit` and `gdInit` from the file's header.
struct tagMETAFILEINFO {
    unsigned dwVersion;  ///< format version, 0x01000000
    unsigned dwTime;     ///< time of writing: the low 32 bits of the calendar time in seconds
};

/// One compiled entry. Owned by its section.
struct tagGCENTRY {
    unsigned dwName = 0;              ///< name identifier: a keyword (class 0x02000000) or a name of a table
    std::vector<unsigned> vdwValues;  ///< value words: identifiers, or 0xFFFFFFFF for an unresolved operand
};

/// One compiled section. Owned by the library's list of compiled sections.
struct tagGCSECT {
    unsigned dwSect = 0;               ///< section identifier, 0x01000001 to 0x0100000b
    std::vector<tagGCENTRY> vEntries;  ///< the entries in source order
};

/// What a value word resolves to.
struct tagGCVALUE {
    unsigned dwKind;  ///< 0 nothing, 1 a number, 2 a name text
    unsigned dwID;    ///< the word that was resolved; 0xFFFFFFFF when no word was selected
    union {
        std::uint64_t qwNumber;  ///< kind 1: the number, in the low 32 bits; kind 0: always 0
        const char* pszName;     ///< kind 2: NUL-terminated, owned by the library's tables until the next load
    };
};
static_assert(sizeof(tagGCVALUE) == 16, "hosts take the value result as 16 bytes");

/// One row of a published keyword table.
struct tagNTMAP {
    const char* pszName;  ///< the keyword, NUL-terminated, static
    unsigned dwID;        ///< its type id or code
};
