#include "source_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>

#include "failure.h"
#include "memory_file.h"
#include "paths.h"
#include "streams.h"

namespace zek::tool {
namespace {

constexpr mode_t kFolderMode = 0777;
constexpr mode_t kFileMode = 0666;

/// A descriptor that closes itself.
class Descriptor {
public:
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    ~Descriptor() {
        if (descriptor_ >= 0) close(descriptor_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Get() const { return descriptor_; }
    void Become(int descriptor) {
        if (descriptor_ >= 0) close(descriptor_);
        descriptor_ = descriptor;
    }

private:
    int descriptor_;
};

/// Whether a file that stands has these bytes.
bool Holds(const std::string& file, const std::string& bytes) {
    struct stat info {};
    return lstat(file.c_str(), &info) == 0 && S_ISREG(info.st_mode) &&
           static_cast<std::size_t>(info.st_size) == bytes.size() && ReadFile(file) == bytes;
}

bool IsLink(int folder, const std::string& path) {
    struct stat info {};
    return fstatat(folder, path.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(info.st_mode);
}

}  // namespace

SourceFolder::SourceFolder(const std::string& folder, const std::vector<WrittenFile>& files) {
    try {
        const Descriptor root(OpenFolder(folder));
        for (const WrittenFile& file : files) Write(root.Get(), folder, file);
    } catch (...) {
        Remove();
        throw;
    }
}

void SourceFolder::Keep() {
    const SignalsWait allOrNone;
    for (TemporaryFile& made : made_) made.Forget();
    made_.clear();
}

void SourceFolder::Remove() {
    while (!made_.empty()) made_.pop_back();
}

void SourceFolder::MakeFolder(int folder, const std::string& path, const std::string& shown) {
    const SignalsWait wait;
    if (mkdirat(folder, path.c_str(), kFolderMode) == 0) {
        made_.emplace_back(shown + '/');
    } else if (errno != EEXIST) {
        throw SystemFailure("cannot make the folder " + shown);
    }
}

int SourceFolder::OpenFolder(const std::string& folder) {
    MakeFolder(AT_FDCWD, folder, folder);
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) throw SystemFailure("cannot enter " + folder);
    return descriptor;
}

int SourceFolder::Enter(int folder, const std::string& path, const std::string& shown) {
    MakeFolder(folder, path, shown);
    const int descriptor = openat(folder, path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor >= 0) return descriptor;
    const Failure why = SystemFailure("cannot enter " + shown);
    throw IsLink(folder, path) ? Failure(kUsageOrFiles, shown + " is a symbolic link, which is not followed") : why;
}

int SourceFolder::MakeFile(int folder, const std::string& path, const std::string& shown) {
    const SignalsWait wait;
    const int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    const int descriptor = openat(folder, path.c_str(), flags, kFileMode);
    if (descriptor >= 0) made_.emplace_back(shown);
    return descriptor;
}

void SourceFolder::Write(int root, const std::string& folder, const WrittenFile& file) {
    const std::string shown = InFolder(folder, file.path);
    Descriptor at(dup(root));
    std::size_t begin = 0;
    for (std::size_t slash = 0; (slash = file.path.find('/', begin)) != std::string::npos; begin = slash + 1) {
        const std::string part = file.path.substr(begin, slash - begin);
        at.Become(Enter(at.Get(), part, InFolder(folder, file.path.substr(0, slash))));
    }
    const Descriptor made(MakeFile(at.Get(), file.path.substr(begin), shown));
    if (made.Get() < 0) {
        const int error = errno;
        if (error == EEXIST && Holds(shown, file.text)) return;
        throw SystemFailure("cannot write " + shown, error);
    }
    if (const int error = WriteAll(made.Get(), file.text)) throw SystemFailure("cannot write " + shown, error);
}

}  // namespace zek::tool
