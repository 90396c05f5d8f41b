/// A small source and its debug image worked out by hand. Relies on debug_bytes.h.
#pragma once

#include "debugimage/debug_bytes.h"

namespace zek::test {

inline constexpr char kSmallModel[] =
    "[QUORZEK]\nVERSION=1.0\n"
    "[DEFINE]\nCONST=1\n"
    "[GLOBAL]\nG_X=CONST,7\n";

/// The first debug image that a process writes of kSmallModel in main.zek, with a time stamp of 0.
inline std::string SmallDebugImage() {
    std::string image = FromHex(
        // 0x000: magic, version, time stamp
        "51 55 4f 52 20 5a 45 4b 20 6d 65 74 61 44 2e 00  00 00 00 01 00 00 00 00");
    image.resize(0x80, '\0');
    image += FromHex(
        // 0x080: one predefined name, CONST = 1
        "01 00 00 00  05 00 00 00 43 4f 4e 53 54  01 00 00 00"
        // 0x091: three groups
        "03 00 00 00"
        // 0x095: one section of 0x65 bytes, from 0x09d
        "01 00 00 00  65 00 00 00"
        // + 0: [QUORZEK], notation 1, line 1, file 0, and the list of files: main.zek
        "2b 00 00 00  01 00 00 20 01 00 00 00 01 00 00 00 00 00 00 00  07 00 00 00 51 55 4f 52 5a 45 4b"
        "01 00 00 00 08 00 00 00 6d 61 69 6e 2e 7a 65 6b"
        // + 47: one entry of 0x2e bytes: VERSION, notation 1, line 2, file 0
        "01 00 00 00  2e 00 00 00"
        "1b 00 00 00  01 00 02 10 01 00 00 00 02 00 00 00 00 00 00 00  07 00 00 00 56 45 52 53 49 4f 4e"
        // + 86: its data, the text 1.0
        "0b 00 00 00  01 00 02 10  03 00 00 00 31 2e 30"
        // 0x102: one section of 0x4f bytes, from 0x10a
        "01 00 00 00  4f 00 00 00"
        // + 0: [DEFINE], notation 2, line 3, file 0
        "1a 00 00 00  0c 00 00 20 02 00 00 00 03 00 00 00 00 00 00 00  06 00 00 00 44 45 46 49 4e 45"
        // + 30: one entry of 0x29 bytes: CONST, notation 10, line 4, file 0
        "01 00 00 00  29 00 00 00"
        "19 00 00 00  01 00 01 10 0a 00 00 00 04 00 00 00 00 00 00 00  05 00 00 00 43 4f 4e 53 54"
        // + 67: its data, the number 1
        "08 00 00 00  01 00 01 10  01 00 00 00"
        // 0x159: one section of 0x5f bytes, from 0x161
        "01 00 00 00  5f 00 00 00"
        // + 0: [GLOBAL], notation 2, line 5, file 0
        "1a 00 00 00  0a 00 00 20 02 00 00 00 05 00 00 00 00 00 00 00  06 00 00 00 47 4c 4f 42 41 4c"
        // + 30: one entry of 0x39 bytes: G_X, notation 46, line 6, file 0
        "01 00 00 00  39 00 00 00"
        "17 00 00 00  01 00 08 10 2e 00 00 00 06 00 00 00 00 00 00 00  03 00 00 00 47 5f 58"
        // + 65: its data, a value of 0x12 bytes: type 1, named CONST, of 7
        "1a 00 00 00  01 00 08 10  12 00 00 00  01 00 00 00 05 00 00 00 43 4f 4e 53 54  01 00 00 00 37");
    return image;
}

}  // namespace zek::test
