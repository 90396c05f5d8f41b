// What the command finds itself, whenever it shows findings.
#include "code_table.h"

namespace zek::tool {
namespace {

constexpr CodeRow kComments[] = {
    {"L001", Level::kWarning, "nothing is found here that 'zek: allow %s' would allow",
     "A comment allows a finding that is not there: it was repaired, or the comment stands on another line. Nothing is "
     "said where the source has errors, since the library may not have come so far. Where several sources are checked "
     "in one run, a comment of an included file has to serve one of them.",
     "[DEFINE]\nANY = 1 ; zek: allow W101\n", "Take the comment away."},
    {"L002", Level::kWarning, "'zek: allow %s' allows nothing, since %s is an error",
     "Errors cannot be allowed: no image can be written with them.", "[FANS] ; zek: allow E002\n",
     "Repair what is wrong and take the comment away."},
    {"L003", Level::kWarning, "'zek: allow %s' allows nothing, since there is no such code",
     "The comment names no code that there is.", "[DEFINE]\nANY = 1 ; zek: allow W999\n",
     "Correct it; `zek explain` lists all codes."},
    {"L004", Level::kWarning, "'zek: allow' allows nothing, since no code follows it behind a blank",
     "The comment is cut short, or its codes stand in parentheses or behind a colon.",
     "[DEFINE]\nANY = 1 ; zek: allow(W101)\n", "Write the codes behind a blank, with commas between them."},
};

constexpr CodeGroup kGroups[] = {
    {"Comments that allow findings", "", Origin::kCommand, kComments},
};

}  // namespace

std::span<const CodeGroup> CommandCodes() { return kGroups; }

}  // namespace zek::tool
