#include "terminal_line.h"

#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>
#include <algorithm>
#include <atomic>
#include <new>
#include <string_view>

#include "columns.h"
#include "streams.h"

namespace zek::tool {
namespace {

struct Line {
    std::atomic<bool> busy = false;  ///< somebody writes it
    std::atomic<bool> ended = true;
    std::atomic<unsigned> columns = 0;  ///< of what is there, at least
};
// A handler may look, and another process.
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<unsigned>::is_always_lock_free);

constinit Line g_own;
constinit Line* g_line = &g_own;

constexpr int kLongestWait = 200;  ///< milliseconds

/// Keeps the others from writing the line. Of one that was killed meanwhile, or that the terminal keeps waiting, nobody
/// waits for ever.
class Turn {
public:
    Turn() noexcept {
        for (int waited = 0; waited < kLongestWait && g_line->busy.exchange(true); ++waited) poll(nullptr, 0, 1);
    }
    ~Turn() { g_line->busy = false; }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
};

bool TakesBytes() noexcept {
    pollfd terminal = {STDERR_FILENO, POLLOUT, 0};
    return poll(&terminal, 1, 0) == 1 && (terminal.revents & POLLOUT) != 0;
}

/// Blanks instead of an escape sequence, which not every terminal has.
void WriteBlanks(std::size_t columns) noexcept {
    constexpr std::string_view kBlanks = "                                ";
    WriteAll(STDERR_FILENO, "\r");
    for (std::size_t left = columns; left > 0; left -= std::min(left, kBlanks.size())) {
        WriteAll(STDERR_FILENO, kBlanks.substr(0, left));
    }
    WriteAll(STDERR_FILENO, "\r");
}

/// Calls only what a handler may call.
void End(bool bySignal) noexcept {
    if (g_line->ended && g_line->columns == 0) return;
    const Turn turn;
    g_line->ended = true;
    if (g_line->columns == 0 || (bySignal && !TakesBytes())) return;
    WriteBlanks(g_line->columns + (bySignal ? kEchoColumns : 0));
    g_line->columns = 0;
}

}  // namespace

void ShareTerminalLine() {
    void* const shared = mmap(nullptr, sizeof(Line), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    // Else each process knows of its own line alone.
    if (shared != MAP_FAILED) g_line = new (shared) Line;
}

void OpenTerminalLine() noexcept { g_line->ended = false; }

bool ShowTerminalLine(const std::string& text) {
    const Turn turn;
    if (g_line->ended) return false;
    const std::size_t before = g_line->columns;
    const std::size_t now = ColumnsOf(text);
    g_line->columns = static_cast<unsigned>(std::max(before, now));
    WriteAll(STDERR_FILENO, '\r' + text + std::string(before - std::min(before, now), ' '));
    g_line->columns = static_cast<unsigned>(now);
    return true;
}

void EndTerminalLine() noexcept { End(false); }

void EndTerminalLineBySignal() noexcept { End(true); }

}  // namespace zek::tool
