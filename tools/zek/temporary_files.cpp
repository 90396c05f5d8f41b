#include "temporary_files.h"

#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>
#include <cerrno>
#include <utility>

#include "paths.h"
#include "printable.h"
#include "terminal_line.h"

namespace zek::tool {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
constexpr int kAttempts = 16;

/// All that exist, in the order in which they were made. It changes only while the signals wait, so that the handler
/// finds it whole, and it is never destroyed.
std::list<std::string>& Noted() {
    static auto* const noted = new std::list<std::string>;
    return *noted;
}

void RemoveFile(const std::string& path) { path.ends_with('/') ? rmdir(path.c_str()) : unlink(path.c_str()); }

extern "C" void RemoveAndEnd(int signal) {
    // What is in a folder was made behind it.
    for (auto path = Noted().rbegin(); path != Noted().rend(); ++path) RemoveFile(*path);
    EndTerminalLineBySignal();
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
    Noted();
    ShareTerminalLine();
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

void LeaveTemporaryFiles() {
    const SignalsWait wait;
    Noted().clear();
}

TemporaryFile::TemporaryFile(TemporaryFile&& other) noexcept : noted_(std::exchange(other.noted_, std::nullopt)) {}

void TemporaryFile::Note(const std::string& path) { noted_ = Noted().insert(Noted().end(), path); }

int TemporaryFile::Create(const std::string& folder) {
    // A signal between the making of the file and the note of its name would leave it behind.
    const SignalsWait wait;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const std::string path = NewName(folder);
        if (path.empty()) break;
        const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666);
        if (descriptor >= 0) Note(path);
        if (descriptor >= 0 || errno != EEXIST) return descriptor;
    }
    return -1;
}

bool TemporaryFile::Link(const std::string& folder, const std::string& file) {
    const SignalsWait wait;
    const std::string path = NewName(folder);
    if (path.empty() || link(file.c_str(), path.c_str()) != 0) return false;
    Note(path);
    return true;
}

void TemporaryFile::Remove() {
    if (noted_) RemoveFile(**noted_);
    Forget();
}

void TemporaryFile::Forget() {
    if (!noted_) return;
    const SignalsWait wait;
    Noted().erase(*noted_);
    noted_.reset();
}

}  // namespace zek::tool
