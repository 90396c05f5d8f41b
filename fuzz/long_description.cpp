#include "long_description.h"

#include <string_view>

namespace zek::fuzz {

namespace {

/// A text for each number from 1 on, "#" in it being the number, and `between` the texts.
std::string Numbered(std::string_view text, std::string_view between = {}) {
    std::string all;
    for (unsigned number = 1; number <= kMany; ++number) {
        if (number > 1) all += between;
        for (const char character : text) {
            if (character == '#') {
                all += std::to_string(number);
            } else {
                all += character;
            }
        }
    }
    return all;
}

}  // namespace

std::string LongDescription() {
    constexpr std::string_view kSensor =
        "[SENSOR]\nPARENT=Group#\nNAME=Sensor#\nID=#\nTYPE=1\nINITFLAG=0\nCONTROLMASK=0\nVALUE=VT_VALUE,#\n";
    constexpr std::string_view kDevice = "[DEVICE]\nNAME=Device#\nID=#\nINITFLAG=0\nCONTROLMASK=0\n";
    constexpr std::string_view kOwnKeys = "P_Own#=text #\nVALUE_OWN#=VT_VALUE,#\n";
    return "[DEFINE]\nVT_VALUE=1\nVT_CALL=3\n" + Numbered("WORD#=#\n") +
           "[SYSTEM]\nTYPE=1\nMODEL=m\nFLAG=0\nZEKLOOP=1\n" + Numbered("P_System#=#\n") + "[PROPERTY]\n" +
           Numbered("Property#=#\n") + Numbered("[PROPERTY]\nOther#=other #\n") +
           Numbered("[GROUP]\nPARENT=0\nNAME=Group#\nCHILDGROUP=0\n") + Numbered(kSensor) + Numbered(kOwnKeys) +
           Numbered(kDevice) + Numbered(kOwnKeys) +
           Numbered("[ACTION]\nNAME=Action#\nARGNUMBER=0\nVALUE_1=VT_VALUE,#\nVALUE=VT_VALUE,VALUE_1\n") +
           Numbered("[ACTION]\nNAME=Caller#\nARGNUMBER=#\nVALUE=VT_CALL,Action#\n") + "[ACTION]\nNAME=Steps\n" +
           Numbered("VALUE_#=VT_VALUE,#\n") + "VALUE=VT_VALUE,VALUE_1\n" +
           Numbered("[TABLE]\nNAME=Table#\nTYPE=1\n#=#\n") + Numbered("0.#=#\n") + "[GLOBAL]\n" +
           Numbered("G_#=VT_VALUE,#\n") + "[REPEATER]\n" + Numbered("Repeater#=#,Action#\n") +
           Numbered("[TAVRGROUP]\nNAME=Tavr#\nID=#\nPID=0\nSENSORS=#\n") +
           "[TAVRGROUP]\nNAME=All\nID=1000\nPID=0\nSENSORS=" + Numbered("#", ",") + '\n';
}

std::string LongListDescription() {
    return "[PROPERTY]\n" + Numbered("Property#=#\n") + Numbered("[PROPERTY]\nOther#=other #\n");
}

}  // namespace zek::fuzz
