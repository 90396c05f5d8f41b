/// Waits as a test needs them: without the time that they take, or failing. A program with passing_time.cpp has them
/// for itself and for the libraries that it is linked with. Relies on Linux.
#pragma once

#include <chrono>
#include <functional>

namespace zek::test {

/// While it lives, poll does not wait: in place of each wait, the steady clock goes on by a step, or by what was to be
/// waited where that is less, and `meanwhile` is called, which may bring what is waited for.
class PassingTime {
public:
    PassingTime(std::chrono::milliseconds step, std::function<void()> meanwhile);
    ~PassingTime();
    PassingTime(const PassingTime&) = delete;
    PassingTime& operator=(const PassingTime&) = delete;

    /// How much was waited so.
    std::chrono::milliseconds Passed() const { return passed_; }

    /// For poll: a wait of so many milliseconds, -1 for one without an end.
    void Wait(int milliseconds);

private:
    std::chrono::milliseconds step_;
    std::function<void()> meanwhile_;
    std::chrono::milliseconds passed_{0};
};

/// While it lives, the first so many calls of poll for a file fail. With the error 0 they call it ready instead,
/// whether or not it has something.
class FailingPoll {
public:
    explicit FailingPoll(int error, unsigned times = 0xFFFFFFFF);
    ~FailingPoll();
    FailingPoll(const FailingPoll&) = delete;
    FailingPoll& operator=(const FailingPoll&) = delete;

    /// How many calls have failed.
    unsigned Calls() const;
};

}  // namespace zek::test
