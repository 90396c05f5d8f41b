/// Commands run in the process of the test, for what it holds in memory. Relies on command_line.h.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "command_line.h"
#include "memory_file.h"

namespace zek::tool {

/// The exit code of a command line, without its first word.
inline int RunHere(std::vector<std::string> words) {
    words.insert(words.begin(), "zek");
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    const CommandLine line = ReadCommandLine(static_cast<int>(pointers.size()), pointers.data());
    EXPECT_TRUE(line.run) << line.text;
    return line.run ? line.run() : line.code;
}

/// Compiles a source into both images.
inline int CompileHere(const MemoryFile& source, const MemoryFile& image, const MemoryFile& debug) {
    return RunHere({"compile", source.Name(), "-o", image.Name(), "-g", debug.Name()});
}

}  // namespace zek::tool
