#include "command.h"

namespace zek::tool {

const std::vector<CommandSpec>& Commands() {
    static const std::vector<CommandSpec> commands = {
        kCompileCommand, kCheckCommand, kVerifyCommand, kDumpCommand, kTreeCommand,      kGetCommand,
        kOriginCommand,  kDiffCommand,  kMapCommand,    kFmtCommand,  kDecompileCommand, kNewCommand};
    return commands;
}

}  // namespace zek::tool
