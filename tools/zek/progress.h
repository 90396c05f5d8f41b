/// What a long compilation is at, on a terminal: one line of standard error that is written over. Relies on threads,
/// since the library does not return while it reads or checks.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>

namespace zek::tool {

class Progress {
public:
    using Clock = std::chrono::steady_clock;

    /// Of the work on a source that began then; the line comes a second later. There is none where standard error is no
    /// terminal. One at a time.
    Progress(const std::string& source, const char* phase, Clock::time_point begun);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void AddFile();
    void AddSections(std::size_t count);
    /// The text is kept where it is.
    void SetPhase(const char* phase);

    /// Erases the line; none comes any more. Whatever goes to standard error by Tell does this first.
    void Stop() noexcept;

private:
    void Run(Clock::time_point begun);
    std::string Line() const;
    void Show(const std::string& line);

    std::string source_;
    std::mutex mutex_;  // of all below but the thread
    std::condition_variable changed_;
    const char* phase_;
    std::size_t files_ = 0;
    std::size_t sections_ = 0;
    bool stopped_ = false;
    std::string shown_;
    std::thread thread_;
};

}  // namespace zek::tool
