// A host that loads the library, compiles, unloads it with the model still there, and loads it again. The only argument
// is the library; the source is reload.zek in the working folder.
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

void* library = nullptr;

template <class Symbol>
Symbol* Look(const char* name) {
    void* symbol = dlsym(library, name);
    if (!symbol) std::printf("missing: %s\n", name);
    return symbol ? reinterpret_cast<Symbol*>(symbol) : (std::exit(1), nullptr);
}

void Load(const char* path) {
    library = dlopen(path, RTLD_NOW);
    if (library) return;
    std::printf("cannot load: %s\n", dlerror());
    std::exit(1);
}

void PrintState(const char* when) {
    std::printf("%s: next property %08x, slots %u and %u, %zu files, %zu kinds\n", when,
                *Look<unsigned>("g_idxProperty"), *Look<unsigned>("g_dwLastError"), *Look<unsigned>("g_dwLastErrorD"),
                Look<std::vector<std::string>>("_ZN7CZEKObj15m_svstrIncFilesB5cxx11E")->size(),
                Look<std::vector<void*>>("_ZN11CZEKSection13m_svpHSectionE")->size());
}

void Compile() {
    using Named = unsigned(const std::string&);
    std::printf("started: %u\n", Look<Named>("gccCompStart")("reload.zek"));
    Look<void()>("gccParse")();
    Look<unsigned()>("gccCheck")();
    std::printf("written: %u\n", Look<Named>("gccOutput")("reload.meta"));
    Look<void(unsigned)>("_Z14gcSetLastErrorj")(7);
    Look<void(unsigned)>("_Z14gdSetLastErrorj")(8);
}

}  // namespace

int main(int, char** arguments) {
    for (int round = 0; round < 2; ++round) {
        Load(arguments[1]);
        PrintState("loaded");
        Compile();
        PrintState("compiled");
        dlclose(library);
        std::printf("still there: %d\n", dlopen(arguments[1], RTLD_LAZY | RTLD_NOLOAD) != nullptr);
    }
}
