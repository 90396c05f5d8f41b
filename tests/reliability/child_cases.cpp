#include "reliability/child_cases.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <optional>
#include <stdexcept>

#include "support/resources.h"

namespace zek::test {

namespace {

/// What a child and its parent both see.
struct Progress {
    std::size_t next;  ///< the case that runs, or the end of the batch
    std::size_t verified;
    std::size_t refused;
};

class SharedProgress {
public:
    SharedProgress()
        : memory_(mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) {
        if (memory_ == MAP_FAILED) throw std::runtime_error("no shared memory");
    }
    ~SharedProgress() { munmap(memory_, sizeof(Progress)); }
    SharedProgress(const SharedProgress&) = delete;
    SharedProgress& operator=(const SharedProgress&) = delete;

    volatile Progress& operator*() const { return *static_cast<volatile Progress*>(memory_); }

private:
    void* memory_;
};

/// An exception that a case lets out ends the process here, as it would end a host's.
void RunBatch(volatile Progress& progress, std::size_t end, const ChildSetting& setting,
              const std::function<bool(std::size_t)>& run) noexcept {
    std::optional<ScarceMemory> scarce;
    if (setting.spareMemory) scarce.emplace(setting.spareMemory);
    for (std::size_t number = progress.next; number < end; ++number) {
        progress.next = number;
        alarm(setting.secondsForOneCase);
        const bool verified = run(number);
        if (testing::Test::HasFailure()) {
            std::fflush(nullptr);
            _exit(1);
        }
        std::size_t volatile& count = verified ? progress.verified : progress.refused;
        count = count + 1;
    }
    progress.next = end;
    _exit(0);
}

std::string HowItEnded(int status) {
    if (WIFSIGNALED(status)) return "signal " + std::to_string(WTERMSIG(status));
    return "exit code " + std::to_string(WEXITSTATUS(status));
}

}  // namespace

std::string Tally::Text() const {
    return std::to_string(tried) + " tried, " + std::to_string(verified) + " verified, " + std::to_string(refused) +
           " refused, " + std::to_string(crashed.size()) + " crashed";
}

Tally RunInChildren(std::size_t cases, const ChildSetting& setting, const std::function<bool(std::size_t)>& run) {
    SharedProgress shared;
    volatile Progress& progress = *shared;
    Tally tally;
    tally.tried = cases;
    std::fflush(nullptr);
    while (progress.next < cases) {
        const std::size_t end = std::min(cases, progress.next + setting.batch);
        const pid_t child = fork();
        if (child < 0) throw std::runtime_error("cannot start a process");
        if (child == 0) RunBatch(progress, end, setting, run);
        int status = 0;
        if (waitpid(child, &status, 0) != child) throw std::runtime_error("cannot wait for a process");
        if (status == 0 && progress.next == end) continue;
        const std::size_t number = progress.next;
        tally.crashed.push_back(std::to_string(number) + ": " + HowItEnded(status));
        progress.next = number + 1;
    }
    tally.verified = progress.verified;
    tally.refused = progress.refused;
    return tally;
}

}  // namespace zek::test
