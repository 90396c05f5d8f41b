#include "docs/run.h"

#include <sys/wait.h>

#include <cstdlib>

int zek::test::RunCommand(const std::string& command) {
    const int status = std::system((command + " >stdout 2>stderr").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
