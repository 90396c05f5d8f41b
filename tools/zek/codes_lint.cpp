// What the rules of `zek check` find. The first sentence of each cause is what `zek lint --list` says.
#include "code_table.h"

// What every source with values or views needs.
#define ZEK_WORDS "[INCLUDE]\nFILE = zek/words.zek\n"
#define ZEK_ACTION "[ACTION]\nNAME = Step\nARGNUMBER = 1\nVALUE = VT_WRITE,0,8,BUSTYPE_SMBUS,0x2C,ARG1\n"
#define ZEK_GROUP "[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\n"

namespace zek::tool {
namespace {

constexpr CodeRow kLosses[] = {
    {"L101", Level::kWarning, "[%s]:%s, is lost: no [SENSOR], [DEVICE], [SYSTEM] or [PROPERTY] uses the name %s",
     "A P_ text of a [TAVRGROUP] does not reach the image, nor do the P_ texts behind it. The image numbers only the "
     "names that P_ texts of a [SENSOR], [DEVICE] or [SYSTEM] or keys of a [PROPERTY] have; any other ends the "
     "section.",
     "[TAVRGROUP]\nNAME = Fans\nID = 1\nPID = 0\nSENSORS =\nP_ICON = fan\n",
     "Use the name in one of these sections, too, for instance as a [PROPERTY]; or take the text away."},
    {"L102", Level::kWarning, "[%s]:%s, %s is no argument and compiles to 0xFFFFFFFF, which stands for nothing",
     "An argument of a [REPEATER] has no number behind ARG. The library does not check these, and the image gets the "
     "word of what was not found.",
     ZEK_WORDS ZEK_ACTION "[REPEATER]\nRampUp = 8,Step,ARGx\n", "Write a number behind ARG."},
    {"L103", Level::kWarning, "[%s]:%s, %s compiles to 0xFFFFFFFF, which stands for nothing",
     "The number 0xFFFFFFFF, or -1, reaches the service as nothing. The image uses that number where there is none.",
     ZEK_WORDS ZEK_ACTION "[REPEATER]\nRampUp = 8,Step,-1\n", "Use another number, or a value that is worked out."},
    {"L104", Level::kWarning, "[%s]:%s, the count %s is no plain number and compiles to 0",
     "The count of a [REPEATER] is a word or a global. The check takes it, but the image gets 0.",
     ZEK_WORDS ZEK_ACTION "[DEFINE]\nTIMES = 8\n[REPEATER]\nRampUp = TIMES,Step,1\n", "Write the number itself."},
    {"L105", Level::kWarning, "[%s]:%s, %s is no plain number and compiles to 0xFFFFFFFF",
     "An element of SENSORS is a word or a text. Words are not looked up there.",
     "[TAVRGROUP]\nNAME = Fans\nID = 1\nPID = 0\nSENSORS = FAN\n", "Write the ID of the sensor as a number."},
    {"L106", Level::kWarning, "[%s]:%s, %s is no plain number: the check compares it as 0",
     "The ID of a [SENSOR], the PID of a [TAVRGROUP] or ARGNUMBER is a word. The check compares it as 0, so that it "
     "misses views and arguments that do not fit.",
     "[DEFINE]\nTOP = 7\n[TAVRGROUP]\nNAME = Fans\nID = 1\nPID = TOP\nSENSORS =\n", "Write the number itself."},
    {"L107", Level::kWarning, "[%s]:%s, %s is no plain number and compiles to 0",
     "The value of a row of a [TABLE] is a word or a text. Words are not looked up there.",
     "[DEFINE]\nFULL = 255\n[TABLE]\nNAME = Curve\nTYPE = 1\n0.255 = FULL\n", "Write the number itself."},
    {"L108", Level::kWarning, "[%s]:%s, the operands are lost, since %s is the value type %s, which takes none",
     "A value has operands, and its type takes none. The types 13 to 100 and above 104 pass with any operands, but "
     "none "
     "reaches the image.",
     "[DEFINE]\nVT_OTHER = 50\n[GLOBAL]\nG_Any = VT_OTHER,1,2\n", "Use another value type, or take the operands away."},
    {"L109", Level::kWarning, "[%s]:%s, no caller passes %s",
     "An ARG operand names an argument that no caller passes. In an [ACTION] these are ARG0, since the first is ARG1, "
     "and "
     "all above what its callers pass; in a [GLOBAL], which is used without arguments, all; elsewhere those above "
     "ARG16777215, which become other words in the image.",
     ZEK_WORDS ZEK_ACTION "[ACTION]\nNAME = Show\nARGNUMBER = 1\nVALUE = VT_CALL,Step,ARG0\n",
     "Correct the number of the argument."},
};

constexpr CodeRow kNumbers[] = {
    {"L111", Level::kWarning, "[%s]:%s, %s counts as %s: what stands behind the digits is ignored",
     "Text stands behind the digits of a number. The library ignores it, be it a unit, a fraction or a slip.",
     "[DEFINE]\nLIMIT = 3.3\n", "Write the number alone, in a unit in which it is whole."},
    {"L112", Level::kWarning, "[%s]:%s, %s does not fit and counts as %s",
     "A number has more than 32 bits. The bits above are dropped.", "[DEFINE]\nLIMIT = 4294967297\n",
     "Write a number up to 4294967295."},
    {"L113", Level::kWarning, "[%s]:%s, %s is negative and counts as %s",
     "A negative number stands where numbers have no sign. It counts down from 2^32.",
     "[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = -2\n", "Write the number that is meant."},
    {"L114", Level::kWarning, "[%s]:%s, %s does not fit a byte and counts as %s",
     "The value of a row of a [TABLE] is above 255. Only its low 8 bits count.",
     "[TABLE]\nNAME = Curve\nTYPE = 1\n0.255 = 256\n", "Write a number up to 255."},
};

constexpr CodeRow kThresholds[] = {
    {"L121", Level::kWarning, "[%s]:%s, %s is below %s, which is %s",
     "The thresholds of a [SENSOR] are out of order. Fatal low, warning low, warning high and fatal high should not "
     "fall. Decimal numbers are compared as they are written, others as numbers of 32 bits with sign.",
     ZEK_WORDS ZEK_GROUP "[SENSOR]\nPARENT = Board\nNAME = Inlet\nID = 1\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 3\n"
                         "THRESHOLD_WH = 90\nTHRESHOLD_FH = 80\nVALUE = VT_NONE\n"
                         "[TAVRGROUP]\nNAME = All\nID = 1\nPID = 0\nSENSORS = 1\n",
     "Correct them, or allow it where the order is meant."},
};

constexpr CodeRow kUnused[] = {
    {"L131", Level::kWarning, "[%s]:%s, nothing calls the action %s",
     "An [ACTION] is called by nothing but itself. One with VALUE_IPMI counts as called.", ZEK_WORDS ZEK_ACTION,
     "Take it away, or call it."},
    {"L132", Level::kWarning, "[%s]:%s, nothing uses the table %s", "A [TABLE] is used by nothing.",
     "[TABLE]\nNAME = Curve\nTYPE = 1\n0.255 = 7\n", "Take it away, or use it by VT_TABLE."},
    {"L133", Level::kWarning, "[%s]:%s, nothing uses this global", "A key of a [GLOBAL] is used by nothing but itself.",
     ZEK_WORDS "[GLOBAL]\nG_Limit = VT_VALUE,40\n", "Take it away, or use it as an operand."},
    {"L134", Level::kWarning, "[%s]:%s, nothing uses what this step works out",
     "A step of an [ACTION] works out a value that nothing uses. Steps that do something, such as writes, calls and "
     "jumps, count as used.",
     ZEK_WORDS "[ACTION]\nNAME = Read\nVALUE_1 = VT_READ,0,8,BUSTYPE_SMBUS,0x48\nVALUE = VT_VALUE,1\n",
     "Take it away, or use it; allow it where the reading itself is meant, such as to clear a register."},
    {"L135", Level::kWarning, "[%s]:%s, nothing uses the word %s", "A word is defined and used by nothing but itself.",
     "[DEFINE]\nLIMIT = 40\n", "Take it away, or use it."},
};

constexpr CodeRow kWords[] = {
    {"L141", Level::kWarning, "[%s]:%s, the word %s is defined again, as %s: this value holds everywhere, also above",
     "A word is defined in several sections with different values. The last value holds everywhere.",
     "[DEFINE]\nLIMIT = 1\n[DEFINE]\nLIMIT = 2\n", "Rename one."},
    {"L142", Level::kWarning, "[%s]:%s, the word %s is used before it is defined",
     "A word is used before it is defined. It counts all the same, but a reader who goes from the top does not know "
     "it, "
     "and words that take its value do not know it either.",
     "[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = NONE\n[DEFINE]\nNONE = 0\n", "Define it above."},
    {"L143", Level::kWarning, "[%s]:%s, the word %s is not defined here, but the items below are defined all the same",
     "The word of an [IFDEF] is unknown where it stands. Its items are defined all the same.",
     "[IFDEF]\nDEFINEWORD = REAR\nLIMIT = 1\n", "Define the word above, or make the section a [DEFINE]."},
};

constexpr CodeRow kTables[] = {
    {"L151", Level::kWarning, "[%s]:%s, %s sets %s of its 256 bytes: from byte %s on, those that no row sets are 0",
     "The first [TABLE] does not set all its bytes. The others are 0.", "[TABLE]\nNAME = Curve\nTYPE = 1\n0.254 = 7\n",
     "Begin with a row `0.255`."},
    {"L152", Level::kWarning,
     "[%s]:%s, %s sets %s of its 256 bytes: from byte %s on, those that no row sets are those of the table before",
     "A [TABLE] behind another does not set all its bytes. The others keep the values of the table before.",
     "[TABLE]\nNAME = Curve\nTYPE = 1\n0.255 = 7\n[TABLE]\nNAME = Other\nTYPE = 1\n0.254 = 8\n",
     "Begin with a row `0.255`."},
};

constexpr CodeRow kTexts[] = {
    {"L161", Level::kWarning, "[%s]:%s, '%s' is lost, since it stands outside the quotes of %s",
     "Text before or behind the quotes of a sub-string is lost. Only what stands between the quotes counts, up to the "
     "next comma.",
     "[PROPERTY]\nVendor = The \"Example\" company\n", "Put the quotes round the whole sub-string."},
    {"L162", Level::kWarning, "[%s]:%s, the quote is not closed, so that it takes everything to the end",
     "A closing quote is missing. The sub-string takes the rest of the value, commas and comments included.",
     "[PROPERTY]\nVendor = \"Example, Limited\n", "Close the quote."},
    {"L163", Level::kWarning, "[%s]:%s, there is no = behind the key",
     "An item has no equals sign. The whole line is its key, and its value is empty.",
     "[TAVRGROUP]\nNAME = Fans\nID = 1\nPID = 0\nSENSORS\n", "Write KEY = VALUE, or make the line a comment."},
};

constexpr CodeGroup kGroups[] = {
    {"Lint: what the image loses", "", Origin::kLint, kLosses},
    {"Lint: numbers", "", Origin::kLint, kNumbers},
    {"Lint: thresholds", "", Origin::kLint, kThresholds},
    {"Lint: what nothing uses", "", Origin::kLint, kUnused},
    {"Lint: words", "", Origin::kLint, kWords},
    {"Lint: tables", "", Origin::kLint, kTables},
    {"Lint: texts", "", Origin::kLint, kTexts},
};

}  // namespace

std::span<const CodeGroup> LintCodes() { return kGroups; }

}  // namespace zek::tool
