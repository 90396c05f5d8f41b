#include "streams.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>

#include "printable.h"
#include "terminal_line.h"

namespace zek::tool {
namespace {

constexpr std::size_t kChunk = std::size_t{1} << 16;

bool IsRegular(int descriptor) {
    struct stat info {};
    return fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode);
}

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
    if (!waiting_.empty() && !IsRegular(STDOUT_FILENO)) EndTerminalLine();
    const int error = WriteAll(STDOUT_FILENO, waiting_);
    waiting_.clear();
    if (error) throw OutputFailure(SystemFailure("cannot write to standard output", error));
}

void Tell(std::string_view text) {
    EndTerminalLine();
    WriteAll(STDERR_FILENO, text);
}

void TellWhy(std::string_view why) { Tell("zek: " + Printable(why) + '\n'); }

}  // namespace zek::tool
