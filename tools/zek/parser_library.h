/// The section-file parser library that serves the compiler in this process, which need not be the one that the command
/// is linked with. Relies on zekrsparser.h for the signatures and on the dynamic loader.
#pragma once

#include <string>

#include "zekrsparser.h"

namespace zek::tool {

/// The functions of one copy of the parser library; those that it lacks are null.
struct ParserLibrary {
    std::string path;  ///< the file of the copy
    decltype(&RSOpenFile) openFile = nullptr;
    decltype(&RSParse) parse = nullptr;
    decltype(&RSEnumSection) enumSection = nullptr;
    decltype(&RSGetSectInfo) getSectInfo = nullptr;
    decltype(&RSEnumItem) enumItem = nullptr;
    decltype(&RSCloseFile) closeFile = nullptr;
    decltype(&RSSetOpenHook) setOpenHook = nullptr;  ///< null in another maker's library

    bool Serves() const { return openFile && parse && enumSection && getSectInfo && enumItem && closeFile; }
    bool HasHook() const { return setOpenHook; }
};

/// The copy behind a handle of the dynamic loader; null stands for the process's global scope.
ParserLibrary ParserBehind(void* handle);

/// The copy that serves: the one that the compiler has loaded from its own folder, else the one in the global scope.
ParserLibrary ServingParser();

}  // namespace zek::tool
