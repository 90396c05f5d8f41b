#include "command.h"

namespace zek::tool {

const char* const kAboutZek = "Compiles hardware descriptions in the ZEK language and shows what their images hold.";
const char* const kExampleZek =
    "Example:\n"
    "  zek compile board.zek          check board.zek, write board.zki and board.zkd\n"
    "\n"
    "Exit codes: 0 fine, 1 the source has errors, 2 wrong command line or a file that cannot be read or written,\n"
    "3 not a valid image. Messages go to standard error. A file name of - is standard input or output.\n"
    "'zek COMMAND --help' tells more about a command.";

const std::vector<CommandSpec>& Commands() {
    static const std::vector<CommandSpec> commands = {
        kCompileCommand, kCheckCommand, kExplainCommand, kVerifyCommand, kDumpCommand,      kTreeCommand, kGetCommand,
        kOriginCommand,  kDiffCommand,  kMapCommand,     kFmtCommand,    kDecompileCommand, kNewCommand,  kLintCommand};
    return commands;
}

}  // namespace zek::tool
