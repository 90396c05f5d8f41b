#include "output_file.h"

#include <fcntl.h>
#include <unistd.h>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <utility>

#include "failure.h"
#include "memory_file.h"
#include "paths.h"
#include "streams.h"
#include "temporary_files.h"

namespace zek::tool {
namespace {

constexpr int kMostLinks = 40;

Failure CannotWrite(const Target& target, int error) { return SystemFailure("cannot write " + target.name, error); }

std::string NameIn(const std::string& path) { return path.substr(path.rfind('/') + 1); }

/// The path that a chain of symbolic links leads to, whether something stands there or not.
std::string Followed(std::string path) {
    char to[PATH_MAX];
    for (int links = 0; links < kMostLinks; ++links) {
        const ssize_t length = readlink(path.c_str(), to, sizeof to);
        if (length < 0) return path;
        path = InFolder(FolderOf(path), std::string(to, static_cast<std::size_t>(length)));
    }
    return path;
}

bool IsSameFile(const struct stat& a, const struct stat& b) { return a.st_dev == b.st_dev && a.st_ino == b.st_ino; }

/// Syncs and closes; 0, or the errno of the first call that failed. A device or pipe need not be able to sync.
int Finish(int descriptor, bool direct) {
    int error = fsync(descriptor) == 0 ? 0 : errno;
    if (direct && (error == EINVAL || error == EROFS || error == ENOTSUP)) error = 0;
    if (close(descriptor) != 0 && !error) error = errno;
    return error;
}

/// Opens a device or a pipe. Who reads from a FIFO has two seconds to come; the system would wait for ever.
int OpenDirectly(const Target& target) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point deadline = Clock::now() + std::chrono::seconds(2);
    constexpr timespec kBetween = {0, 10'000'000};
    // A file that has no name left, as behind /dev/stdout, is emptied first; for the others that means nothing.
    constexpr int kFlags = O_WRONLY | O_TRUNC | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
    int descriptor = open(target.path.c_str(), kFlags);
    const bool isFifo = S_ISFIFO(target.info.st_mode);
    while (descriptor < 0 && isFifo && errno == ENXIO && Clock::now() < deadline) {
        nanosleep(&kBetween, nullptr);
        descriptor = open(target.path.c_str(), kFlags);
    }
    if (descriptor < 0 && isFifo && errno == ENXIO) {
        throw Failure(kUsageOrFiles, "cannot write " + target.name + ": nobody reads from it");
    }
    if (descriptor < 0) throw CannotWrite(target, errno);
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
    return descriptor;
}

/// A device or a pipe, open from the beginning on, so that nothing is written to any of them where one cannot be
/// opened.
class DirectOutput {
public:
    explicit DirectOutput(const OutputFile& file)
        : file_(file), descriptor_(IsStandard() ? STDOUT_FILENO : OpenDirectly(file.target)) {}
    ~DirectOutput() {
        if (!IsStandard() && descriptor_ >= 0) close(descriptor_);
    }
    DirectOutput(DirectOutput&& other) noexcept
        : file_(other.file_), descriptor_(std::exchange(other.descriptor_, -1)) {}
    DirectOutput& operator=(DirectOutput&&) = delete;

    /// Waits for a slow reader for as long as it is there.
    void Write() {
        int error = WriteAll(descriptor_, file_.bytes);
        if (IsStandard()) {
            if (error) throw SystemFailure("cannot write to standard output", error);
            return;
        }
        const int finished = Finish(std::exchange(descriptor_, -1), true);
        if (!error) error = finished;
        if (error) throw CannotWrite(file_.target, error);
    }

private:
    bool IsStandard() const { return file_.target.path.empty(); }

    const OutputFile& file_;
    int descriptor_;
};

/// Mode and owner of the file that is to be replaced. The owner only where we may.
int KeepMode(int descriptor, const struct stat& old) {
    struct stat made {};
    if (fstat(descriptor, &made) != 0) return errno;
    const bool owned = made.st_uid == old.st_uid && made.st_gid == old.st_gid;
    const bool given = owned || fchown(descriptor, old.st_uid, old.st_gid) == 0;
    // What runs under its owner's rights must not do so under another's.
    const mode_t kept = given ? 07777 : 0777;
    return fchmod(descriptor, old.st_mode & kept) == 0 ? 0 : errno;
}

/// One file on its way to its place.
class Replacement {
public:
    explicit Replacement(const OutputFile& file) : target_(file.target) { WriteTemporary(fresh_, file.bytes); }

    /// Keeps the old file at hand, so that it can be put back: by a second name, or as a copy where the file system
    /// knows no second names or does not allow one.
    void KeepOld() {
        if (!target_.stands || old_.Link(FolderOf(target_.path), target_.path)) return;
        WriteTemporary(old_, ReadFile(target_.path));
        // Builds compare times.
        const timespec times[] = {target_.info.st_atim, target_.info.st_mtim};
        utimensat(AT_FDCWD, old_.Path().c_str(), times, 0);
    }

