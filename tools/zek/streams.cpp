#include "streams.h"

#include <fcntl.h>
#include <unistd.h>
#include <cerrno>

#include "printable.h"

namespace zek::tool {
namespace {

constexpr std::size_t kChunk = std::size_t{1} << 16;

void (*g_beforeTelling)() noexcept = nullptr;

}  // namespace

void OccupyStandardStreams() {
    // The lowest free descriptor is taken, so each gets its own number. The first two are opened the wrong way round.
    constexpr int kModes[] = {O_WRONLY, O_RDONLY, O_WRONLY};
    for (int descriptor = 0; descriptor < 3; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) < 0 && open("/dev/null", kModes[descriptor]) < 0) return;
    }
}

int WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return errno;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

void StandardOutput::Write(std::string_view text) {
    waiting_ += text;
    if (waiting_.size() >= kChunk) Finish();
}

void StandardOutput::Finish() {
    const int error = WriteAll(STDOUT_FILENO, waiting_);
    waiting_.clear();
    if (error) throw OutputFailure(SystemFailure("cannot write to standard output", error));
}

void BeforeTelling(void (*call)() noexcept) { g_beforeTelling = call; }

void Tell(std::string_view text) {
    if (g_beforeTelling) g_beforeTelling();
    WriteAll(STDERR_FILENO, text);
}

void TellWhy(std::string_view why) { Tell("zek: " + Printable(why) + '\n'); }

}  // namespace zek::tool
