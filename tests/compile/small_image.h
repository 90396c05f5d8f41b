/// A small source with something in every table, and its compiled image worked out by hand. Relies on image_bytes.h.
#pragma once

#include "compile/image_bytes.h"

namespace zek::test {

inline constexpr char kSmallSource[] =
    "[DEFINE]\nCONST=1\n"
    "[PROPERTY]\nMaker=us\n"
    "[GLOBAL]\nG_X=CONST,7\n"
    "[GROUP]\nPARENT=0\nNAME=A\nCHILDGROUP=2\n"
    "[ACTION]\nNAME=Do\nVALUE=CONST,G_X\n"
    "[REPEATER]\nRep=2,Do\n"
    "[TABLE]\nNAME=T\nTYPE=1\n3.4=9\n";

/// The image of kSmallSource with a time stamp of 0.
inline std::string SmallImage() {
    std::string image = FromHex(
        // 0x000: magic, version, time stamp
        "51 55 4f 52 20 5a 45 4b 20 6d 65 74 61 2e 00 00  00 00 00 01 00 00 00 00");
    image.resize(0x80, '\0');
    image += FromHex(
        // 0x080: where each record begins, then the end of the directory
        "c0 01 00 00 d0 01 00 00 e0 01 00 00 10 02 00 00  20 02 00 00 40 02 00 00 50 02 00 00 60 02 00 00"
        "70 02 00 00 80 02 00 00 00 00 00 00");
    image.resize(0x100, '\0');
    image += FromHex(
        // 0x100: six sections
        "06 00 00 00"
        // 0x104 [PROPERTY], one entry: Maker = "us"
        "02 00 00 01 01 00 00 00  00 00 00 03 01 00 00 00 00 00 00 12"
        // 0x118 [GLOBAL], one entry: X = type 1, 7
        "0a 00 00 01 01 00 00 00  00 00 00 04 02 00 00 00 01 00 00 1e 00 00 00 11"
        // 0x130 [GROUP], three entries: PARENT = group 0, NAME = group A, CHILDGROUP = 2
        "04 00 00 01 03 00 00 00  14 00 00 02 01 00 00 00 00 00 00 18  15 00 00 02 01 00 00 00 01 00 00 18"
        "07 00 00 02 01 00 00 00 01 00 00 11"
        // 0x15c [ACTION], two entries: NAME = action Do, VALUE = type 1, global X
        "07 00 00 01 02 00 00 00  15 00 00 02 01 00 00 00 00 00 00 1a"
        "01 00 00 05 02 00 00 00 01 00 00 1e 00 00 00 04"
        // 0x180 [REPEATER], one entry: Rep = 2, action Do
        "0b 00 00 01 01 00 00 00  00 00 00 06 02 00 00 00 01 00 00 11 00 00 00 1a"
        // 0x198 [TABLE], two entries: NAME = "T", TYPE = 1; the row ends the section
        "08 00 00 01 02 00 00 00  15 00 00 02 01 00 00 00 01 00 00 12  02 00 00 02 01 00 00 00 02 00 00 11"
        // 0x1b8: up to the next boundary
        "00 00 00 00 00 00 00 00"
        // 0x1c0 properties: Maker
        "00 00 00 03 06 00 00 00  4d 61 6b 65 72 00  00 00"
        // 0x1d0 globals: X
        "00 00 00 04 02 00 00 00  58 00  00 00 00 00 00 00"
        // 0x1e0 values: IPMI, the empty name, INIT, DEINIT, ENTRY, EXIT
        "00 00 00 05 1d 00 00 00  49 50 4d 49 00 00 49 4e  49 54 00 44 45 49 4e 49 54 00 45 4e 54 52 59 00"
        "45 58 49 54 00  00 00 00 00 00 00 00 00 00 00 00"
        // 0x210 repeater items: Rep
        "00 00 00 06 04 00 00 00  52 65 70 00  00 00 00 00"
        // 0x220 numbers: 7, 2, 1
        "00 00 00 11 0c 00 00 00  07 00 00 00 02 00 00 00 01 00 00 00  00 00 00 00 00 00 00 00 00 00 00 00"
        // 0x240 strings: us, T
        "00 00 00 12 05 00 00 00  75 73 00 54 00  00 00 00"
        // 0x250 groups: 0, A
        "00 00 00 18 04 00 00 00  30 00 41 00  00 00 00 00"
        // 0x260 actions: Do
        "00 00 00 1a 03 00 00 00  44 6f 00  00 00 00 00 00"
        // 0x270 table names: T
        "00 00 00 1c 02 00 00 00  54 00  00 00 00 00 00 00"
        // 0x280 table data: one block, bytes 3 and 4 set
        "00 00 00 1b 00 01 00 00  00 00 00 09 09");
    image.resize(0x388, '\0');
    return image;
}

}  // namespace zek::test
