#include "progress.h"

#include <unistd.h>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <system_error>

#include "columns.h"
#include "paths.h"
#include "printable.h"
#include "terminal_line.h"

namespace zek::tool {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kUntilShown{1000};
constexpr std::chrono::milliseconds kUntilNext{200};

const Clock::time_point g_begun = Clock::now();
Progress* g_shown = nullptr;

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

/// Whether somebody types the file: the line would stand among what is typed.
bool IsTyped(const std::string& file) { return (file == "-" || file == kStandardInput) && IsTerminal(STDIN_FILENO); }

}  // namespace

Progress::Progress(const std::string& file, const char* phase) : file_(Printable(file)), phase_(phase) {
    if (!IsTerminal(STDERR_FILENO) || IsTyped(file)) return;
    g_shown = this;
    OpenTerminalLine();
    thread_ = QuietThread([this] { Run(); });
}

Progress::~Progress() {
    if (g_shown != this) return;
    g_shown = nullptr;
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    changed_.notify_one();
    if (thread_.joinable()) thread_.join();
    EndTerminalLine();
}

void Progress::AddFile() {
    const std::lock_guard lock(mutex_);
    ++files_;
}

void Progress::AddSections(std::size_t count) {
    const std::lock_guard lock(mutex_);
    sections_ += count;
}

void ShowPhase(const char* phase) {
    if (!g_shown) return;
    const std::lock_guard lock(g_shown->mutex_);
    g_shown->phase_ = phase;
}

void ShowPhase(const char* phase, const std::string& file) {
    if (!g_shown) return;
    const std::lock_guard lock(g_shown->mutex_);
    g_shown->phase_ = phase;
    g_shown->file_ = Printable(file);
}

void LeaveProgress() { g_shown = nullptr; }

void Progress::Run() {
    std::unique_lock lock(mutex_);
    std::string shown;
    const auto isStopped = [this] { return stopped_; };
    for (Clock::time_point next = g_begun + kUntilShown; !changed_.wait_until(lock, next, isStopped);) {
        const std::string line = Line();
        if (line != shown && !ShowTerminalLine(line)) return;
        shown = line;
        next = Clock::now() + kUntilNext;
    }
}

std::string Progress::Line() const {
    std::string state = phase_;
    if (files_ > 0) state += ": " + Counted(files_, "file", "files");
    if (sections_ > 0) state += ", " + Counted(sections_, "section", "sections");
    const std::string line = "zek: " + file_ + ": " + state;
    // In a longer line than the terminal has columns, a carriage return goes back in the last row only.
    const std::size_t columns = std::min(TerminalColumns(STDERR_FILENO), WindowColumns(STDERR_FILENO));
    const std::size_t room = columns - std::min(columns, kEchoColumns + 1);
    return ColumnsOf(line) <= room ? line : ("zek: " + state).substr(0, room);
}

}  // namespace zek::tool
