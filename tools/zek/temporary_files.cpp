#include "temporary_files.h"

#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>
#include <cerrno>
#include <climits>
#include <cstring>
#include <utility>

#include "paths.h"
#include "printable.h"

namespace zek::tool {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
constexpr int kAttempts = 16;

/// What a signal handler may look at: plain memory. An empty text is a free slot.
char g_slots[kMostTemporaryFiles][PATH_MAX];

extern "C" void RemoveAndEnd(int signal) {
    for (const char* path : g_slots) {
        if (*path) unlink(path);
    }
    // The handler was taken away when it was called, so this ends the program once it returns.
    raise(signal);
}

sigset_t HandledSignals() {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : kSignals) sigaddset(&set, signal);
    return set;
}

std::string NewName(const std::string& folder) {
    char bytes[8] = {};
    if (getrandom(bytes, sizeof bytes, 0) != sizeof bytes) return {};
    return InFolder(folder, ".zek-" + Hex({bytes, sizeof bytes}));
}

}  // namespace

void HandleSignals() {
    struct sigaction action = {};
    action.sa_handler = RemoveAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    action.sa_mask = HandledSignals();
    for (const int signal : kSignals) {
        struct sigaction before = {};
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

SignalsWait::SignalsWait() {
    const sigset_t set = HandledSignals();
    sigprocmask(SIG_BLOCK, &set, &before_);
}

SignalsWait::~SignalsWait() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

TemporaryFile::TemporaryFile(TemporaryFile&& other) noexcept
    : path_(std::exchange(other.path_, {})), slot_(std::exchange(other.slot_, -1)) {}

bool TemporaryFile::Take(const std::string& folder) {
    path_ = NewName(folder);
    errno = ENAMETOOLONG;
    if (path_.empty() || path_.size() >= PATH_MAX) return false;
    for (slot_ = 0; g_slots[slot_][0]; ++slot_) {
        if (slot_ + 1 == static_cast<int>(std::size(g_slots))) return false;
    }
    std::memcpy(g_slots[slot_], path_.c_str(), path_.size() + 1);
    return true;
}

int TemporaryFile::Create(const std::string& folder) {
    // A signal between the making of the file and the note of its name would leave it behind.
    const SignalsWait wait;
    int descriptor = -1;
    for (int attempt = 0; descriptor < 0 && attempt < kAttempts; ++attempt) {
        if (!Take(folder)) break;
        descriptor = open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666);
        const int error = errno;
        if (descriptor < 0) Forget();
        errno = error;
        if (error != EEXIST) break;
    }
    return descriptor;
}

bool TemporaryFile::Link(const std::string& folder, const std::string& file) {
    const SignalsWait wait;
    if (!Take(folder)) return false;
    if (link(file.c_str(), path_.c_str()) == 0) return true;
    const int error = errno;
    Forget();
    errno = error;
    return false;
}

void TemporaryFile::Remove() {
    if (!path_.empty()) unlink(path_.c_str());
    Forget();
}

void TemporaryFile::Forget() {
    if (slot_ >= 0) g_slots[slot_][0] = '\0';
    slot_ = -1;
    path_.clear();
}

}  // namespace zek::tool
