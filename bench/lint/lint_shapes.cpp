#include "lint/lint_shapes.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>

namespace zek::bench {
namespace {

#define ZEK_WORDS "[INCLUDE]\nFILE = zek/words.zek\n"
#define ZEK_STEP(arguments) "[ACTION]\nNAME = Step\nARGNUMBER = " arguments "\nVALUE = VT_NONE\n"
#define ZEK_VIEW(number) "[TAVRGROUP]\nNAME = View" number "\nID = 1" number "\nPID = 0\nSENSORS ="
#define ZEK_GROUP(name) "[GROUP]\nPARENT = 0\nNAME = " name "\nCHILDGROUP = "
#define ZEK_TEN_TIMES(text) text text text text text text text text text text
#define ZEK_LONG_KEY ZEK_TEN_TIMES(ZEK_TEN_TIMES(ZEK_TEN_TIMES("Key_Key_Key_")))
#define ZEK_TABLE "[TABLE]\nNAME = Table#\nTYPE = 1\n"

using Found = LintShape::Found;

constexpr LintShape kShapes[] = {
    {"L001", "comments behind items", "[PROPERTY]\n", "Key# = x ; zek: allow W101\n"},
    {"L001", "comments above an item", "[PROPERTY]\n", "; zek: allow W101\n", "Key = x\n"},
    {"L101", "views", "", ZEK_VIEW("#") "\nP_TEXT# = 1\n"},
    {"L101", "texts of a view", ZEK_VIEW("") "\n", "P_TEXT# = 1\n", "", Found::kOne},
    {"L102", "repeaters", ZEK_WORDS ZEK_STEP("1") "[REPEATER]\n", "R# = 8,Step,ARGx\n"},
    {"L102", "arguments of a repeater", ZEK_WORDS ZEK_STEP("@") "[REPEATER]\nR = 8,Step", ",ARGx#", "\n"},
    {"L103", "globals", ZEK_WORDS "[GLOBAL]\n", "G_# = VT_VALUE,-1\n"},
    {"L103", "arguments of a call", ZEK_WORDS ZEK_STEP("@") "[GLOBAL]\nG_A = VT_CALL,Step", ",-1", "\n"},
    {"L103", "arguments behind a key of 12,000 bytes", ZEK_WORDS ZEK_STEP("@") "[REPEATER]\n" ZEK_LONG_KEY " = 8,Step",
     ",-1", "\n"},
    {"L104", "repeaters", ZEK_WORDS ZEK_STEP("1") "[DEFINE]\nTIMES = 8\n[REPEATER]\n", "R# = TIMES,Step,1\n"},
    {"L105", "sensors of a list", ZEK_VIEW("") " 7", ",FAN#", "\n"},
    {"L106", "actions", ZEK_WORDS "[DEFINE]\nNONE = 0\n",
     "[ACTION]\nNAME = Step#\nARGNUMBER = NONE\nVALUE = VT_NONE\n"},
    {"L107", "tables", "[DEFINE]\nFULL = 255\n", ZEK_TABLE "0.255 = FULL\n"},
    {"L108", "globals", "[DEFINE]\nVT_OTHER = 50\n[GLOBAL]\n", "G_# = VT_OTHER,1\n"},
    {"L109", "globals", ZEK_WORDS "[GLOBAL]\n", "G_# = VT_VALUE,ARG0\n"},
    {"L109", "arguments of a call", ZEK_WORDS ZEK_STEP("@") "[GLOBAL]\nG_A = VT_CALL,Step", ",ARG0", "\n"},
    {"L111", "words", "[DEFINE]\n", "WORD# = 12V\n"},
    {"L112", "words", "[DEFINE]\n", "WORD# = 4294967297\n"},
    {"L113", "groups", "", ZEK_GROUP("Group#") "-2\n"},
    {"L114", "tables", "", ZEK_TABLE "0.255 = 256\n"},
    {"L121", "sensors", ZEK_WORDS ZEK_GROUP("Board") "0\n",
     ZEK_VIEW("#") " #\n[SENSOR]\nPARENT = Board\nNAME = Sensor#\nID = #\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 0\n"
                   "VALUE = VT_NONE\nTHRESHOLD_FL = 10\nTHRESHOLD_FH = 9\n"},
    {"L131", "actions", ZEK_WORDS, "[ACTION]\nNAME = Step#\nARGNUMBER = 0\nVALUE = VT_NONE\n"},
    {"L132", "tables", "", ZEK_TABLE "0.255 = 1\n"},
    {"L133", "globals", ZEK_WORDS "[GLOBAL]\n", "G_# = VT_VALUE,1\n"},
    {"L134", "steps of an action", ZEK_WORDS "[ACTION]\nNAME = Step\nARGNUMBER = 0\n", "VALUE_# = VT_VALUE,1\n"},
    {"L135", "words", "[DEFINE]\n", "WORD# = 1\n"},
    {"L135", "definitions of a word", "", "[DEFINE]\nWORD = 1\n", "", Found::kOne},
    {"L141", "definitions of a word", "", "[DEFINE]\nWORD = #\n", "", Found::kAllButOne},
    {"L142", "words", "", ZEK_GROUP("Group#") "WORD#\n[DEFINE]\nWORD# = 1\n"},
    {"L143", "conditions", "", "[IFDEF]\nDEFINEWORD = WORD#x\nOTHER# = 1\n[DEFINE]\nWORD#y = 1\n"},
    {"L151", "tables", "", ZEK_TABLE "1.255 = 7\n", "", Found::kOne},
    {"L152", "tables", "", ZEK_TABLE "1.255 = 7\n", "", Found::kAllButOne},
    {"L161", "keys of a section", "[PROPERTY]\n", "Key# = x\"y\"\n"},
    {"L162", "keys of a section", "[PROPERTY]\n", "Key# = \"y\n"},
    {"L163", "keys of a section", "[PROPERTY]\n", "Key#\n"},
    {.code = "W301",
     .each = "files of one name",
     .before = "[INCLUDE]\n",
     // Messages show what stands behind the backslash.
     .unit = "FILE = lint#\\view.zek\n",
     .file = "lint#/view.zek",
     .text = ZEK_VIEW("#") " 9\n",
     .share = 100},
};

std::string Filled(std::string_view text, char place, unsigned number) {
    std::string filled;
    for (const char c : text) filled += c == place ? std::to_string(number) : std::string(1, c);
    return filled;
}

void WriteFile(const std::string& file, const std::string& text) {
    if (!(std::ofstream(file) << text).flush()) throw std::runtime_error("cannot write " + file);
}

}  // namespace

std::span<const LintShape> LintShapes() { return kShapes; }

unsigned UnitsIn(const LintShape& shape, unsigned size) { return std::max(size / shape.share, 1U); }

std::string LintSource(const LintShape& shape, unsigned size) {
    const unsigned units = UnitsIn(shape, size);
    std::string source = Filled(shape.before, '@', units);
    for (unsigned i = 0; i < units; ++i) source += Filled(shape.unit, '#', i);
    return source + Filled(shape.after, '@', units);
}

std::string WriteLintSource(const std::string& folder, const LintShape& shape, unsigned size) {
    const std::filesystem::path path = folder;
    for (unsigned i = 0; *shape.file && i < UnitsIn(shape, size); ++i) {
        const std::filesystem::path file = path / Filled(shape.file, '#', i);
        std::filesystem::create_directories(file.parent_path());
        WriteFile(file, Filled(shape.text, '#', i));
    }
    WriteFile(path / "lint.zek", LintSource(shape, size));
    return path / "lint.zek";
}

unsigned FindingsIn(const LintShape& shape, unsigned size) {
    switch (shape.found) {
        case Found::kEach: return UnitsIn(shape, size);
        case Found::kAllButOne: return UnitsIn(shape, size) - 1;
        default: return 1;
    }
}

}  // namespace zek::bench
