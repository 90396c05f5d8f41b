#include "command.h"

namespace zek::tool {

const char* const kAboutZek = "Compiles ZEK hardware descriptions and shows what their images hold.";
const char* const kExampleZek =
    "Example:\n"
    "  zek compile board.zek     check board.zek, write board.zki and board.zkd\n"
    "\n"
    "'zek help COMMAND' tells more about a command. Messages go to standard error.\n"
    "A file name of - is standard input or output.\n";
const ExitCodes kExitCodesZek = {kDone, "errors in a source, a difference, or no such value: each command tells which",
                                 kWrongLineOrFile, kNotValid};

const std::vector<CommandSpec>& Commands() {
    static const std::vector<CommandSpec> commands = {
        kCompileCommand, kCheckCommand, kExplainCommand, kVerifyCommand, kDumpCommand,      kTreeCommand, kGetCommand,
        kOriginCommand,  kDiffCommand,  kMapCommand,     kFmtCommand,    kDecompileCommand, kNewCommand,  kLintCommand};
    return commands;
}

}  // namespace zek::tool
