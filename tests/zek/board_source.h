/// A small board in two files, for what compares images and what follows values to their source.
#pragma once

namespace zek::test {

inline constexpr char kBoardWords[] = "[DEFINE]\nVT_CALC = 2\nVT_VALUE = 1\nTEMP = 0x11\nLIMIT = 7\n";

inline constexpr char kBoard[] =
    "[INCLUDE]\nFILE = words.zek\n"
    "[GLOBAL]\nG_T = VT_CALC,-,1,2\n"
    "[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\n"
    "[GROUP]\nPARENT = Board\nNAME = Left\nCHILDGROUP = 0\n"
    "[SENSOR]\nPARENT = Board\nNAME = Inlet\nID = 1\nTYPE = TEMP\nINITFLAG = 0\nCONTROLMASK = 3\n"
    "THRESHOLD_WH = 40\nVALUE = VT_CALC,+,LIMIT,G_T\n"
    "[SENSOR]\nPARENT = Left\nNAME = Old\nID = 2\nTYPE = 3\nINITFLAG = 0\nCONTROLMASK = 3\n"
    "VALUE = VT_CALC,>>,1,2\nVALUE_X = VT_VALUE,9\n"
    "[TABLE]\nNAME = Curve\nTYPE = 1\n0.255 = 9\n"
    "[TAVRGROUP]\nNAME = All\nID = 5\nPID = 0\nSENSORS = 1,2\n";

}  // namespace zek::test
