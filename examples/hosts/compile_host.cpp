// Compiles a ZEK source: compile_host SOURCE IMAGE DEBUG [FOLDER]...
// Included files are looked for in the current folder, then in each FOLDER.
#include <dlfcn.h>

#include <cstdarg>
#include <cstdio>
#include <string>

#include "zekcomp/compiler.h"
#include "zekcomp/output.h"
#include "zekrsparser.h"

// Receives every message of the library, the first while that is being loaded: no constructor of this program has run
// by then, so nothing but C streams is used here.
extern "C" void Output(unsigned, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
}

namespace {

// Adds a folder to the search of the parser library that serves: the installed one where it is loaded, else the one
// that this program is linked with. False where the installed one is another maker's and has no such function.
bool SearchIn(const std::string& folder) {
    void* installed = dlopen("/usr/tavr/lib/libzekrsparser.so.0", RTLD_LAZY | RTLD_NOLOAD);
    void* function = dlsym(installed ? installed : RTLD_DEFAULT, "RSAddSearchDir");
    if (!function) return false;
    reinterpret_cast<decltype(&RSAddSearchDir)>(function)(folder);
    return true;
}

bool Compile(const std::string& source, const std::string& image, const std::string& debug) {
    bool done = false;
    if (gccCompStart(source)) {
        gccParse();
        done = gccCheck() && gccOutputD(debug) && gccOutput(image);
    }
    gccCompEnd();
    return done;
}

}  // namespace

int main(int count, char** words) {
    if (count < 4) {
        std::fprintf(stderr, "usage: compile_host SOURCE IMAGE DEBUG [FOLDER]...\n");
        return 2;
    }
    for (int i = 4; i < count; ++i) {
        if (!SearchIn(words[i])) std::fprintf(stderr, "%s is not searched\n", words[i]);
    }
    const bool done = Compile(words[1], words[2], words[3]);
    std::printf("%s %s\n", words[1], done ? "compiled" : "not compiled");
    return done ? 0 : 1;
}
