// Preloaded before the command under test. ZEK_FAULT names what goes wrong, for temporary files of the command only:
//
//   write    a write fails with ENOSPC         fsync    a sync fails with EIO
//   close    a close fails with EIO            fchmod   keeping the mode fails with EPERM
//   rename1  the first rename fails with EBUSY rename2  the second does
//   hang     a sync never returns
//
// ZEK_TEST_PARSER is the file that is loaded in place of the installed parser library.
#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr char kInstalled[] = "/usr/tavr/lib/libzekrsparser.so.0";

bool Fails(const char* name) {
    const char* fault = std::getenv("ZEK_FAULT");
    return fault && std::strcmp(fault, name) == 0;
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
    if (Fails("write") && IsTemporary(descriptor)) return Failed(ENOSPC);
    return Next("write", &write)(descriptor, bytes, count);
}

int fsync(int descriptor) {
    if (Fails("fsync") && IsTemporary(descriptor)) return Failed(EIO);
    while (Fails("hang") && IsTemporary(descriptor)) pause();
    return Next("fsync", &fsync)(descriptor);
}

int close(int descriptor) {
    const bool fails = Fails("close") && IsTemporary(descriptor);
    const int result = Next("close", &close)(descriptor);
    return fails ? Failed(EIO) : result;
}

int fchmod(int descriptor, mode_t mode) {
    if (Fails("fchmod") && IsTemporary(descriptor)) return Failed(EPERM);
    return Next("fchmod", &fchmod)(descriptor, mode);
}

int rename(const char* from, const char* to) {
    static int count = 0;
    ++count;
    if ((Fails("rename1") && count == 1) || (Fails("rename2") && count == 2)) return Failed(EBUSY);
    return Next("rename", &rename)(from, to);
}

void* dlopen(const char* file, int flags) {
    const char* parser = std::getenv("ZEK_TEST_PARSER");
    if (parser && file && std::strcmp(file, kInstalled) == 0) file = parser;
    return Next("dlopen", &dlopen)(file, flags);
}

}  // extern "C"
