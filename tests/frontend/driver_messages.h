/// The messages of the driver itself. Relies on recorder.h.
#pragma once

#include <sstream>
#include <string>

#include "support/recorder.h"

namespace zek::test {

/// The messages since the last call but for those on loading the parser library, which hang on what is installed.
inline std::string DriverMessages() {
    std::istringstream all(TakeMessages());
    std::string messages;
    for (std::string line; std::getline(all, line);) {
        if (!line.starts_with("Parse::load ")) messages += line + '\n';
    }
    return messages;
}

}  // namespace zek::test
