#include "progress.h"

#include <unistd.h>
#include <algorithm>
#include <csignal>
#include <system_error>

#include "columns.h"
#include "printable.h"
#include "streams.h"

namespace zek::tool {
namespace {

constexpr std::chrono::milliseconds kUntilShown{1000};
constexpr std::chrono::milliseconds kUntilNext{200};

Progress* g_shown = nullptr;

void StopShown() noexcept {
    if (g_shown) g_shown->Stop();
}

/// A thread that no signal reaches: those are for the one that works.
template <class Work>
std::thread QuietThread(Work work) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread thread;
    try {
        thread = std::thread(work);
    } catch (const std::system_error&) {
        // Then nothing is shown.
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
}

}  // namespace

Progress::Progress(const std::string& source, const char* phase, Clock::time_point begun)
    : source_(Printable(source)), phase_(phase) {
    if (!IsTerminal(STDERR_FILENO)) return;
    thread_ = QuietThread([this, begun] { Run(begun); });
    g_shown = this;
    BeforeTelling(StopShown);
}

Progress::~Progress() {
    Stop();
    if (g_shown != this) return;
    g_shown = nullptr;
    BeforeTelling(nullptr);
}

void Progress::AddFile() {
    const std::lock_guard lock(mutex_);
    ++files_;
}

void Progress::AddSections(std::size_t count) {
    const std::lock_guard lock(mutex_);
    sections_ += count;
}

void Progress::SetPhase(const char* phase) {
    const std::lock_guard lock(mutex_);
    phase_ = phase;
}

void Progress::Stop() noexcept {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

void Progress::Run(Clock::time_point begun) {
    std::unique_lock lock(mutex_);
    const auto isStopped = [this] { return stopped_; };
    for (Clock::time_point next = begun + kUntilShown; !changed_.wait_until(lock, next, isStopped);) {
        Show(Line());
        next = Clock::now() + kUntilNext;
    }
    Show({});
}

std::string Progress::Line() const {
    std::string state = phase_;
    if (files_ > 0) state += ": " + Counted(files_, "file", "files");
    if (sections_ > 0) state += ", " + Counted(sections_, "section", "sections");
    const std::string line = "zek: " + source_ + ": " + state;
    const std::size_t columns = TerminalColumns(STDERR_FILENO);
    return ColumnsOf(line) < columns ? line : ("zek: " + state).substr(0, columns - 1);
}

/// Blanks instead of an escape sequence, which not every terminal has.
void Progress::Show(const std::string& line) {
    if (line == shown_) return;
    const std::size_t before = ColumnsOf(shown_);
    const std::size_t rest = before - std::min(before, ColumnsOf(line));
    WriteAll(STDERR_FILENO, '\r' + line + std::string(rest, ' ') + (line.empty() ? "\r" : ""));
    shown_ = line;
}

}  // namespace zek::tool
