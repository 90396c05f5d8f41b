#include "support/passing_time.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <utility>

namespace zek::test {

namespace {

PassingTime* passing = nullptr;
// What the steady clock goes before.
std::time_t aheadSeconds = 0;
long aheadNanoseconds = 0;

int pollError = 0;
unsigned pollsToFail = 0;
unsigned pollsFailed = 0;

constexpr long kSecond = 1'000'000'000;

void GoOn(std::chrono::milliseconds time) {
    aheadNanoseconds += static_cast<long>(std::chrono::nanoseconds(time % std::chrono::seconds(1)).count());
    aheadSeconds += time.count() / 1000 + aheadNanoseconds / kSecond;
    aheadNanoseconds %= kSecond;
}

int PollNow(pollfd* files, nfds_t count, int timeout) {
    const timespec time = {timeout / 1000, timeout % 1000 * 1'000'000L};
    return static_cast<int>(syscall(SYS_ppoll, files, count, timeout < 0 ? nullptr : &time, nullptr, 0));
}

}  // namespace

PassingTime::PassingTime(std::chrono::milliseconds step, std::function<void()> meanwhile)
    : step_(step), meanwhile_(std::move(meanwhile)) {
    passing = this;
}

PassingTime::~PassingTime() { passing = nullptr; }

void PassingTime::Wait(int milliseconds) {
    const auto time = milliseconds < 0 ? step_ : std::min(step_, std::chrono::milliseconds(milliseconds));
    passed_ += time;
    GoOn(time);
    meanwhile_();
}

FailingPoll::FailingPoll(int error, unsigned times) {
    pollError = error;
    pollsToFail = times;
    pollsFailed = 0;
}

FailingPoll::~FailingPoll() { pollsToFail = 0; }

unsigned FailingPoll::Calls() const { return pollsFailed; }

}  // namespace zek::test

#pragma GCC visibility push(default)
extern "C" {

int poll(pollfd* files, nfds_t count, int timeout) {
    using namespace zek::test;
    if (count > 0 && pollsToFail > 0) {
        --pollsToFail;
        ++pollsFailed;
        files->revents = POLLIN;
        errno = pollError;
        return pollError ? -1 : 1;
    }
    if (!passing) return PollNow(files, count, timeout);
    int ready = PollNow(files, count, 0);
    while (ready == 0 && timeout != 0) {
        passing->Wait(timeout);
        ready = PollNow(files, count, 0);
        if (timeout > 0) break;
    }
    return ready;
}

int clock_gettime(clockid_t clock, timespec* time) noexcept {
    using namespace zek::test;
    const int result = static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    if (result != 0 || clock != CLOCK_MONOTONIC) return result;
    time->tv_sec += aheadSeconds;
    time->tv_nsec += aheadNanoseconds;
    if (time->tv_nsec < kSecond) return 0;
    ++time->tv_sec;
    time->tv_nsec -= kSecond;
    return 0;
}
}
#pragma GCC visibility pop
