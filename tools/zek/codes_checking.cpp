// What the library says while it checks.
#include "code_table.h"

namespace zek::tool {
namespace {

constexpr CodeRow kItems[] = {
    {"E101", Level::kError, "Error[%s:%u]: [%s]:%s, This ENTRY does not exist.",
     "A required key is missing. The library names line 0 of the main source, since the item has no place; `zek` shows "
     "the "
     "header of the section where it can tell which.",
     "[GROUP]\nPARENT = 0\nNAME = Board\n",
     "Add the key; [Sections and keys](language.md#sections-and-keys) tells which are required."},
    {"E102", Level::kError, "Error[%s:%u]: [%s]:%s, Entry name is invalid.",
     "The key does not fit its section: an unknown key, a word or property that begins with a digit, a `VALUE_` in an "
     "[ACTION] that no number follows, a key of [GLOBAL] without `G_`, a table row that is no range up to 255, a key "
     "of "
     "[INCLUDE] other than FILE.",
     "[DEFINE]\n1ST = 1\n", "Correct the key."},
    {"E103", Level::kError, "Error[%s:%u]: [%s]:%s, Entry value type is invalid.",
     "An entry whose class and type do not agree.", "", "No source leads to it; report it."},
    {"E104", Level::kError, "Error[%s:%u]: [%s]:%s, No sub-string.", "The value is empty.",
     "[GROUP]\nPARENT = 0\nNAME =\nCHILDGROUP = 0\n", "Give one; for an empty MODEL write `\"\"`."},
    {"E105", Level::kError, "Error[%s:%u]: [%s]:%s, not enough sub-strings.", "A repeater with a count only.",
     "[REPEATER]\nRampUp = 8\n", "Write count, action and arguments."},
    {"E106", Level::kError, "Error[%s:%u]: [%s]:%s, %s has not been defined and is not a valid number.",
     "Neither a word nor a number. The second pass reports operands with the same text.",
     "[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = none\n",
     "Define it, spell it as it is defined, take blanks away round commas; a number has at most 10 characters."},
    {"E107", Level::kError, "Error[%s:%u]: [%s]:%s, No value type sub-string.", "The value is empty.",
     "[GLOBAL]\nG_Limit =\n", "Give a type word; `VT_NONE` for nothing."},
    {"E108", Level::kError, "Error[%s:%u]: [%s]:%s, Value operator type(%s) is invalid.",
     "The first sub-string of the value is not a defined word. A number does not do here.",
     "[GLOBAL]\nG_Limit = 1,40\n", "Include `zek/words.zek`, check the spelling."},
    {"E109", Level::kError, "Error[%s:%u]: [%s]:%s, Not enough sub-strings for value type %s.",
     "Operands are missing; a comparison takes four after the operator.",
     "[INCLUDE]\nFILE = zek/words.zek\n[GLOBAL]\nG_Sum = VT_CALC,+,1\n",
     "Add them; [Value types](language.md#value-types) tells which."},
    {"E110", Level::kError, "Error[%s:%u]: [%s]:%s, Value:OPERATOR %s is invalid.", "There is no such operator.",
     "[INCLUDE]\nFILE = zek/words.zek\n[GLOBAL]\nG_Same = VT_CALC,=,1,1,1,0\n",
     "Mind blanks, `=` for `==`, and capitals: it is `pow`."},
    {"E111", Level::kError, "Error[%s:%u]: [%s]:%s, The BaseAddress %s of BUSTYPE_SIMPLEIOPORT must be 0.",
     "The last operand before the data must be a written 0.",
     "[INCLUDE]\nFILE = zek/words.zek\n[GLOBAL]\nG_Port = VT_READ,0,8,BUSTYPE_SIMPLEIOPORT,0x0A10\n",
     "Write the port as the first operand."},
    {"E112", Level::kError, "Error[%s:%u]: [%s], section type is invalid.", "A section whose kind is unknown.", "",
     "No source leads to it; report it."},
    {"E113", Level::kError, "Error[%s:%u]: Section name %s is invalid.",
     "A section whose name is not that of its kind.", "", "No source leads to it; report it."},
    {"W101", Level::kWarning, "Warning[%s:%u]: [%s]:%s, More than one sub-string and get the first one as sub-string.",
     "A number or text has a comma in it; what follows the comma is dropped.",
     "[PROPERTY]\nVendor = Example, Limited\n", "Quote the text."},
    {"W102", Level::kWarning, "Warning[%s:%u]: [%s]:%s, Too much sub-strings for value type %s.",
     "Operands too many. They are dropped, or kept with types 5, 9 and 11.",
     "[INCLUDE]\nFILE = zek/words.zek\n[GLOBAL]\nG_Limit = VT_VALUE,40,41\n", "Remove them. VT_PACK takes four."},
};

constexpr CodeRow kSections[] = {
    {"E201", Level::kError, "Error[%s:%u]: SECTION %s is redefined. The MAX number of %s is one.",
     "More than one [QUORZEK] or [SYSTEM]; each of them reports it.",
     "[QUORZEK]\nVERSION = 1\n[QUORZEK]\nVERSION = 2\n", "Keep one."},
    {"E202", Level::kError, "Error[%s:%u]: [%s], Entry %s is redefined.",
     "The key stands twice in this section. Each further one is reported.",
     "[GROUP]\nPARENT = 0\nNAME = Board\nNAME = Main board\nCHILDGROUP = 0\n", "Keep one."},
    {"E203", Level::kError, "Error[%s:%u]: [%s], Entry %s is redefined.It has been defined in Line[%s:%u].",
     "The key stands in an earlier [PROPERTY], [GLOBAL] or [REPEATER], at the place given. One clash is reported for "
     "each "
     "section.",
     "[PROPERTY]\nColour = red\n[PROPERTY]\nColour = blue\n", "Rename one."},
    {"E204", Level::kError, "Error[%s:%u]: [%s], NAME %s is redefined.It has been defined in Line[%s:%u].",
     "An earlier section of the kind has this NAME.",
     "[TABLE]\nNAME = Curve\nTYPE = 1\n[TABLE]\nNAME = Curve\nTYPE = 1\n", "Rename one."},
    {"E205", Level::kError, "Error[%s:%u]: [%s], ID %s is redefined.It has been defined in Line[%s:%u].",
     "An earlier section of the kind has this ID, perhaps written in another way (0x10 and 16).",
     "[TAVRGROUP]\nNAME = Fans\nID = 16\nPID = 0\nSENSORS =\n"
     "[TAVRGROUP]\nNAME = Power\nID = 0x10\nPID = 0\nSENSORS =\n",
     "Renumber one."},
    {"E206", Level::kError, "Error[%s:%u]: Parent of this group hasn't been defined.",
     "No [GROUP] on a smaller line number has the NAME that this group's PARENT gives.",
     "[GROUP]\nPARENT = Board\nNAME = Fans\nCHILDGROUP = 0\n[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 1\n",
     "Move the parent up, also if it stands in another file."},
};

constexpr CodeRow kNames[] = {
    {"E301", Level::kError, "Error[%s:%u]: [%s]:%s, Parent GROUP %s does not exist.",
     "No [GROUP] has this NAME. For a sensor `0` is no group.",
     "[GROUP]\nPARENT = Bord\nNAME = Fans\nCHILDGROUP = 0\n[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 1\n",
     "Letters and blanks must agree."},
    {"E302", Level::kError, "Error[%s:%u]: [%s]:%s, Parent TAVRGROUP with ID %s does not exist.",
     "No [TAVRGROUP] has the ID that PID gives.", "[TAVRGROUP]\nNAME = Fans\nID = 1\nPID = 7\nSENSORS =\n",
     "Use 0 for a view at the top."},
    {"E303", Level::kError, "Error[%s:%u]: [%s]:%s, The parent TAVRGROUP of SENSOR with ID %s does not exist.",
     "No view lists this sensor. An ID written as a word counts as 0.",
     "[INCLUDE]\nFILE = zek/words.zek\n[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\n"
     "[SENSOR]\nPARENT = Board\nNAME = Inlet\nID = 1\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 0\nVALUE = VT_NONE\n",
     "Add its ID to a SENSORS list; write it as a number."},
    {"E304", Level::kError, "Error[%s:%u]: [%s]:%s, The ARG name %s is invalid.",
     "The argument is above ARGNUMBER, or ARGNUMBER is missing or no plain number, or no number follows ARG. Outside "
     "an "
     "[ACTION] only VT_CALL takes arguments other than ARG0.",
     "[INCLUDE]\nFILE = zek/words.zek\n[ACTION]\nNAME = Double\nARGNUMBER = 1\nVALUE = VT_CALC,*,ARG2,2\n",
     "Correct the argument or ARGNUMBER."},
    {"E305", Level::kError, "Error[%s:%u]: [%s]:%s, The GLOBAL entry with NAME %s does not exist.",
     "No [GLOBAL] has this key. It is written with `G_` in both places.",
     "[INCLUDE]\nFILE = zek/words.zek\n[GLOBAL]\nG_Limit = VT_VALUE,40\nG_Next = VT_CALC,+,G_Limt,1\n",
     "Spell it as it is defined, or define it."},
    {"E306", Level::kError, "Error[%s:%u]: [%s]:%s, The TABLE with NAME %s does not exist.",
     "No [TABLE] has this NAME.", "[INCLUDE]\nFILE = zek/words.zek\n[GLOBAL]\nG_Duty = VT_TABLE,Curve,7\n",
     "Spell it as it is named, or add the table."},
    {"E307", Level::kError, "Error[%s:%u]: [%s]:%s, The ACTION with NAME %s does not exist.",
     "No [ACTION] has this NAME.", "[INCLUDE]\nFILE = zek/words.zek\n[GLOBAL]\nG_Inlet = VT_CALL,ReadInlet\n",
     "Spell it as it is named, or add the action."},
    {"E308", Level::kError, "Error[%s:%u]: [%s]:%s The ACTION %s needs %u PARAMS, but total %u PARAMS here.",
     "The number of arguments differs from the action's ARGNUMBER (0 when it is missing or no plain number).",
     "[INCLUDE]\nFILE = zek/words.zek\n[ACTION]\nNAME = Double\nARGNUMBER = 1\nVALUE = VT_CALC,*,ARG1,2\n"
     "[GLOBAL]\nG_Four = VT_CALL,Double,2,2\n",
     "Correct one of them."},
    {"E309", Level::kError, "Error[%s:%u]: [%s]:%s, The VALUE name %s is not valid in this section.",
     "The section has no such working value. They exist in an [ACTION] only, and only inside it.",
     "[INCLUDE]\nFILE = zek/words.zek\n[ACTION]\nNAME = Double\nVALUE_1 = VT_VALUE,2\nVALUE = VT_CALC,*,VALUE_2,2\n",
     "Correct the name or add the step."},
    {"W301", Level::kWarning, "Error[%s:%u]: [%s]:%s, The SENSOR with ID %s does not exist.",
     "A view lists a sensor that is not there. The library calls it an error, but the check passes with it. Only the "
     "elements up to the first known one are looked at.",
     "[TAVRGROUP]\nNAME = Fans\nID = 1\nPID = 0\nSENSORS = 9\n", "Correct the list; write plain numbers."},
    {"W302", Level::kWarning, "Error[%s:%u]:SMBUS address field is wrong!",
     "VT_SMBUS_SEND or VT_SMBUS_RECEIVE (types 11 and 12) with a base other than `0x00`. The library calls it an "
     "error, "
     "but the check passes with it.",
     "[INCLUDE]\nFILE = zek/words.zek\n[GLOBAL]\nG_Fan = VT_SMBUS_RECEIVE,0x70,8,BUSTYPE_SMBUS,0\n",
     "Write it letter by letter."},
    {"W303", Level::kWarning, "Error[%s:%u]: SMBUS type is wrong!",
     "One of these with a bus type other than the word `BUSTYPE_SMBUS`. The library calls it an error, but the check "
     "passes with it.",
     "[INCLUDE]\nFILE = zek/words.zek\n[GLOBAL]\nG_Fan = VT_SMBUS_RECEIVE,0x70,8,1,0x00\n", "Write the word."},
};

constexpr CodeGroup kGroups[] = {
    {"First pass: items", "", Origin::kLibrary, kItems},
    {"Second pass: sections", "", Origin::kLibrary, kSections},
    {"Second pass: items", "", Origin::kLibrary, kNames},
};

}  // namespace

std::span<const CodeGroup> CheckingCodes() { return kGroups; }

}  // namespace zek::tool
