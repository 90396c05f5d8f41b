#include "parser_library.h"

#include <dlfcn.h>

namespace zek::tool {
namespace {

/// Where the compiler looks first.
constexpr char kOwnCopy[] = "/usr/tavr/lib/libzekrsparser.so.0";

template <class Function>
void Look(void* handle, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(handle, name));
}

}  // namespace

ParserLibrary ParserBehind(void* handle) {
    ParserLibrary library;
    // A null handle is the loader's own name for the global scope (RTLD_DEFAULT).
    Look(handle, "RSOpenFile", library.openFile);
    Look(handle, "RSParse", library.parse);
    Look(handle, "RSEnumSection", library.enumSection);
    Look(handle, "RSGetSectInfo", library.getSectInfo);
    Look(handle, "RSEnumItem", library.enumItem);
    Look(handle, "RSCloseFile", library.closeFile);
    Look(handle, "RSSetOpenHook", library.setOpenHook);
    Dl_info info = {};
    void* address = dlsym(handle, "RSEnumSection");
    if (address && dladdr(address, &info) && info.dli_fname) library.path = info.dli_fname;
    return library;
}

ParserLibrary ServingParser() {
    void* loaded = dlopen(kOwnCopy, RTLD_LAZY | RTLD_NOLOAD);
    ParserLibrary library = ParserBehind(loaded);
    // The compiler keeps its own reference for as long as it is loaded itself.
    if (loaded) dlclose(loaded);
    return library;
}

}  // namespace zek::tool
