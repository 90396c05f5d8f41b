#include "command.h"

namespace zek::tool {

const std::vector<CommandSpec>& Commands() {
    static const std::vector<CommandSpec> commands = {kCompileCommand, kCheckCommand,    kVerifyCommand,
                                                      kDumpCommand,    kTreeCommand,     kFmtCommand,
                                                      kNewCommand,     kDecompileCommand};
    return commands;
}

}  // namespace zek::tool
