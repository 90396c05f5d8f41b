// Preloaded before the command under test. ZEK_FAULT names what goes wrong, for temporary files of the command only:
//
//   write    a write fails with ENOSPC         fsync    a sync fails with EIO
//   close    a close fails with EIO            fchmod   keeping the mode fails with EPERM
//   rename1  the first rename fails with EBUSY rename2  the second does, rename3 the third
//   renames  all but the first do              link     files may have no second name: EPERM
//   folder   a folder's sync fails with EIO    hang     a sync never returns
//   slow     a sync takes 0.8 s, and to ask whether a file slow.zek may be read 1.6 s
//   wait     the wait for a process that was started, whatever it writes, never returns
//   room:N   the disk has room for N bytes: what goes beyond is not written, and fails with ENOSPC
//   kill:N   the program is killed at its N-th step (from 1), before it takes it; a step is one of these calls, and of
//            a write only half is done at a time
//
// Several stand with commas between them, the one with a number last.
//
// ZEK_TEST_PARSER is the file that is loaded in place of the installed parser library.
#include <dlfcn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

constexpr char kInstalled[] = "/usr/tavr/lib/libzekrsparser.so.0";

/// What stands behind the name of a fault that is wanted: a comma, a colon or nothing; null where it is not wanted.
const char* Wanted(const char* name) {
    const std::size_t length = std::strlen(name);
    const char* fault = std::getenv("ZEK_FAULT");
    while (fault && *fault) {
        if (std::strncmp(fault, name, length) == 0 && std::strchr(",:", fault[length])) return fault + length;
        fault = std::strchr(fault, ',');
        if (fault) ++fault;
    }
    return nullptr;
}

bool Fails(const char* name) { return Wanted(name) != nullptr; }

/// The number of a fault that has one, such as 17 of "room:17"; -1 when it is not wanted.
long NumberOf(const char* name) {
    const char* behind = Wanted(name);
    return behind && *behind == ':' ? std::atol(behind + 1) : -1;
}

void Step() {
    static long taken = 0;
    if (++taken == NumberOf("kill")) std::raise(SIGKILL);
}

/// How many of these bytes the disk takes.
size_t Room(size_t count) {
    static long left = NumberOf("room");
    if (left < 0) return count;
    const size_t taken = std::min(count, static_cast<size_t>(left));
    left -= static_cast<long>(taken);
    return taken;
}

bool IsTemporary(const char* path) {
    const char* slash = std::strrchr(path, '/');
    return std::strncmp(slash ? slash + 1 : path, ".zek-", 5) == 0;
}

bool IsTemporary(int descriptor) {
    char name[64];
    char path[PATH_MAX] = {};
    std::snprintf(name, sizeof name, "/proc/self/fd/%d", descriptor);
    return readlink(name, path, sizeof path - 1) > 0 && IsTemporary(path);
}

template <class Function>
Function* Next(const char* name, Function*) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

int Failed(int error) {
    errno = error;
    return -1;
}

}  // namespace

extern "C" {

ssize_t write(int descriptor, const void* bytes, size_t count) {
    if (IsTemporary(descriptor)) {
        if (Fails("write")) return Failed(ENOSPC);
        Step();
        if (count > 1 && NumberOf("kill") > 0) count /= 2;
        const size_t room = Room(count);
        if (room == 0 && count > 0) return Failed(ENOSPC);
        count = room;
    }
    return Next("write", &write)(descriptor, bytes, count);
}

int fsync(int descriptor) {
    struct stat info {};
    if (Fails("folder") && fstat(descriptor, &info) == 0 && S_ISDIR(info.st_mode)) return Failed(EIO);
    if (Fails("fsync") && IsTemporary(descriptor)) return Failed(EIO);
    while (Fails("hang") && IsTemporary(descriptor)) pause();
    if (Fails("slow") && IsTemporary(descriptor)) usleep(800'000);
    Step();
    return Next("fsync", &fsync)(descriptor);
}

int access(const char* path, int mode) {
    if (Fails("slow") && std::string(path).ends_with("slow.zek")) usleep(1'600'000);
    return Next("access", &access)(path, mode);
}

int close(int descriptor) {
    const bool temporary = IsTemporary(descriptor);
    if (temporary) Step();
    const int result = Next("close", &close)(descriptor);
    return temporary && Fails("close") ? Failed(EIO) : result;
}

int fchmod(int descriptor, mode_t mode) {
    if (Fails("fchmod") && IsTemporary(descriptor)) return Failed(EPERM);
    Step();
    return Next("fchmod", &fchmod)(descriptor, mode);
}

int link(const char* from, const char* to) {
    if (Fails("link")) return Failed(EPERM);
    Step();
    return Next("link", &link)(from, to);
}

int unlink(const char* path) {
    Step();
    return Next("unlink", &unlink)(path);
}

int rename(const char* from, const char* to) {
    static int count = 0;
    ++count;
    const std::string numbered = "rename" + std::to_string(count);
    if (Fails(numbered.c_str()) || (Fails("renames") && count > 1)) return Failed(EBUSY);
    Step();
    return Next("rename", &rename)(from, to);
}

pid_t waitpid(pid_t process, int* status, int options) {
    while (Fails("wait")) pause();
    return Next("waitpid", &waitpid)(process, status, options);
}

void* dlopen(const char* file, int flags) {
    const char* parser = std::getenv("ZEK_TEST_PARSER");
    if (parser && file && std::strcmp(file, kInstalled) == 0) file = parser;
    return Next("dlopen", &dlopen)(file, flags);
}

}  // extern "C"