    void TakePlace() {
        if (std::rename(fresh_.Path().c_str(), target_.path.c_str()) != 0) throw CannotWrite(target_, errno);
        fresh_.Forget();
        placed_ = true;
    }

    void PutBack() {
        if (!placed_) return;
        const bool back = target_.stands ? std::rename(old_.Path().c_str(), target_.path.c_str()) == 0
                                         : unlink(target_.path.c_str()) == 0;
        if (!back) TellThatItStays(errno);
        old_.Forget();
    }

    /// Makes the new name last. The file is whole and in its place, so where that fails, all that is lost is what a
    /// failure of the power may take back.
    void SyncFolder() const {
        const std::string folder = FolderOf(target_.path);
        const int descriptor = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        // A folder that may be written but not read cannot be synced, and not every file system can sync one.
        if (descriptor < 0) return;
        const int error = Finish(descriptor, true);
        if (!error) return;
        TellWhy("warning: " + target_.name + " is written, but its folder cannot be synced: " + std::strerror(error));
    }

private:
    /// Writes bytes to a file beside the target, as it is to be there.
    void WriteTemporary(TemporaryFile& file, std::string_view bytes) const {
        const int descriptor = file.Create(FolderOf(target_.path));
        if (descriptor < 0) throw CannotWrite(target_, errno);
        int error = WriteAll(descriptor, bytes);
        if (!error && target_.stands) error = KeepMode(descriptor, target_.info);
        const int finished = Finish(descriptor, false);
        if (!error) error = finished;
        if (error) throw CannotWrite(target_, error);
    }

    void TellThatItStays(int error) const {
        const std::string old = target_.stands ? "; the old one is " + old_.Path() : "";
        TellWhy("the new " + target_.name + " cannot be taken back: " + std::strerror(error) + old);
    }

    Target target_;
    TemporaryFile fresh_;
    TemporaryFile old_;
    bool placed_ = false;
};

void PlaceAll(std::vector<Replacement>& replacements) {
    // All or none, for a signal too.
    const SignalsWait wait;
    for (std::size_t i = 0; i + 1 < replacements.size(); ++i) replacements[i].KeepOld();
    try {
        for (Replacement& replacement : replacements) replacement.TakePlace();
    } catch (const Failure&) {
        for (Replacement& replacement : replacements) replacement.PutBack();
        throw;
    }
}

}  // namespace

Target TargetOf(const std::string& name) {
    Target target;
    target.name = name;
    if (name == "-") {
        target.direct = true;
        target.stands = fstat(STDOUT_FILENO, &target.info) == 0;
        return target;
    }
    target.path = Followed(name);
    if (name.empty()) throw CannotWrite(target, ENOENT);
    target.stands = stat(name.c_str(), &target.info) == 0;
    if (!target.stands) {
        if (errno != ENOENT) throw CannotWrite(target, errno);
        struct stat folder {};
        const std::string path = FolderOf(target.path);
        if (stat(path.empty() ? "." : path.c_str(), &folder) != 0) throw CannotWrite(target, errno);
        if (target.path.ends_with('/')) throw CannotWrite(target, EISDIR);
        return target;
    }
    if (S_ISDIR(target.info.st_mode)) throw CannotWrite(target, EISDIR);
    struct stat followed {};
    const bool named = stat(target.path.c_str(), &followed) == 0 && IsSameFile(followed, target.info);
    target.direct = !S_ISREG(target.info.st_mode) || !named;
    if (target.direct) target.path = name;
    // Its name could be taken all the same, but who protects a file wants to keep it.
    if (access(name.c_str(), W_OK) != 0) throw CannotWrite(target, errno);
    return target;
}

bool IsSameFile(const Target& a, const Target& b) {
    if (a.stands != b.stands) return false;
    if (a.stands) return IsSameFile(a.info, b.info);
    struct stat first {};
    struct stat second {};
    if (stat(InFolder(FolderOf(a.path), ".").c_str(), &first) != 0) return false;
    if (stat(InFolder(FolderOf(b.path), ".").c_str(), &second) != 0) return false;
    return IsSameFile(first, second) && NameIn(a.path) == NameIn(b.path);
}

void WriteTogether(const std::vector<OutputFile>& files) {
    std::vector<Replacement> replacements;
    for (const OutputFile& file : files) {
        if (!file.target.direct) replacements.emplace_back(file);
    }
    std::vector<DirectOutput> direct;
    for (const OutputFile& file : files) {
        if (file.target.direct) direct.emplace_back(file);
    }
    for (DirectOutput& output : direct) output.Write();
    PlaceAll(replacements);
    for (const Replacement& replacement : replacements) replacement.SyncFolder();
}

}  // namespace zek::tool
