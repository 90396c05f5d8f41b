#include "child.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>
#include <cstring>

#include "printable.h"
#include "progress.h"
#include "streams.h"
#include "temporary_files.h"

namespace zek::tool {
namespace {

int CodeOf(int status, const std::string& what) {
    if (WIFEXITED(status)) return WEXITSTATUS(status);
    Tell("zek: " + Printable(what) + " was ended by a signal: " + strsignal(WTERMSIG(status)) + '\n');
    return kUsageOrFiles;
}

/// Whoever ends this process ends the child with it. It owns nothing that would have to be removed.
void EndWith(pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // The parent may have been gone before.
    if (getppid() != parent) _exit(kUsageOrFiles);
}

}  // namespace

int RunInChild(const std::string& what, const std::function<int()>& run) {
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child < 0) throw SystemFailure("cannot start a process");
    if (child == 0) {
        EndWith(parent);
        LeaveTemporaryFiles();
        LeaveProgress();
        _exit(Guarded(run));
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) throw SystemFailure("cannot wait for a process");
    }
    return CodeOf(status, what);
}

}  // namespace zek::tool
